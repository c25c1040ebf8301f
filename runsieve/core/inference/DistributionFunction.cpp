#include <runsieve/core/inference/DistributionFunction.h>

#include <cstddef>

namespace runsieve {

std::vector<std::pair<double, double>> distributionFunction(OrderedValues const& ordered,
                                                            double const* values, std::uint8_t const* mask)
{
  std::vector<std::pair<double, double>> function;
  std::size_t place = 0;
  std::size_t marked = 0;
  for (std::uint32_t const end : ordered.groupEnds) {
    std::size_t const before = marked;
    double const value = values[ordered.order[place]];
    for (; place < end; ++place) marked += mask[ordered.order[place]];
    if (marked > before) function.emplace_back(value, static_cast<double>(marked));
  }
  for (auto& [value, share] : function) share /= static_cast<double>(marked);
  return function;
}

} // namespace runsieve
