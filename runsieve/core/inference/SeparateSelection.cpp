#include <runsieve/core/inference/SeparateSelection.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve {

namespace {

constexpr std::size_t QUANTILES = 32; ///< of either set of runs
constexpr int MOST_ROUNDS = 200;
constexpr double ACCURACY = 1e-6; ///< of the share of passing runs in a bin

/// Counts along an order of runs at which a quantile of a set of runs has been reached.
class QuantileSteps
{
public:
  explicit QuantileSteps(std::size_t setSize) : size(setSize) {}

  /// Whether the next `count` members of the set, at one value, reach a further quantile.
  bool reachNext(std::size_t count)
  {
    seen += count;
    const std::size_t now = size > 0 ? seen * QUANTILES / size : 0;
    const bool further = now > reached;
    reached = now;
    return further;
  }
  [[nodiscard]] std::size_t sofar() const { return seen; }

private:
  std::size_t size;
  std::size_t seen = 0;
  std::size_t reached = 0;
};

/// Runs in the cells of two parameters' bins, and passing runs in the bins of each.
struct CellCounts
{
  std::vector<double> runs;       ///< bins of x times bins of y
  std::vector<double> passingOfX; ///< per bin of x
  std::vector<double> passingOfY; ///< per bin of y
};

CellCounts cellCounts(ParameterBins const& x, ParameterBins const& y,
                      std::vector<unsigned char> const& passing)
{
  CellCounts counts;
  counts.runs.resize(x.bins * y.bins);
  counts.passingOfX.resize(x.bins);
  counts.passingOfY.resize(y.bins);
  for (std::size_t run = 0; run < passing.size(); ++run) {
    if (x.bin[run] == ParameterBins::NONE || y.bin[run] == ParameterBins::NONE) continue;
    counts.runs[x.bin[run] * y.bins + y.bin[run]] += 1.0;
    counts.passingOfX[x.bin[run]] += passing[run];
    counts.passingOfY[y.bin[run]] += passing[run];
  }
  return counts;
}

/// The factors f and g of the bins.
struct Factors
{
  std::vector<double> ofX;
  std::vector<double> ofY;
};

/// One half of a round of fitting; returns the largest change of a bin's count.
double fitX(CellCounts const& counts, Factors& factors)
{
  double change = 0.0;
  const std::size_t bins = factors.ofY.size();
  for (std::size_t a = 0; a < factors.ofX.size(); ++a) {
    double sum = 0.0;
    for (std::size_t b = 0; b < bins; ++b) sum += counts.runs[a * bins + b] * factors.ofY[b];
    change = std::max(change, std::abs(sum * factors.ofX[a] - counts.passingOfX[a]));
    factors.ofX[a] = sum > 0.0 ? counts.passingOfX[a] / sum : 0.0;
  }
  return change;
}

void fitY(CellCounts const& counts, Factors& factors)
{
  const std::size_t bins = factors.ofY.size();
  std::vector<double> sums(bins);
  for (std::size_t a = 0; a < factors.ofX.size(); ++a)
    for (std::size_t b = 0; b < bins; ++b) sums[b] += counts.runs[a * bins + b] * factors.ofX[a];
  for (std::size_t b = 0; b < bins; ++b)
    factors.ofY[b] = sums[b] > 0.0 ? counts.passingOfY[b] / sums[b] : 0.0;
}

Factors fittedFactors(CellCounts const& counts)
{
  Factors factors{std::vector<double>(counts.passingOfX.size(), 1.0),
                  std::vector<double>(counts.passingOfY.size(), 1.0)};
  double passing = 0.0;
  for (const double count : counts.passingOfX) passing += count;
  for (int round = 0; round < MOST_ROUNDS; ++round) {
    const bool fits = fitX(counts, factors) <= ACCURACY * passing;
    fitY(counts, factors);
    if (fits) break;
  }
  return factors;
}

/// Writes the middle of each run's share of the total weight, less the total's middle: a weighted mid-rank.
void writeWeightedRanks(OrderedValues const& ordered, std::vector<double> const& weights,
                        std::vector<double>& ranks)
{
  double total = 0.0;
  for (const std::uint32_t run : ordered.order) total += weights[run];
  double before = 0.0;
  std::size_t begin = 0;
  for (const std::uint32_t end : ordered.groupEnds) {
    double upTo = before;
    for (std::size_t i = begin; i < end; ++i) upTo += weights[ordered.order[i]];
    for (std::size_t i = begin; i < end; ++i) ranks[ordered.order[i]] = 0.5 * (before + upTo - total);
    before = upTo;
    begin = end;
  }
}

} // namespace

ParameterBins parameterBins(OrderedValues const& ordered, std::vector<unsigned char> const& passing)
{
  ParameterBins result;
  result.bin.assign(passing.size(), ParameterBins::NONE);
  std::size_t size = 0;
  for (const std::uint32_t run : ordered.order) size += passing[run];
  QuantileSteps ofPassing(size);
  QuantileSteps ofOthers(ordered.order.size() - size);
  std::size_t begin = 0;
  std::uint8_t bin = 0;
  bool full = false; // whether the group of equal values before this one has ended its bin
  for (const std::uint32_t end : ordered.groupEnds) {
    std::size_t count = 0;
    for (std::size_t i = begin; i < end; ++i) count += passing[ordered.order[i]];
    const bool firstPassing = count > 0 && ofPassing.sofar() == 0;
    if (begin > 0 && (full || firstPassing)) ++bin;
    for (std::size_t i = begin; i < end; ++i) result.bin[ordered.order[i]] = bin;
    const bool passingReach = ofPassing.reachNext(count);
    const bool othersReach = ofOthers.reachNext(end - begin - count);
    full = passingReach || othersReach;
    begin = end;
  }
  result.bins = ordered.order.empty() ? 0 : bin + std::size_t{1};
  return result;
}

double separateCorrelation(OrderedValues const& x, ParameterBins const& binsOfX, OrderedValues const& y,
                           ParameterBins const& binsOfY, std::vector<unsigned char> const& passing)
{
  const Factors factors = fittedFactors(cellCounts(binsOfX, binsOfY, passing));
  const std::size_t runs = passing.size();
  std::vector<double> weights(runs);
  for (std::size_t run = 0; run < runs; ++run)
    if (binsOfX.bin[run] != ParameterBins::NONE && binsOfY.bin[run] != ParameterBins::NONE)
      weights[run] = factors.ofX[binsOfX.bin[run]] * factors.ofY[binsOfY.bin[run]];
  std::vector<double> ranksX(runs);
  std::vector<double> ranksY(runs);
  writeWeightedRanks(x, weights, ranksX);
  writeWeightedRanks(y, weights, ranksY);
  double products = 0.0;
  double squaresX = 0.0;
  double squaresY = 0.0;
  for (std::size_t run = 0; run < runs; ++run) {
    products += weights[run] * ranksX[run] * ranksY[run];
    squaresX += weights[run] * ranksX[run] * ranksX[run];
    squaresY += weights[run] * ranksY[run] * ranksY[run];
  }
  const double scale = std::sqrt(squaresX * squaresY);
  return scale > 0.0 ? std::clamp(products / scale, -1.0, 1.0) : std::numeric_limits<double>::quiet_NaN();
}

} // namespace runsieve
