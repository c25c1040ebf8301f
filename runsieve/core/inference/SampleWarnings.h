#pragma once

#include <runsieve/core/inference/OrderedValues.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace runsieve {

/// What a user should know of the runs of a scan before he reads their statistics. All functions take the
/// orders of the runs by each parameter, or their values, NaN for none; parameters are told by position.

/// A parameter of which many runs share few values: its distances and ranks go by steps.
struct FewLevels
{
  std::size_t parameter = 0;
  std::size_t levels = 0; ///< different values, at least 2
  bool lattice = false;   ///< levels are equally spaced, or so are their logarithms; three or more
};

/// Parameters with fewer than `few` levels, and those with more on a lattice whose points are shared by five
/// runs or more in the mean. Constant parameters are not among them.
/// \param values one array per parameter, of as many runs as the orders were made of
[[nodiscard]] std::vector<FewLevels> fewLevels(std::vector<OrderedValues> const& orders,
                                               std::vector<double const*> const& values,
                                               std::size_t few = 10);

/// Two parameters that are correlated by design.
struct DesignCorrelation
{
  std::size_t first = 0;
  std::size_t second = 0; ///< larger than first
  double r = 0.0;         ///< Spearman's correlation in all runs
  /// Whether one is a strictly monotone function of the other: they order the runs alike, or in reverse,
  /// with the same ties and the same runs without a value. Such parameters cannot be told apart.
  bool copy = false;
};

/// Pairs whose correlation in all runs is beyond the limit, the strongest first, then by position. Takes time
/// and memory for each pair.
/// \param runs number of runs
[[nodiscard]] std::vector<DesignCorrelation> designCorrelations(std::vector<OrderedValues> const& orders,
                                                                std::size_t runs, double limit = 0.3);

/// Each parameter that is a copy, with the first one that it is a copy of, by position of the copy; r is 1 or
/// -1. Takes time and memory for each parameter, not for each pair.
/// \param runs number of runs
[[nodiscard]] std::vector<DesignCorrelation> designCopies(std::vector<OrderedValues> const& orders,
                                                          std::size_t runs);

/// How the runs of a scan were chosen, where that is no independent draw. Tests that take runs as independent
/// draws do not hold for a sweep and are rough for a lattice; for the evenly spread ones they are cautious.
enum class SampleDesign
{
  INDEPENDENT,     ///< nothing speaks against independent draws
  SWEEP,           ///< one parameter varies, in the order of the runs: it never falls, or never rises
  LATTICE,         ///< all combinations of levels, each in equally many runs
  LATIN_HYPERCUBE, ///< of each parameter one value in each of as many strata as there are runs
  SEQUENCE         ///< each parameter spread more evenly than draws are, in the first runs as well as in all
};

/// What kind of sample the runs are. Strata and evenness are found for parameters spread uniformly or with
/// uniform logarithms between any two ends; other distributions are taken for independent draws. A hypercube
/// needs at least 20 runs, a sequence 64, all with finite values of all parameters. Independent draws are
/// taken for one of them less than once in 10,000 scans; a sweep therefore takes at least 8 runs, and more if
/// they share values.
/// \param values one array of `runs` values per parameter
[[nodiscard]] SampleDesign sampleDesign(std::vector<double const*> const& values, std::size_t runs);

} // namespace runsieve
