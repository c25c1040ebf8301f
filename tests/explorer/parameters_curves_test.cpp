#include "ParametersScene.h"

#include <algorithm>
#include <cmath>

namespace runsieve::test {
namespace {

struct ParameterCurves : ParametersScene
{
  /// Height of the lowest and the highest pixel of the passing runs' curve, from 0 at the bottom of a plot to
  /// 1, in a column of pixels; nothing if there is none.
  std::optional<std::pair<double, double>> curveAt(std::size_t parameter, double x)
  {
    const QImage image = shot();
    const QRectF plot = grid().plot(parameter);
    const int column = qRound(plot.left() + x * plot.width());
    std::optional<std::pair<double, double>> found;
    for (int y = qRound(plot.bottom()); y >= qRound(plot.top()); --y) {
      const QImage pixel = image.copy(column, y, 1, 1);
      if (passingPixels(pixel) == 0) continue;
      const double height = (plot.bottom() - y) / plot.height();
      if (!found) found = {height, height};
      found->second = height;
    }
    return found;
  }
};

TEST_F(ParameterCurves, StandWhereTheSharesOfTheRunsAre)
{
  addGate(gateOnA(0.3, 0.9));
  ASSERT_TRUE(settle());
  ASSERT_TRUE(waitFor([this] { return passingPixels() > 0; }));
  document.selectGate(std::nullopt);
  std::vector<double> passing;
  for (std::size_t run = 0; run < 40; ++run)
    if (scattered(0, run) >= 0.3 && scattered(0, run) <= 0.9) passing.push_back(scattered(1, run));
  // The axis of k1 reaches from its smallest to its largest value, with some room.
  double low = 1.0;
  double high = 0.0;
  for (std::size_t run = 0; run < 40; ++run) {
    low = std::min(low, scattered(1, run));
    high = std::max(high, scattered(1, run));
  }
  for (double const x : {0.3, 0.5, 0.7, 0.85}) {
    const auto curve = curveAt(1, x);
    ASSERT_TRUE(curve) << x;
    auto const shareUpTo = [&](double value) {
      return static_cast<double>(
                 std::count_if(passing.begin(), passing.end(), [&](double v) { return v <= value; })) /
             static_cast<double>(passing.size());
    };
    const double room = 0.08 * (high - low);
    const double least = shareUpTo(low + x * (high - low) - room);
    const double most = shareUpTo(low + x * (high - low) + room);
    EXPECT_LE(curve->first, most + 0.04) << x;
    EXPECT_GE(curve->second, least - 0.04) << x;
  }
}

TEST_F(ParameterCurves, OfDensitiesAreHighestWhereMostRunsAre)
{
  setLook(app::ParameterLook::Densities);
  Gate gate = gateOnA(0.6, 0.9);
  addGate(gate);
  ASSERT_TRUE(settle());
  ASSERT_TRUE(waitFor([this] { return passingPixels() > 0; }));
  // k0 of the passing runs lies between 0.6 and 0.9.
  const auto inside = curveAt(0, 0.75);
  ASSERT_TRUE(inside);
  EXPECT_GT(inside->second, 0.4);
  const auto outside = curveAt(0, 0.2);
  EXPECT_LT(outside ? outside->second : 0.0, 0.1);
}

} // namespace
} // namespace runsieve::test
