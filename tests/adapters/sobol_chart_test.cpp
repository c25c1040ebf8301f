#include "support/SobolRecord.h"

#include <gmock/gmock.h>
#include <vtkChartLegend.h>
#include <vtkChartXY.h>
#include <vtkColorSeries.h>
#include <vtkDataObject.h>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkPlotBar.h>
#include <vtkPlotStacked.h>
#include <vtkTextProperty.h>

#include <limits>
#include <map>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// The chart that is built for a slice of Sobol indices.
struct SobolChartTest : SobolPlot
{
  [[nodiscard]] vtkChartXY* plain() { return vtkChartXY::SafeDownCast(container.chartXY); }
  [[nodiscard]] vtkPlot* plot() { return chart()->GetPlot(0); }

  RecordingPainter recorder;

  void paintIt()
  {
    show();
    paint(recorder);
  }

  /// How many quadrilaterals of data were painted in each colour of the series.
  std::map<Color, int> piecesByColor()
  {
    vtkNew<vtkColorSeries> series;
    series->SetColorScheme(4);
    std::map<Color, int> pieces;
    for (int p = 0; p < 3; ++p) {
      vtkColor3ub const rgb = series->GetColor(p);
      Color const color{rgb[0], rgb[1], rgb[2], 255};
      for (Stroke const& quad : recorder.ofKind(Stroke::Polygon))
        if (quad.brush == color && isInData(quad)) ++pieces[color];
    }
    return pieces;
  }

  /// The marks of the legend are further to the right, in pixels.
  static bool isInData(Stroke const& quad) { return quad.points[0].first <= 50; }
};

/// The column that a plot asks for as x, whether the table has it or not.
std::string askedX(vtkPlot* plot)
{
  vtkInformationVector* asked =
      plot->GetData()->GetInformation()->Get(vtkAlgorithm::INPUT_ARRAYS_TO_PROCESS());
  char const* name = asked->GetInformationObject(0)->Get(vtkDataObject::FIELD_NAME());
  return name ? name : "";
}

TEST_F(SobolChartTest, EachResultGetsANewChart)
{
  vtkSmartPointer<vtkChart> former = container.chartXY;
  setBars();
  EXPECT_NE(container.chartXY, former);
  EXPECT_NE(plain(), nullptr);
  EXPECT_EQ(container.getItem(), chart());
  former = container.chartXY;
  setArea();
  EXPECT_NE(container.chartXY, former);
  EXPECT_EQ(container.getItem(), chart());
  ASSERT_EQ(chart()->GetNumberOfPlots(), 1);
  EXPECT_TRUE(plot()->IsA("vtkPlotStacked"));
}

TEST_F(SobolChartTest, TheChartHasNeitherMarginsNorALink)
{
  container.leftMargin = 300;
  setBars();
  EXPECT_EQ(chart()->GetAnnotationLink(), nullptr);
  EXPECT_EQ(chart()->GetLayoutStrategy(), vtkChart::FILL_SCENE);
  paintIt();
  EXPECT_LT(chart()->GetPoint1()[0], 300);
}

TEST_F(SobolChartTest, BarsShowTheParametersAsSeriesAndNotTheLabels)
{
  setBars();
  ASSERT_EQ(chart()->GetNumberOfPlots(), 1);
  ASSERT_TRUE(plot()->IsA("vtkPlotBar"));
  EXPECT_EQ(plot()->GetInput(), container.plotData.Get());
  EXPECT_TRUE(plot()->GetUseIndexForXSeries());
  EXPECT_THAT(strings(plot()->GetLabels()), ElementsAre("k1", "k2", "k3"));
}

TEST_F(SobolChartTest, BarsHaveAPlaceForEachSpeciesAndOneOnEachSide)
{
  setBars();
  EXPECT_EQ(bottom()->GetMinimum(), -1.0);
  EXPECT_EQ(bottom()->GetMaximum(), 4.0);
  EXPECT_EQ(bottom()->GetBehavior(), vtkAxis::FIXED);
}

TEST_F(SobolChartTest, TheSpeciesAreTheTicksOfTheBars)
{
  setBars();
  EXPECT_THAT(numbers(bottom()->GetTickPositions()), ElementsAre(0, 1, 2));
  EXPECT_THAT(strings(bottom()->GetTickLabels()),
              ElementsAre("Molecule: A", "Pattern: P", "Complex With Molecule: C"));
  EXPECT_EQ(bottom()->GetTitle(), "Species");
  vtkTextProperty* labels = bottom()->GetLabelProperties();
  EXPECT_EQ(labels->GetOrientation(), 90.0);
  EXPECT_EQ(labels->GetJustification(), VTK_TEXT_RIGHT);
  EXPECT_EQ(labels->GetVerticalJustification(), VTK_TEXT_CENTERED);
}

