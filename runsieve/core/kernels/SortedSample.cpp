#include <runsieve/core/kernels/SortedSample.h>

#include <boost/sort/spreadsort/float_sort.hpp>

#include <algorithm>
#include <cmath>

namespace runsieve {

namespace {

bool sameValue(double a, double b)
{
  return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

void sortSample(std::vector<double>& values)
{
  // The radix sort orders bit patterns, which would scatter NaN values by their sign.
  auto end = std::partition(values.begin(), values.end(), [](double v) { return !std::isnan(v); });
  boost::sort::spreadsort::float_sort(values.begin(), end);
}

std::vector<double> sortedDistinct(double const* values, std::size_t count)
{
  std::vector<double> sample;
  // The rows of a run stand together and carry the same value: what is repeated need not be sorted.
  for (std::size_t i = 0; i < count; ++i)
    if (i == 0 || !sameValue(values[i], values[i - 1])) sample.push_back(values[i]);
  sortSample(sample);
  sample.erase(std::unique(sample.begin(), sample.end(), sameValue), sample.end());
  return sample;
}

} // namespace runsieve
