#include <runsieve/core/coverage/RunCoverage.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <stdexcept>
#include <tuple>
#include <vector>

namespace runsieve::test {
namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr std::uint32_t one = RunCoverage::perRun;

using Points = std::vector<float>;
using Counts = std::vector<std::uint32_t>;

RunCoverage::Frame pixels(int width, int height, int subRows = 1, double halfWidth = 0.5)
{
  return {width, height, subRows, halfWidth, {}};
}

Counts countsOf(RunCoverage::Frame const& frame, Points const& line)
{
  RunCoverage coverage(frame);
  coverage.add(line.data(), line.size() / 2);
  return coverage.counts();
}

std::uint32_t most(Counts const& counts)
{
  return *std::max_element(counts.begin(), counts.end());
}

bool isEmpty(RunCoverage const& coverage)
{
  auto const& buffer = coverage.differences();
  return std::all_of(buffer.begin(), buffer.end(), [](std::uint32_t v) { return v == 0; });
}

/// Runs of 20 points: every third wanders in x too, some have gaps, some leave the picture.
Points wildRuns(std::size_t runs, unsigned seed, int width = 90, int height = 70)
{
  std::mt19937 random(seed);
  const auto number = [&](double size) {
    return (static_cast<double>(random() % 100000) / 100000 - 0.3) * 1.7 * size;
  };
  Points points;
  for (std::size_t r = 0; r < runs; ++r)
    for (int i = 0; i < 20; ++i) {
      const double x = r % 3 == 0 ? number(width) : width * (i / 19.0) + number(3);
      const double y = random() % 40 == 0 ? 1e30 : number(height);
      points.push_back(static_cast<float>(x));
      points.push_back(random() % 30 == 0 ? nan : static_cast<float>(y));
    }
  return points;
}

std::vector<std::uint8_t> someCoats(std::size_t runs, unsigned seed)
{
  std::mt19937 random(seed);
  std::vector<std::uint8_t> coats(runs);
  for (auto& c : coats) c = static_cast<std::uint8_t>(random() % 3 == 0 ? 0 : random() % 11);
  return coats;
}

TEST(RunCoverage, CountsALevelLineOnceInEachOfItsPixels)
{
  const Counts counts = countsOf(pixels(6, 4), {1, 2.5F, 5, 2.5F});
  EXPECT_EQ(counts, (Counts{0, 0,   0,   0,   0,   0, //
                            0, 0,   0,   0,   0,   0, //
                            0, one, one, one, one, 0, //
                            0, 0,   0,   0,   0,   0}));
}

TEST(RunCoverage, SharesALineBetweenTwoRows)
{
  const Counts counts = countsOf(pixels(2, 3), {-5, 1.25F, 5, 1.25F});
  EXPECT_EQ(counts, (Counts{one / 4, one / 4, 3 * one / 4, 3 * one / 4, 0, 0}));
}

TEST(RunCoverage, CountsInSubRows)
{
  const Counts counts = countsOf(pixels(1, 2, 4), {-5, 1, 5, 1});
  EXPECT_EQ(counts, (Counts{0, 0, one, one, one, one, 0, 0}));
}

TEST(RunCoverage, MapsDataToPixels)
{
  RunCoverage coverage({3, 3, 1, 0.5, {0.001, -2, -100, 5}});
  const Points line{1900, 0.025F, 5100, 0.025F};
  coverage.add(line.data(), 2);
  EXPECT_EQ(coverage.counts(), (Counts{0, 0, 0, 0, 0, 0, one, one, one}));
}

TEST(RunCoverage, LiftsAThinLineToOnePixel)
{
  EXPECT_EQ(countsOf(pixels(2, 3, 1, 0.01), {-5, 1.5F, 5, 1.5F}), (Counts{0, 0, one, one, 0, 0}));
  EXPECT_EQ(RunCoverage(pixels(2, 3, 1, -7)).frame().halfWidth, 0.5);
}

TEST(RunCoverage, CountsCoats)
{
  RunCoverage coverage(pixels(1, 1));
  const Points line{-5, 0.5F, 5, 0.5F};
  coverage.add(line.data(), 2, 10);
  coverage.add(line.data(), 2, 0);
  coverage.add(line.data(), 2);
  EXPECT_EQ(coverage.counts(), Counts{11 * one});
  EXPECT_EQ(coverage.coats(), 11);
}

TEST(RunCoverage, RefusesAFrameThatIsNone)
{
  const double bad = std::numeric_limits<double>::quiet_NaN();
  for (RunCoverage::Frame const& frame :
       {pixels(0, 1), pixels(1, 0), pixels(-1, 1), pixels(RunCoverage::largestSize + 1, 1), pixels(1, 1, 0),
        pixels(1, 1, 3), pixels(1, 1, 1, bad), RunCoverage::Frame{1, 1, 1, 1, {bad, 0, 1, 0}},
        RunCoverage::Frame{1, 1, 1, 1, {1, 0, 1, HUGE_VAL}}})
    EXPECT_THROW(RunCoverage{frame}, std::invalid_argument);
}

TEST(RunCoverage, DrawsNothingOfFewerThanTwoPoints)
{
  RunCoverage coverage(pixels(4, 4));
  const Points line{1, 1, nan, 1, 2, 2, 3, infinity, 3, 3};
  for (std::size_t count = 0; count <= 5; ++count) EXPECT_TRUE(coverage.add(line.data(), count));
  coverage.add(RunBlock{line.data(), 1, 5});
  coverage.add(RunBlock{nullptr, 101, 0});
  EXPECT_TRUE(isEmpty(coverage));
}

TEST(RunCoverage, DrawsNothingOfPointsInOnePlace)
{
  RunCoverage coverage(pixels(4, 4));
  const Points line{1.5F, 1.5F, 1.5F, 1.5F, 1.5F, 1.5F};
  coverage.add(line.data(), 3);
  EXPECT_TRUE(isEmpty(coverage));
}

TEST(RunCoverage, PartsALineAtNumbersThatAreNotFinite)
{
  const RunCoverage::Frame frame = pixels(40, 30, 2, 1.2);
  RunCoverage parts(frame);
  for (Points const& part : {Points{2, 3, 8, 20, 14, 9}, Points{20, 9, 26, 25}})
    parts.add(part.data(), part.size() / 2);
  for (const float gap : {nan, infinity, -infinity}) {
    for (auto [x, y] : {std::pair{17.0F, gap}, {gap, 10.0F}, {gap, gap}}) {
      RunCoverage whole(frame);
      const Points line{gap, gap, 2, 3, 8, 20, 14, 9, x, y, 20, 9, 26, 25, x, y, 30, 3};
      whole.add(line.data(), line.size() / 2);
      EXPECT_EQ(whole.counts(), parts.counts());
    }
  }
}

TEST(RunCoverage, DrawsALineOfFallingXAsThatOfRisingX)
{
  for (unsigned seed = 0; seed < 20; ++seed) {
    std::mt19937 random(seed);
    Points rising;
    Points falling;
    float x = -10;
    for (int i = 0; i < 30; ++i) {
      if (seed % 2 == 0 || i % 3 != 0) x += static_cast<float>(random() % 1000) / 150; // else vertical
      const auto y = static_cast<float>(random() % 1000) / 20;
      rising.insert(rising.end(), {x, y});
      falling.insert(falling.begin(), {x, y});
    }
    for (const double halfWidth : {0.5, 2.0})
      EXPECT_EQ(countsOf(pixels(90, 45, 4, halfWidth), rising),
                countsOf(pixels(90, 45, 4, halfWidth), falling));
  }
}

TEST(RunCoverage, NeverCountsALineOfOneDirectionTwiceInAPixel)
{
  std::mt19937 random(3);
  for (int round = 0; round < 300; ++round) {
    Points line;
    double x = -5;
    const double step = round % 4 == 0 ? 0.3 : round % 4 == 1 ? 3 : 12;
    for (int i = 0; i < 60; ++i) {
      if (random() % 5) x += step * (static_cast<double>(random() % 1000) / 1000); // else a vertical segment
      line.push_back(static_cast<float>(x));
      line.push_back(static_cast<float>(random() % 4000) / 100 - 3);
    }
    for (const int subRows : {1, 2, 4})
      ASSERT_LE(most(countsOf(pixels(70, 35, subRows, 0.5 + round % 3), line)), one) << round;
  }
}

TEST(RunCoverage, NeverCountsBelowZero)
{
  // Counts are unsigned: one below zero would be larger than all runs together.
  for (unsigned seed = 0; seed < 40; ++seed) {
    const Points points = wildRuns(30, seed);
    for (const int subRows : {1, 4}) {
      RunCoverage coverage(pixels(90, 70, subRows, seed % 2 ? 0.505 : 1.855));
      coverage.add(RunBlock{points.data(), 20, 30});
      ASSERT_LE(most(coverage.counts()), 30 * 19 * one) << seed;
    }
  }
}

TEST(RunCoverage, CutsALineWhereItTurnsBack)
{
  const RunCoverage::Frame frame = pixels(40, 20, 1, 1);
  RunCoverage parts(frame);
  for (Points const& part : {Points{3, 3, 30, 4}, Points{30, 4, 10, 9}, Points{10, 9, 35, 15}})
    parts.add(part.data(), part.size() / 2);
  EXPECT_EQ(countsOf(frame, {3, 3, 30, 4, 10, 9, 35, 15}), parts.counts());
  EXPECT_EQ(parts.coats(), 3);
}

TEST(RunCoverage, EndsFlatAtTheColumnThatIsHalfFull)
{
  for (const auto& [from, to, first, last] :
       {std::tuple{3.4F, 9.4F, 3, 9}, {3.6F, 9.6F, 4, 10}, {3.0F, 9.0F, 3, 9}}) {
    const Counts counts = countsOf(pixels(16, 8, 1, 1.5), {from, 4.5F, to, 4.5F});
    for (int k = 0; k < 16; ++k)
      for (int row = 0; row < 8; ++row) {
        const bool isInside = k >= first && k < last && row >= 3 && row < 6;
        EXPECT_EQ(counts[static_cast<std::size_t>(16 * row + k)], isInside ? one : 0) << from << " " << k;
      }
  }
}

TEST(RunCoverage, LeavesNoBarBehindTheLastPointOfManyRuns)
{
  RunCoverage coverage(pixels(30, 40, 1, 1.855));
  for (int i = -20; i <= 20; ++i) {
    const Points line{0, 20, 20, 20 + static_cast<float>(i)}; // slopes of up to 1
    coverage.add(line.data(), 2);
  }
  const Counts counts = coverage.counts();
  for (std::size_t row = 0; row < 40; ++row)
    for (std::size_t k = 22; k < 30; ++k) EXPECT_EQ(counts[30 * row + k], 0);
}

TEST(RunCoverage, TakesLinesAwayBitForBit)
{
  for (unsigned seed = 0; seed < 10; ++seed) {
    const Points points = wildRuns(60, seed);
    const auto coats = someCoats(60, seed);
    for (const int subRows : {1, 2, 4}) {
      RunCoverage coverage(pixels(90, 70, subRows, 0.5 + 0.3 * seed));
      const RunBlock first{points.data(), 20, 25};
      const RunBlock others{points.data() + 25 * 40, 20, 35};
      coverage.add(first, coats.data());
      auto const before = coverage.differences();
      auto const coatsBefore = coverage.coats();
      coverage.add(others, coats.data() + 25);
      ASSERT_NE(coverage.differences(), before);
      coverage.remove(others, coats.data() + 25);
      ASSERT_EQ(coverage.differences(), before);
      EXPECT_EQ(coverage.coats(), coatsBefore);
      for (std::size_t i = 25; i-- > 0;) coverage.remove(points.data() + 40 * i, 20, coats[i]);
      ASSERT_TRUE(isEmpty(coverage));
      EXPECT_EQ(coverage.coats(), 0);
    }
  }
}

TEST(RunCoverage, ClearsAllLines)
{
  const Points points = wildRuns(20, 1);
  RunCoverage coverage(pixels(90, 70));
  coverage.add(RunBlock{points.data(), 20, 20});
  coverage.clear();
  EXPECT_TRUE(isEmpty(coverage));
  EXPECT_EQ(coverage.coats(), 0);
}

TEST(RunCoverage, AddsABlockAsItsRuns)
{
  const Points points = wildRuns(30, 5);
  const auto coats = someCoats(30, 5);
  RunCoverage block(pixels(90, 70, 4));
  RunCoverage single(pixels(90, 70, 4));
  block.add({points.data(), 20, 30}, coats.data());
  block.add(RunBlock{points.data(), 20, 30});
  for (std::size_t i = 0; i < 30; ++i)
    single.add(points.data() + 40 * i, 20, static_cast<std::uint8_t>(coats[i] + 1));
  EXPECT_EQ(block.differences(), single.differences());
}

TEST(RunCoverage, ChangesCoatsAsIfAllWereAddedAnew)
{
  const Points points = wildRuns(80, 11);
  const RunBlock runs{points.data(), 20, 80};
  for (const int subRows : {1, 4}) {
    RunCoverage changed(pixels(90, 70, subRows, 1.855));
    auto coats = someCoats(80, 0);
    changed.add(runs, coats.data());
    for (unsigned seed = 1; seed < 8; ++seed) {
      const auto next = someCoats(80, seed);
      EXPECT_TRUE(changed.change(runs, coats.data(), next.data()));
      coats = next;
      RunCoverage anew(pixels(90, 70, subRows, 1.855));
      anew.add(runs, coats.data());
      ASSERT_EQ(changed.differences(), anew.differences());
      EXPECT_EQ(changed.coats(), anew.coats());
    }
  }
}

TEST(RunCoverage, MergesBlocksIntoTheCountsOfAll)
{
  const Points points = wildRuns(90, 21);
  const auto coats = someCoats(90, 21);
  const RunCoverage::Frame frame = pixels(90, 70, 4, 1.855);
  RunCoverage all(frame);
  all.add({points.data(), 20, 90}, coats.data());
  RunCoverage sum(frame);
  for (std::size_t first = 0; first < 90; first += 30) {
    RunCoverage part(frame);
    part.add({points.data() + 40 * first, 20, 30}, coats.data() + first);
    EXPECT_TRUE(sum.merge(part));
  }
  EXPECT_EQ(sum.differences(), all.differences());
  EXPECT_EQ(sum.coats(), all.coats());
}

TEST(RunCoverage, RefusesToMergeOtherSizes)
{
  RunCoverage coverage(pixels(8, 8));
  EXPECT_THROW(coverage.merge(RunCoverage(pixels(9, 8))), std::invalid_argument);
  EXPECT_THROW(coverage.merge(RunCoverage(pixels(8, 9))), std::invalid_argument);
  EXPECT_THROW(coverage.merge(RunCoverage(pixels(8, 8, 2))), std::invalid_argument);
}

TEST(RunCoverage, CountsAMillionCoatsInOnePixel)
{
  RunCoverage coverage(pixels(1, 1));
  const Points line{-5, 0.5F, 5, 0.5F};
  for (int i = 0; i < 100000; ++i) ASSERT_TRUE(coverage.add(line.data(), 2, 10));
  EXPECT_EQ(coverage.counts(), Counts{1000000 * one});
}

TEST(RunCoverage, RefusesLinesBeforeACountWraps)
{
  RunCoverage coverage(pixels(1, 1));
  const Points line{-5, 0.5F, 5, 0.5F};
  int lines = 0;
  while (coverage.add(line.data(), 2, 255)) ASSERT_LT(++lines, 70000);
  EXPECT_EQ(coverage.counts(), Counts{static_cast<std::uint32_t>(lines) * 255 * one});
  EXPECT_GT(lines * 255LL, RunCoverage::mostCoats - 2 * 255);

  const auto full = coverage.differences();
  Points block;
  for (int i = 0; i < 300; ++i) block.insert(block.end(), line.begin(), line.end());
  const std::vector<std::uint8_t> none(300, 0);
  std::vector<std::uint8_t> many(300, 2);
  EXPECT_FALSE(coverage.add({block.data(), 2, 300}, many.data()));
  EXPECT_EQ(coverage.differences(), full);
  EXPECT_FALSE(coverage.change({block.data(), 2, 300}, none.data(), many.data()));
  EXPECT_EQ(coverage.differences(), full);
  EXPECT_FALSE(coverage.merge(RunCoverage(coverage)));
  EXPECT_EQ(coverage.differences(), full);

  coverage.remove(line.data(), 2, 255);
  EXPECT_TRUE(coverage.add(line.data(), 2, 200));
}

TEST(RunCoverage, GivesAfterARefusedChangeTheOldCounts)
{
  RunCoverage coverage(pixels(1, 4));
  const Points line{-5, 0.5F, 5, 0.5F};
  while (coverage.add(line.data(), 2, 255)) {
  }
  Points block;
  for (int i = 0; i < 50; ++i) {
    const float y = static_cast<float>(i % 4) + 0.5F;
    block.insert(block.end(), {-5, y, 5, y});
  }
  std::vector<std::uint8_t> before(50, 0);
  std::vector<std::uint8_t> after(50, 255);
  before[0] = 255; // lighter first: there is room for the second only
  after[0] = 0;
  const auto full = coverage.differences();
  EXPECT_FALSE(coverage.change({block.data(), 2, 50}, before.data(), after.data()));
  EXPECT_EQ(coverage.differences(), full);
}

/// A part of a picture, in counts.
Counts cropped(Counts const& counts, int width, int left, int bottom, int columns, int rows)
{
  Counts part;
  for (int row = bottom; row < bottom + rows; ++row)
    for (int k = left; k < left + columns; ++k)
      part.push_back(counts[static_cast<std::size_t>(row * width + k)]);
  return part;
}

TEST(RunCoverage, ClipsAtAllSidesAsTheCropOfALargerPicture)
{
  for (unsigned seed = 0; seed < 12; ++seed) {
    for (const int subRows : {1, 4}) {
      const double halfWidth = seed % 2 ? 0.505 : 2.2;
      const Points points = wildRuns(12, seed, 120, 100);
      RunCoverage large({120, 100, subRows, halfWidth, {}});
      RunCoverage small({50, 41, subRows, halfWidth, {1, -37, 1, -29}});
      large.add(RunBlock{points.data(), 20, 12});
      small.add(RunBlock{points.data(), 20, 12});
      const Counts part = cropped(large.counts(), 120, 37, 29 * subRows, 50, 41 * subRows);
      const Counts counts = small.counts();
      std::size_t differing = 0;
      for (std::size_t i = 0; i < part.size(); ++i) {
        // Floats round otherwise at another offset; where a column is taken for steep, too.
        const auto difference = std::abs(static_cast<double>(part[i]) - counts[i]);
        differing += difference > 12;
      }
      EXPECT_LE(differing, part.size() / 1000) << seed;
    }
  }
}

TEST(RunCoverage, DrawsAllSizes)
{
  const Points points = wildRuns(10, 2, 20, 20);
  for (const auto& [width, height] :
       {std::pair{1, 1}, {1, 20}, {20, 1}, {2, 2}, {15, 3}, {16, 3}, {17, 3}, {33, 2}}) {
    for (const int subRows : {1, 2, 4}) {
      RunCoverage coverage(pixels(width, height, subRows));
      coverage.add(RunBlock{points.data(), 20, 10});
      EXPECT_EQ(coverage.counts().size(), static_cast<std::size_t>(width * height * subRows));
      EXPECT_LE(most(coverage.counts()), 10 * 19 * one);
      coverage.remove(RunBlock{points.data(), 20, 10});
      EXPECT_TRUE(isEmpty(coverage));
    }
  }
}

TEST(RunCoverage, HasTheInkOfTheLineAtAllScales)
{
  // A line of data, on displays of one to three device pixels for each of its pixels.
  Points line;
  for (int i = 0; i <= 40; ++i)
    line.insert(line.end(), {static_cast<float>(i), static_cast<float>(15 + 10 * std::sin(i / 5.0))});
  double single = 0;
  for (int scale = 1; scale <= 3; ++scale) {
    RunCoverage coverage({40 * scale, 30 * scale, 1, scale * 0.505, {double(scale), 0, double(scale), 0}});
    coverage.add(line.data(), 41);
    const Counts counts = coverage.counts();
    const double ink = std::accumulate(counts.begin(), counts.end(), 0.0) / (scale * scale);
    if (scale == 1) single = ink;
    EXPECT_NEAR(ink, single, 0.02 * single) << scale;
  }
}

TEST(RunCoverage, DrawsNothingOfALineOutside)
{
  RunCoverage coverage(pixels(20, 20, 1, 2));
  for (Points const& line :
       {Points{-50, 5, -3, 15}, Points{23, 5, 90, 15}, Points{0, 23, 20, 90}, Points{0, -3, 20, -90},
        Points{1e30F, 1e30F, 2e30F, 3e30F}, Points{-9, 50, 50, 50}}) {
    EXPECT_TRUE(coverage.add(line.data(), 2));
    EXPECT_TRUE(isEmpty(coverage));
  }
}

TEST(RunCoverage, DrawsLinesToPointsFarOutside)
{
  // Through the picture along its middle row, and along its middle column.
  const Counts across = countsOf(pixels(3, 3), {-1e30F, 1.5F, 1e30F, 1.5F});
  EXPECT_EQ(across, (Counts{0, 0, 0, one, one, one, 0, 0, 0}));
  const Counts upwards = countsOf(pixels(3, 3), {1.5F, -1e30F, 1.5F, 1e30F});
  EXPECT_EQ(upwards, (Counts{0, one, 0, 0, one, 0, 0, one, 0}));

  // Through the middle of the picture, the slope 1 and a slope of far more.
  for (const float far : {1e4F, 1e5F, 1e9F, 1e12F}) {
    const Counts diagonal = countsOf(pixels(41, 41), {-far, -far, far, far});
    const Counts nearby = countsOf(pixels(41, 41), {-100, -100, 100, 100});
    double difference = 0;
    for (std::size_t i = 0; i < nearby.size(); ++i)
      difference = std::max(difference, std::abs(double(nearby[i]) - double(diagonal[i])));
    EXPECT_LE(difference, 4) << far;
  }
  for (const float far : {1e4F, 1e5F, 1e9F, 1e20F, 3e38F}) {
    const Counts steep = countsOf(pixels(41, 41), {10.5F, -far, 11.5F, far});
    double middle = 0;
    for (std::size_t k = 0; k < 41; ++k) middle += steep[20 * 41 + k] / 256.0;
    EXPECT_NEAR(middle, 1, 0.3) << far;
    EXPECT_GT(steep[20 * 41 + 10] + steep[20 * 41 + 11], one / 2) << far;
  }
}

TEST(RunCoverage, DrawsAPeakFarAboveThePictureWhereItPasses)
{
  // As good as vertical at both sides.
  const Counts counts = countsOf(pixels(21, 10), {0, 2, 3.3F, 2, 6, 1e30F, 15, 1e30F, 17.7F, 2, 21, 2});
  for (const std::size_t row : {4, 9}) {
    for (std::size_t k = 5; k < 16; ++k) EXPECT_EQ(counts[row * 21 + k], 0) << k;
    EXPECT_GT(counts[row * 21 + 2] + counts[row * 21 + 3], one / 2);
    EXPECT_GT(counts[row * 21 + 17] + counts[row * 21 + 18], one / 2);
  }
}

TEST(RunCoverage, DrawsSegmentsThatAreAlmostVertical)
{
  const Counts vertical = countsOf(pixels(9, 9), {0, 2.5F, 4.3F, 2.5F, 4.3F, 6.5F, 9, 6.5F});
  for (const float dx : {1e-30F, 1e-7F, 1e-5F, 1e-4F, 5e-4F, 2e-3F}) {
    const Counts counts = countsOf(pixels(9, 9), {0, 2.5F, 4.3F - dx, 2.5F, 4.3F + dx, 6.5F, 9, 6.5F});
    for (std::size_t i = 0; i < counts.size(); ++i)
      EXPECT_NEAR(double(counts[i]), double(vertical[i]), 3) << dx << " " << i;
  }
}

TEST(RunCoverage, StepsFromRowToRow)
{
  const Points points = wildRuns(10, 4, 40, 20);
  RunCoverage coverage(pixels(40, 20, 2));
  coverage.add(RunBlock{points.data(), 20, 10});
  const Counts all = coverage.counts();
  Counts row(40, 0);
  for (int i = 0; i < coverage.rows(); ++i) {
    coverage.step(i, row.data());
    EXPECT_EQ(row, Counts(all.begin() + 40 * i, all.begin() + 40 * (i + 1)));
  }
}

} // namespace
} // namespace runsieve::test
