#include <runsieve/core/compare/FamilyOfTests.h>

#include <runsieve/core/inference/AdjustedP.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve {

namespace {

/// The p-values of all comparisons, one after the other; NaN for copies.
std::vector<double> plainP(std::vector<std::vector<ParameterComparison>*> const& comparisons,
                           std::vector<std::size_t> const& originals)
{
  std::vector<double> p;
  for (auto const* comparison : comparisons)
    for (std::size_t i = 0; i < comparison->size(); ++i)
      p.push_back(originals[i] == i ? (*comparison)[i].p : std::numeric_limits<double>::quiet_NaN());
  return p;
}

} // namespace

void checkMethod(ComparisonMethod const& method)
{
  if (method.adjustment == Adjustment::Permutation && method.permutations == 0)
    throw std::invalid_argument("adjustment by permutation needs permutations");
  constexpr std::size_t most = 1000000; // of anything that takes time or is multiplied
  if (method.permutations > most || method.mostPermutations > most)
    throw std::invalid_argument("more than a million permutations");
  if (method.gatesTried == 0 || method.gatesTried > most)
    throw std::invalid_argument("the number of sets of gates that were tried lies outside of 1..1000000");
  if (!(method.thresholds.largestP >= 0.0 && method.thresholds.largestP <= 1.0))
    throw std::invalid_argument("the threshold of p lies outside of 0..1");
}

PermutationOptions permutationOptions(ComparisonMethod const& method, ComparisonWork const& work)
{
  PermutationOptions options;
  options.permutations = method.permutations;
  options.mostPermutations = std::max(method.permutations, method.mostPermutations);
  options.cut = cutOf(method);
  options.seed = method.seed;
  options.threads = work.threads;
  return options;
}

PermutationResult permuted(PermutationTest test, ComparisonWork const& work)
{
  if (!test.run(work.cancelled)) throw ComparisonCancelled();
  return test.result();
}

double forGatesTried(double p, ComparisonMethod const& method)
{
  return std::isnan(p) ? p : std::min(1.0, p * static_cast<double>(method.gatesTried));
}

std::size_t adjustFamily(std::vector<std::vector<ParameterComparison>*> const& comparisons,
                         std::vector<std::size_t> const& originals, ComparisonMethod const& method)
{
  const std::vector<double> p = plainP(comparisons, originals);
  auto const tests = static_cast<std::size_t>(
      std::count_if(p.begin(), p.end(), [](double value) { return !std::isnan(value); }));
  const std::size_t family = tests * method.gatesTried;
  const std::vector<double> holm = holmAdjusted(p, family);
  const std::vector<double> benjaminiHochberg = benjaminiHochbergAdjusted(p, family);
  std::size_t first = 0;
  for (auto* comparison : comparisons) {
    for (std::size_t i = 0; i < comparison->size(); ++i) {
      ParameterComparison& parameter = (*comparison)[i];
      parameter.pHolm = holm[first + originals[i]];
      parameter.pBenjaminiHochberg = benjaminiHochberg[first + originals[i]];
      parameter.significant =
          isSignificant(adjustedP(parameter, method.adjustment), parameter.d, method.thresholds);
    }
    first += comparison->size();
  }
  return family;
}

} // namespace runsieve
