#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <runsieve/core/compare/ClusterMode.h>
#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve {

/// Groups the runs of a scan by the shape of one output: k-means under the distance 1 - r, r being Pearson's
/// correlation coefficient. Runs that correlate with nothing, since they are constant or hold a missing
/// value, join the first cluster. \param clusters at most as many as there are runs come out; below 1 nothing
/// is grouped \param starts searches, of which the best counts; below 1: as clusterStarts() says \return the
/// cluster of each run, counted from 0; the same arguments give the same. May be called from several threads.
/// \throw std::out_of_range if there is no such output
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<int>
clusterRuns(Scan const& scan, std::size_t output, ClusterMode mode, int clusters, int starts = 0);

/// Starts of the search: many for the few runs that they take no time for, 1 to 10.
[[nodiscard]] RUNSIEVE_CORE_EXPORT int clusterStarts(std::size_t runs);

/// Runs in each cluster; the last clusters can be missing if there are fewer runs than clusters. Negative
/// labels are runs without a cluster.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<std::size_t> clusterSizes(std::vector<int> const& labels);

/// How much one parameter tells clusters apart.
struct ClusterDifference
{
  std::string name; ///< without a type
  /// The smallest p-value of all clusters times their number (Bonferroni's correction), at most 1.
  double p;
  double d;              ///< the statistic of the cluster that has that p-value, the largest if several have
  std::size_t parameter; ///< position in Scan::parameters
};

/// The parameters of a scan in each cluster.
struct ClusterComparison
{
  /// Each cluster's runs against all others, as compareParameters() gives them; empty for a cluster without
  /// runs.
  std::vector<std::vector<ParameterComparison>> clusters;
  std::vector<ClusterDifference> differences; ///< in the order of the scan
  std::vector<LeftOutParameter> leftOut;      ///< in the order of the scan
};

/// Compares the parameters of each cluster's runs with those of all others. Runs with a negative label are
/// among the others.
/// \param labels one per run, each less than the number of runs
/// \throw std::invalid_argument if they are not, or if a parameter has not one value per run
[[nodiscard]] RUNSIEVE_CORE_EXPORT ClusterComparison compareClusters(Scan const& scan,
                                                                     std::vector<int> const& labels,
                                                                     Thresholds const& thresholds = {});

/// For each parameter the comparison in which any cluster differs most, in the order of the parameters.
/// \param clusters the comparisons of each cluster, in any order of parameters
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<ClusterDifference>
strongestDifferences(std::vector<std::vector<ParameterComparison>> const& clusters);

} // namespace runsieve
