#include <runsieve/core/inference/DistributionFunction.h>

#include <cstddef>

namespace runsieve {

std::vector<std::pair<double, double>> distributionFunction(OrderedValues const& ordered,
                                                            double const* values, std::uint8_t const* mask)
{
  std::size_t members = 0;
  for (std::uint32_t const run : ordered.order) members += mask[run];
  // Every value is written, and overwritten by the next if no marked run has it: which ones those are cannot
  // be predicted.
  std::vector<std::pair<double, double>> function(members + 1);
  std::size_t steps = 0;
  std::size_t place = 0;
  std::size_t marked = 0;
  for (std::uint32_t const end : ordered.groupEnds) {
    std::size_t const before = marked;
    double const value = values[ordered.order[place]];
    for (; place < end; ++place) marked += mask[ordered.order[place]];
    function[steps] = {value, static_cast<double>(marked)};
    steps += marked > before ? 1 : 0;
  }
  function.resize(steps);
  for (auto& [value, share] : function) share /= static_cast<double>(marked);
  return function;
}

} // namespace runsieve
