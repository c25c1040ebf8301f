#include "support/PlotScene.h"

#include <gmock/gmock.h>
#include <vtkChart.h>
#include <vtkPlot.h>

#include <limits>
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

/// A density that is high, or endless, in the middle of its range.
struct Spike : Distribution
{
  explicit Spike(double itsHeight) : height(itsHeight) {}

  int getType() override { return uniform; }
  double getPdf(double x) override { return x == 25.0 ? height : 1.0; }
  std::pair<double, double> getRange(int) override { return {0.0, 49.0}; }

  double height;
};

TEST_F(ExtremeDistributionTest, InfiniteDensitiesAtTheEndsAreDrawnAsHighAsJustInside)
{
  const auto beta = betaDistribution(0.5, 0.5);
  container.setDistribution(beta.get());
  const std::vector<double> drawn = numbers(container.chartXY->GetPlot(0)->GetInput(), "pdf");
  EXPECT_THAT(drawn, Each(Le(10.0)));
  EXPECT_GT(drawn.front(), drawn[1]);
  EXPECT_GT(drawn.back(), drawn[48]);
  show(betaDistribution(0.5, 0.5));
  show(betaDistribution(0.1, 0.1));
  show(gammaDistribution(0.1, 2.0));
  show(weibullDistribution(0.2, 1.0));
}

TEST_F(ExtremeDistributionTest, TheTableHoldsDensitiesAsTheyAre)
{
  constexpr double infinite = std::numeric_limits<double>::infinity();
  for (double height : {2.0, 1e35, infinite}) {
    Spike spike(height);
    container.setDistribution(&spike);
    EXPECT_EQ(column("pdf")[25], static_cast<float>(height));
    EXPECT_EQ(column("pdf")[24], 1.0);
    vtkTable* drawn = container.chartXY->GetPlot(0)->GetInput();
    EXPECT_EQ(drawn == container.plotData.GetPointer(), height == 2.0)
        << "only what is altered needs a table";
    EXPECT_LE(numbers(drawn, "pdf")[25], 1.01e30);
    RecordingPainter recorder;
    PlotScene::show();
    paint(recorder);
    EXPECT_FALSE(recorder.ofKind(Stroke::Polygon).empty());
  }
}

TEST_F(ExtremeDistributionTest, ARedrawAfterDensitiesBeyondTheAxesEnds)
{
  show(normalDistribution(0.0, 1e-35));
  show(normalDistribution(0.0, 1e-300));
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
