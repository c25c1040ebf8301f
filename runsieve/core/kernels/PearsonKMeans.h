#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace runsieve {

/// Curves grouped by their shape.
struct ShapeClusters
{
  std::vector<double> centres;  ///< mean curve of each cluster, one after the other; zeros for an empty one
  std::vector<long long> sizes; ///< curves in each cluster at the end of the search
  std::vector<int> labels;      ///< cluster of each curve, by the nearest of the final centres
  double spread = 0.0;          ///< sum of the distances of all curves from their centres
};

/// When a search ends. The defaults are those of vtkKMeansStatistics.
struct SearchLimits
{
  int mostSteps = 50;      ///< at least 1
  double tolerance = 0.01; ///< a smaller share of the curves than this changes its cluster in a step
  /// Asked at each step, if set; true ends the search with what it has.
  std::function<bool()> cancelled = {};

  [[nodiscard]] bool areOver() const { return cancelled && cancelled(); }
};

/// k-means under the distance 1 - r, r being Pearson's correlation coefficient (0 where it is not defined).
///
/// S. P. Lloyd's algorithm (IEEE Trans. Inf. Theory 28 (1982) 129-137) from the first curves as centres; of
/// equally near centres the first counts. The numbers are those of vtkKMeansStatistics with vtkKMeansPearson
/// and the same limits. Further starts choose their centres among the curves with a probability that grows
/// with the distance from those chosen before (D. Arthur and S. Vassilvitskii, Proc. SODA 2007, 1027-1035),
/// and the result of the least spread is kept. The same input gives the same clusters.
///
/// \param curves count curves of points values each, one after the other
/// \param clusters at least 1; with fewer curves there are as many clusters as curves
RUNSIEVE_CORE_EXPORT ShapeClusters clusterByShape(double const* curves, std::size_t count, std::size_t points,
                                                  int clusters, SearchLimits limits, int starts = 1);

/// The same where curves with a NaN or an infinity, as failed runs leave them, take no part in the search:
/// nothing correlates with them, and a centre that is one of them, or a mean with one, attracts no curve.
/// They belong to the first cluster, at a distance of 1, and are not in its mean.
RUNSIEVE_CORE_EXPORT ShapeClusters clusterFiniteByShape(double const* curves, std::size_t count,
                                                        std::size_t points, int clusters, SearchLimits limits,
                                                        int starts = 1);

} // namespace runsieve
