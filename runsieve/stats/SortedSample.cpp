#include <runsieve/stats/SortedSample.h>

#include <boost/sort/spreadsort/float_sort.hpp>

#include <algorithm>
#include <cmath>

namespace runsieve {

void sortSample(std::vector<double>& values)
{
  // The radix sort orders bit patterns, which would scatter NaN values by their sign.
  auto end = std::partition(values.begin(), values.end(), [](double v) { return !std::isnan(v); });
  boost::sort::spreadsort::float_sort(values.begin(), end);
}

std::vector<double> sortedDistinct(double const* values, std::size_t count)
{
  std::vector<double> sample;
  for (std::size_t i = 0; i < count; ++i) {
    const bool repeated =
        i > 0 && (values[i] == values[i - 1] || (std::isnan(values[i]) && std::isnan(values[i - 1])));
    if (!repeated) sample.push_back(values[i]);
  }
  sortSample(sample);
  sample.erase(std::unique(sample.begin(), sample.end()), sample.end());
  return sample;
}

} // namespace runsieve
