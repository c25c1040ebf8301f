#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace runsieve {

/// The time points that all runs share, not empty.
class TimeGrid
{
public:
  explicit TimeGrid(std::vector<double> const& gridTimes) : times(gridTimes) {}

  // Typed decimals meet grid times that were computed: 0.3 and 0.30000000000000004 are the same time.
  [[nodiscard]] double tolerance() const
  {
    auto const size = static_cast<double>(times.size());
    return 1e-9 * (times.size() > 1 ? back() / size - front() / size : std::abs(front()));
  }

  [[nodiscard]] double front() const { return times.front(); }
  [[nodiscard]] double back() const { return times.back(); }

  /// Position of the first time that is not before this one; that of no time if all are.
  [[nodiscard]] std::size_t notBefore(double time) const
  {
    return static_cast<std::size_t>(std::lower_bound(times.begin(), times.end(), time - tolerance()) -
                                    times.begin());
  }

  /// Position behind the last time that is not after this one.
  [[nodiscard]] std::size_t behind(double time) const
  {
    return static_cast<std::size_t>(std::upper_bound(times.begin(), times.end(), time + tolerance()) -
                                    times.begin());
  }

  /// Whether it lies among the times.
  [[nodiscard]] bool holds(double time) const { return notBefore(time) < times.size() && behind(time) > 0; }

  /// Of two equally near ones the earlier.
  [[nodiscard]] std::size_t nearest(double time) const
  {
    auto const above = std::lower_bound(times.begin(), times.end(), time);
    auto const position = static_cast<std::size_t>(above - times.begin());
    if (position == 0) return 0;
    if (position == times.size()) return position - 1;
    return time - times[position - 1] <= times[position] - time ? position - 1 : position;
  }

private:
  std::vector<double> const& times;
};

} // namespace runsieve
