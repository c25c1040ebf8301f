#include <runsieve/core/compare/Clusters.h>

#include <runsieve/core/compare/ParameterComparer.h>
#include <runsieve/core/kernels/CurveSpectra.h>
#include <runsieve/core/kernels/PearsonKMeans.h>

#include <algorithm>
#include <map>
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

RunSet runsOfCluster(std::vector<int> const& labels, int cluster)
{
  RunSet runs(labels.size());
  for (std::size_t run = 0; run < labels.size(); ++run) runs.set(run, labels[run] == cluster);
  return runs;
}

} // namespace

std::vector<int> clusterRuns(Scan const& scan, std::size_t output, ClusterMode mode, int clusters, int starts)
{
  double const* const curves = scan.outputs.at(output).values.get();
  const std::size_t runs = scan.runs.size();
  const std::size_t times = scan.times.size();
  if (starts < 1) starts = clusterStarts(runs);
  if (clusters < 1 || mode == ClusterMode::Curves)
    return clusterByShape(curves, runs, times, clusters, {}, starts).labels;
  const SpectrumPart part = mode == ClusterMode::Phase ? SpectrumPart::Phase : SpectrumPart::Magnitude;
  const std::vector<double> spectra = curveSpectra(curves, runs, times, part);
  return clusterByShape(spectra.data(), runs, times, clusters, {}, starts).labels;
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

ClusterComparison compareClusters(Scan const& scan, std::vector<int> const& labels,
                                  Thresholds const& thresholds)
{
  checkLabels(labels, scan.runs.size());
  const ParameterComparer comparer(scan, RunSet(scan.runs.size(), true));
  ClusterComparison comparison;
  const auto clusters = static_cast<int>(clusterSizes(labels).size());
  for (int k = 0; k < clusters; ++k) {
    comparison.clusters.push_back(comparer.compare(runsOfCluster(labels, k), thresholds));
    rankByDifference(comparison.clusters.back());
  }
  comparison.differences = strongestDifferences(comparison.clusters);
  comparison.leftOut = comparer.leftOut();
  return comparison;
}

std::vector<ClusterDifference>
strongestDifferences(std::vector<std::vector<ParameterComparison>> const& clusters)
{
  std::map<std::size_t, ClusterDifference> strongest;
  for (auto const& cluster : clusters)
    for (ParameterComparison const& c : cluster) {
      const auto [entry, isNew] = strongest.try_emplace(c.parameter);
      ClusterDifference& best = entry->second;
      if (isNew || c.p < best.p || (c.p == best.p && c.d > best.d)) best = {c.name, c.p, c.d, c.parameter};
    }
  std::vector<ClusterDifference> differences;
  for (auto& [parameter, difference] : strongest) {
    difference.p = std::min(1.0, difference.p * static_cast<double>(clusters.size()));
    differences.push_back(difference);
  }
  return differences;
}

} // namespace runsieve
