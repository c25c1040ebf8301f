#include <runsieve/core/coverage/RunCoverage.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace runsieve::test {
namespace {

constexpr int width = 100;
constexpr int height = 120;
constexpr int samples = 16; // of a pixel, in each direction

using Points = std::vector<float>;

/// Whether a place is on a line with round joins and flat ends.
bool isOn(Points const& line, double x, double y, double r)
{
  const std::size_t count = line.size() / 2;
  for (std::size_t i = 0; i + 1 < count; ++i) {
    const double dx = line[2 * i + 2] - line[2 * i];
    const double dy = line[2 * i + 3] - line[2 * i + 1];
    const double px = x - line[2 * i];
    const double py = y - line[2 * i + 1];
    const bool isNear = y >= std::min(line[2 * i + 1], line[2 * i + 3]) - r &&
                        y <= std::max(line[2 * i + 1], line[2 * i + 3]) + r;
    if (!isNear) continue;
    const double length = std::sqrt(dx * dx + dy * dy);
    const double along = (px * dx + py * dy) / length;
    const double across = (px * dy - py * dx) / length;
    if (along >= 0 && along <= length && std::abs(across) <= r) return true;
    if (i > 0 && px * px + py * py <= r * r) return true;
  }
  return false;
}

/// The part of each pixel that the line covers, by samples.
std::vector<double> trueShape(Points const& line, double r)
{
  std::vector<double> parts(width * height);
  const std::size_t count = line.size() / 2;
  for (int k = 0; k < width; ++k) {
    // Only what is near: segments that reach the column.
    Points near;
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t before = i > 0 ? i - 1 : i;
      const std::size_t behind = std::min(i + 1, count - 1);
      const float left = std::min({line[2 * before], line[2 * i], line[2 * behind]});
      const float right = std::max({line[2 * before], line[2 * i], line[2 * behind]});
      if (right >= k - 3 * r && left <= k + 1 + 3 * r)
        near.insert(near.end(), {line[2 * i], line[2 * i + 1]});
    }
    if (near.size() < 4) continue;
    for (int row = 0; row < height; ++row) {
      int inside = 0;
      for (int i = 0; i < samples; ++i)
        for (int j = 0; j < samples; ++j)
          inside += isOn(near, k + (i + 0.5) / samples, row + (j + 0.5) / samples, r);
      parts[static_cast<std::size_t>(row * width + k)] = inside / double(samples * samples);
    }
  }
  return parts;
}

struct Error
{
  double rms;      ///< of the pixels that either of both covers
  double inkRatio; ///< drawn to true
};

Error errorOf(Points const& line, double lineWidth, double mostOfAPixel = 1)
{
  RunCoverage coverage({width, height, 1, lineWidth / 2, {}});
  coverage.add(line.data(), line.size() / 2);
  const auto counts = coverage.counts();
  const auto parts = trueShape(line, lineWidth / 2);
  double squares = 0;
  double ink = 0;
  double trueInk = 0;
  int touched = 0;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const double drawn = counts[i] / 256.0;
    EXPECT_LE(drawn, mostOfAPixel);
    if (drawn == 0 && parts[i] == 0) continue;
    ++touched;
    squares += (drawn - parts[i]) * (drawn - parts[i]);
    ink += drawn;
    trueInk += parts[i];
  }
  return {std::sqrt(squares / touched), ink / trueInk};
}

template <class Curve> Points sampled(std::size_t count, Curve curve)
{
  Points points;
  for (std::size_t i = 0; i < count; ++i) {
    const auto [x, y] = curve(static_cast<double>(i) / static_cast<double>(count - 1));
    points.push_back(static_cast<float>(x));
    points.push_back(static_cast<float>(y));
  }
  return points;
}

using Place = std::pair<double, double>;

class ShapeOfALine : public testing::TestWithParam<double>
{};

INSTANTIATE_TEST_SUITE_P(Widths, ShapeOfALine, testing::Values(1.01, 3.71));

TEST_P(ShapeOfALine, IsTrueForGentleCurves)
{
  const auto line = sampled(16, [](double t) { return Place(-3 + 106 * t, 60 + 25 * std::sin(7 * t)); });
  const Error error = errorOf(line, GetParam());
  EXPECT_LT(error.rms, 0.04);
  EXPECT_NEAR(error.inkRatio, 1, 0.01);
}

