#include "support/StyleScene.h"

#include <vtkNew.h>
#include <vtkPlotLine.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace runsieve::test {
namespace {

/// The lines of grouped runs read a table of one column per run.
struct ClusterLinesTest : testing::Test
{
  StyleScene plot;

  void cluster(int runs, int times)
  {
    ScanShape shape;
    shape.runs = runs;
    shape.times = times;
    plot.load(shape);
    plot.chart()->ClearPlots();
    testing::internal::CaptureStdout();
    plot.container.clusterTimeSeries(2, 0);
    testing::internal::GetCapturedStdout();
    plot.show();
  }

  /// The heights of each line, as it is painted now.
  std::vector<std::vector<float>> heights()
  {
    RecordingPainter recorder;
    plot.paint(recorder);
    EXPECT_EQ(recorder.errors(), 0);
    std::vector<std::vector<float>> lines;
    for (Stroke const& line : recorder.polyLines()) {
      if (line.width != 4.0f) continue; // axes and grid
      lines.emplace_back();
      for (Point const& point : line.points) lines.back().push_back(point.second);
    }
    return lines;
  }
};

TEST_F(ClusterLinesTest, EachRunHasALineOfTheWholeTable)
{
  cluster(3, 3);
  ASSERT_EQ(plot.chart()->GetNumberOfPlots(), 3);
  EXPECT_EQ(heights(), (std::vector<std::vector<float>>{{0, 1, 2}, {10, 11, 12}, {20, 21, 22}}));
  for (int run = 0; run < 3; ++run) {
    EXPECT_EQ(plot.chart()->GetPlot(run)->GetInput(), plot.container.clusterRunTable.GetPointer());
    EXPECT_TRUE(plot.chart()->GetPlot(run)->IsA("vtkPlotLine"));
    EXPECT_EQ(drawnColumn(plot.chart()->GetPlot(run), 0), "Time");
  }
}

/// As of a plot of VTK, which has points: of numbers that are not finite, too.
TEST_F(ClusterLinesTest, BoundsAreThoseOfAPlotOfTheSameColumns)
{
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (std::vector<double> const& values : std::vector<std::vector<double>>{{3, -1, 7},
                                                                            {3, 9, 7},
                                                                            {0.1, 0.2, 0.3},
                                                                            {5, nan, 2},
                                                                            {nan, 5, 2},
                                                                            {5, infinity, 2},
                                                                            {5, 4, -infinity}}) {
    cluster(3, 3);
    vtkTable* table = plot.container.clusterRunTable;
    table->AddColumn(makeColumn(table->GetColumnName(1), values));
    table->Modified();
    vtkPlot* line = plot.chart()->GetPlot(1);
    vtkNew<vtkPlotLine> plain;
    plain->SetXAxis(line->GetXAxis());
    plain->SetYAxis(line->GetYAxis());
    plain->SetInputData(table, "Time", table->GetColumnName(1));
    plain->Update();
    line->Update();
    double wanted[4];
    double found[4];
    plain->GetBounds(wanted);
    line->GetBounds(found);
    EXPECT_THAT(found, testing::ElementsAreArray(wanted)) << values[1];
    plain->GetUnscaledInputBounds(wanted);
    line->GetUnscaledInputBounds(found);
    EXPECT_THAT(found, testing::ElementsAreArray(wanted)) << values[1];
  }
}

TEST_F(ClusterLinesTest, AColumnThatAHostPutsInPlaceOfAnotherIsDrawn)
{
  cluster(3, 3);
  heights();
  vtkTable* table = plot.container.clusterRunTable;
  table->AddColumn(makeColumn(table->GetColumnName(1), std::vector<double>{5, 6, 7}));
  table->Modified(); // plots of VTK go by that
  EXPECT_EQ(heights()[1], (std::vector<float>{5, 6, 7}));
}

TEST_F(ClusterLinesTest, ALineCanBeGivenOtherDataAsAnyPlot)
{
  cluster(3, 3);
  auto const other = makeTable({{"x", {0, 1, 2}}, {"y", {7, 8, 9}}});
  plot.chart()->GetPlot(2)->SetInputData(other, "x", "y");
  EXPECT_EQ(plot.chart()->GetPlot(2)->GetInput(), other.GetPointer());
  EXPECT_EQ(heights()[2], (std::vector<float>{7, 8, 9}));
}

TEST_F(ClusterLinesTest, ALineCanBeGivenAnotherColumnOfItsTable)
{
  cluster(3, 3);
  plot.chart()->GetPlot(2)->SetInputArray(1, plot.container.clusterRunTable->GetColumnName(0));
  EXPECT_EQ(plot.chart()->GetPlot(2)->GetInput(), plot.container.clusterRunTable.GetPointer());
  EXPECT_EQ(heights()[2], (std::vector<float>{0, 1, 2}));
}

TEST_F(ClusterLinesTest, ThousandsOfRunsAreLinesWhereCallsAreRecorded)
{
  cluster(1000, 3);
  EXPECT_EQ(heights().size(), 1000u);
}

TEST_F(ClusterLinesTest, APointOfARunIsFoundAtItsPlace)
{
  cluster(60, 3);
  vtkVector2f place;
  EXPECT_EQ(plot.chart()->GetPlot(5)->GetNearestPoint({1.0F, 51.0F}, {0.1F, 0.1F}, &place, nullptr), 1);
  EXPECT_EQ(place, vtkVector2f(1.0F, 51.0F));
}

TEST_F(ClusterLinesTest, RunsOfOneTimePointDrawNothingAndSayNothing)
{
  cluster(3, 1);
  EXPECT_TRUE(heights().empty());
}

} // namespace
} // namespace runsieve::test
