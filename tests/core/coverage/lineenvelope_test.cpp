#include <runsieve/core/coverage/LineEnvelope.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace runsieve::test {
namespace {

constexpr int columns = 60;

using Place = std::pair<double, double>;
using Line = std::vector<Place>;

/// What a line covers of a vertical, all between the lowest and the highest place.
struct Extent
{
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  void reach(double y)
  {
    low = std::min(low, y);
    high = std::max(high, y);
  }
  [[nodiscard]] bool isEmpty() const { return low > high; }
};

/// A segment with its thickness: a rectangle, by its corners.
std::array<Place, 4> rectangleOf(Place from, Place to, double r)
{
  const double dx = to.first - from.first;
  const double dy = to.second - from.second;
  const double length = std::hypot(dx, dy);
  const double x = -r * dy / length;
  const double y = r * dx / length;
  return {Place(from.first + x, from.second + y), Place(to.first + x, to.second + y),
          Place(to.first - x, to.second - y), Place(from.first - x, from.second - y)};
}

void addRectangle(Extent& extent, std::array<Place, 4> const& corners, double x)
{
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const auto [fromX, fromY] = corners[i];
    const auto [toX, toY] = corners[(i + 1) % corners.size()];
    if (x < std::min(fromX, toX) || x > std::max(fromX, toX)) continue;
    if (fromX == toX) {
      extent.reach(fromY);
      extent.reach(toY);
    } else {
      extent.reach(fromY + (toY - fromY) * (x - fromX) / (toX - fromX));
    }
  }
}

/// The true shape of a line with round joins and flat ends at a vertical.
Extent shapeAt(Line const& line, double r, double x)
{
  Extent extent;
  for (std::size_t i = 0; i + 1 < line.size(); ++i)
    if (line[i] != line[i + 1]) addRectangle(extent, rectangleOf(line[i], line[i + 1], r), x);
  for (std::size_t i = 1; i + 1 < line.size(); ++i) {
    const double distance = x - line[i].first;
    if (std::abs(distance) > r) continue;
    const double reach = std::sqrt(r * r - distance * distance);
    extent.reach(line[i].second - reach);
    extent.reach(line[i].second + reach);
  }
  return extent;
}

/// What trace() has found.
struct Outline
{
  LineEnvelope::Columns columns;
  std::vector<Extent> edges; ///< from the first column on, one more than columns
  std::vector<LineEnvelope::Jump> jumps;
};

Outline traced(LineEnvelope& envelope, Line const& line)
{
  std::vector<float> x;
  std::vector<float> y;
  for (auto const& [px, py] : line) {
    x.push_back(static_cast<float>(px));
    y.push_back(static_cast<float>(py));
  }
  Outline outline;
  outline.columns = envelope.trace(x.data(), y.data(), x.size());
  if (outline.columns.first < outline.columns.last)
    for (int k = outline.columns.first; k <= outline.columns.last; ++k)
      outline.edges.push_back({envelope.lower()[k], envelope.upper()[k]});
  outline.jumps = envelope.jumps();
  return outline;
}

Outline trace(Line const& line, double r, int width = columns)
{
  LineEnvelope envelope(width, static_cast<float>(r));
  return traced(envelope, line);
}

std::pair<int, int> columnsOf(Line const& line, double r, int width = columns)
{
  const LineEnvelope::Columns found = trace(line, r, width).columns;
  return {found.first, found.last};
}

void expectShape(Outline const& outline, Line const& line, double r, double firstEdge, double lastEdge,
                 double error)
{
  for (int k = outline.columns.first; k <= outline.columns.last; ++k) {
    if (k < firstEdge || k > lastEdge) continue;
    const Extent wanted = shapeAt(line, r, k);
    Extent const& found = outline.edges[static_cast<std::size_t>(k - outline.columns.first)];
    EXPECT_NEAR(found.low, wanted.low, error) << "edge " << k;
    EXPECT_NEAR(found.high, wanted.high, error) << "edge " << k;
  }
}

class AnyLine
{
public:
  explicit AnyLine(unsigned seed) : random(seed) {}

  double number(double low, double high)
  {
    return low + (high - low) * static_cast<double>(random() % 100003) / 100003;
  }

