#include "support/OpenErrorPoints.h"
#include "support/PlotScene.h"

#include <gmock/gmock.h>

namespace runsieve::test {
namespace {

vtkSmartPointer<vtkTable> tableOfFloats(std::vector<std::string> const& names)
{
  auto table = vtkSmartPointer<vtkTable>::New();
  float offset = 0;
  for (auto const& name : names) {
    table->AddColumn(makeFloats(name, {offset + 1, offset + 2}));
    offset += 10;
  }
  return table;
}

enum class SideTable
{
  None,
  Null,
  Wide,
  Narrow
};

/// When a line is laid over the error bars, and what it shows.
struct SecondSeries
{
  char const* name;
  std::vector<int> xColumns;
  std::vector<int> yColumns;
  bool useIndex;
  SideTable sideTable;
  bool drawn;
  std::string x; ///< column shown; empty: the line has no input
  std::string y;
};

void PrintTo(SecondSeries const& series, std::ostream* out)
{
  *out << series.name;
}

struct SecondSeriesTest : testing::TestWithParam<SecondSeries>
{
  PlotScene plot;
  vtkSmartPointer<vtkTable> side;

  SecondSeriesTest()
  {
    plot.container.setPlotData(tableOfFloats({"main 0", "main 1", "main 2", "main 3"}));
    SideTable const kind = GetParam().sideTable;
    if (kind == SideTable::Wide) side = tableOfFloats({"side 0", "side 1", "side 2", "side 3"});
    if (kind == SideTable::Narrow) side = tableOfFloats({"side 0", "side 1"});
    if (kind != SideTable::None) plot.container.tables = {side};
    plot.settings().xColumns = GetParam().xColumns;
    plot.settings().yColumns = GetParam().yColumns;
    plot.container.useIndexForXSeries = GetParam().useIndex;
    plot.container.setPlotStyle(scatterPlotWithErrorBars);
  }

