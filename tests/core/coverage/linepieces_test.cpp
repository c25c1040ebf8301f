#include <runsieve/core/coverage/LinePieces.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace runsieve::test {
namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float farthest = LinePieces::farthest;

using Points = std::vector<float>;
using Place = std::pair<double, double>;
using Line = std::vector<Place>;

std::vector<Line> cutBy(LinePieces& cutter, Points const& points)
{
  std::vector<Line> lines;
  for (LinePieces::Piece const& piece : cutter.cut(points.data(), points.size() / 2)) {
    Line line;
    for (std::size_t i = 0; i < piece.count; ++i) line.emplace_back(piece.x[i], piece.y[i]);
    lines.push_back(line);
  }
  return lines;
}

std::vector<Line> cut(Points const& points, PixelMap const& map = {})
{
  LinePieces cutter(map);
  return cutBy(cutter, points);
}

/// Points in pixels, parted where one is not finite.
std::vector<Line> partsOf(Points const& points, PixelMap const& map)
{
  std::vector<Line> parts(1);
  for (std::size_t i = 0; i + 1 < points.size(); i += 2) {
    const Place place(points[i] * map.xScale + map.xOffset, points[i + 1] * map.yScale + map.yOffset);
    if (std::isfinite(place.first) && std::isfinite(place.second))
      parts.back().push_back(place);
    else
      parts.emplace_back();
  }
  return parts;
}

bool neverFalls(Line const& line)
{
  return std::is_sorted(line.begin(), line.end(),
                        [](Place const& a, Place const& b) { return a.first < b.first; });
}

bool neverRises(Line const& line)
{
  return neverFalls(Line(line.rbegin(), line.rend()));
}

/// The longest pieces, one after the other, along which x goes one way.
std::vector<Line> longestPieces(Points const& points, PixelMap const& map = {})
{
  std::vector<Line> pieces;
  for (Line const& part : partsOf(points, map))
    for (std::size_t first = 0; first + 1 < part.size();) {
      Line piece(part.begin() + static_cast<std::ptrdiff_t>(first),
                 part.begin() + static_cast<std::ptrdiff_t>(first) + 2);
      for (std::size_t next = first + 2; next < part.size(); ++next) {
        piece.push_back(part[next]);
        if (neverFalls(piece) || neverRises(piece)) continue;
        piece.pop_back();
        break;
      }
      first += piece.size() - 1;
      if (!neverFalls(piece)) std::reverse(piece.begin(), piece.end());
      pieces.push_back(piece);
    }
  return pieces;
}

/// Points of a lattice, many above one another, with gaps.
Points anyPoints(std::mt19937& random, std::size_t count, unsigned lattice)
{
  Points points;
  for (std::size_t i = 0; i < 2 * count; ++i) points.push_back(static_cast<float>(random() % lattice));
  if (random() % 2 == 0)
    for (float const gap : {nan, infinity, -infinity})
      if (random() % 2 == 0) points[random() % points.size()] = gap;
  return points;
}

TEST(LinePieces, AreTheLongestOfOneDirectionInX)
{
  std::mt19937 random(3);
  const PixelMap map{1.5, 10, 2, -3};
  LinePieces cutter(map);
  for (int round = 0; round < 3000; ++round) {
    const Points points = anyPoints(random, 1 + random() % 12, 2 + random() % 5);
    EXPECT_EQ(cutBy(cutter, points), longestPieces(points, map)) << round;
  }
}

TEST(LinePieces, OfAMapThatMirrorsRunBackwards)
{
  std::mt19937 random(4);
  const PixelMap map{-2, 7, -1, 3};
  for (int round = 0; round < 500; ++round) {
    const Points points = anyPoints(random, 8, 6);
    EXPECT_EQ(cut(points, map), longestPieces(points, map)) << round;
  }
}

TEST(LinePieces, ALineThatOnlyRisesOrFallsIsOne)
{
  EXPECT_EQ(cut({1, 5, 2, 6, 2, 7, 4, 1}), (std::vector<Line>{{{1, 5}, {2, 6}, {2, 7}, {4, 1}}}));
  EXPECT_EQ(cut({4, 1, 2, 7, 2, 6, 1, 5}), (std::vector<Line>{{{1, 5}, {2, 6}, {2, 7}, {4, 1}}}));
}

TEST(LinePieces, AVerticalLineKeepsTheOrderOfItsPoints)
{
  EXPECT_EQ(cut({3, 5, 3, 1, 3, 9}), (std::vector<Line>{{{3, 5}, {3, 1}, {3, 9}}}));
}

TEST(LinePieces, BothPiecesKeepTheTurningPoint)
{
  EXPECT_EQ(cut({0, 0, 5, 1, 2, 2}), (std::vector<Line>{{{0, 0}, {5, 1}}, {{2, 2}, {5, 1}}}));
}

