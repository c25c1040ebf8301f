#include <runsieve/records/standardize.h>

#include <cmath>
#include <cstddef>

namespace {

struct Moments
{
  std::size_t count = 0;
  double mean = 0.0;
  double squares = 0.0; ///< sum of squared deviations from the mean
};

/// By Welford's updates, which lose no digits to a large mean.
Moments momentsOf(std::vector<double> const& values)
{
  Moments moments;
  for (double value : values) {
    if (!std::isfinite(value)) continue;
    ++moments.count;
    const double deviation = value - moments.mean;
    moments.mean += deviation / static_cast<double>(moments.count);
    moments.squares += deviation * (value - moments.mean);
  }
  return moments;
}

} // namespace

void standardize(std::vector<double>& values)
{
  const Moments moments = momentsOf(values);
  const double variance = moments.count > 1 ? moments.squares / static_cast<double>(moments.count - 1) : 0.0;
  for (double& value : values)
    if (std::isfinite(value)) value = variance > 0.0 ? (value - moments.mean) / std::sqrt(variance) : 0.0;
}
