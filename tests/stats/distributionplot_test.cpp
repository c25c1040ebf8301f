#include "support/PlotScene.h"

#include <gmock/gmock.h>
#include <QSignalSpy>
#include <vtkBrush.h>
#include <vtkChartXY.h>
#include <vtkFloatArray.h>
#include <vtkPlotStacked.h>

#include <cmath>
#include <functional>
#include <limits>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// A density of the test's own, which remembers what it was asked.
struct AskedDistribution : Distribution
{
  int type = uniform;
  double lower = 0;
  double upper = 49;
  std::function<double(double)> pdf = [](double) { return 0.5; };
  std::vector<double> places;
  std::vector<int> ranges;

  int getType() override { return type; }
  double getPdf(double x) override
  {
    places.push_back(x);
    return pdf(x);
  }
  std::pair<double, double> getRange(int range) override
  {
    ranges.push_back(range);
    return {lower, upper};
  }
};

struct DistributionPlotTest : testing::Test, PlotScene
{
  AskedDistribution distribution;

  void showRange(double lower, double upper)
  {
    distribution.lower = lower;
    distribution.upper = upper;
    container.setDistribution(&distribution);
  }

  void showPoint(double value)
  {
    distribution.type = Distribution::pointValue;
    showRange(value, value);
  }

  [[nodiscard]] vtkChartXY* plain() { return vtkChartXY::SafeDownCast(container.chartXY); }

  void paintIt()
  {
    RecordingPainter recorder;
    show();
    paint(recorder);
  }

  std::vector<double> column(char const* name) { return numbers(container.plotData, name); }
};

std::vector<double> asFloats(std::vector<double> values)
{
  for (double& value : values) value = static_cast<float>(value);
  return values;
}

TEST_F(DistributionPlotTest, MakesANewTableOfTwoFloatColumns)
{
  vtkSmartPointer<vtkTable> former = container.plotData;
  container.setDistribution(&distribution);
  EXPECT_NE(container.plotData, former);
  EXPECT_EQ(former->GetNumberOfColumns(), 0);
  ASSERT_THAT(columnNames(container.plotData), ElementsAre("x", "pdf"));
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(container.plotData->GetColumn(i)->IsA("vtkFloatArray"));
}

TEST_F(DistributionPlotTest, AsksForTheRangeToPlot)
{
  container.setDistribution(&distribution);
  EXPECT_THAT(distribution.ranges, testing::AllOf(testing::Not(IsEmpty()), Each(1)));
}

TEST_F(DistributionPlotTest, SamplesFiftyEvenlySpacedPlacesInDoublePrecision)
{
  distribution.pdf = [](double x) { return std::exp(-x); };
  showRange(0.1, 3.3);
  std::vector<double> x, pdf;
  double const step = (3.3 - 0.1) / 49.0;
  for (int i = 0; i < 50; ++i) {
    x.push_back(i * step + 0.1);
    pdf.push_back(std::exp(-x.back()));
  }
  EXPECT_EQ(column("x"), asFloats(x));
  EXPECT_EQ(column("pdf"), asFloats(pdf));
  for (double place : distribution.places)
    EXPECT_NE(std::find(x.begin(), x.end(), place), x.end()) << place << " was narrowed";
}

TEST_F(DistributionPlotTest, APointValueIsAPeakOfFivePoints)
{
  showPoint(2.0);
  EXPECT_EQ(column("x"), asFloats({1.0, 1.96, 2.0, 2.0 / 0.98, 4.0}));
  EXPECT_THAT(column("pdf"), ElementsAre(0, 0, 1, 0, 0));
}

TEST_F(DistributionPlotTest, APointValueStandsAtTheLowerEnd)
{
  distribution.type = 5;
  showRange(-3.0, 8.0);
  EXPECT_EQ(column("x"), asFloats({-1.5, 0.98 * -3.0, -3.0, -3.0 / 0.98, -6.0}));
}

TEST_F(DistributionPlotTest, APointValueOfZeroGivesFiveZeros)
{
  showPoint(0.0);
  EXPECT_THAT(column("x"), ElementsAre(0, 0, 0, 0, 0));
  EXPECT_THAT(column("pdf"), ElementsAre(0, 0, 1, 0, 0));
  paintIt();
}

TEST_F(DistributionPlotTest, EveryOtherTypeHasADensity)
{
  for (int type : {-1, 0, 4, 6, 1000}) {
    distribution.type = type;
    container.setDistribution(&distribution);
    EXPECT_THAT(column("x"), SizeIs(50)) << type;
  }
}