TEST_F(SobolChartTest, AnAreaShowsTheParametersOverTime)
{
  setArea();
  ASSERT_EQ(chart()->GetNumberOfPlots(), 1);
  ASSERT_TRUE(plot()->IsA("vtkPlotStacked"));
  EXPECT_EQ(plot()->GetInput(), container.plotData.Get());
  EXPECT_EQ(drawnColumn(plot(), 0), "Time");
  EXPECT_FALSE(plot()->GetUseIndexForXSeries());
  EXPECT_THAT(strings(plot()->GetLabels()), ElementsAre("k1", "k2", "k3"));
  EXPECT_EQ(bottom()->GetTitle(), "Time [s]");
}

TEST_F(SobolChartTest, BothTakeTheColoursOfTheSameSeries)
{
  setBars();
  EXPECT_EQ(vtkPlotBar::SafeDownCast(plot())->GetColorSeries()->GetColorScheme(), 4);
  setArea();
  EXPECT_EQ(vtkPlotStacked::SafeDownCast(plot())->GetColorSeries()->GetColorScheme(), 4);
}

struct SobolAxisTest : SobolChartTest, testing::WithParamInterface<bool>
{
  void set(bool total) { GetParam() ? setBars(total) : setArea(total); }
};

TEST_P(SobolAxisTest, FirstOrderRunsFromZeroToOne)
{
  set(false);
  EXPECT_EQ(left()->GetMinimum(), 0.0);
  EXPECT_EQ(left()->GetMaximum(), 1.0);
  EXPECT_EQ(left()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_EQ(left()->GetTitle(), "Sensitivity");
}

TEST_P(SobolAxisTest, TotalOrderKeepsTheUpperEndOfANewAxis)
{
  set(true);
  vtkNew<vtkChartXY> fresh;
  EXPECT_EQ(left()->GetMinimum(), 0.0);
  EXPECT_EQ(left()->GetMaximum(), fresh->GetAxis(vtkAxis::LEFT)->GetMaximum());
  EXPECT_EQ(left()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_EQ(left()->GetTitle(), "Total Sensitivity");
}

TEST_P(SobolAxisTest, TheLegendStandsBesideThePlotArea)
{
  set(false);
  EXPECT_TRUE(chart()->GetShowLegend());
  EXPECT_FALSE(chart()->GetLegend()->GetInline());
}

TEST_P(SobolAxisTest, TheAxesEndWithTheDataAndTheTitleShows)
{
  set(true);
  EXPECT_TRUE(plain()->GetForceAxesToBounds());
  EXPECT_FALSE(settings().plotTitle.empty());
  EXPECT_EQ(chart()->GetTitle(), settings().plotTitle);
}

INSTANTIATE_TEST_SUITE_P(BarsAndAreas, SobolAxisTest, testing::Bool());

TEST_F(SobolChartTest, AChartOfTheTableThatStandsCanBeBuiltAlone)
{
  setArea(true);
  vtkSmartPointer<vtkTable> table = container.plotData;
  vtkSmartPointer<vtkChart> former = container.chartXY;
  settings().plotTitle = "own title";
  settings().blockSignals(true);
  container.setupStackedSobol(false);
  EXPECT_EQ(container.plotData, table);
  EXPECT_NE(container.chartXY, former);
  EXPECT_EQ(container.getItem(), chart());
  EXPECT_EQ(left()->GetTitle(), "Sensitivity");
  EXPECT_EQ(chart()->GetTitle(), "own title");
  EXPECT_FALSE(settings().signalsBlocked());
}

TEST_F(SobolChartTest, OtherStylesGetAChartWithoutPlotAndLegend)
{
  setStyle(scatterPlot);
  container.setSobolPostprocessResult(&record.result, true, false, 1, 0);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 0);
  EXPECT_FALSE(chart()->GetShowLegend());
  EXPECT_TRUE(plain()->GetForceAxesToBounds());
  EXPECT_EQ(chart()->GetTitle(), "Sensitivities at t= 12.5 s");
  paintIt();
}

TEST_F(SobolChartTest, AnAreaOfBarsAsksForTimesThatAreNotThere)
{
  OutputWindowLog reports;
  setStyle(stackedPlot);
  container.setSobolPostprocessResult(&record.result, true, false, 1, 0);
  EXPECT_EQ(askedX(plot()), "Time");
  EXPECT_THAT(strings(plot()->GetLabels()), ElementsAre("k1", "k2", "k3"));
  paintIt();
  EXPECT_THAT(piecesByColor(), IsEmpty());
}

TEST_F(SobolChartTest, BarsOfAnAreaHaveNeitherTicksNorTitleOfSpecies)
{
  setStyle(barPlot);
  container.setSobolPostprocessResult(&record.result, false, false, 0, 1);
  ASSERT_TRUE(plot()->IsA("vtkPlotBar"));
  EXPECT_THAT(strings(plot()->GetLabels()), ElementsAre("k1", "k2", "k3")) << "the times are left out";
  EXPECT_NE(bottom()->GetTitle(), "Species");
  EXPECT_NE(bottom()->GetLabelProperties()->GetOrientation(), 90.0);
  EXPECT_EQ(bottom()->GetMaximum(), 4.0);
  paintIt();
}

TEST_F(SobolChartTest, AColumnNamedNameThatHoldsNumbersGivesNoTicks)
{
  container.setPlotData(makeTable({{"k1", {1, 2}}, {"Name", {3, 4}}, {"k2", {5, 6}}}));
  setStyle(barPlot);
  container.setupStackedSobol(false);
  EXPECT_NE(bottom()->GetTitle(), "Species");
  EXPECT_THAT(strings(plot()->GetLabels()), ElementsAre("k1", "Name"));
}

TEST_F(SobolChartTest, BarsArePaintedInTheColourOfTheirParameter)
{
  setBars();
  paintIt();
  std::map<Color, int> const pieces = piecesByColor();
  ASSERT_THAT(pieces, SizeIs(3));
  for (auto const& [color, count] : pieces) EXPECT_EQ(count, 3) << "one per species";
  EXPECT_THAT(recorder.texts(), testing::IsSupersetOf({"Pattern: P", "Species", "k1", "k2", "k3"}));
}

TEST_F(SobolChartTest, AnAreaIsPaintedWithOneBandPerParameter)
{
  setArea();
  paintIt();
  std::map<Color, int> const pieces = piecesByColor();
  ASSERT_THAT(pieces, SizeIs(3));
  for (auto const& [color, count] : pieces) EXPECT_EQ(count, 2) << "one between each two times";
  EXPECT_THAT(recorder.texts(), testing::IsSupersetOf({"Time [s]", "Sensitivity", "k1", "k2", "k3"}));
}

TEST_F(SobolChartTest, OneSpeciesGivesARangeAroundNothing)
{
  record.setSpecies({{Kestrane::Molecule, "A"}});
  setBars();
  EXPECT_EQ(bottom()->GetMinimum(), -1.0);
  EXPECT_EQ(bottom()->GetMaximum(), 1.0);
  EXPECT_THAT(numbers(bottom()->GetTickPositions()), IsEmpty());
  EXPECT_THAT(strings(bottom()->GetTickLabels()), IsEmpty());
  EXPECT_EQ(bottom()->GetTitle(), "Species");
  paintIt();
}

TEST_F(SobolChartTest, OneSpeciesOverTimeIsPainted)
{
  record.setSpecies({{Kestrane::Molecule, "A"}});
  setArea(false, 0);
  paintIt();
  EXPECT_THAT(piecesByColor(), SizeIs(3));
}

TEST_F(SobolChartTest, NoSpeciesDoNotBreakIt)
{
  OutputWindowLog reports;
  record.setSpecies({});
  setBars();
  paintIt();
  setArea(false, 0);
  paintIt();
}

TEST_F(SobolChartTest, NoParametersAndNoTimesDoNotBreakIt)
{
  OutputWindowLog reports;
  record.result.parameters.clear();
  record.result.parameterNames.clear();
  setBars();
  paintIt();
  setArea();
  paintIt();
  record.times.clear();
  setArea();
  paintIt();
}

TEST_F(SobolChartTest, ATableWithoutColumnsDoesNotBreakIt)
{
  OutputWindowLog reports;
  for (plotStyles style : {barPlot, stackedPlot}) {
    container.setPlotData(vtkSmartPointer<vtkTable>::New());
    setStyle(style);
    container.setupStackedSobol(true);
    paintIt();
  }
}

TEST_F(SobolChartTest, UndefinedIndicesArePainted)
{
  for (auto& row : record.first[1]) row[0] = std::numeric_limits<double>::quiet_NaN();
  setBars();
  paintIt();
  setArea();
  paintIt();
}

TEST_F(SobolChartTest, ParametersNamedLikeTheLabelsArePainted)
{
  OutputWindowLog reports;
  record.result.parameterNames = {"k1", "Name", "Time"};
  setArea();
  paintIt();
  setBars();
  paintIt();
}

TEST_F(SobolChartTest, ARedrawBeforeTheChartIsShownFindsNoScene)
{
  setBars();
  testing::internal::CaptureStdout();
  container.redraw();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "void PlotContainer::redraw(): invalid scene\n");
  EXPECT_TRUE(settings().signalsBlocked());
  EXPECT_EQ(settings().plotTitle, "Sensitivities at t= 12.5 s");
}

TEST_F(SobolChartTest, ARedrawOfTheShownChartReplacesItsTitle)
{
  setArea();
  show();
  container.redraw();
  EXPECT_EQ(settings().plotTitle, "Not yet implemented");
  EXPECT_EQ(chart()->GetTitle(), "Not yet implemented");
  EXPECT_EQ(chart()->GetNumberOfPlots(), 1);
}

} // namespace
} // namespace runsieve::test