TEST(LinePieces, VerticalPartsBelongToThePieceBeforeThem)
{
  EXPECT_EQ(cut({0, 0, 5, 1, 5, 8, 2, 2}), (std::vector<Line>{{{0, 0}, {5, 1}, {5, 8}}, {{2, 2}, {5, 8}}}));
  EXPECT_EQ(cut({0, 8, 0, 0, 5, 1}), (std::vector<Line>{{{0, 8}, {0, 0}, {5, 1}}}));
  EXPECT_EQ(cut({9, 8, 9, 0, 5, 1, 7, 1}), (std::vector<Line>{{{5, 1}, {9, 0}, {9, 8}}, {{5, 1}, {7, 1}}}));
}

TEST(LinePieces, ASinglePointIsNone)
{
  EXPECT_TRUE(cut({}).empty());
  EXPECT_TRUE(cut({1, 2}).empty());
  EXPECT_TRUE(cut({nan, 2, 3, 4}).empty());
  EXPECT_TRUE(cut({0, 1, 1, nan, 2, 1, 3, infinity, 4, 1}).empty());
}

TEST(LinePieces, GoOnBehindAGapInAnyDirection)
{
  EXPECT_EQ(cut({0, 0, 1, 0, 2, nan, 9, 0, 8, 0, 7, -infinity, 1, 1, 1, 2}),
            (std::vector<Line>{{{0, 0}, {1, 0}}, {{8, 0}, {9, 0}}, {{1, 1}, {1, 2}}}));
}

TEST(LinePieces, NumbersTooLargeForDifferencesAreGaps)
{
  const PixelMap map{1e280, 0, 1, 0};
  EXPECT_TRUE(cut({-1e30F, 0, 1e30F, 0}, map).empty());
  EXPECT_EQ(cut({-1, 5, 1, 5}, map), (std::vector<Line>{{{-farthest, 5}, {farthest, 5}}}));
  const PixelMap steep{1, 0, 1e280, 0};
  EXPECT_TRUE(cut({0, -1e30F, 1, 1e30F}, steep).empty());
}

// ---- Lines that leave every picture

/// y of a piece at a place, or NaN where it is not. Where it is vertical, its last point.
double heightAt(Line const& piece, double x)
{
  for (std::size_t i = piece.size() - 1; i > 0; --i) {
    const auto [fromX, fromY] = piece[i - 1];
    const auto [toX, toY] = piece[i];
    if (x < std::min(fromX, toX) || x > std::max(fromX, toX)) continue;
    return toX == fromX ? toY : fromY + (toY - fromY) * ((x - fromX) / (toX - fromX));
  }
  return std::numeric_limits<double>::quiet_NaN();
}

double steepness(Line const& line)
{
  double steepest = 0;
  for (std::size_t i = 1; i < line.size(); ++i)
    steepest = std::max(
        steepest, std::abs((line[i].second - line[i - 1].second) / (line[i].first - line[i - 1].first)));
  return steepest;
}

/// Points of which every third or so is far away.
Points farPoints(std::mt19937& random, std::size_t count)
{
  const auto number = [&](double size) { return (static_cast<double>(random() % 20001) / 10000 - 1) * size; };
  const auto coordinate = [&] {
    double const sizes[] = {3e4, 3e4, 3e4, 1e5, 1e7};
    return static_cast<float>(number(sizes[random() % 5]));
  };
  Points points;
  for (std::size_t i = 0; i < 2 * count; ++i) points.push_back(coordinate());
  return points;
}

void expectWithinReach(std::vector<Line> const& pieces)
{
  for (Line const& piece : pieces) {
    EXPECT_GE(piece.size(), 2U);
    EXPECT_TRUE(neverFalls(piece));
    for (auto const& [x, y] : piece) {
      EXPECT_LE(std::abs(x), farthest);
      EXPECT_LE(std::abs(y), farthest);
    }
  }
}

/// Heights of all pieces that are at a place, ascending.
std::vector<double> heightsAt(std::vector<Line> const& pieces, double x)
{
  std::vector<double> heights;
  for (Line const& piece : pieces) {
    const double y = heightAt(piece, x);
    if (!std::isnan(y)) heights.push_back(std::clamp<double>(y, -farthest, farthest));
  }
  std::sort(heights.begin(), heights.end());
  return heights;
}

