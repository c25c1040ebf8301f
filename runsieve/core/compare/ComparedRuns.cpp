#include <runsieve/core/compare/ComparedRuns.h>

#include <runsieve/core/inference/CategoryComparison.h>
#include <runsieve/core/inference/DistributionFunction.h>
#include <runsieve/core/inference/SampleComparison.h>
#include <runsieve/core/inference/TwoSampleP.h>
#include <runsieve/core/parallel/Parallel.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace runsieve {

namespace {

void requireRuns(std::size_t found, std::size_t expected, char const* what)
{
  if (found == expected) return;
  throw std::invalid_argument(std::string(what) + " is of " + std::to_string(found) + " runs, the scan has " +
                              std::to_string(expected));
}

void takeSample(ParameterComparison& result, OrderedValues const& ordered, std::vector<double> const& values,
                std::vector<std::uint8_t> const& mask)
{
  SampleComparison const sample = compareSamples(ordered, values.data(), mask.data());
  result.passing = sample.passing;
  result.others = sample.others;
  result.medianPassing = sample.passingMedian;
  result.medianOthers = sample.othersMedian;
  result.d = sample.d;
  result.value = sample.value;
  result.area = sample.area;
  result.medianShift = sample.medianShift;
  result.rangeShare = sample.rangeShare;
  TwoSampleP const p = twoSampleP(ordered.groupEnds, sample.passing, sample.others, sample.difference);
  result.p = p.p;
  result.isBelow = p.below;
  result.source = p.method == PMethod::Exact ? PSource::Exact : PSource::Asymptotic;
}

void takeTexts(ParameterComparison& result, ScanParameter const& parameter, std::vector<double> const& values,
               std::vector<std::uint8_t> const& mask)
{
  std::vector<std::int32_t> categories(values.size());
  for (std::size_t i = 0; i < values.size(); ++i)
    categories[i] = std::isnan(values[i]) ? -1 : static_cast<std::int32_t>(values[i]);
  CategoryComparison const found =
      compareCategories(categories.data(), mask.data(), categories.size(), parameter.texts.size());
  result.passing = found.passing;
  result.others = found.others;
  result.d = found.d;
  if (found.category >= 0) result.text = parameter.texts[static_cast<std::size_t>(found.category)];
  result.source = PSource::Permutation;
}

} // namespace

ComparedRuns::ComparedRuns(Scan const& scan, RunSet const& eligible) : scan(scan)
{
  requireRuns(eligible.runs(), scan.runs.size(), "the set of eligible runs");
  runs = eligible.members();
  for (std::size_t i = 0; i < scan.parameters.size(); ++i) add(scan.parameters[i], i);
}

void ComparedRuns::add(ScanParameter const& parameter, std::size_t position)
{
  requireRuns(parameter.values.size(), scan.runs.size(), "a parameter");
  Entry entry{position, {}};
  entry.values.reserve(runs.size());
  for (std::size_t const run : runs) entry.values.push_back(parameter.values[run]);
  OrderedValues ordered = orderedValues(entry.values.data(), entry.values.size());
  if (ordered.groupEnds.size() < 2) {
    left.push_back({parameter.label.name, runs.empty() ? "has no complete run" : "does not vary", position});
    return;
  }
  compared.push_back({std::move(ordered), parameter.isText() ? Steps::EACH_GROUP : Steps::CUMULATIVE});
  entries.push_back(std::move(entry));
}

std::vector<std::uint8_t> ComparedRuns::maskOf(RunSet const& set) const
{
  requireRuns(set.runs(), scan.runs.size(), "the set of passing runs");
  std::vector<std::uint8_t> mask(runs.size());
  for (std::size_t i = 0; i < runs.size(); ++i) mask[i] = set.contains(runs[i]) ? 1 : 0;
  return mask;
}

ParameterComparison ComparedRuns::compareOne(std::size_t index, std::vector<std::uint8_t> const& mask) const
{
  ParameterComparison result;
  ScanParameter const& parameter = parameterOf(index);
  result.name = parameter.label.name;
  result.parameter = entries[index].position;
  result.isText = parameter.isText();
  if (result.isText)
    takeTexts(result, parameter, entries[index].values, mask);
  else
    takeSample(result, compared[index].values, entries[index].values, mask);
  return result;
}

std::vector<ParameterComparison> ComparedRuns::compare(std::vector<std::uint8_t> const& mask,
                                                       unsigned threads) const
{
  std::vector<ParameterComparison> results(entries.size());
  inParallel(threadCount(threads), entries.size(),
             [&](std::size_t index) { results[index] = compareOne(index, mask); });
  return results;
}

std::vector<std::pair<double, double>> ComparedRuns::distribution(std::size_t position,
                                                                  std::vector<std::uint8_t> const& mask) const
{
  auto const entry = std::find_if(entries.begin(), entries.end(),
                                  [&](Entry const& candidate) { return candidate.position == position; });
  if (entry == entries.end()) return {};
  OrderedValues const& ordered = compared[static_cast<std::size_t>(entry - entries.begin())].values;
  return distributionFunction(ordered, entry->values.data(), mask.data());
}

} // namespace runsieve
