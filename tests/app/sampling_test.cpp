#include "app/simulate/Sampling.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <stdexcept>

namespace runsieve::test {
namespace {

using app::Sampling;
using app::unitPoints;

// How many cells of one dimension, cut into as many as there are points, hold a point.
std::size_t filledStrata(std::vector<double> const& points, std::size_t dimensions, std::size_t dimension)
{
  std::size_t const count = points.size() / dimensions;
  std::set<std::size_t> strata;
  for (std::size_t i = dimension; i < points.size(); i += dimensions)
    strata.insert(static_cast<std::size_t>(points[i] * static_cast<double>(count)));
  return strata.size();
}

TEST(Sampling, ALatinHypercubeHasOnePointInEachStratum)
{
  auto points = unitPoints(Sampling::LatinHypercube, 1000, 5, 42);
  ASSERT_EQ(points.size(), 5000u);
  for (std::size_t d = 0; d < 5; ++d) EXPECT_EQ(filledStrata(points, 5, d), 1000u);
}

TEST(Sampling, APowerOfTwoOfSobolPointsHasOneInEachStratum)
{
  auto points = unitPoints(Sampling::Sobol, 1024, 20, 42);
  for (std::size_t d = 0; d < 20; ++d) EXPECT_EQ(filledStrata(points, 20, d), 1024u) << d;
}

// The property that sets the sequence apart: 16 x 16 cells of two dimensions, one point of 256 in each.
TEST(Sampling, SobolPointsFillAPlaneEvenly)
{
  auto points = unitPoints(Sampling::Sobol, 256, 2, 7);
  std::set<std::pair<int, int>> cells;
  for (std::size_t i = 0; i < 512; i += 2)
    cells.emplace(static_cast<int>(points[i] * 16), static_cast<int>(points[i + 1] * 16));
  EXPECT_EQ(cells.size(), 256u);
}

TEST(Sampling, PointsLieInTheOpenCubeAndFollowTheSeed)
{
  for (auto sampling : {Sampling::LatinHypercube, Sampling::Sobol}) {
    auto points = unitPoints(sampling, 500, 3, 1);
    for (double x : points) EXPECT_TRUE(x > 0.0 && x < 1.0) << x;
    EXPECT_EQ(points, unitPoints(sampling, 500, 3, 1));
    EXPECT_NE(points, unitPoints(sampling, 500, 3, 2));
  }
}

TEST(Sampling, ColumnsOfAHypercubeAreNotCorrelated)
{
  constexpr std::size_t count = 4000;
  auto points = unitPoints(Sampling::LatinHypercube, count, 2, 9);
  double product = 0.0;
  for (std::size_t i = 0; i < count; ++i) product += (points[2 * i] - 0.5) * (points[2 * i + 1] - 0.5);
  double const correlation = product / count * 12.0;
  EXPECT_LT(std::abs(correlation), 4.0 / std::sqrt(double(count)));
}

TEST(Sampling, EdgeSizes)
{
  EXPECT_TRUE(unitPoints(Sampling::Sobol, 10, 0, 1).empty());
  EXPECT_EQ(unitPoints(Sampling::LatinHypercube, 1, 3, 1).size(), 3u);
  EXPECT_THROW((void)unitPoints(Sampling::Sobol, 1, 100000, 1), std::invalid_argument);
}

} // namespace
} // namespace runsieve::test