TEST(LinePieces, OfFarLinesAreWhereTheLineIs)
{
  std::mt19937 random(5);
  LinePieces cutter{PixelMap()};
  for (int round = 0; round < 2000; ++round) {
    const Points points = farPoints(random, 2 + random() % 5);
    const std::vector<Line> found = cutBy(cutter, points);
    const std::vector<Line> wanted = longestPieces(points);
    expectWithinReach(found);
    double slope = 0;
    for (Line const& piece : wanted) slope = std::max(slope, steepness(piece));
    for (int i = 0; i < 20; ++i) {
      // No place of a point.
      const double x = static_cast<double>(random() % 60000) - 30000 + 0.37;
      const std::vector<double> at = heightsAt(wanted, x);
      const std::vector<double> foundAt = heightsAt(found, x);
      ASSERT_EQ(foundAt.size(), at.size()) << round;
      for (std::size_t k = 0; k < at.size(); ++k)
        ASSERT_NEAR(foundAt[k], at[k], (1 + slope) / 250) << round << " at " << x;
    }
  }
}

TEST(LinePieces, ReachTheLastColumnOnBothSides)
{
  EXPECT_EQ(cut({-1e6F, 5, 1e6F, 5}), (std::vector<Line>{{{-farthest, 5}, {farthest, 5}}}));
  EXPECT_EQ(cut({1e6F, 5, -1e6F, 5}), (std::vector<Line>{{{-farthest, 5}, {farthest, 5}}}));
  EXPECT_EQ(cut({0, 5, 1e6F, 5}), (std::vector<Line>{{{0, 5}, {farthest, 5}}}));
  EXPECT_EQ(cut({-1e6F, 5, 0, 5}), (std::vector<Line>{{{-farthest, 5}, {0, 5}}}));
}

TEST(LinePieces, ThatLeaveAndReturnArePieces)
{
  EXPECT_EQ(cut({0, 1, 65536, 1, 65537, 9, 100000, 9}), (std::vector<Line>{{{0, 1}, {farthest, 1}}}));
  EXPECT_EQ(cut({-65536, 1, -65537, 9, 0, 9}), (std::vector<Line>{{{-farthest, 9}, {0, 9}}}));
  EXPECT_EQ(cut({0, 1, 65536, 1, 65536, 7, 0, 7}),
            (std::vector<Line>{{{0, 1}, {farthest, 1}}, {{0, 7}, {farthest, 7}}}));
}

TEST(LinePieces, BesideEveryPictureAreNone)
{
  EXPECT_TRUE(cut({4e4F, 5, 5e4F, 6, 9e4F, 1}).empty());
  EXPECT_TRUE(cut({-4e4F, 5, -5e4F, 6, -9e4F, 1}).empty());
  EXPECT_TRUE(cut({4e4F, -5, 4e4F, 6}).empty());
  EXPECT_TRUE(cut({-4e4F, -5, -4e4F, 6}).empty());
}

TEST(LinePieces, AtTheFarthestPointsAreKept)
{
  EXPECT_EQ(cut({-farthest, -farthest, farthest, farthest}),
            (std::vector<Line>{{{-farthest, -farthest}, {farthest, farthest}}}));
  // With a gap a line is cut point by point.
  EXPECT_EQ(cut({-farthest, -farthest, farthest, farthest, nan, 0}),
            (std::vector<Line>{{{-farthest, -farthest}, {farthest, farthest}}}));
  EXPECT_EQ(cut({farthest, 0, farthest, 5, nan, 0}), (std::vector<Line>{{{farthest, 0}, {farthest, 5}}}));
}

TEST(LinePieces, AboveOrBelowEveryPictureRunAlongIt)
{
  EXPECT_EQ(cut({0, 1e6F, 5, 2e6F}), (std::vector<Line>{{{0, farthest}, {5, farthest}}}));
  EXPECT_EQ(cut({0, -1e6F, 5, -2e6F}), (std::vector<Line>{{{0, -farthest}, {5, -farthest}}}));
}

TEST(LinePieces, AVerticalLineThroughEveryPictureHasBothEnds)
{
  for (float const end : {1e6F, -1e6F}) {
    const std::vector<Line> pieces = cut({7, -end, 7, end});
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces[0].front(), Place(7, end > 0 ? -farthest : farthest));
    EXPECT_EQ(pieces[0].back(), Place(7, end > 0 ? farthest : -farthest));
    expectWithinReach(pieces);
  }
}

/// A far end has few digits left for the place where the line leaves.
TEST(LinePieces, KeepTheirPlaceHoweverFarTheyGo)
{
  for (float const far : {1e8F, 1e20F, 1e30F}) {
    const std::vector<Line> flat = cut({0, 1, far, 1});
    EXPECT_EQ(flat, (std::vector<Line>{{{0, 1}, {farthest, 1}}}));
    const std::vector<Line> steep = cut({-1, -far, 1, far});
    ASSERT_EQ(steep.size(), 1U);
    EXPECT_NEAR(heightAt(steep[0], -0.5), -farthest, 0);
    EXPECT_NEAR(heightAt(steep[0], 0.5), farthest, 0);
  }
}

} // namespace
} // namespace runsieve::test
