#include <runsieve/core/compare/ParameterComparer.h>

#include <runsieve/core/kernels/TwoSampleTest.h>
#include <runsieve/core/scan/ParameterBounds.h>

#include <algorithm>
#include <stdexcept>

namespace runsieve {

namespace {

void requireRuns(std::size_t found, std::size_t expected, char const* what)
{
  if (found == expected) return;
  throw std::invalid_argument(std::string(what) + " is of " + std::to_string(found) + " runs, the scan has " +
                              std::to_string(expected));
}

std::size_t longest(std::vector<std::vector<double>> const& samples)
{
  std::size_t length = 0;
  for (auto const& sample : samples) length = std::max(length, sample.size());
  return length;
}

/// The values of a sample as they are compared.
std::vector<double> comparedValues(std::vector<double> const& sample, std::size_t length,
                                   ParameterBound const& bound)
{
  const AlignedSample aligned = alignSample(sample, length, &bound);
  std::vector<double> values(length);
  spreadValues(aligned.sorted, aligned.range, values.data());
  return values;
}

} // namespace

ParameterComparer::ParameterComparer(Scan const& scan, RunSet const& eligible) : runCount(scan.runs.size())
{
  requireRuns(eligible.runs(), runCount, "the set of eligible runs");
  members = eligible.members();
  for (std::size_t i = 0; i < scan.parameters.size(); ++i) add(scan.parameters[i], i);
}

void ParameterComparer::add(ScanParameter const& parameter, std::size_t position)
{
  requireRuns(parameter.values.size(), runCount, "a parameter");
  std::string const& name = parameter.label.name;
  if (parameter.isText()) {
    left.push_back({name, "is text", position});
    return;
  }
  std::vector<double> values;
  values.reserve(members.size());
  for (std::size_t run : members) values.push_back(parameter.values[run]);
  const auto [low, high] = boundsOfRuns(values.data(), values.size(), 1);
  if (low == high) {
    left.push_back({name, "does not vary", position});
    return;
  }
  const auto runs = static_cast<long long>(values.size());
  entries.push_back({name, position, {low, high}, ParameterOrder(values.data(), runs, 1)});
}

std::vector<std::vector<double>> ParameterComparer::samplesOf(std::vector<unsigned char> const& mask) const
{
  std::vector<std::vector<double>> samples(entries.size());
  for (std::size_t i = 0; i < entries.size(); ++i) entries[i].order.distinctOf(mask.data(), samples[i]);
  return samples;
}

std::vector<ParameterComparison> ParameterComparer::compare(RunSet const& passing,
                                                            Thresholds const& thresholds) const
{
  requireRuns(passing.runs(), runCount, "the set of passing runs");
  std::vector<unsigned char> ofPassing(members.size());
  std::vector<unsigned char> ofOthers(members.size());
  for (std::size_t i = 0; i < members.size(); ++i) {
    ofPassing[i] = passing.contains(members[i]) ? 1 : 0;
    ofOthers[i] = 1 - ofPassing[i];
  }
  std::vector<ParameterComparison> comparisons;
  if (std::find(ofPassing.begin(), ofPassing.end(), 1) == ofPassing.end()) return comparisons;
  const std::vector<std::vector<double>> passingSamples = samplesOf(ofPassing);
  const std::vector<std::vector<double>> otherSamples = samplesOf(ofOthers);
  const std::size_t nA = longest(passingSamples);
  const std::size_t nB = longest(otherSamples);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    Entry const& entry = entries[i];
    const std::vector<double> a = comparedValues(passingSamples[i], nA, entry.bound);
    const std::vector<double> b = comparedValues(otherSamples[i], nB, entry.bound);
    const auto [p, d] = testOf(sortedStatistic(a.data(), nA, b.data(), nB), nA, nB);
    comparisons.push_back({entry.name, p, d, medianOfSorted(a.data(), nA), medianOfSorted(b.data(), nB),
                           isSignificant(p, d, thresholds), entry.parameter});
  }
  return comparisons;
}

} // namespace runsieve
