#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <runsieve/core/compare/ClusterMode.h>
#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace runsieve {

/// Groups the runs of a scan by the shape of one output: k-means under the distance 1 - r, r being Pearson's
/// correlation coefficient. Runs that correlate with nothing, since they are constant or hold a missing
/// value, join the first cluster. May be called from several threads.
/// \param clusters at most as many as there are runs come out; below 1 nothing is grouped
/// \param starts searches, of which the best counts; below 1: as clusterStarts() says
/// \return the cluster of each run, counted from 0; the same arguments give the same
/// \throw std::out_of_range if there is no such output \throw ComparisonCancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<int> clusterRuns(Scan const& scan, std::size_t output,
                                                                ClusterMode mode, int clusters,
                                                                int starts = 0,
                                                                ComparisonWork const& work = {});

/// Starts of the search: many for the few runs that they take no time for, 1 to 10.
[[nodiscard]] RUNSIEVE_CORE_EXPORT int clusterStarts(std::size_t runs);

/// Runs in each cluster; the last clusters can be missing if there are fewer runs than clusters. Negative
/// labels are runs without a cluster.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<std::size_t> clusterSizes(std::vector<int> const& labels);

/// How much one parameter tells clusters apart.
struct ClusterDifference
{
  std::string name;          ///< without a type
  std::size_t parameter = 0; ///< position in Scan::parameters
  std::size_t cluster = 0;   ///< the one that differs most from all others
  double d = 0.0;            ///< its statistic, with the sign of ParameterComparison::d
  double p = 0.0;            ///< by permutation, for this parameter alone in all clusters
  double pPermutation = 0.0; ///< by permutation, for all parameters in all clusters
  bool significant = false;
};

/// The parameters of a scan in each cluster.
struct ClusterComparison
{
  /// Each cluster's runs against all others, as rankByDifference() orders them; empty for a cluster of which
  /// no run takes part. Their adjusted p-values are for all parameters in all clusters.
  std::vector<std::vector<ParameterComparison>> clusters;
  /// For each parameter the largest difference of any cluster, in the order of the scan; empty without
  /// permutations.
  std::vector<ClusterDifference> differences;
  std::vector<LeftOutParameter> leftOut; ///< in the order of the scan
  std::size_t compared = 0;              ///< runs that took part
  ComparisonMethod method;
  std::size_t family = 0; ///< as in Comparison, as what follows
  std::size_t permutations = 0;
  double noiseFloor = std::numeric_limits<double>::quiet_NaN();
  bool isSettled = true;
};

/// Compares the parameters of each cluster's runs with those of all others. Runs with a negative label are
/// one more cluster, which is not told of.
/// \param labels one per run, each less than the number of runs
/// \param eligible the runs that take part: the result is that of a scan that has no others
/// \throw std::invalid_argument if a label is not, or as compareParameters()
/// \throw ComparisonCancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT ClusterComparison compareClusters(Scan const& scan,
                                                                     std::vector<int> const& labels,
                                                                     RunSet const& eligible,
                                                                     ComparisonMethod const& method = {},
                                                                     ComparisonWork const& work = {});
/// The same with all runs taking part.
[[nodiscard]] RUNSIEVE_CORE_EXPORT ClusterComparison compareClusters(Scan const& scan,
                                                                     std::vector<int> const& labels,
                                                                     ComparisonMethod const& method = {},
                                                                     ComparisonWork const& work = {});

} // namespace runsieve
