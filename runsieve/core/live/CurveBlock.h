#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace runsieve {

/// Grid positions, both included.
struct GridSpan
{
  std::size_t first;
  std::size_t last;
};

/// Values, both ends included; open ends are infinite.
struct ValueRange
{
  double low;
  double high;
};

/// The curves of some runs, laid out time by time, so that a rectangle of times and values is compared with
/// many runs at once. Times are laid out in groups of 8, when they are first asked for or ahead, beside the
/// extremes of each run in the group; that takes 1.25 times the memory of the curves.
///
/// The extremes of each run in the span that was asked for last are kept: in that span another range of
/// values costs two comparisons per run, and a wider span takes only the times that came to it.
///
/// Not for several threads at once.
class CurveBlock
{
public:
  /// What is kept of a span then fits into the fastest cache.
  static constexpr std::size_t mostRuns = 2048;

  /// \param values one per time, the times of a run in a row, NaN where there is none; they must outlive the
  ///               block
  /// \param runs at most mostRuns
  CurveBlock(double const* values, std::size_t runs, std::size_t times);

  /// Lays out the times of a span.
  void prepare(GridSpan span);

  /// Marks 1 for the runs of which every value in the span lies in the range, 0 for all others; NaN lies in
  /// no range. \param marks one per run
  void inside(GridSpan span, ValueRange range, std::uint8_t* marks);
  /// Likewise for the runs of which some value in the span lies in the range.
  void ever(GridSpan span, ValueRange range, std::uint8_t* marks);

private:
  [[nodiscard]] std::size_t timesOf(std::size_t group) const;
  [[nodiscard]] double const* columnOf(std::size_t time) const;
  [[nodiscard]] double const* lowestOf(std::size_t group) const;
  [[nodiscard]] double const* highestOf(std::size_t group) const;
  void layOut(std::size_t group);
  void findExtremes(GridSpan span);
  void takeTimes(std::size_t first, std::size_t end);
  void takeExtremes(double const* low, double const* high);

  double const* curves;
  std::size_t runs;
  std::size_t times;
  /// One after the other the times of the group, the lowest and the highest value of each run; null until
  /// they are laid out.
  std::vector<std::unique_ptr<double[]>> groups;
  std::vector<double> lowest;  ///< in the known span; empty as long as none is known
  std::vector<double> highest; ///< likewise; NaN if a value is
  GridSpan known{};
};

} // namespace runsieve
