#include "RankedPlot.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <functional>

using testing::AllOf;
using testing::Each;
using testing::SizeIs;

namespace runsieve::test {
namespace {

// Reference values, SciPy 1.10.1 and NumPy 1.24.2:
//   import numpy as np; from scipy.stats import gaussian_kde
//   def density(values, lower, upper):
//       x = np.sort(np.asarray(values, float)); M = len(x); upper = max(upper, x[-1])
//       width = 1.1*x[-1] - lower if np.isinf(upper) else upper - lower
//       copies = 2 if np.isinf(upper) else 3
//       step = max(1, M//400); n = M//step
//       t = (x - lower)/width; u = t[::step][:n]
//       parts = [(1 - u)[::-1], 1 + u] + ([(3 - u)[::-1]] if copies == 3 else [])
//       source = np.concatenate(parts)/copies; s = source[n:2*n]
//       target = np.arange(200)/199/copies + 1/copies
//       mean = ((t + 1)/copies).mean(); spread = (s[3*n//4] - s[n//4])/1.34
//       h = 1.06*min(spread, np.sqrt(((s - mean)**2).mean()))*n**-0.2
//       h = max(h, 0.2*(target[1] - target[0]))
//       return gaussian_kde(source, h/source.std(ddof=1))(target)/width
//   [density(values, lower, upper)[j] for j in [0, 50, 99, 150, 199]]
using Five = std::array<double, 5>;
constexpr std::array<int, 5> points{0, 50, 99, 150, 199};

const Sample eleven{0.5, 1.1, 1.7, 2.4, 3.0, 3.3, 4.1, 4.8, 6.0, 7.2, 9.0};

/// [(i + 0.3*(i % 2))**1.5 for i in range(count)]: the odd positions are no neighbours' means.
Sample powers(int count)
{
  Sample values;
  for (int i = 0; i < count; ++i) values.push_back(std::pow(i + 0.3 * (i % 2), 1.5));
  return values;
}

/// Rows 0, 1, 2, ... at which the condition holds.
std::vector<int> rowsOf(Sample const& values, std::function<bool(double)> const& condition)
{
  std::vector<int> rows;
  for (std::size_t row = 0; row < values.size(); ++row)
    if (condition(values[row])) rows.push_back(static_cast<int>(row));
  return rows;
}

struct RankedDensityTest : RankedPlot
{
  /// Up to what the evaluation of the kernel may lose, relative to the greatest of the reference values.
  void expectDensity(Five const& expected)
  {
    const Sample found = density();
    ASSERT_THAT(found, SizeIs(200));
    const double greatest = *std::max_element(expected.begin(), expected.end());
    for (std::size_t i = 0; i < points.size(); ++i)
      EXPECT_NEAR(found[points[i]], expected[i], 1e-9 * greatest) << "grid point " << points[i];
  }

  void expectLocations(double lower, double width)
  {
    const Sample found = location();
    ASSERT_THAT(found, SizeIs(200));
    for (int j = 0; j < 200; ++j)
      ASSERT_NEAR(found[j], lower + width * j / 199.0, 1e-12 * std::fabs(width) + 1e-13) << j;
  }

  void expectSpikes(std::vector<int> const& rows)
  {
    EXPECT_EQ(rowsOf(density(), [](double d) { return d == 1.0; }), rows);
    EXPECT_EQ(rowsOf(density(), [](double d) { return d == 0.0; }).size(), 200 - rows.size());
  }

