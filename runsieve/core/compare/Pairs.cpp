#include <runsieve/core/compare/Pairs.h>

#include <runsieve/core/compare/ComparedRuns.h>
#include <runsieve/core/compare/FamilyOfTests.h>
#include <runsieve/core/compare/PairWarnings.h>
#include <runsieve/core/inference/PairComparison.h>
#include <runsieve/core/inference/WilsonInterval.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>

namespace runsieve {

namespace {

/// The number parameters of the compared runs.
struct Numbers
{
  std::vector<std::size_t> index; ///< in ComparedRuns
  std::vector<OrderedValues> orders;
};

Numbers numbersOf(ComparedRuns const& runs)
{
  Numbers numbers;
  for (std::size_t i = 0; i < runs.parameters().size(); ++i) {
    if (runs.parameterOf(i).isText()) continue;
    numbers.index.push_back(i);
    numbers.orders.push_back(runs.parameters()[i].values);
  }
  if (numbers.index.size() > mostPairedParameters)
    throw std::length_error("the pairs of " + std::to_string(numbers.index.size()) +
                            " parameters are too many; those of at most " +
                            std::to_string(mostPairedParameters) + " are compared");
  return numbers;
}

std::vector<LeftOutParameter> leftOutOf(ComparedRuns const& runs)
{
  std::vector<LeftOutParameter> left = runs.leftOut();
  for (std::size_t i = 0; i < runs.parameters().size(); ++i)
    if (runs.parameterOf(i).isText())
      left.push_back({runs.parameterOf(i).label.name, "is text", runs.positionOf(i)});
  std::sort(left.begin(), left.end(),
            [](LeftOutParameter const& a, LeftOutParameter const& b) { return a.parameter < b.parameter; });
  return left;
}

PairComparison permuted(Numbers const& numbers, std::vector<std::uint8_t> const& mask,
                        ComparisonMethod const& method, std::size_t permutations, ComparisonWork const& work)
{
  PairSettings settings;
  settings.permutations = permutations;
  settings.seed = method.seed;
  settings.level = cutOf(method);
  settings.threads = work.threads;
  PairComparison test(numbers.orders, mask, settings);
  while (!test.done()) {
    if (work.cancelled && work.cancelled()) throw ComparisonCancelled();
    test.advance();
  }
  return test;
}

/// Whether the 99 % interval of each p lies on one side of the cut.
bool isSettled(std::vector<PairResult> const& pairs, std::size_t permutations, double cut)
{
  if (cut == 0.0 || cut == 1.0) return true; // all p-values are above 0 and at most 1
  auto const made = static_cast<double>(permutations);
  return std::none_of(pairs.begin(), pairs.end(), [&](PairResult const& pair) {
    if (std::isnan(pair.p)) return false;
    auto const reached = static_cast<std::size_t>(std::lround(pair.p * (1.0 + made))) - 1;
    Interval const p = wilsonInterval(reached, permutations, normal99);
    return p.low <= cut && cut <= p.high;
  });
}

ParameterPair pairOf(PairResult const& found, ComparedRuns const& runs, Numbers const& numbers)
{
  std::size_t const first = numbers.index[found.first];
  std::size_t const second = numbers.index[found.second];
  ParameterPair pair;
  pair.first = runs.parameterOf(first).label.name;
  pair.second = runs.parameterOf(second).label.name;
  pair.firstParameter = runs.positionOf(first);
  pair.secondParameter = runs.positionOf(second);
  pair.passing = found.passingRuns;
  pair.others = found.otherRuns;
  pair.rPassing = found.passing;
  pair.rOthers = found.others;
  pair.rAll = found.all;
  pair.byDesign = found.byDesign;
  pair.expected = found.expected;
  pair.statistic = found.statistic;
  return pair;
}

void takePermutations(PairComparisons& result, PairComparison const& test,
                      std::vector<PairResult> const& pairs)
{
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    ParameterPair& pair = result.pairs[i];
    pair.p = forGatesTried(pairs[i].p, result.method);
    pair.significant = pair.p <= result.method.thresholds.largestP;
  }
  result.isSettled = isSettled(pairs, result.permutations, cutOf(result.method));
  double const floor = test.correlationFloor();
  result.noiseFloor = std::isfinite(floor) ? floor : ParameterPair::UNDEFINED;
}

void orderByStatistic(std::vector<ParameterPair>& pairs)
{
  auto const key = [](ParameterPair const& pair) {
    return std::isnan(pair.statistic) ? -1.0 : pair.statistic;
  };
  std::stable_sort(pairs.begin(), pairs.end(),
                   [&](ParameterPair const& a, ParameterPair const& b) { return key(a) > key(b); });
}

/// Permutes, and anew with more permutations if they could decide what fewer leave open.
void compare(PairComparisons& result, ComparedRuns const& runs, std::vector<std::uint8_t> const& mask,
             ComparisonWork const& work)
{
  const Numbers numbers = numbersOf(runs);
  if (numbers.index.size() < 2) return;
  ComparisonMethod const& method = result.method;
  if (result.passing > 0 && result.others > 0) result.permutations = method.permutations;
  std::optional<PairComparison> test = permuted(numbers, mask, method, result.permutations, work);
  std::vector<PairResult> pairs = test->pairs();
  for (PairResult const& found : pairs) result.pairs.push_back(pairOf(found, runs, numbers));
  if (result.permutations == 0) return;
  takePermutations(result, *test, pairs);
  if (result.isSettled || method.mostPermutations <= method.permutations) return;
  result.permutations = method.mostPermutations;
  test.emplace(permuted(numbers, mask, method, result.permutations, work));
  pairs = test->pairs();
  takePermutations(result, *test, pairs);
}

} // namespace

PairComparisons comparePairs(Scan const& scan, RunSet const& passing, RunSet const& eligible,
                             ComparisonMethod const& method, ComparisonWork const& work)
{
  checkMethod(method);
  if (method.permutations == 0)
    throw std::invalid_argument("pairs are tested by permutations, of which there are none");
  const ComparedRuns runs(scan, eligible);
  const std::vector<std::uint8_t> mask = runs.maskOf(passing);
  PairComparisons result;
  result.method = method;
  result.passing = static_cast<std::size_t>(std::count(mask.begin(), mask.end(), 1));
  result.others = mask.size() - result.passing;
  result.leftOut = leftOutOf(runs);
  compare(result, runs, mask, work);
  result.warnings = pairWarningsOf(runs, mask, result);
  orderByStatistic(result.pairs);
  return result;
}

PairComparisons comparePairs(Scan const& scan, RunSet const& passing, ComparisonMethod const& method,
                             ComparisonWork const& work)
{
  return comparePairs(scan, passing, RunSet(scan.runs.size(), true), method, work);
}

} // namespace runsieve