TEST_F(DistributionPlotTest, TheAreaUnderTheCurveIsFilledInBlue)
{
  container.setDistribution(&distribution);
  ASSERT_EQ(chart()->GetNumberOfPlots(), 1);
  auto* area = vtkPlotStacked::SafeDownCast(chart()->GetPlot(0));
  ASSERT_NE(area, nullptr);
  EXPECT_EQ(area->GetInput(), container.plotData.Get());
  EXPECT_EQ(drawnColumn(area, 0), "x");
  EXPECT_EQ(drawnColumn(area, 1), "pdf");
  unsigned char color[4];
  area->GetBrush()->GetColor(color);
  EXPECT_THAT(color, ElementsAre(30, 30, 230, 255));
}

TEST_F(DistributionPlotTest, TheAreaIsPainted)
{
  container.setDistribution(&distribution);
  RecordingPainter recorder;
  show();
  paint(recorder);
  int pieces = 0;
  for (Stroke const& piece : recorder.ofKind(Stroke::Polygon))
    if (piece.brush == Color{30, 30, 230, 255}) ++pieces;
  EXPECT_EQ(pieces, 49) << "one between each two places";
}

TEST_F(DistributionPlotTest, ReplacesFormerPlots)
{
  container.example();
  container.setDistribution(&distribution);
  container.setDistribution(&distribution);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 1);
}

TEST_F(DistributionPlotTest, TheVerticalAxisLeavesFivePercentAboveTheLargestDensity)
{
  distribution.pdf = [](double x) { return x == 20 ? 0.8 : 0.25; };
  container.setDistribution(&distribution);
  EXPECT_EQ(left()->GetMinimum(), 0.0);
  EXPECT_EQ(left()->GetMaximum(), 0.8 * 1.05);
}

TEST_F(DistributionPlotTest, TheVerticalAxisOfAPointValueEndsAtZero)
{
  showPoint(2.0);
  EXPECT_EQ(left()->GetMinimum(), 0.0);
  EXPECT_EQ(left()->GetMaximum(), 0.0);
}

TEST_F(DistributionPlotTest, TheVerticalAxisOfADensityThatVanishesEndsAtZero)
{
  distribution.pdf = [](double) { return 0.0; };
  container.setDistribution(&distribution);
  EXPECT_EQ(left()->GetMinimum(), 0.0);
  EXPECT_EQ(left()->GetMaximum(), 0.0);
  EXPECT_THAT(column("pdf"), testing::AllOf(SizeIs(50), Each(0)));
  paintIt();
}

TEST_F(DistributionPlotTest, TheVerticalAxisHasNoTextsAndNoMargins)
{
  left()->SetTitle("before");
  left()->SetRangeLabelsVisible(true);
  left()->SetMargins(7, 9);
  container.setDistribution(&distribution);
  EXPECT_EQ(left()->GetTitle(), "");
  EXPECT_FALSE(left()->GetLabelsVisible());
  EXPECT_FALSE(left()->GetRangeLabelsVisible());
  EXPECT_EQ(left()->GetMargins()[0], 0);
  EXPECT_EQ(left()->GetMargins()[1], 0);
}

TEST_F(DistributionPlotTest, TheHorizontalAxisHasThreeTicksInFixedNotation)
{
  bottom()->SetTitle("before");
  container.setDistribution(&distribution);
  EXPECT_EQ(bottom()->GetTitle(), "");
  EXPECT_EQ(bottom()->GetNumberOfTicks(), 3);
  EXPECT_EQ(bottom()->GetNotation(), vtkAxis::FIXED_NOTATION);
}

TEST_F(DistributionPlotTest, TheWiderTheRangeTheFewerDecimals)
{
  for (auto [span, precision] :
       {std::pair(0.001, 2), {9.99, 2}, {10.0, 1}, {99.9, 1}, {100.0, 0}, {1e6, 0}}) {
    showRange(0.0, span);
    EXPECT_EQ(bottom()->GetPrecision(), precision) << span;
  }
  showRange(-60.0, 60.0);
  EXPECT_EQ(bottom()->GetPrecision(), 0) << "the span counts, not the ends";
  showPoint(500.0);
  EXPECT_EQ(bottom()->GetPrecision(), 2) << "a point has no span";
}

TEST_F(DistributionPlotTest, TheTickTextsReachNoAxis)
{
  showRange(0.123, 9.876);
  EXPECT_EQ(container.xTickLabels, nullptr);
  EXPECT_EQ(container.xTickPositions, nullptr);
  RecordingPainter recorder;
  show();
  paint(recorder);
  vtkDoubleArray* ticks = bottom()->GetTickPositions();
  ASSERT_EQ(ticks->GetNumberOfValues(), 3) << "its own ones, of which one is in the middle";
  EXPECT_NEAR(ticks->GetValue(1), (ticks->GetValue(0) + ticks->GetValue(2)) / 2, 1e-6);
}