  /// The table that the line reads.
  vtkTable* source() { return side ? side.Get() : plot.container.plotData.Get(); }
};

TEST_P(SecondSeriesTest, FollowsItsRules)
{
  SecondSeries const& expected = GetParam();
  ASSERT_EQ(plot.chart()->GetNumberOfPlots(), expected.drawn ? 2 : 1);
  EXPECT_NE(vtkPlotErrorPoints::SafeDownCast(plot.chart()->GetPlot(0)), nullptr);
  if (expected.drawn) {
    vtkPlot* line = plot.chart()->GetPlot(1);
    EXPECT_TRUE(line->IsA("vtkPlotLine"));
    EXPECT_EQ(line->GetUseIndexForXSeries(), expected.useIndex);
    EXPECT_EQ(line->GetInput(), expected.y.empty() ? nullptr : source());
    EXPECT_EQ(drawnColumn(line, 0), expected.x);
    EXPECT_EQ(drawnColumn(line, 1), expected.y);
  }
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_EQ(recorder.errors(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, SecondSeriesTest,
    testing::Values(
        SecondSeries{"OnePair", {0}, {1}, false, SideTable::None, false, "", ""},
        SecondSeries{"OneXAlone", {0}, {1, 2}, false, SideTable::None, false, "", ""},
        SecondSeries{"OneYAlone", {0, 3}, {1}, false, SideTable::None, false, "", ""},
        SecondSeries{"OneYAloneByRow", {0, 3}, {1}, true, SideTable::None, false, "", ""},
        SecondSeries{"OnePairBesideASideTable", {0}, {1}, false, SideTable::Wide, false, "", ""},
        SecondSeries{"TwoPairs", {0, 3}, {1, 2}, false, SideTable::None, true, "main 3", "main 2"},
        SecondSeries{"ThreePairs", {0, 3, 1}, {1, 2, 0}, false, SideTable::None, true, "main 3", "main 2"},
        SecondSeries{"TwoPairsByRow", {0, 3}, {1, 2}, true, SideTable::None, true, "main 3", "main 2"},
        SecondSeries{
            "ByRowTheXColumnIsTheFirst", {3}, {1, 2}, true, SideTable::None, true, "main 0", "main 2"},
        SecondSeries{"FromASideTable", {0, 3}, {1, 2}, false, SideTable::Wide, true, "side 3", "side 2"},
        SecondSeries{"FromASideTableByRow", {3}, {1, 2}, true, SideTable::Wide, true, "side 0", "side 2"},
        SecondSeries{
            "ANullSideTableCountsAsNone", {0, 3}, {1, 2}, false, SideTable::Null, true, "main 3", "main 2"},
        SecondSeries{"TooNarrowForY", {0, 1}, {1, 2}, false, SideTable::Narrow, true, "", ""},
        SecondSeries{"TooNarrowForX", {0, 2}, {1, 1}, false, SideTable::Narrow, true, "", ""},
        SecondSeries{"TooNarrowByRow", {0}, {1, 2}, true, SideTable::Narrow, true, "", ""},
        SecondSeries{"JustWideEnough", {0, 1}, {1, 1}, false, SideTable::Narrow, true, "side 1", "side 1"},
        SecondSeries{"OutsideTheMainTable", {0, 4}, {1, 2}, false, SideTable::None, true, "", ""},
        SecondSeries{"NegativeNumbers", {0, -1}, {1, -1}, false, SideTable::None, true, "", ""}),
    [](auto const& info) { return std::string(info.param.name); });

/// The chart and the column of its errors, each outliving the other.
struct ErrorColumnLifeTest : testing::Test
{
  vtkSmartPointer<vtkTable> table = tableOfFloats({"x", "y", "error", "more"});
  vtkSmartPointer<vtkFloatArray> error = vtkFloatArray::SafeDownCast(table->GetColumn(2));
  vtkSmartPointer<vtkFloatArray> more = vtkFloatArray::SafeDownCast(table->GetColumn(3));

  void show(PlotScene& plot)
  {
    plot.container.setPlotData(table);
    plot.settings().yColumns = {1};
    plot.settings().zColumns = {2};
    plot.container.setPlotStyle(scatterPlotWithErrorBars);
    paint(plot);
  }

  static void paint(PlotScene& plot)
  {
    RecordingPainter recorder;
    plot.paint(recorder);
    EXPECT_FALSE(recorder.markers().empty());
  }
};

TEST_F(ErrorColumnLifeTest, AThousandRedrawsLeaveItsReferenceCountAlone)
{
  int const before = error->GetReferenceCount();
  PlotScene plot;
  show(plot);
  EXPECT_EQ(error->GetReferenceCount(), before);
  for (int i = 0; i < 1000; ++i) {
    plot.container.redraw();
    plot.chart()->Update();
    ASSERT_EQ(error->GetReferenceCount(), before) << "redraw " << i;
  }
  paint(plot);
  plot.container.setPlotStyle(scatterPlot);
  plot.show();
  EXPECT_EQ(error->GetReferenceCount(), before);
}

TEST_F(ErrorColumnLifeTest, AnotherColumnCanTakeItsPlace)
{
  int const before = error->GetReferenceCount();
  PlotScene plot;
  show(plot);
  for (int column : {3, 2, 1, 999, 3, 2}) {
    plot.settings().zColumns = {column};
    plot.container.redraw();
    paint(plot);
    EXPECT_EQ(error->GetReferenceCount(), before) << column;
    EXPECT_EQ(more->GetReferenceCount(), before) << column;
  }
}

TEST_F(ErrorColumnLifeTest, AnotherTableCanTakeItsPlaceBeforeThePlotIsPainted)
{
  PlotScene plot;
  show(plot);
  plot.container.setPlotData(tableOfFloats({"x", "y", "error", "more"}));
  table = nullptr;
  paint(plot);
  plot.container.redraw();
  paint(plot);
  EXPECT_EQ(error->GetReferenceCount(), 1) << "only the test holds it";
}

TEST_F(ErrorColumnLifeTest, TheColumnCanLeaveTheTableBeforeThePlotIsPainted)
{
  PlotScene plot;
  show(plot);
  table->RemoveColumn(2);
  error = nullptr;
  paint(plot);
  plot.container.redraw();
  paint(plot);
  EXPECT_EQ(vtkPlotErrorPoints::SafeDownCast(plot.chart()->GetPlot(0))->GetErrorArrayName(), "more");
}

TEST_F(ErrorColumnLifeTest, AChartCanOutliveItsContainer)
{
  int const before = error->GetReferenceCount();
  vtkSmartPointer<vtkChart> chart;
  {
    PlotScene plot;
    show(plot);
    chart = plot.chart();
  }
  EXPECT_EQ(chart->GetNumberOfPlots(), 1);
  chart->GetPlot(0)->Update();
  RecordingPainter recorder;
  EXPECT_TRUE(chart->GetPlot(0)->Paint(recorder.painter));
  EXPECT_EQ(recorder.polyLines().size(), 2u);
  chart = nullptr;
  EXPECT_EQ(error->GetReferenceCount(), before);
}

TEST_F(ErrorColumnLifeTest, AContainerCanOutliveItsChart)
{
  int const before = error->GetReferenceCount();
  PlotScene plot;
  show(plot);
  plot.container.setPlotStyle(scatterPlot3D);
  plot.show();
  EXPECT_EQ(plot.container.chartXY, nullptr);
  EXPECT_EQ(error->GetReferenceCount(), before);
  plot.container.setPlotStyle(scatterPlotWithErrorBars);
  plot.show();
  paint(plot);
  EXPECT_EQ(error->GetReferenceCount(), before);
}

} // namespace
} // namespace runsieve::test
