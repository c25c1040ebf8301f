#include "support/PlotScene.h"

#include <gmock/gmock.h>
#include <vtkChart.h>

#include <memory>
#include <vector>

using testing::Each;
using testing::Le;

namespace runsieve::test {
namespace {

/// Distributions whose numbers the axes of VTK do not bear: each must be shown, and a redraw after it.
struct ExtremeDistributionTest : testing::Test, PlotScene
{
  void show(std::unique_ptr<Distribution> distribution)
  {
    container.setDistribution(distribution.get());
    RecordingPainter recorder;
    PlotScene::show();
    paint(recorder);
    container.redraw();
    paint(recorder);
  }

  std::vector<double> column(char const* name) { return numbers(container.plotData, name); }
};

TEST_F(ExtremeDistributionTest, InfiniteDensitiesAtTheEndsAreDrawnAsHighAsJustInside)
{
  show(betaDistribution(0.5, 0.5));
  EXPECT_THAT(column("pdf"), Each(Le(10.0)));
  EXPECT_GT(column("pdf").front(), column("pdf")[1]);
  EXPECT_GT(column("pdf").back(), column("pdf")[48]);
  show(betaDistribution(0.1, 0.1));
  show(gammaDistribution(0.1, 2.0));
  show(weibullDistribution(0.2, 1.0));
}

TEST_F(ExtremeDistributionTest, VeryWideRangesAreNoTrouble)
{
  show(uniformDistribution(0.0, 1e100));
  show(uniformDistribution(-1e100, 0.0));
  show(uniformDistribution(-1e300, 1e300));
  show(logNormalDistribution(0.0, 50.0));
  show(logUniformDistribution(1e-300, 1e300));
}

TEST_F(ExtremeDistributionTest, VeryNarrowRangesAreNoTrouble)
{
  show(uniformDistribution(1.0, 1.0 + 1e-12));
  show(normalDistribution(0.0, 1e-300));
  show(normalDistribution(1e20, 1e-5));
}

} // namespace
} // namespace runsieve::test
