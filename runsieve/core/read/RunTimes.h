#pragma once

#include <cstddef>
#include <vector>

namespace runsieve {

/// The times of many runs, one after the other, those of each run rising strictly.
struct RunTimes
{
  double const* times = nullptr;
  std::vector<std::size_t> starts; ///< first position of each run, and the number of all times at the end

  [[nodiscard]] std::size_t runs() const { return starts.size() - 1; }
  [[nodiscard]] std::size_t length(std::size_t run) const { return starts[run + 1] - starts[run]; }
  [[nodiscard]] double const* of(std::size_t run) const { return times + starts[run]; }
  [[nodiscard]] double first(std::size_t run) const { return times[starts[run]]; }
  [[nodiscard]] double last(std::size_t run) const { return times[starts[run + 1] - 1]; }
};

} // namespace runsieve