  /// From left of the picture to right of it. \param step the widest of a segment
  Line across(double step, double height)
  {
    Line line;
    for (double x = -8; x < columns + 8; x += number(0.02, step))
      line.emplace_back(static_cast<float>(x), static_cast<float>(number(0, height)));
    line.emplace_back(columns + 8, number(0, height));
    return line;
  }

private:
  std::mt19937 random;
};

class EnvelopeOfWidth : public testing::TestWithParam<double>
{};

INSTANTIATE_TEST_SUITE_P(HalfWidths, EnvelopeOfWidth, testing::Values(0.5, 0.9, 1.85, 4.0));

TEST_P(EnvelopeOfWidth, IsThatOfTheTrueShapeAtEveryEdge)
{
  const double r = GetParam();
  AnyLine any(1);
  LineEnvelope envelope(columns, static_cast<float>(r));
  for (double const step : {0.4, 2.0, 7.0, 30.0})
    for (double const height : {2.0, 10.0, 60.0})
      for (int round = 0; round < 40; ++round) {
        const Line line = any.across(step, height);
        const Outline outline = traced(envelope, line);
        ASSERT_EQ(std::make_pair(outline.columns.first, outline.columns.last), std::make_pair(0, columns));
        expectShape(outline, line, r, 0, columns, 0.02);
        if (testing::Test::HasFailure()) return;
      }
}

TEST_P(EnvelopeOfWidth, OfStaircasesIsThatOfTheTrueShape)
{
  const double r = GetParam();
  AnyLine any(2);
  for (int round = 0; round < 100; ++round) {
    Line line;
    double y = 30;
    for (double x = -8; x < columns + 8;) {
      line.emplace_back(static_cast<float>(x), y);
      x += any.number(0.1, 9);
      line.emplace_back(static_cast<float>(x), y);
      y = any.number(0, 60);
    }
    expectShape(trace(line, r), line, r, 0, columns, 0.02);
  }
}

TEST_P(EnvelopeOfWidth, KnowsNothingOfTheLineBefore)
{
  const double r = GetParam();
  AnyLine any(3);
  LineEnvelope used(columns, static_cast<float>(r));
  for (int round = 0; round < 50; ++round) {
    const Line line = any.across(3 + round % 20, 50);
    const Outline found = traced(used, line);
    const Outline wanted = trace(line, r);
    for (std::size_t k = 0; k < wanted.edges.size(); ++k) {
      EXPECT_EQ(found.edges[k].low, wanted.edges[k].low);
      EXPECT_EQ(found.edges[k].high, wanted.edges[k].high);
    }
    EXPECT_EQ(found.jumps.size(), wanted.jumps.size());
  }
}

/// Copies of a point add nothing, at an end neither.
TEST_P(EnvelopeOfWidth, OfRepeatedPointsIsThatOfEachOnce)
{
  const double r = GetParam();
  AnyLine any(4);
  for (int round = 0; round < 50; ++round) {
    Line line;
    for (double x = 10.3; x < 50; x += any.number(0.2, 9)) line.emplace_back(x, any.number(0, 40));
    Line repeated;
    for (std::size_t i = 0; i < line.size(); ++i) repeated.insert(repeated.end(), 1 + i % 3, line[i]);
    repeated.insert(repeated.begin(), 2, line.front());
    repeated.insert(repeated.end(), 2, line.back());
    const Outline found = trace(repeated, r);
    const Outline wanted = trace(line, r);
    ASSERT_EQ(found.columns.first, wanted.columns.first);
    ASSERT_EQ(found.columns.last, wanted.columns.last);
    for (std::size_t k = 0; k < wanted.edges.size(); ++k) {
      EXPECT_NEAR(found.edges[k].low, wanted.edges[k].low, 1e-4);
      EXPECT_NEAR(found.edges[k].high, wanted.edges[k].high, 1e-4);
    }
  }
}

// ---- Ends

