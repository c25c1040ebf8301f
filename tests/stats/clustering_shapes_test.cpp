#include "support/KMeansReference.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>

namespace runsieve::test {
namespace {

enum Shape
{
  Rise,
  Decay,
  Oscillation
};

constexpr int times = 40;
constexpr int runsPerShape = 30;

double shapeAt(int shape, double t)
{
  if (shape == Rise) return 1 - std::exp(-4 * t);
  if (shape == Decay) return std::exp(-4 * t);
  return 0.5 + 0.5 * std::sin(6 * M_PI * t);
}

/// Runs with a height, an amplitude and noise of their own.
Curves noisyRuns(std::vector<int> const& shapes, std::mt19937& random)
{
  std::normal_distribution<double> noise(0, 0.15);
  std::uniform_real_distribution<double> height(-5, 5);
  std::lognormal_distribution<double> amplitude(0, 1);
  Curves runs;
  for (int shape : shapes) {
    double const offset = height(random);
    double const scale = amplitude(random);
    Curve run;
    for (int t = 0; t < times; ++t)
      run.push_back(offset + scale * (shapeAt(shape, t / (times - 1.0)) + noise(random)));
    runs.push_back(run);
  }
  return runs;
}

double pairs(double n)
{
  return n * (n - 1) / 2;
}

/// Agreement of two ways to group the same things: 1 the same groups, 0 as by chance (L. Hubert, P. Arabie,
/// J. Classification 2 (1985) 193-218).
double adjustedRandIndex(std::vector<int> const& a, std::vector<int> const& b)
{
  std::map<std::pair<int, int>, int> both;
  std::map<int, int> ofA, ofB;
  for (std::size_t i = 0; i < a.size(); ++i) {
    ++both[{a[i], b[i]}];
    ++ofA[a[i]];
    ++ofB[b[i]];
  }
  auto sum = [](auto const& counts) {
    double total = 0;
    for (auto const& entry : counts) total += pairs(entry.second);
    return total;
  };
  double const chance = sum(ofA) * sum(ofB) / pairs(static_cast<double>(a.size()));
  return (sum(both) - chance) / ((sum(ofA) + sum(ofB)) / 2 - chance);
}

/// All runs in random order, but for the first three, which show the three shapes.
std::vector<int> shuffledShapes(std::mt19937& random)
{
  std::vector<int> shapes;
  for (int i = 0; i < 3 * runsPerShape; ++i) shapes.push_back(i % 3);
  std::shuffle(shapes.begin() + 3, shapes.end(), random);
  return shapes;
}

using ClusteringShapesTest = ClusterScene;

TEST(AdjustedRandIndexTest, HasKnownValues)
{
  EXPECT_DOUBLE_EQ(adjustedRandIndex({0, 0, 1, 1}, {5, 5, 2, 2}), 1);
  EXPECT_NEAR(adjustedRandIndex({0, 0, 1, 2}, {0, 0, 1, 1}), 4.0 / 7.0, 1e-15);
  EXPECT_NEAR(adjustedRandIndex({0, 0, 1, 1}, {0, 1, 0, 1}), -0.5, 1e-15);
}

TEST_F(ClusteringShapesTest, FindsRisingDecayingAndOscillatingRuns)
{
  for (unsigned seed = 1; seed <= 5; ++seed) {
    std::mt19937 random(seed);
    auto const shapes = shuffledShapes(random);
    load(noisyRuns(shapes, random));
    cluster(3);
    ASSERT_EQ(labels().size(), shapes.size());
    EXPECT_GE(adjustedRandIndex(labels(), shapes), 0.95) << "seed " << seed;
  }
}

TEST_F(ClusteringShapesTest, MeanCurvesShowTheShapes)
{
  std::mt19937 random(7);
  auto const shapes = shuffledShapes(random);
  load(noisyRuns(shapes, random));
  cluster(3);
  for (int shape = 0; shape < 3; ++shape) {
    Curve known;
    for (int t = 0; t < times; ++t) known.push_back(shapeAt(shape, t / (times - 1.0)));
    EXPECT_LT(pearsonDistance(known, column(container.decorationTable, labels()[shape])), 0.02) << shape;
  }
}

TEST_F(ClusteringShapesTest, TheMagnitudeTellsSlowFromFastOscillations)
{
  std::mt19937 random(9);
  std::normal_distribution<double> noise(0, 0.3);
  std::uniform_real_distribution<double> angle(0, 2 * M_PI);
  Curves runs;
  std::vector<int> shapes;
  for (int r = 0; r < 90; ++r) {
    shapes.push_back(r % 3);
    double const start = angle(random);
    Curve run;
    for (int t = 0; t < times; ++t)
      run.push_back(std::sin(start + 2 * M_PI * (2 + 4 * shapes.back()) * t / times) + noise(random));
    runs.push_back(run);
  }
  load(runs);
  cluster(3, 3);
  EXPECT_GE(adjustedRandIndex(labels(), shapes), 0.95);
}

} // namespace
} // namespace runsieve::test
