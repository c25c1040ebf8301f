#include <runsieve/core/compare/Clusters.h>

#include <runsieve/core/compare/ComparedRuns.h>
#include <runsieve/core/compare/ComparisonWarnings.h>
#include <runsieve/core/compare/FamilyOfTests.h>
#include <runsieve/core/kernels/CurveSpectra.h>
#include <runsieve/core/kernels/PearsonKMeans.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace runsieve {

namespace {

void checkLabels(std::vector<int> const& labels, std::size_t runs)
{
  if (labels.size() != runs)
    throw std::invalid_argument(std::to_string(labels.size()) + " labels for " + std::to_string(runs) +
                                " runs");
  for (int label : labels)
    if (label >= 0 && static_cast<std::size_t>(label) >= runs)
      throw std::invalid_argument("cluster " + std::to_string(label) + " of " + std::to_string(runs) +
                                  " runs");
}

std::vector<int> labelsOf(ComparedRuns const& runs, std::vector<int> const& labels)
{
  std::vector<int> ofMembers;
  ofMembers.reserve(runs.members().size());
  for (std::size_t const run : runs.members()) ofMembers.push_back(labels[run]);
  return ofMembers;
}

std::vector<std::uint8_t> maskOf(std::vector<int> const& labels, int cluster)
{
  std::vector<std::uint8_t> mask(labels.size());
  std::transform(labels.begin(), labels.end(), mask.begin(),
                 [cluster](int label) { return static_cast<std::uint8_t>(label == cluster ? 1 : 0); });
  return mask;
}

/// A negative label becomes the number behind the last cluster.
std::vector<std::uint32_t> classesOf(std::vector<int> const& labels, std::size_t clusters)
{
  std::vector<std::uint32_t> classes;
  classes.reserve(labels.size());
  for (int const label : labels)
    classes.push_back(static_cast<std::uint32_t>(label < 0 ? clusters : static_cast<std::size_t>(label)));
  return classes;
}

/// The share of the permutations whose largest difference reaches d, the observed one among them.
double shareReaching(std::vector<double> const& maxima, double d)
{
  auto const reaching =
      std::count_if(maxima.begin(), maxima.end(), [d](double m) { return m >= std::fabs(d); });
  return (1.0 + static_cast<double>(reaching)) / (1.0 + static_cast<double>(maxima.size()));
}

/// The cluster in which a parameter differs most.
ClusterDifference strongest(std::vector<std::vector<ParameterComparison>> const& clusters, std::size_t index)
{
  ClusterDifference best;
  for (std::size_t k = 0; k < clusters.size(); ++k) {
    if (index >= clusters[k].size()) continue;
    ParameterComparison const& c = clusters[k][index];
    best.name = c.name;
    best.parameter = c.parameter;
    if (!(std::fabs(c.d) > std::fabs(best.d))) continue;
    best.d = c.d;
    best.cluster = k;
  }
  return best;
}

/// Fills in what only permutations tell; the parameters of each cluster are in the order of `runs`.
void permute(ClusterComparison& comparison, ComparedRuns const& runs, std::vector<int> const& labels,
             ComparisonWork const& work)
{
  ComparisonMethod const& method = comparison.method;
  const PermutationResult result =
      permuted(PermutationTest(runs.parameters(), classesOf(labels, comparison.clusters.size()),
                               permutationOptions(method, work)),
               work);
  comparison.permutations = result.permutations;
  if (!result.permutable) return;
  comparison.noiseFloor = result.noiseFloor;
  comparison.isSettled = result.settled;
  for (std::size_t k = 0; k < comparison.clusters.size(); ++k)
    for (std::size_t i = 0; i < comparison.clusters[k].size(); ++i) {
      ParameterComparison& parameter = comparison.clusters[k][i];
      if (std::isnan(parameter.d)) continue;
      parameter.pPermutation = forGatesTried(shareReaching(result.maxima, parameter.d), method);
      if (parameter.isText) parameter.p = result.aloneOfClass.at(static_cast<std::uint32_t>(k))[i];
    }
  for (std::size_t i = 0; i < runs.parameters().size(); ++i) {
    ClusterDifference difference = strongest(comparison.clusters, i);
    difference.p = result.alone[i];
    difference.pPermutation = forGatesTried(result.p[i], method);
    difference.significant = isSignificant(difference.pPermutation, difference.d, method.thresholds);
    comparison.differences.push_back(difference);
  }
}

} // namespace

std::vector<int> clusterRuns(Scan const& scan, std::size_t output, ClusterMode mode, int clusters, int starts,
                             ComparisonWork const& work)
{
  double const* const curves = scan.outputs.at(output).values.get();
  const std::size_t runs = scan.runs.size();
  const std::size_t times = scan.times.size();
  SearchLimits limits;
  limits.cancelled = work.cancelled;
  if (starts < 1) starts = clusterStarts(runs);
  auto const search = [&](double const* values) {
    std::vector<int> labels = clusterFiniteByShape(values, runs, times, clusters, limits, starts).labels;
    if (limits.areOver()) throw ComparisonCancelled();
    return labels;
  };
  if (clusters < 1 || mode == ClusterMode::Curves) return search(curves);
  const SpectrumPart part = mode == ClusterMode::Phase ? SpectrumPart::Phase : SpectrumPart::Magnitude;
  return search(curveSpectra(curves, runs, times, part).data());
}

int clusterStarts(std::size_t runs)
{
  constexpr std::size_t runsInAll = 200000;
  return static_cast<int>(std::clamp<std::size_t>(runsInAll / std::max<std::size_t>(runs, 1), 1, 10));
}

std::vector<std::size_t> clusterSizes(std::vector<int> const& labels)
{
  std::vector<std::size_t> sizes;
  for (int label : labels) {
    if (label < 0) continue;
    sizes.resize(std::max(sizes.size(), static_cast<std::size_t>(label) + 1));
    ++sizes[static_cast<std::size_t>(label)];
  }
  return sizes;
}

ClusterComparison compareClusters(Scan const& scan, std::vector<int> const& labelsOfAll,
                                  RunSet const& eligible, ComparisonMethod const& method,
                                  ComparisonWork const& work)
{
  checkLabels(labelsOfAll, scan.runs.size());
  checkMethod(method);
  const ComparedRuns runs(scan, eligible);
  const std::vector<int> labels = labelsOf(runs, labelsOfAll);
  ClusterComparison comparison;
  comparison.method = method;
  comparison.leftOut = runs.leftOut();
  comparison.compared = labels.size();
  std::vector<std::vector<ParameterComparison>*> all;
  const std::vector<std::size_t> sizes = clusterSizes(labels);
  comparison.clusters.resize(clusterSizes(labelsOfAll).size());
  for (std::size_t k = 0; k < sizes.size(); ++k) {
    if (sizes[k] == 0) continue;
    comparison.clusters[k] = runs.compare(maskOf(labels, static_cast<int>(k)), work.threads);
    all.push_back(&comparison.clusters[k]);
  }
  if (method.permutations > 0 && !runs.parameters().empty()) permute(comparison, runs, labels, work);
  comparison.family = adjustFamily(all, originalsOf(designOf(runs), runs.parameters().size()), method);
  for (auto* cluster : all) rankByDifference(*cluster, method.adjustment);
  return comparison;
}

ClusterComparison compareClusters(Scan const& scan, std::vector<int> const& labels,
                                  ComparisonMethod const& method, ComparisonWork const& work)
{
  return compareClusters(scan, labels, RunSet(scan.runs.size(), true), method, work);
}

} // namespace runsieve