TEST(LineEnvelope, CoversTheColumnsOfWhichItFillsHalfOrMore)
{
  for (double left = 10.05; left < 12; left += 0.1)
    for (double right = 20.05; right < 22; right += 0.1) {
      const int first = left - std::floor(left) <= 0.5 ? int(left) : int(left) + 1;
      const int last = right - std::floor(right) > 0.5 ? int(right) + 1 : int(right);
      EXPECT_EQ(columnsOf({{left, 5}, {15, 7}, {right, 6}}, 3.0), std::make_pair(first, last))
          << left << " to " << right;
    }
}

TEST(LineEnvelope, OfAGentleEndGoesOnStraightToTheEdge)
{
  for (double const slope : {-0.99, -0.4, 0.0, 0.3, 0.99}) {
    const Line line{{10.4, 20}, {25, 20 + 14.6 * slope}, {39.6, 20}};
    const Outline outline = trace(line, 2.0);
    const double reach = 2.0 * std::sqrt(1 + slope * slope);
    ASSERT_EQ(outline.columns.first, 10);
    ASSERT_EQ(outline.columns.last, 40);
    EXPECT_NEAR(outline.edges.front().high, 20 - 0.4 * slope + reach, 1e-3);
    EXPECT_NEAR(outline.edges.front().low, 20 - 0.4 * slope - reach, 1e-3);
    EXPECT_NEAR(outline.edges.back().high, 20 - 0.4 * slope + reach, 1e-3);
    EXPECT_NEAR(outline.edges.back().low, 20 - 0.4 * slope - reach, 1e-3);
  }
}

TEST(LineEnvelope, OfASteepEndIsCutAcross)
{
  for (double const r : {1.0, 2.5})
    for (double const slope : {-9.0, -2.0, -1.1, 1.1, 2.0, 9.0})
      for (double const end : {29.7, 30.3}) {
        const Line line{{10.7, 30}, {20.2, 30 + 9.5 * slope}, {end, 30}};
        const Outline outline = trace(line, r);
        ASSERT_EQ(std::make_pair(outline.columns.first, outline.columns.last), std::make_pair(11, 30));
        // Beyond the end one side stays at its height, to the edge of a column that is covered by half.
        const double reach = 0.5 / std::abs(slope);
        expectShape(outline, line, r, 0, end, 1e-3);
        expectShape(outline, line, r, end, columns, reach);
      }
}

TEST(LineEnvelope, OfAnUprightEndIsAsWideAsTheLine)
{
  for (double const r : {1.0, 2.6})
    for (double const height : {-25.0, 25.0})
      for (double x = 20.03; x < 21; x += 0.11) {
        const Line line{{x, 30 + height}, {x, 30}, {x + 20.3, 30}, {x + 20.3, 30 + height}};
        const Outline outline = trace(line, r);
        ASSERT_EQ(outline.columns.first, std::ceil(x - r - 0.5));
        ASSERT_EQ(outline.columns.last, std::ceil(x + 20.3 + r - 0.5));
        expectShape(outline, line, r, x - r, x + 20.3 + r, 0.02);
        // An edge beside the line is as the next one.
        const std::size_t last = outline.edges.size() - 1;
        if (outline.columns.first < x - r) {
          EXPECT_EQ(outline.edges[0].high, outline.edges[1].high) << x;
          EXPECT_EQ(outline.edges[0].low, outline.edges[1].low) << x;
        }
        if (outline.columns.last > x + 20.3 + r) {
          EXPECT_EQ(outline.edges[last].high, outline.edges[last - 1].high) << x;
          EXPECT_EQ(outline.edges[last].low, outline.edges[last - 1].low) << x;
        }
      }
}

/// As a step begins that is less than half a pixel wide.
TEST(LineEnvelope, OfANarrowSteepEndIsUprightToo)
{
  const Line upright{{20.1, 5}, {20.5, 30}, {40.1, 30}};
  EXPECT_EQ(columnsOf(upright, 3.0).first, 17);
  const Line leaning{{20.1, 5}, {20.7, 30}, {40.1, 30}};
  EXPECT_EQ(columnsOf(leaning, 3.0).first, 20);
  const Line down{{10, 30}, {40.0, 30}, {40.4, 5}};
  EXPECT_EQ(columnsOf(down, 3.0).second, 43);
  const Line downLeaning{{10, 30}, {39.8, 30}, {40.4, 5}};
  EXPECT_EQ(columnsOf(downLeaning, 3.0).second, 40);
}

