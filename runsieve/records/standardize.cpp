#include <runsieve/records/standardize.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

/// Of the finite values among those given.
struct Moments
{
  double mean = 0.0;
  double deviation = 0.0; ///< standard deviation
};

template <class Function> void eachFinite(std::vector<double> const& values, Function&& function)
{
  for (double value : values)
    if (std::isfinite(value)) function(value);
}

Moments momentsOf(std::vector<double> const& values)
{
  Moments moments;
  double count = 0.0;
  eachFinite(values, [&](double value) { moments.mean += (value - moments.mean) / ++count; });
  // In units of the largest deviation, so that no square leaves the range of a double.
  double largest = 0.0;
  eachFinite(values, [&](double value) { largest = std::max(largest, std::abs(value - moments.mean)); });
  if (count < 2.0 || largest == 0.0) return moments;
  double squares = 0.0;
  eachFinite(values, [&](double value) { squares += std::pow((value - moments.mean) / largest, 2); });
  moments.deviation = largest * std::sqrt(squares / (count - 1.0));
  return moments;
}

} // namespace

void standardize(std::vector<double>& values)
{
  const Moments moments = momentsOf(values);
  for (double& value : values)
    if (std::isfinite(value))
      value = moments.deviation > 0.0 ? (value - moments.mean) / moments.deviation : 0.0;
}