TEST_P(ShapeOfALine, IsTrueForSteepZigzags)
{
  Points line;
  for (int i = 0; i < 12; ++i) {
    line.push_back(static_cast<float>(-5.3 + 10.2 * i));
    line.push_back(static_cast<float>(60.4 + (i % 2 ? 50 : -50)));
  }
  const Error error = errorOf(line, GetParam());
  EXPECT_LT(error.rms, 0.08);
  EXPECT_NEAR(error.inkRatio, 1, 0.015);
}

TEST_P(ShapeOfALine, IsTrueForStepsUpAndDown)
{
  Points line;
  for (int i = 0; i < 9; ++i) {
    const auto y = static_cast<float>(60 + (i % 2 ? 35.3 : -35.6));
    for (const int end : {i, i + 1}) line.insert(line.end(), {static_cast<float>(4.1 + 10.37 * end), y});
  }
  const Error error = errorOf(line, GetParam());
  EXPECT_LT(error.rms, GetParam() < 2 ? 0.15 : 0.1);
  EXPECT_NEAR(error.inkRatio, 1, 0.03);
}

TEST_P(ShapeOfALine, IsNearlyTrueForTwoPointsAPixel)
{
  std::mt19937 random(7);
  double y = 60;
  Points line;
  for (int i = 0; i < 220; ++i) {
    y += static_cast<double>(random() % 1000) / 500 - 1 + (60 - y) / 50;
    line.push_back(static_cast<float>(-5 + 0.5 * i));
    line.push_back(static_cast<float>(y));
  }
  const Error error = errorOf(line, GetParam());
  EXPECT_LT(error.rms, GetParam() < 2 ? 0.2 : 0.065);
  EXPECT_NEAR(error.inkRatio, 1, 0.05);
}

TEST_P(ShapeOfALine, IsNearlyTrueForALineThatReturns)
{
  const auto line =
      sampled(60, [](double t) { return Place(50 + 46 * std::cos(5 * t), 60 + 56 * std::sin(5 * t)); });
  const Error error = errorOf(line, GetParam(), 2);
  EXPECT_LT(error.rms, 0.18);
  EXPECT_NEAR(error.inkRatio, 1, 0.06);
}

TEST_P(ShapeOfALine, OfOneVerticalSegmentIsABar)
{
  for (double x = 20; x < 21; x += 0.17) {
    const auto left = static_cast<float>(x);
    const Error error = errorOf({left, 20.25F, left, 90.5F}, GetParam());
    // Whole columns are covered.
    EXPECT_NEAR(error.inkRatio, 1, 1 / GetParam() + 0.02) << x;
  }
  EXPECT_LT(errorOf({20.5F, 20.25F, 20.5F, 90.5F}, 1.0).rms, 0.01);
  EXPECT_LT(errorOf({20.0F, 20.25F, 20.0F, 90.5F}, 4.0).rms, 0.01);
}

TEST_P(ShapeOfALine, OfVerticalSegmentsHasTheRightInkOnAverage)
{
  double ink = 0;
  for (int i = 0; i < 16; ++i) {
    const float x = 20 + (static_cast<float>(i) + 0.3F) / 16;
    ink += errorOf({x, 20.25F, x, 90.5F}, GetParam()).inkRatio / 16;
  }
  EXPECT_NEAR(ink, 1, 0.02);
}

TEST(RunCoverageShape, CoversAllRowsBetweenTheEdgesOfASteepPeak)
{
  // A peak between two edges of columns.
  for (float x = 50; x < 51; x += 0.1F) {
    RunCoverage coverage({width, height, 1, 0.5, {}});
    const Points line{x - 10, 20, x, 100, x + 10, 20};
    coverage.add(line.data(), 3);
    const auto counts = coverage.counts();
    double top = 0;
    for (int k = 0; k < width; ++k) top += counts[static_cast<std::size_t>(95 * width + k)] / 256.0;
    EXPECT_GT(top, 1) << x;
  }
}

} // namespace
} // namespace runsieve::test