TEST_F(DistributionPlotTest, TheChartIsForLookingOnly)
{
  plain()->DrawAxesAtOriginOn();
  container.setDistribution(&distribution);
  EXPECT_FALSE(plain()->GetInteractive());
  EXPECT_FALSE(plain()->GetDrawAxesAtOrigin());
}

TEST_F(DistributionPlotTest, BearsTheTitleOfThePlot)
{
  settings().plotTitle = "k_on";
  container.setDistribution(&distribution);
  EXPECT_EQ(chart()->GetTitle(), "k_on");
}

TEST_F(DistributionPlotTest, NeitherRedrawsNorChangesTheStyle)
{
  container.example();
  vtkSmartPointer<vtkChart> before = container.chartXY;
  QSignalSpy announced(container.metaData, &PlotMetaData::redrawNeeded);
  container.setDistribution(&distribution);
  EXPECT_EQ(announced.count(), 0);
  EXPECT_EQ(settings().getPlotStyle(), scatterPlot);
  EXPECT_EQ(container.chartXY, before);
  EXPECT_FALSE(settings().signalsBlocked());
}

TEST_F(DistributionPlotTest, OtherMembersStay)
{
  container.tables = {vtkSmartPointer<vtkTable>::New()};
  container.typedColumnNames = {{Kestrane::Molecule, "A"}};
  settings().xColumns = {3};
  settings().parameterColumns = {1, 2};
  container.setDistribution(&distribution);
  EXPECT_THAT(container.tables, SizeIs(1));
  EXPECT_THAT(container.typedColumnNames, SizeIs(1));
  EXPECT_THAT(settings().xColumns, ElementsAre(3));
  EXPECT_THAT(settings().parameterColumns, ElementsAre(1, 2));
}

TEST_F(DistributionPlotTest, ALaterRedrawFindsANormalChart)
{
  container.setDistribution(&distribution);
  settings().yColumns = {1};
  settings().yLabel = "density";
  container.redraw();
  EXPECT_TRUE(left()->GetLabelsVisible());
  EXPECT_EQ(left()->GetTitle(), "density");
  EXPECT_TRUE(chart()->GetInteractive());
  ASSERT_EQ(chart()->GetNumberOfPlots(), 1);
  EXPECT_TRUE(chart()->GetPlot(0)->IsA("vtkPlotPoints"));
  EXPECT_EQ(drawnColumn(chart()->GetPlot(0), 1), "pdf");
}

TEST_F(DistributionPlotTest, ShowsTheKindsOfTheLibrary)
{
  auto normal = normalDistribution(2.0, 0.5);
  container.setDistribution(normal.get());
  EXPECT_THAT(column("x"), SizeIs(50));
  EXPECT_EQ(column("x").front(), static_cast<float>(normal->getRange(1).first));
  EXPECT_EQ(column("x").back(), static_cast<float>(normal->getRange(1).second));
  auto point = pointDistribution(2.0);
  container.setDistribution(point.get());
  EXPECT_EQ(column("x"), asFloats({1.0, 1.96, 2.0, 2.0 / 0.98, 4.0}));
  paintIt();
}

TEST_F(DistributionPlotTest, UndefinedAndInfiniteDensitiesDoNotBreakIt)
{
  distribution.pdf = [](double) { return std::numeric_limits<double>::quiet_NaN(); };
  container.setDistribution(&distribution);
  EXPECT_THAT(column("pdf"), testing::AllOf(SizeIs(50), Each(testing::IsNan())));
  paintIt();
  auto unbounded = gammaDistribution(0.5, 2.0);
  container.setDistribution(unbounded.get());
  EXPECT_THAT(column("pdf"), SizeIs(50));
  paintIt();
}

TEST_F(DistributionPlotTest, UndefinedDensitiesDoNotHideTheLargestOne)
{
  distribution.pdf = [](double x) { return x < 10 ? 0.4 : std::numeric_limits<double>::quiet_NaN(); };
  container.setDistribution(&distribution);
  EXPECT_EQ(left()->GetMaximum(), 0.4 * 1.05);
}

TEST_F(DistributionPlotTest, ARangeOfNoWidthIsPainted)
{
  showRange(3.0, 3.0);
  EXPECT_THAT(column("x"), testing::AllOf(SizeIs(50), Each(3)));
  paintIt();
}

TEST_F(DistributionPlotTest, CanFollowAStyleThatReleasedThePlainChart)
{
  container.example();
  settings().zColumns = {2};
  container.setPlotStyle(scatterPlot3D);
  container.setDistribution(&distribution);
  ASSERT_NE(chart(), nullptr);
  EXPECT_TRUE(chart()->GetPlot(0)->IsA("vtkPlotStacked"));
}

} // namespace
} // namespace runsieve::test
