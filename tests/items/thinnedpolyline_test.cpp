#include <runsieve/items/ThinnedPolyline.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <utility>

using testing::IsEmpty;

namespace runsieve::test {
namespace {

using Points = std::vector<std::pair<float, float>>;

Points thinned(Points const& points, ColumnScale columns = {})
{
  std::vector<float> in;
  for (auto const& [x, y] : points) in.insert(in.end(), {x, y});
  std::vector<float> out = {7.0f};
  thinToColumns(in.data(), points.size(), columns, out);
  Points result;
  for (std::size_t i = 0; i + 1 < out.size(); i += 2) result.emplace_back(out[i], out[i + 1]);
  EXPECT_EQ(out.size() % 2, 0u);
  return result;
}

TEST(ThinnedPolyline, NothingStaysNothing)
{
  EXPECT_THAT(thinned({}), IsEmpty());
}

TEST(ThinnedPolyline, OnePointAColumnStays)
{
  const Points points = {{0.5f, 3}, {1.5f, 2}, {2.5f, 9}};
  EXPECT_EQ(thinned(points), points);
}

TEST(ThinnedPolyline, OfAColumnFirstLowestHighestAndLastStayInTheirOrder)
{
  EXPECT_EQ(thinned({{0.1f, 5}, {0.2f, 6}, {0.3f, 9}, {0.4f, 4}, {0.5f, 1}, {0.6f, 2}, {0.7f, 3}}),
            (Points{{0.1f, 5}, {0.3f, 9}, {0.5f, 1}, {0.7f, 3}}));
  EXPECT_EQ(thinned({{0.1f, 5}, {0.2f, 1}, {0.3f, 4}, {0.4f, 8}, {0.5f, 2}}),
            (Points{{0.1f, 5}, {0.2f, 1}, {0.4f, 8}, {0.5f, 2}}));
}

TEST(ThinnedPolyline, APointThatIsTwoOfThemStandsOnce)
{
  EXPECT_EQ(thinned({{0.1f, 1}, {0.2f, 2}, {0.3f, 3}}), (Points{{0.1f, 1}, {0.3f, 3}}));
  EXPECT_EQ(thinned({{0.1f, 2}, {0.2f, 2}, {0.3f, 2}}), (Points{{0.1f, 2}, {0.3f, 2}}));
}

TEST(ThinnedPolyline, ColumnsFollowScaleAndOffset)
{
  const Points points = {{0, 1}, {1, 2}, {2, 3}, {3, 4}};
  EXPECT_EQ(thinned(points, {0.5, 0.0}), points);
  EXPECT_EQ(thinned(points, {0.25, 0.0}), (Points{{0, 1}, {3, 4}}));
  EXPECT_EQ(thinned(points, {0.25, 0.25}), (Points{{0, 1}, {2, 3}, {3, 4}}));
  EXPECT_EQ(thinned(points, {-0.25, 0.0}), (Points{{0, 1}, {1, 2}, {3, 4}}));
}

TEST(ThinnedPolyline, ALineThatReturnsToAColumnKeepsBothVisits)
{
  EXPECT_EQ(thinned({{0.2f, 1}, {0.8f, 2}, {1.5f, 3}, {0.8f, 4}, {0.2f, 5}}),
            (Points{{0.2f, 1}, {0.8f, 2}, {1.5f, 3}, {0.8f, 4}, {0.2f, 5}}));
}

TEST(ThinnedPolyline, PointsThatAreNotFiniteStayAndPartTheColumn)
{
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float inf = std::numeric_limits<float>::infinity();
  Points const out =
      thinned({{0.1f, 1}, {0.2f, 2}, {0.3f, 3}, {0.4f, nan}, {0.5f, inf}, {0.6f, 4}, {nan, 5}});
  ASSERT_EQ(out.size(), 6u);
  EXPECT_EQ(out[1].second, 3.0f);
  EXPECT_TRUE(std::isnan(out[2].second));
  EXPECT_EQ(out[3].second, inf);
  EXPECT_TRUE(std::isnan(out[5].first));
}

/// Heights that a line covers of each column, joints to the next column left out.
std::map<int, std::pair<float, float>> heights(Points const& points)
{
  std::map<int, std::pair<float, float>> result;
  for (auto const& [x, y] : points) {
    auto const found = result.try_emplace(static_cast<int>(std::floor(x)), y, y).first;
    found->second = {std::min(found->second.first, y), std::max(found->second.second, y)};
  }
  return result;
}

TEST(ThinnedPolyline, ALongWalkCoversTheSameHeightsWithFourPointsAColumnAtMost)
{
  std::mt19937 random(3);
  std::normal_distribution<float> step;
  Points points;
  float y = 0;
  for (int i = 0; i < 20000; ++i) points.emplace_back(static_cast<float>(i) * 0.01f, y += step(random));
  Points const out = thinned(points);
  EXPECT_EQ(heights(out), heights(points));
  EXPECT_LE(out.size(), 4u * 201u);
  EXPECT_GT(out.size(), 3u * 190u);
  EXPECT_EQ(out.front(), points.front());
  EXPECT_EQ(out.back(), points.back());
}

} // namespace
} // namespace runsieve::test
