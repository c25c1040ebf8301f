#include "app/view/ScanPlot.h"
#include "support/PlotParts.h"
#include "support/ScanBuilder.h"

#include <gtest/gtest.h>

namespace runsieve::app {
namespace {

/// The opacity, 0 to 255, that the lines of so many runs have.
int opacityOf(int runs)
{
  test::ScanShape shape;
  shape.runs = runs;
  shape.times = 2;
  PlotContainer plot(nullptr);
  testing::internal::CaptureStdout(); // the plot says that it has no scene
  showScan(plot, test::makeScan(shape), {});
  testing::internal::GetCapturedStdout();
  return plot.metaData->alpha;
}

TEST(RunOpacity, FallsWithTheRootOfTheRuns)
{
  EXPECT_EQ(opacityOf(100), 140);
  EXPECT_EQ(opacityOf(400), 70);
  EXPECT_EQ(opacityOf(2500), 28);
}

TEST(RunOpacity, KeepsSingleRunsTranslucentAndTenThousandVisible)
{
  EXPECT_EQ(opacityOf(1), 170);
  EXPECT_EQ(opacityOf(10000), 14);
  EXPECT_EQ(opacityOf(40000), 14);
}

} // namespace
} // namespace runsieve::app
