#include <runsieve/core/kernels/OrderStatistics.h>

#include <runsieve/core/kernels/DistinctValues.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace runsieve {

namespace {

/// Distinct values, ascending, and how often each occurs.
struct Histogram
{
  std::vector<double> values;
  std::vector<std::uint32_t> counts;

  void clear()
  {
    values.clear();
    counts.clear();
  }
};

/// Rounds to steps of equal width above an origin. The bits of a rounded value depend on the order of these
/// operations.
struct Steps
{
  double origin;
  double width;

  /// The number of the nearest step to a value that is not below the origin, halves rounded up: what
  /// std::round gives, without a call.
  std::int64_t nearest(double value) const
  {
    const double steps = (value - origin) / width;
    const auto below = static_cast<std::int64_t>(steps);
    return below + static_cast<std::int64_t>(steps - static_cast<double>(below) >= 0.5);
  }
  double at(std::int64_t step) const { return origin + static_cast<double>(step) * width; }
};

FiveNumbers notANumber()
{
  FiveNumbers five;
  five.fill(std::numeric_limits<double>::quiet_NaN());
  return five;
}

/// Five numbers of one sample after the other; keeps its memory in between.
class Summary
{
public:
  explicit Summary(std::size_t bins) : mostBins(bins), distinct(bins) {}

  /// Overwrites the NaN in the sample.
  FiveNumbers of(double* sample, std::size_t size)
  {
    if (std::isnan(sample[0])) return notANumber();
    replaceNaN(sample, size);
    std::size_t bins = distinct.count(sample, size);
    if (bins <= mostBins) {
      takeDistinct();
      return quantiles(size);
    }
    const auto [least, greatest] = std::minmax_element(sample, sample + size);
    double top = *greatest;
    while (bins > mostBins) {
      const Steps steps{*least, (top - *least) / std::round(static_cast<double>(bins) / 2.0)};
      if (!(steps.width < std::numeric_limits<double>::infinity())) return notANumber();
      countSteps(sample, size, steps, steps.nearest(*greatest));
      bins = histogram.values.size();
      top = histogram.values.back();
    }
    return quantiles(size);
  }

private:
  /// Puts the least value so far in the place of each NaN.
  static void replaceNaN(double* sample, std::size_t size)
  {
    double least = sample[0];
    for (std::size_t i = 0; i < size; ++i) {
      if (std::isnan(sample[i])) sample[i] = least;
      least = std::min(least, sample[i]);
    }
  }

  void takeDistinct()
  {
    histogram.clear();
    for (auto const& [value, count] : distinct.sortedEntries()) {
      histogram.values.push_back(value);
      histogram.counts.push_back(count);
    }
  }

  void countSteps(double const* sample, std::size_t size, Steps const& steps, std::int64_t last)
  {
    stepCounts.assign(static_cast<std::size_t>(last + 1), 0);
    std::uint32_t* counts = stepCounts.data();
    for (std::size_t i = 0; i < size; ++i) ++counts[steps.nearest(sample[i])];
    histogram.clear();
    for (std::int64_t step = 0; step <= last; ++step) {
      if (counts[step] == 0) continue;
      const double value = steps.at(step);
      // Steps finer than the distance of neighbouring doubles round to the same value.
      if (!histogram.values.empty() && histogram.values.back() == value) {
        histogram.counts.back() += counts[step];
      } else {
        histogram.values.push_back(value);
        histogram.counts.push_back(counts[step]);
      }
    }
  }

  FiveNumbers quantiles(std::size_t size) const
  {
    auto const& values = histogram.values;
    FiveNumbers five;
    five.front() = mean(values.front(), values.front());
    five.back() = mean(values.back(), values.back());
    std::size_t bin = 0;
    std::size_t reached = histogram.counts[0];
    auto advanceTo = [&](double rank) {
      while (rank > static_cast<double>(reached)) reached += histogram.counts[++bin];
      return values[bin];
    };
    for (std::size_t k = 1; k + 1 < five.size(); ++k) {
      const double rank = static_cast<double>(k) * (static_cast<double>(size) / 4.0);
      const double lower = advanceTo(std::round(rank));
      five[k] = mean(lower, advanceTo(std::floor(rank + 1.0)));
    }
    return five;
  }

  /// Overflows where the filter does.
  static double mean(double a, double b) { return 0.5 * (a + b); }

  std::size_t mostBins;
  DistinctValues distinct;
  std::vector<std::uint32_t> stepCounts;
  Histogram histogram;
};

} // namespace

std::vector<FiveNumbers> orderStatistics(double const* values, std::size_t runs, std::size_t stride,
                                         std::size_t mostBins)
{
  // As many times at once as lie in two cache lines: each line of the source is read about once.
  constexpr std::size_t mostTimes = 16;
  std::vector<FiveNumbers> result(stride);
  std::vector<double> samples(runs * std::min(stride, mostTimes));
  Summary summary(mostBins);
  for (std::size_t first = 0; first < stride; first += mostTimes) {
    const std::size_t times = std::min(mostTimes, stride - first);
    for (std::size_t run = 0; run < runs; ++run)
      for (std::size_t t = 0; t < times; ++t) samples[t * runs + run] = values[run * stride + first + t];
    for (std::size_t t = 0; t < times; ++t) result[first + t] = summary.of(samples.data() + t * runs, runs);
  }
  return result;
}

} // namespace runsieve
