#include <runsieve/core/inference/FunctionalBands.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <utility>

namespace runsieve {

namespace {

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();

struct Place
{
  double value;
  std::size_t curve;
};

double pairsOf(double count)
{
  return 0.5 * count * (count - 1.0);
}

class Depths
{
public:
  Depths(double const* curves, std::size_t length, std::vector<std::uint8_t> const& mask)
      : values(curves), times(length), total(mask.size())
  {
    for (std::size_t curve = 0; curve < mask.size(); ++curve)
      if (mask[curve] != 0) members.push_back(curve);
  }

  /// \return one per curve; nothing if cancelled
  [[nodiscard]] std::optional<std::vector<double>> compute(std::function<bool()> const& cancelled,
                                                           BlockRunner const& threads) const
  {
    // Blocks are summed on their own and in their order, so that the number of threads leaves no trace.
    constexpr std::size_t timesOfBlock = 16;
    const std::size_t blocks = (times + timesOfBlock - 1) / timesOfBlock;
    std::vector<Sums> sums(blocks);
    std::atomic<bool> stopped = false;
    runBlocks(threads, blocks, [&](std::size_t block) {
      sums[block] = Sums(total);
      const std::size_t end = std::min(times, (block + 1) * timesOfBlock);
      for (std::size_t time = block * timesOfBlock; time < end && !stopped; ++time) {
        if (cancelled && cancelled()) stopped = true;
        add(time, sums[block]);
      }
    });
    if (stopped) return std::nullopt;
    std::vector<double> depths(total, NONE);
    for (std::size_t const curve : members) {
      double shares = 0.0;
      std::size_t count = 0;
      for (Sums const& part : sums) {
        shares += part.shares[curve];
        count += part.times[curve];
      }
      if (count > 0)
        depths[curve] = shares / static_cast<double>(count);
      else if (hasValue(curve))
        depths[curve] = 0.0;
    }
    return depths;
  }

private:
  struct Sums
  {
    Sums() = default;
    explicit Sums(std::size_t count) : shares(count), times(count) {}

    std::vector<double> shares;     ///< of enclosing pairs
    std::vector<std::size_t> times; ///< at which the curve lies among others
  };

  [[nodiscard]] bool hasValue(std::size_t curve) const
  {
    double const* row = values + curve * times;
    return std::any_of(row, row + times, [](double value) { return std::isfinite(value); });
  }

  /// Pairs enclose all but what both are below, or both above, of.
  void add(std::size_t time, Sums& sums) const
  {
    std::vector<Place> places;
    places.reserve(members.size());
    for (std::size_t const curve : members) {
      const double value = values[curve * times + time];
      if (std::isfinite(value)) places.push_back({value, curve});
    }
    if (places.size() < 2) return;
    std::sort(places.begin(), places.end(), [](Place const& a, Place const& b) { return a.value < b.value; });
    const auto count = static_cast<double>(places.size());
    for (std::size_t first = 0; first < places.size();) {
      std::size_t end = first;
      while (end < places.size() && places[end].value == places[first].value) ++end;
      const double apart = pairsOf(static_cast<double>(first)) + pairsOf(count - static_cast<double>(end));
      const double share = 1.0 - apart / pairsOf(count);
      for (; first < end; ++first) {
        sums.shares[places[first].curve] += share;
        ++sums.times[places[first].curve];
      }
    }
  }

  double const* values;
  std::size_t times;
  std::size_t total;
  std::vector<std::size_t> members;
};

struct Envelope
{
  explicit Envelope(std::size_t times) : low(times, NONE), high(times, NONE) {}

  void add(double const* curve)
  {
    for (std::size_t i = 0; i < low.size(); ++i) {
      if (!std::isfinite(curve[i])) continue;
      low[i] = std::fmin(low[i], curve[i]);
      high[i] = std::fmax(high[i], curve[i]);
    }
  }

  /// Whether a curve is outside somewhere by more than a multiple of the height.
  [[nodiscard]] bool isLeftBy(double const* curve, double reach) const
  {
    for (std::size_t i = 0; i < low.size(); ++i) {
      if (!std::isfinite(curve[i]) || std::isnan(low[i])) continue;
      const double fence = reach * (high[i] - low[i]);
      if (curve[i] < low[i] - fence || curve[i] > high[i] + fence) return true;
    }
    return false;
  }

  std::vector<double> low;
  std::vector<double> high;
};

/// The curves that have a depth, the deepest first.
std::vector<std::size_t> deepestFirst(std::vector<double> const& depths)
{
  std::vector<std::size_t> order;
  for (std::size_t curve = 0; curve < depths.size(); ++curve)
    if (!std::isnan(depths[curve])) order.push_back(curve);
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return depths[a] > depths[b]; });
  return order;
}

} // namespace

std::optional<FunctionalBands> functionalBandsOf(double const* values, std::size_t times,
                                                 std::vector<std::uint8_t> const& mask,
                                                 std::function<bool()> const& cancelled,
                                                 BlockRunner const& threads)
{
  auto depths = Depths(values, times, mask).compute(cancelled, threads);
  if (!depths) return std::nullopt;
  FunctionalBands bands;
  bands.depths = std::move(*depths);
  const std::vector<std::size_t> order = deepestFirst(bands.depths);
  if (!order.empty()) bands.deepest = order.front();
  Envelope central(times);
  for (std::size_t i = 0; i < (order.size() + 1) / 2; ++i) central.add(values + order[i] * times);
  Envelope usual(times);
  for (std::size_t const curve : order) {
    if (central.isLeftBy(values + curve * times, FunctionalBands::REACH))
      bands.outlying.push_back(curve);
    else
      usual.add(values + curve * times);
  }
  std::reverse(bands.outlying.begin(), bands.outlying.end());
  bands.centralLow = std::move(central.low);
  bands.centralHigh = std::move(central.high);
  bands.low = std::move(usual.low);
  bands.high = std::move(usual.high);
  return bands;
}

} // namespace runsieve
