#pragma once

#include <cstddef>
#include <limits>
#include <vector>

namespace runsieve {

/// What a box allows of one parameter.
struct BoxRange
{
  static constexpr double OPEN_LOW = -std::numeric_limits<double>::infinity();
  static constexpr double OPEN_HIGH = std::numeric_limits<double>::infinity();

  std::size_t parameter = 0; ///< position in the BoxTable
  double low = OPEN_LOW;     ///< least value inside; of a text parameter always open
  double high = OPEN_HIGH;   ///< largest value inside
  /// Of a text parameter for each of its categories whether it is inside, 0 or 1; empty for numbers.
  std::vector<unsigned char> kept;

  [[nodiscard]] bool isText() const { return !kept.empty(); }
  /// A limit that cuts values off is never infinite towards its own side.
  [[nodiscard]] bool cutsLow() const { return low > OPEN_LOW; }
  [[nodiscard]] bool cutsHigh() const { return high < OPEN_HIGH; }
  /// Whether every value is allowed, a missing one too.
  [[nodiscard]] bool isFree() const;
  /// \param value a number, or a whole number below kept.size(); NaN is held by no range
  [[nodiscard]] bool holds(double value) const
  {
    if (isText()) return value == value && kept[static_cast<std::size_t>(value)] != 0;
    return low <= value && value <= high;
  }

  friend bool operator==(BoxRange const& a, BoxRange const& b)
  {
    return a.parameter == b.parameter && a.low == b.low && a.high == b.high && a.kept == b.kept;
  }
};

/// The runs whose parameters lie in all of some ranges. A run that has no value of a restricted parameter is
/// outside of the box: nothing says that it would lie in the range.
struct Box
{
  std::vector<BoxRange> ranges; ///< of the restricted parameters only, which ascend; none is free

  /// The range of a parameter, added as a free one if there is none.
  /// \param categories of the parameter; 0 for numbers
  BoxRange& range(std::size_t parameter, std::size_t categories);
  /// Takes out the ranges that have become free.
  void dropFreeRanges();

  friend bool operator==(Box const& a, Box const& b) { return a.ranges == b.ranges; }
};

/// A limit between two values, the first of which is inside: their middle, or the value inside where there
/// is none since one is infinite or nothing lies between them. Limits are inside themselves.
[[nodiscard]] double limitBetween(double inside, double outside);

/// Some runs.
struct BoxTally
{
  std::size_t runs = 0;
  std::size_t passing = 0;

  BoxTally& operator+=(BoxTally const& other)
  {
    runs += other.runs;
    passing += other.passing;
    return *this;
  }
  BoxTally& operator-=(BoxTally const& other)
  {
    runs -= other.runs;
    passing -= other.passing;
    return *this;
  }
  friend BoxTally operator+(BoxTally a, BoxTally const& b) { return a += b; }
  friend bool operator==(BoxTally const& a, BoxTally const& b)
  {
    return a.runs == b.runs && a.passing == b.passing;
  }
};

/// How good a box is.
struct BoxMeasures
{
  BoxTally inside;
  BoxTally all;

  /// Passing runs inside among all passing runs; NaN if none passes.
  [[nodiscard]] double coverage() const { return share(inside.passing, all.passing); }
  /// Passing runs among the runs inside; NaN for an empty box.
  [[nodiscard]] double density() const { return share(inside.passing, inside.runs); }
  /// Runs inside among all runs; NaN without runs.
  [[nodiscard]] double mass() const { return share(inside.runs, all.runs); }

private:
  static double share(std::size_t part, std::size_t whole)
  {
    if (whole == 0) return std::numeric_limits<double>::quiet_NaN();
    return static_cast<double>(part) / static_cast<double>(whole);
  }
};

} // namespace runsieve
