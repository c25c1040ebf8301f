#include "app/view/AxisTicks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace runsieve::test {
namespace {

using app::AxisScale;
using app::AxisTick;
using testing::ElementsAre;

std::vector<std::string> labelsOf(std::vector<double> const& values, std::size_t most = 6)
{
  std::vector<std::string> labels;
  for (AxisTick const& tick : AxisScale(values).ticks(most)) labels.push_back(tick.label);
  return labels;
}

TEST(AxisScale, ValuesHaveALittleRoomAtBothEnds)
{
  const AxisScale scale({3.0, 8.0, 5.0});
  EXPECT_FALSE(scale.isLogarithmic());
  EXPECT_NEAR(scale.place(3.0), 0.04 / 1.08, 1e-12);
  EXPECT_NEAR(scale.place(8.0), 1.04 / 1.08, 1e-12);
  EXPECT_NEAR(scale.place(5.5), 0.5, 1e-12);
}

TEST(AxisScale, PositiveValuesOfMoreThanTwoDecadesAreLogarithmic)
{
  EXPECT_TRUE(AxisScale({0.01, 1.01}).isLogarithmic());
  EXPECT_FALSE(AxisScale({0.01, 1.0}).isLogarithmic());
  EXPECT_FALSE(AxisScale({0.0, 1000.0}).isLogarithmic());
  EXPECT_FALSE(AxisScale({-1.0, 1000.0}).isLogarithmic());
  EXPECT_NEAR(AxisScale({0.001, 1000.0}).place(1.0), 0.5, 1e-12);
}

TEST(AxisScale, NumbersAreRound)
{
  EXPECT_THAT(labelsOf({0.0, 1.0}), ElementsAre("0", "0.2", "0.4", "0.6", "0.8", "1"));
  EXPECT_THAT(labelsOf({0.0, 1.0}, 2), ElementsAre("0", "1"));
  EXPECT_THAT(labelsOf({10.0, 510.0}), ElementsAre("0", "100", "200", "300", "400", "500"));
  EXPECT_THAT(labelsOf({-1e5, 1e5}, 5), ElementsAre("-100000", "-50000", "0", "50000", "100000"));
  EXPECT_THAT(labelsOf({-0.3, 0.4}, 4), ElementsAre("-0.2", "0", "0.2", "0.4"));
  EXPECT_THAT(labelsOf({1e-6, 2e-6}, 3), ElementsAre("1e-6", "1.5e-6", "2e-6"));
}

TEST(AxisScale, NumbersOfSmallDifferencesHaveTheDigitsThatTellThemApart)
{
  EXPECT_THAT(labelsOf({1000000.0, 1000000.5}, 3), ElementsAre("1000000", "1000000.2", "1000000.4"));
}

TEST(AxisScale, DecadesAreLeftOutWhereThereAreMany)
{
  EXPECT_THAT(labelsOf({0.001, 100.0}), ElementsAre("0.001", "0.01", "0.1", "1", "10", "100"));
  EXPECT_THAT(labelsOf({0.001, 100.0}, 3), ElementsAre("0.01", "1", "100"));
  EXPECT_THAT(labelsOf({1e-300, 1e300}, 2), ElementsAre("1e-324", "1", "1e324"));
  EXPECT_THAT(labelsOf({12.0, 1.1e5}, 2), ElementsAre("100", "10000"));
}

TEST(AxisScale, TakesAnyValues)
{
  constexpr double infinity = std::numeric_limits<double>::infinity();
  constexpr double largest = std::numeric_limits<double>::max();
  constexpr double least = std::numeric_limits<double>::denorm_min();
  const std::vector<std::vector<double>> samples = {{},
                                                    {std::nan("")},
                                                    {5.0, 5.0},
                                                    {0.0},
                                                    {infinity, -infinity, 1.0, 2.0},
                                                    {largest, -largest},
                                                    {least, -least},
                                                    {least, 3 * least},
                                                    {largest, least},
                                                    {largest, std::nextafter(largest, 0.0)},
                                                    {1.0, std::nextafter(1.0, 2.0)},
                                                    {1e16, 1e16 + 2.0}};
  for (std::vector<double> const& values : samples) {
    const AxisScale scale(values);
    for (double const value : values) {
      if (!std::isfinite(value)) continue;
      EXPECT_GE(scale.place(value), 0.0) << value;
      EXPECT_LE(scale.place(value), 1.0) << value;
    }
    for (std::size_t const most : {2, 6}) {
      const std::vector<AxisTick> ticks = scale.ticks(most);
      EXPECT_LE(ticks.size(), most + 1);
      for (std::size_t i = 0; i < ticks.size(); ++i) {
        EXPECT_GE(ticks[i].place, -1e-9) << ticks[i].label;
        EXPECT_LE(ticks[i].place, 1.0 + 1e-9) << ticks[i].label;
        if (i > 0) {
          EXPECT_LT(ticks[i - 1].place, ticks[i].place) << ticks[i].label;
        }
      }
    }
  }
}

} // namespace
} // namespace runsieve::test
