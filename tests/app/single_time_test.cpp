#include "support/PlotParts.h"

#include "app/view/ScanPlot.h"
#include "support/ScanBuilder.h"

#include <gtest/gtest.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkContextScene.h>
#include <vtkNew.h>

namespace runsieve::app {
namespace {

struct SingleTime : testing::Test
{
  vtkNew<vtkContextScene> scene;
  PlotContainer plot{nullptr};

  void show(int times, double first = 0.0)
  {
    test::ScanShape shape;
    shape.runs = 5;
    shape.times = times;
    const auto record = test::makeScan(shape);
    for (std::size_t c = 0; c < record->columnNames.size(); ++c)
      if (record->columnNames[c].second == "Time [s]")
        for (std::size_t row = 0; row < record->rows(); ++row) record->columnData[c][row] += first;
    plot.setScene(scene);
    showScan(plot, record, {});
    polish(plot);
  }
  [[nodiscard]] vtkAxis* bottom() { return plot.chartXY->GetAxis(vtkAxis::BOTTOM); }

  void TearDown() override { plot.setScene(nullptr); }
};

TEST_F(SingleTime, IsShownAsPointsWithRoomAroundThem)
{
  show(1);
  EXPECT_FALSE(plot.metaData->getPlotLine());
  EXPECT_EQ(bottom()->GetUnscaledMinimum(), -1.0);
  EXPECT_EQ(bottom()->GetUnscaledMaximum(), 1.0);
}

TEST_F(SingleTime, FarFromZeroHasHalfOfItselfAround)
{
  show(1, 100.0);
  EXPECT_NEAR(bottom()->GetUnscaledMinimum(), 50.0, 1.0);
  EXPECT_NEAR(bottom()->GetUnscaledMaximum(), 150.0, 1.0);
}

TEST_F(SingleTime, SeveralTimesAreLines)
{
  show(3);
  EXPECT_TRUE(plot.metaData->getPlotLine());
  EXPECT_EQ(bottom()->GetUnscaledMinimum(), 0.0);
}

} // namespace
} // namespace runsieve::app