// ---- One column

TEST(LineEnvelope, OfOneColumnIsABox)
{
  for (Line const& line : {Line{{4.6, 10}, {5.3, 12}, {6.2, 11}}, Line{{4.6, 12}, {5.3, 10}, {6.2, 11}}}) {
    const double r = 2;
    const Outline outline = trace(line, r);
    ASSERT_EQ(std::make_pair(outline.columns.first, outline.columns.last), std::make_pair(5, 6));
    // Ends are flat, joins are round.
    const auto flat = [&](Place a, Place b) {
      return r * (b.first - a.first) / std::hypot(b.first - a.first, b.second - a.second);
    };
    const double start = flat(line[0], line[1]);
    const double end = flat(line[1], line[2]);
    const double low = std::min({line[0].second - start, line[1].second - r, line[2].second - end});
    const double high = std::max({line[0].second + start, line[1].second + r, line[2].second + end});
    for (Extent const& edge : outline.edges) {
      EXPECT_NEAR(edge.low, low, 1e-3);
      EXPECT_NEAR(edge.high, high, 1e-3);
    }
    EXPECT_TRUE(outline.jumps.empty());
  }
}

TEST(LineEnvelope, OfAVerticalLineIsAsHighAsTheLine)
{
  const Outline outline = trace({{20.5, 10}, {20.5, 40}}, 0.5);
  ASSERT_EQ(std::make_pair(outline.columns.first, outline.columns.last), std::make_pair(20, 21));
  for (Extent const& edge : outline.edges) {
    EXPECT_NEAR(edge.low, 10, 1e-3);
    EXPECT_NEAR(edge.high, 40, 1e-3);
  }
  EXPECT_EQ(columnsOf({{20.0, 10}, {20.0, 40}}, 2.0), std::make_pair(18, 22));
}

TEST(LineEnvelope, OfASinglePlaceIsThatOfADot)
{
  const Outline outline = trace({{20.4, 10}, {20.4, 10}, {20.4, 10}}, 3.0);
  for (Extent const& edge : outline.edges) {
    EXPECT_NEAR(edge.low, 7, 1e-3);
    EXPECT_NEAR(edge.high, 13, 1e-3);
  }
}

TEST(LineEnvelope, OfALineBetweenTwoMiddlesOfColumnsIsNone)
{
  EXPECT_EQ(columnsOf({{10.6, 5}, {11.4, 5}}, 1.0), std::make_pair(0, 0));
}

// ---- Clipping

TEST(LineEnvelope, BesideThePictureIsNone)
{
  EXPECT_EQ(columnsOf({{-30, 5}, {-2.1, 9}}, 2.0), std::make_pair(0, 0));
  EXPECT_EQ(columnsOf({{-30, 5}, {-0.6, 9}}, 2.0), std::make_pair(0, 0));
  EXPECT_EQ(columnsOf({{columns + 2.1, 5}, {columns + 30, 9}}, 2.0), std::make_pair(0, 0));
  EXPECT_EQ(columnsOf({{columns + 0.6, 5}, {columns + 30, 9}}, 2.0), std::make_pair(0, 0));
  EXPECT_TRUE(trace({{-30, 5}, {-20, 5}, {-20, 60}, {-10, 60}}, 2.0).jumps.empty());
}

