#pragma once

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/compare/ComparisonMethod.h>
#include <runsieve/core/compare/ComparisonWarning.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace runsieve {

/// How strongly two number parameters go together in the runs that pass and in the others. Correlations are
/// Spearman's, of the runs that have both values: in [-1, 1], and NaN where a parameter has fewer than two
/// different values. What is not defined is NaN.
struct ParameterPair
{
  static constexpr double UNDEFINED = std::numeric_limits<double>::quiet_NaN();

  std::string first;               ///< name without a type
  std::string second;              ///< likewise
  std::size_t firstParameter = 0;  ///< position in Scan::parameters
  std::size_t secondParameter = 0; ///< larger than that of the first
  std::size_t passing = 0;         ///< runs that pass and have both values
  std::size_t others = 0;          ///< other runs that have both values
  double rPassing = UNDEFINED;
  double rOthers = UNDEFINED;
  double rAll = UNDEFINED; ///< in all runs: of the sample, since no simulation has a part in it
  /// Whether the two are correlated by design: rAll is further from 0 than that of independent parameters is.
  bool byDesign = false;
  /// What rPassing would be without an interaction: 0, unless the two are correlated by design.
  double expected = UNDEFINED;
  double statistic = UNDEFINED; ///< distance of rPassing from `expected`, in standard deviations
  double p = UNDEFINED;         ///< adjusted for all pairs, and for the sets of gates that were tried
  bool significant = false;

  [[nodiscard]] double difference() const { return rPassing - rOthers; }
};

/// All pairs of number parameters of a scan.
struct PairComparisons
{
  std::vector<ParameterPair> pairs;      ///< by falling statistic; undefined ones last
  std::vector<LeftOutParameter> leftOut; ///< texts, and what does not vary; in the order of the scan
  ComparisonMethod method;               ///< the one that was asked for
  std::size_t passing = 0;               ///< runs compared
  std::size_t others = 0;
  std::size_t permutations = 0; ///< that were made
  /// What |rPassing| must exceed for a p of at most the threshold, for parameters that are independent by
  /// design and have all values; NaN without enough permutations.
  double noiseFloor = std::numeric_limits<double>::quiet_NaN();
  /// False if some p is so close to the threshold that more permutations could move it to the other side.
  bool isSettled = true;
  std::vector<ComparisonWarning> warnings;
};

/// Number parameters that comparePairs() takes at most: half a million pairs.
constexpr std::size_t mostPairedParameters = 1000;

/// Tells which parameters interact: which are correlated in the runs that pass although neither of them on
/// its own makes them so.
///
/// If a run passes with probability f(x) g(y), parameters that are independent by design are independent in
/// the passing runs as well, whatever f and g are, but *not* in the others. So it is the correlation in the
/// passing runs that is tested, against 0, or, where two parameters are correlated by design, against what
/// selecting by each of them on its own leaves of that. The difference to the others is for people to see,
/// and no sign of an interaction. p is adjusted for all pairs by permutations of each parameter among the
/// passing runs (single-step maxT; Westfall and Young, Resampling-Based Multiple Testing, Wiley 1993), and
/// more permutations are made where a p is close to the threshold; of the method, adjustment and smallestD
/// have no part in it. docs/statistics.md has the formulas.
///
/// What is found is monotone: a gate on a sum, a product or a ratio. One that is symmetric in a parameter, as
/// |x| < y or a ring, leaves no correlation, and neither does one that takes three parameters to be seen.
///
/// Without a passing run, or without others, there are correlations and no p. May be called from several
/// threads. The same scan, sets and method give the same numbers with any number of threads.
/// \param passing runs of the scan; those that are not eligible don't count
/// \param eligible the runs that take part: the result is that of a scan that has no others
/// \param work cancelled is asked between slices of the permutations
/// \throw std::invalid_argument if a set is not of as many runs as the scan has, or a parameter, or the
/// method has no permutations
/// \throw std::length_error for more than mostPairedParameters number parameters that vary
/// \throw ComparisonCancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT PairComparisons comparePairs(Scan const& scan, RunSet const& passing,
                                                                RunSet const& eligible,
                                                                ComparisonMethod const& method = {},
                                                                ComparisonWork const& work = {});
/// The same with all runs taking part.
[[nodiscard]] RUNSIEVE_CORE_EXPORT PairComparisons comparePairs(Scan const& scan, RunSet const& passing,
                                                                ComparisonMethod const& method = {},
                                                                ComparisonWork const& work = {});

} // namespace runsieve