  double mass()
  {
    double sum = 0.0;
    const Sample d = density(), x = location();
    for (int j = 1; j < 200; ++j) sum += 0.5 * (d[j] + d[j - 1]) * (x[j] - x[j - 1]);
    return sum;
  }
};

TEST_F(RankedDensityTest, BothBordersMirrorTheSampleSoThatNoMassIsLost)
{
  generateOne(eleven, 0, 10);
  expectDensity({0.13540901772322386, 0.14007942024666187, 0.10459599191683902, 0.06280461545787132,
                 0.049750066233024505});
  expectLocations(0.0, 10.0);
  EXPECT_NEAR(mass(), 1.0, 1e-4);
}

TEST_F(RankedDensityTest, AnOpenUpperBoundMirrorsAtTheLowerBorderOnly)
{
  generateOne(eleven, 0, infinity);
  expectDensity({0.13540901771789027, 0.14016158097385484, 0.10559477242044008, 0.06126955113290963,
                 0.026301288801791802});
  expectLocations(0.0, 1.1 * 9.0);
}

TEST_F(RankedDensityTest, WithoutBoundsTheSampleIsItsOwnRange)
{
  setParameters({eleven}, {});
  generateAll();
  expectDensity({0.17154906986614957, 0.15307081832527175, 0.11151873464608092, 0.08079777219283155,
                 0.07906351749976503});
  expectLocations(0.5, 8.5);
}

TEST_F(RankedDensityTest, AnUpperBoundBelowTheLargestValueFollowsTheData)
{
  generateOne(eleven, 0, 8);
  expectDensity({0.13540902576778907, 0.1406414383180826, 0.11528217449218202, 0.08149025011503495,
                 0.07906347275500741});
  expectLocations(0.0, 9.0);
}

TEST_F(RankedDensityTest, ALowerBoundAboveTheSmallestValueStays)
{
  generateOne(eleven, 2, 10);
  expectDensity({0.25412599437379624, 0.19018105991938702, 0.09884719275481602, 0.05885335932715935,
                 0.049762365963687175});
  expectLocations(2.0, 8.0);
}

TEST_F(RankedDensityTest, UpTo799ValuesAllEnter)
{
  generateOne(powers(799), 0, std::pow(799, 1.5));
  expectDensity({9.11214023071299e-05, 4.845599675175513e-05, 3.750069361368907e-05, 3.252367835099001e-05,
                 3.003955458972165e-05});
}

TEST_F(RankedDensityTest, Of800ValuesEverySecondEnters)
{
  generateOne(powers(800), 0, std::pow(800, 1.5));
  expectDensity({8.71601307227307e-05, 4.9198657687991333e-05, 3.751593036542464e-05, 3.2480097143215375e-05,
                 2.982205790468587e-05});
}

TEST_F(RankedDensityTest, Of1000ValuesThoseAtEvenPositionsEnter)
{
  generateOne(powers(1000), 0, std::pow(1000, 1.5));
  expectDensity({6.323675916641807e-05, 3.4987407648525825e-05, 2.682225423245101e-05, 2.3237250224530286e-05,
                 2.1365069776568644e-05});
}

TEST_F(RankedDensityTest, Of1199ValuesTheLastOneOfAnOddCountStaysOut)
{
  generateOne(powers(1199), 0, std::pow(1199, 1.5));
  expectDensity({4.877679629155842e-05, 2.6546702078595357e-05, 2.043423255926365e-05, 1.7707549290998833e-05,
                 1.6116555212960066e-05});
}

TEST_F(RankedDensityTest, AClusterIsSmoothedAtLeastOverAFifthOfAGridStep)
{
  Sample cluster;
  for (int i = 0; i < 20; ++i) cluster.push_back(0.5 + 1e-5 * i);
  generateOne(cluster, 0, 1);
  expectDensity({0.0, 0.0, 13.838021835970908, 0.0, 0.0});
}

TEST_F(RankedDensityTest, TenDistinctValuesShowAsSpikesElevenAsADensity)
{
  setParameters({{1, 2}}, {{0, 199}});
  Sample values{0, 20, 40, 60, 80, 100, 120, 140, 160, 180, 180};
  generate(parameterTable({values}), 3);
  EXPECT_EQ(rowsOf(density("k1", 3), [](double d) { return d == 1.0; }),
            (std::vector<int>{0, 20, 40, 60, 80, 100, 120, 140, 160, 180}));
  values.push_back(190);
  generate(parameterTable({values}), 3);
  EXPECT_THAT(density("k1", 3), AllOf(SizeIs(200), Each(testing::Lt(0.1)), Each(testing::Gt(0.0))));
}

TEST_F(RankedDensityTest, SeparatedValuesOfASmallSampleAreSpikesAtTheNearestGridPoint)
{
  generateOne({50.2, 3.0, 10.4}, 0, 199);
  expectSpikes({3, 10, 50});
  expectLocations(0.0, 199.0);
}

TEST_F(RankedDensityTest, AValueAtTheSpotOfAnotherBlocksTheOnesBehindIt)
{
  // each grid point tests one value only and the next value waits for a grid point further right
  generateOne({3.0, 3.0, 50.0}, 0, 199);
  expectSpikes({3});
  generateOne({3.0, 3.2, 50.0}, 0, 199);
  expectSpikes({3});
}

TEST_F(RankedDensityTest, AValueBelowTheFirstGridPointBlocksAllOthers)
{
  generateOne({-5.0, 20.0, 30.0}, 0, 199);
  expectSpikes({});
}

TEST_F(RankedDensityTest, AConstantParameterIsASpikeInTheMiddleOfAWidenedRange)
{
  generateOne(Sample(30, 2.0), 2, 2);
  expectLocations(1.9, 2 * 1.05 - 2 * 0.95);
  // the value lies exactly between the two middle points: rounding tells which of them see it
  for (int row : rowsOf(density(), [](double d) { return d != 0.0; })) {
    EXPECT_TRUE(row == 99 || row == 100) << row;
    EXPECT_EQ(density()[row], 1.0);
  }
}

TEST_F(RankedDensityTest, AConstantZeroWithoutBoundsIsOneEverywhere)
{
  setParameters({Sample(12, 0.0)}, {});
  generateAll();
  EXPECT_THAT(location(), AllOf(SizeIs(200), Each(0.0)));
  EXPECT_THAT(density(), AllOf(SizeIs(200), Each(1.0)));
}

TEST_F(RankedDensityTest, ANegativeConstantHasABackwardRangeWithoutASpike)
{
  setParameters({Sample(12, -2.0)}, {});
  generateAll();
  expectLocations(-1.9, -0.2);
  expectSpikes({});
}

TEST_F(RankedDensityTest, TheOrderOfTheRunsDoesNotMatter)
{
  generateOne(Sample(eleven.rbegin(), eleven.rend()), 0, 10);
  const Sample reversed = density();
  generateOne(eleven, 0, 10);
  EXPECT_EQ(density(), reversed);
}

TEST_F(RankedDensityTest, EachParameterHasItsOwnRangeAndBandwidth)
{
  Sample hundredfold;
  for (double value : eleven) hundredfold.push_back(100 * value);
  setParameters({eleven, hundredfold}, {{0, 10}, {0, 1000}});
  generateAll();
  const Sample narrow = density("k1"), wide = density("k2");
  for (int j = 0; j < 200; ++j) ASSERT_NEAR(100 * wide[j], narrow[j], 1e-12) << j;
}

TEST_F(RankedDensityTest, ASideTableFollowsTheSameRulesOverItsDistinctValues)
{
  generateOne(eleven, 0, 10);
  const Sample all = density();
  Sample threeTimes;
  for (double value : eleven) threeTimes.insert(threeTimes.end(), 3, value);
  generate(parameterTable({threeTimes}), 3);
  EXPECT_EQ(density("k1", 3), all);
}

} // namespace
} // namespace runsieve::test