TEST(LineEnvelope, IsTheSameInAPictureOfFewerColumns)
{
  AnyLine any(6);
  for (int round = 0; round < 200; ++round) {
    const double r = any.number(0.5, 5);
    Line line;
    for (double x = any.number(1, 20); x < 60; x += any.number(0, 20))
      line.emplace_back(x, any.number(0, 40));
    if (line.size() < 2) continue;
    const Outline whole = trace(line, r, 2 * columns);
    // Moved to the left by whole columns, and the right side cut off.
    constexpr int left = 17;
    constexpr int width = 23;
    Line moved = line;
    for (Place& place : moved) place.first -= left;
    const Outline part = trace(moved, r, width);
    const int first = std::clamp(whole.columns.first - left, 0, width);
    const int last = std::clamp(whole.columns.last - left, 0, width);
    if (first >= last) {
      EXPECT_EQ(part.columns.first, part.columns.last);
      continue;
    }
    ASSERT_EQ(std::make_pair(part.columns.first, part.columns.last), std::make_pair(first, last));
    for (int k = first; k <= last; ++k) {
      Extent const& found = part.edges[static_cast<std::size_t>(k - first)];
      Extent const& wanted = whole.edges[static_cast<std::size_t>(k + left - whole.columns.first)];
      EXPECT_NEAR(found.low, wanted.low, 0.01);
      EXPECT_NEAR(found.high, wanted.high, 0.01);
    }
    const auto isInside = [&](LineEnvelope::Jump const& jump) {
      return jump.column - left >= first && jump.column - left < last;
    };
    EXPECT_EQ(static_cast<std::ptrdiff_t>(part.jumps.size()),
              std::count_if(whole.jumps.begin(), whole.jumps.end(), isInside));
  }
}

// ---- Jumps

TEST(LineEnvelope, JumpsWhereASideGoesUpOrDownAtOnce)
{
  for (double const height : {25.0, -25.0}) {
    const Outline outline = trace({{5, 30}, {20.25, 30}, {20.25, 30 + height}, {40, 30 + height}}, 1.0);
    ASSERT_EQ(outline.jumps.size(), 2U);
    // The left side of the line is that above on a way up, that below on a way down.
    LineEnvelope::Jump const& above = outline.jumps[outline.jumps[0].isAbove ? 0 : 1];
    LineEnvelope::Jump const& below = outline.jumps[outline.jumps[0].isAbove ? 1 : 0];
    EXPECT_TRUE(above.isAbove);
    EXPECT_FALSE(below.isAbove);
    EXPECT_EQ(above.column, height > 0 ? 19 : 21);
    EXPECT_EQ(below.column, height > 0 ? 21 : 19);
    for (LineEnvelope::Jump const& jump : outline.jumps) {
      EXPECT_NEAR(jump.from, 0.25, 1e-3);
      EXPECT_NEAR(jump.to, 0.25, 1e-3);
    }
  }
}

TEST(LineEnvelope, JumpsReachFromOneEndOfASegmentToTheOther)
{
  const Outline outline = trace({{5, 10}, {20.25, 10}, {20.5, 40}, {40, 40}}, 1.0);
  ASSERT_EQ(outline.jumps.size(), 2U);
  for (LineEnvelope::Jump const& jump : outline.jumps) {
    EXPECT_NEAR(jump.from, 0.25, 1e-3);
    EXPECT_NEAR(jump.to, 0.5, 1e-3);
  }
}

TEST(LineEnvelope, LowStepsAndSlopesAcrossAnEdgeAreNoJumps)
{
  EXPECT_TRUE(trace({{5, 10}, {20.25, 10}, {20.25, 11.9}, {40, 11.9}}, 1.0).jumps.empty());
  EXPECT_EQ(trace({{5, 10}, {20.25, 10}, {20.25, 12.1}, {40, 12.1}}, 1.0).jumps.size(), 2U);
  EXPECT_TRUE(trace({{5, 10}, {20.25, 10}, {21.25, 40}, {40, 40}}, 1.0).jumps.empty());
}

TEST(LineEnvelope, JumpsOutsideThePictureAreNone)
{
  EXPECT_TRUE(trace({{-20, 10}, {-3, 10}, {-3, 40}, {40, 40}}, 1.0).jumps.empty());
  EXPECT_TRUE(trace({{5, 10}, {columns + 3, 10}, {columns + 3, 40}, {columns + 20, 40}}, 1.0).jumps.empty());
  // One side in the first column, the other left of it; and at the right.
  EXPECT_EQ(trace({{-20, 10}, {-0.5, 10}, {-0.5, 40}, {40, 40}}, 1.0).jumps.size(), 1U);
  EXPECT_EQ(trace({{5, 10}, {columns + 0.5, 10}, {columns + 0.5, 40}, {columns + 20, 40}}, 1.0).jumps.size(),
            1U);
}

} // namespace
} // namespace runsieve::test
