#include <runsieve/core/inference/SampleWarnings.h>

#include <runsieve/core/inference/EvenSpread.h>
#include <runsieve/core/inference/RankCorrelation.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <unordered_map>

namespace runsieve {

namespace {

constexpr std::size_t RUNS_OF_LATTICE_POINT = 5;
// Fewer draws are even by chance too often.
constexpr std::size_t LEAST_RUNS_OF_HYPERCUBE = 20;
constexpr std::size_t LEAST_RUNS_OF_SEQUENCE = 64;
constexpr double CHANCE_OF_SWEEP = 1e-4;
/// Of the unevenness over the root of the number of runs, which is some 0.8 for independent draws.
constexpr double EVEN = 0.15;

bool equallySpaced(std::vector<double> const& levels)
{
  if (levels.size() < 3) return false;
  const double step = (levels.back() - levels.front()) / static_cast<double>(levels.size() - 1);
  if (!std::isfinite(step)) return false;
  for (std::size_t i = 0; i < levels.size(); ++i)
    if (!(std::abs(levels[i] - levels.front() - static_cast<double>(i) * step) < 1e-3 * step)) return false;
  return true;
}

/// Empty if not all are positive.
std::vector<double> logarithmsOf(std::vector<double> values)
{
  if (values.empty() || !(values.front() > 0.0)) return {};
  for (double& value : values) value = std::log(value);
  return values;
}

bool onLattice(std::vector<double> const& levels)
{
  return equallySpaced(levels) || equallySpaced(logarithmsOf(levels));
}

/// Which runs have which rank of value, forwards or backwards; equal for copies only.
std::vector<std::uint32_t> ranksOf(OrderedValues const& ordered, std::size_t runs, bool backwards)
{
  std::vector<std::uint32_t> ranks(runs); // 0 for runs without a value
  const auto groups = static_cast<std::uint32_t>(ordered.groupEnds.size());
  std::size_t i = 0;
  for (std::uint32_t g = 0; g < groups; ++g)
    for (; i < ordered.groupEnds[g]; ++i) ranks[ordered.order[i]] = backwards ? groups - g : g + 1;
  return ranks;
}

bool isCopy(OrderedValues const& a, OrderedValues const& b, std::size_t runs, bool backwards)
{
  return a.order.size() == b.order.size() && a.groupEnds.size() == b.groupEnds.size() &&
         ranksOf(a, runs, false) == ranksOf(b, runs, backwards);
}

std::uint64_t hashOf(std::vector<std::uint32_t> const& numbers)
{
  constexpr std::uint64_t start = 14695981039346656037U; // FNV-1a, of numbers in place of bytes
  constexpr std::uint64_t prime = 1099511628211U;
  std::uint64_t hash = start;
  for (const std::uint32_t number : numbers) hash = (hash ^ number) * prime;
  return hash;
}

std::vector<double> ascendingOf(double const* values, std::size_t runs)
{
  std::vector<double> sorted(values, values + runs);
  std::sort(sorted.begin(), sorted.end());
  return sorted;
}

/// Of the values or of their logarithms, whichever is more even.
double leastUnevenness(double const* values, std::size_t runs)
{
  const std::vector<double> sorted = ascendingOf(values, runs);
  const std::vector<double> logarithms = logarithmsOf(sorted);
  return std::min(unevenness(sorted), unevenness(logarithms));
}

bool anyWithout(double const* values, std::size_t runs)
{
  return std::any_of(values, values + runs, [](double value) { return std::isnan(value); });
}

bool isConstant(double const* values, std::size_t runs)
{
  return std::all_of(values, values + runs, [values](double value) { return value == values[0]; });
}

bool isLattice(std::vector<double const*> const& values, std::size_t runs)
{
  // The number of combinations is compared while it is built up, so that it cannot overflow.
  std::size_t combinations = 1;
  std::vector<std::vector<std::uint32_t>> levels;
  for (double const* column : values) {
    const OrderedValues ordered = orderedValues(column, runs);
    combinations *= ordered.groupEnds.size();
    if (combinations > runs) return false;
    levels.push_back(ranksOf(ordered, runs, false));
  }
  std::map<std::vector<std::uint32_t>, std::size_t> counts;
  std::vector<std::uint32_t> point(values.size());
  for (std::size_t run = 0; run < runs; ++run) {
    for (std::size_t p = 0; p < levels.size(); ++p) point[p] = levels[p][run];
    ++counts[point];
  }
  return counts.size() == combinations && std::all_of(counts.begin(), counts.end(), [&](auto const& entry) {
           return entry.second == runs / combinations;
         });
}

/// Whether the values go one way from run to run, and would do so by chance in less than CHANCE_OF_SWEEP of
/// the orders of these values.
bool isSweep(double const* values, std::size_t runs)
{
  if (!std::is_sorted(values, values + runs) && !std::is_sorted(values, values + runs, std::greater<>()))
    return false;
  // Up and down; each run stands in its place by chance 1 in as many as there are up to it, and those of
  // equal value in any of theirs.
  double chance = 2.0;
  std::size_t equal = 0;
  for (std::size_t run = 0; run < runs && chance >= CHANCE_OF_SWEEP; ++run) {
    equal = run > 0 && values[run] == values[run - 1] ? equal + 1 : 1;
    chance *= static_cast<double>(equal) / static_cast<double>(run + 1);
  }
  return chance < CHANCE_OF_SWEEP;
}

/// Whether each parameter is spread evenly over the first `runs` runs.
bool allEven(std::vector<double const*> const& values, std::size_t runs)
{
  const double most = EVEN * std::sqrt(static_cast<double>(runs));
  return std::all_of(values.begin(), values.end(),
                     [&](double const* column) { return leastUnevenness(column, runs) < most; });
}

bool oneInEachStratum(std::vector<double const*> const& values, std::size_t runs)
{
  constexpr double rounding = 1e-6; // of values that were written with few digits
  return std::all_of(values.begin(), values.end(),
                     [&](double const* column) { return leastUnevenness(column, runs) <= rounding; });
}

} // namespace

std::vector<FewLevels> fewLevels(std::vector<OrderedValues> const& orders,
                                 std::vector<double const*> const& values, std::size_t few)
{
  std::vector<FewLevels> found;
  for (std::size_t p = 0; p < orders.size(); ++p) {
    std::vector<std::uint32_t> const& ends = orders[p].groupEnds;
    if (ends.size() < 2) continue;
    FewLevels entry{p, ends.size(), false};
    std::vector<double> levels;
    for (const std::uint32_t end : ends) levels.push_back(values[p][orders[p].order[end - 1]]);
    entry.lattice = onLattice(levels);
    const bool shared = ends.size() * RUNS_OF_LATTICE_POINT <= orders[p].order.size();
    if (ends.size() < few || (entry.lattice && shared)) found.push_back(entry);
  }
  return found;
}

std::vector<DesignCorrelation> designCorrelations(std::vector<OrderedValues> const& orders, std::size_t runs,
                                                  double limit)
{
  const PairCorrelations correlations = rankCorrelations(orders, std::vector<unsigned char>(runs, 1));
  std::vector<DesignCorrelation> found;
  for (std::size_t first = 0; first < orders.size(); ++first)
    for (std::size_t second = first + 1; second < orders.size(); ++second) {
      const double r = correlations.r[pairPlace(second, first)];
      if (std::abs(r) > limit)
        found.push_back({first, second, r,
                         std::abs(r) > 1.0 - 1e-9 && isCopy(orders[first], orders[second], runs, r < 0.0)});
    }
  std::stable_sort(found.begin(), found.end(), [](DesignCorrelation const& a, DesignCorrelation const& b) {
    return std::abs(a.r) > std::abs(b.r);
  });
  return found;
}

std::vector<DesignCorrelation> designCopies(std::vector<OrderedValues> const& orders, std::size_t runs)
{
  std::vector<DesignCorrelation> found;
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> originals; // by the hash of their ranks
  for (std::size_t second = 0; second < orders.size(); ++second) {
    const std::uint64_t forwards = hashOf(ranksOf(orders[second], runs, false));
    const std::uint64_t backwards = hashOf(ranksOf(orders[second], runs, true));
    std::optional<DesignCorrelation> copy;
    for (const bool reversed : {false, true}) {
      auto const like = originals.find(reversed ? backwards : forwards);
      if (like == originals.end()) continue;
      for (const std::size_t first : like->second)
        if (!copy && isCopy(orders[first], orders[second], runs, reversed))
          copy = DesignCorrelation{first, second, reversed ? -1.0 : 1.0, true};
    }
    if (copy)
      found.push_back(*copy);
    else
      originals[forwards].push_back(second);
  }
  return found;
}

SampleDesign sampleDesign(std::vector<double const*> const& values, std::size_t runs)
{
  std::vector<double const*> varying;
  for (double const* column : values) {
    if (anyWithout(column, runs)) return SampleDesign::INDEPENDENT;
    if (!isConstant(column, runs)) varying.push_back(column);
  }
  if (varying.empty()) return SampleDesign::INDEPENDENT;
  if (varying.size() == 1 && isSweep(varying.front(), runs)) return SampleDesign::SWEEP;
  if (varying.size() > 1 && isLattice(varying, runs)) return SampleDesign::LATTICE;
  if (runs < LEAST_RUNS_OF_HYPERCUBE || !allEven(varying, runs)) return SampleDesign::INDEPENDENT;
  if (runs >= LEAST_RUNS_OF_SEQUENCE && allEven(varying, runs / 2)) return SampleDesign::SEQUENCE;
  return oneInEachStratum(varying, runs) ? SampleDesign::LATIN_HYPERCUBE : SampleDesign::INDEPENDENT;
}

} // namespace runsieve
