#include <runsieve/core/inference/SampleComparison.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace runsieve {

namespace {

constexpr double UNDEFINED = SampleComparison::UNDEFINED;

/// One of the two samples, met in ascending order.
struct Side
{
  std::uint32_t size = 0;
  std::uint32_t met = 0;
  double least = UNDEFINED;
  double largest = UNDEFINED;
  double lowerMiddle = UNDEFINED;
  double upperMiddle = UNDEFINED;

  void meet(double value)
  {
    if (met == 0) least = value;
    largest = value;
    if (met == (size - 1) / 2) lowerMiddle = value;
    if (met == size / 2) upperMiddle = value;
    ++met;
  }

  [[nodiscard]] double median() const
  {
    double const sum = lowerMiddle + upperMiddle;
    return std::isinf(sum) ? 0.5 * lowerMiddle + 0.5 * upperMiddle : 0.5 * sum;
  }
};

/// The compared runs of both sides, of which there is at least one.
class Pooled
{
public:
  Pooled(std::vector<std::uint32_t> const& order, double const* values)
      : order(order), values(values),
        unit(std::isinf(values[order.back()] - values[order.front()]) ? 0.5 : 1.0)
  {}

  /// In a unit in which differences of finite values are finite.
  [[nodiscard]] double difference(double from, double to) const { return unit * to - unit * from; }
  [[nodiscard]] double range() const { return difference(values[order.front()], values[order.back()]); }
  [[nodiscard]] double interquartileRange() const { return difference(quartile(1), quartile(3)); }

private:
  /// Of type 7: at the place (n - 1) * quarters / 4, between two runs by linear interpolation.
  [[nodiscard]] double quartile(std::size_t quarters) const
  {
    std::size_t const place = (order.size() - 1) * quarters;
    double const value = values[order[place / 4]];
    double const part = static_cast<double>(place % 4) / 4.0;
    return part == 0.0 ? value : (1.0 - part) * value + part * values[order[place / 4 + 1]];
  }

  std::vector<std::uint32_t> const& order;
  double const* values;
  double unit;
};

double ratioOf(double part, double whole)
{
  double const ratio = part / whole;
  return whole > 0.0 && std::isfinite(whole) && std::isfinite(ratio) ? ratio : UNDEFINED;
}

} // namespace

SampleComparison compareSamples(OrderedValues const& ordered, double const* values,
                                std::uint8_t const* passes)
{
  SampleComparison result;
  if (ordered.order.empty()) return result;

  // Chosen by index: which side the next run is on cannot be predicted.
  std::array<Side, 2> sides;
  Side& others = sides[0];
  Side& passing = sides[1];
  for (std::uint32_t const run : ordered.order) passing.size += passes[run] != 0 ? 1 : 0;
  others.size = static_cast<std::uint32_t>(ordered.order.size()) - passing.size;
  auto const product = static_cast<double>(passing.size) * static_cast<double>(others.size);

  Pooled const pooled(ordered.order, values);
  std::int64_t difference = 0; // at the value before
  double valueBefore = values[ordered.order.front()];
  double area = 0.0;
  std::size_t place = 0;
  for (std::size_t const end : ordered.groupEnds) {
    double const value = values[ordered.order[place]];
    area += static_cast<double>(std::abs(difference)) / product * pooled.difference(valueBefore, value);
    for (; place < end; ++place) {
      std::uint32_t const run = ordered.order[place];
      sides[passes[run] != 0 ? 1 : 0].meet(values[run]);
    }
    difference = std::int64_t{others.met} * passing.size - std::int64_t{passing.met} * others.size;
    if (std::abs(difference) > std::abs(result.difference)) {
      result.difference = difference;
      result.value = value;
    }
    valueBefore = value;
  }

  result.passing = passing.size;
  result.others = others.size;
  result.passingMedian = passing.median();
  result.othersMedian = others.median();
  result.d = static_cast<double>(result.difference) / product;
  result.area = std::min(ratioOf(area, pooled.range()), 1.0); // the sum is rounded
  result.medianShift =
      ratioOf(pooled.difference(result.othersMedian, result.passingMedian), pooled.interquartileRange());
  result.rangeShare = ratioOf(pooled.difference(passing.least, passing.largest), pooled.range());
  return result;
}

} // namespace runsieve
