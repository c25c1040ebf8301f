#include "app/explorer/tables/RunFeature.h"

#include <cmath>
#include <limits>

namespace runsieve::app {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

double meanOf(double const* values, std::size_t times)
{
  double sum = 0.0;
  std::size_t count = 0;
  for (std::size_t t = 0; t < times; ++t) {
    if (std::isnan(values[t])) continue;
    sum += values[t];
    ++count;
  }
  return count == 0 ? missing : sum / static_cast<double>(count);
}

double lastOf(double const* values, std::size_t times)
{
  while (times > 0 && std::isnan(values[times - 1])) --times;
  return times == 0 ? missing : values[times - 1];
}

/// Position of the first largest of the values, each times a sign; that of no value if all are missing.
std::size_t largest(double const* values, std::size_t times, double sign)
{
  std::size_t best = times;
  for (std::size_t t = 0; t < times; ++t)
    if (!std::isnan(values[t]) && (best == times || sign * values[t] > sign * values[best])) best = t;
  return best;
}

} // namespace

char const* featureWord(RunFeature feature)
{
  static constexpr std::array<char const*, 5> words = {"last", "max", "min", "mean", "timeofmax"};
  return words.at(static_cast<std::size_t>(feature));
}

double featureOf(Scan const& scan, std::size_t output, std::size_t run, RunFeature feature)
{
  const std::size_t times = scan.times.size();
  double const* values = scan.valuesOf(output, run);
  if (feature == RunFeature::Last) return lastOf(values, times);
  if (feature == RunFeature::Mean) return meanOf(values, times);
  const std::size_t at = largest(values, times, feature == RunFeature::Min ? -1.0 : 1.0);
  if (at == times) return missing;
  return feature == RunFeature::TimeOfMax ? scan.times[at] : values[at];
}

} // namespace runsieve::app
