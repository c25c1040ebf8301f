#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve {

/// What makes a difference significant; both must hold.
struct Thresholds
{
  double largestP = 0.05; ///< largest p-value
  double smallestD = 0.1; ///< smallest statistic
};

/// How one parameter differs between the runs that pass and the others.
struct ParameterComparison
{
  std::string name;     ///< without a type
  double p;             ///< two-sample Kolmogorov-Smirnov p-value, at most 1
  double d;             ///< its statistic, in [0, 1]
  double medianPassing; ///< of the values compared; NaN without any
  double medianOthers;
  bool significant;
  std::size_t parameter = 0; ///< position in Scan::parameters
};

/// A parameter that is not compared.
struct LeftOutParameter
{
  std::string name;      ///< without a type
  std::string reason;    ///< "is text" or "does not vary"
  std::size_t parameter; ///< position in Scan::parameters
};

/// All parameters of a scan.
struct Comparison
{
  std::vector<ParameterComparison> parameters; ///< as rankByDifference() orders them
  std::vector<LeftOutParameter> leftOut;       ///< in the order of the scan
};

/// Compares each number parameter between the runs of a scan that pass and all others.
///
/// A sample is the distinct values of its runs, all NaN together being one value; so a sweep over a grid of
/// values is compared by which of them are reached, not by how often. The samples of all parameters are
/// brought to the length of the longest by their quantiles, on each side for itself. The two-sided p-value is
/// that of KolmogorovSmirnov at the effective size n m / (n + m) of these lengths, rounded down, at most 1.
/// Parameters whose values are all equal, NaN aside, are left out and count for no length.
///
/// No parameters if no eligible run passes; if all pass, d is 0 and the median of the others NaN. The same
/// arguments give the same bits. May be called from several threads.
/// \param passing runs of the scan; those that are not eligible don't count
/// \param eligible the runs that take part: the result is that of a scan that has no others
/// \throw std::invalid_argument if a set is not of as many runs as the scan has, or a parameter
[[nodiscard]] RUNSIEVE_CORE_EXPORT Comparison compareParameters(Scan const& scan, RunSet const& passing,
                                                                Thresholds const& thresholds,
                                                                RunSet const& eligible);
/// The same with all runs taking part.
[[nodiscard]] RUNSIEVE_CORE_EXPORT Comparison compareParameters(Scan const& scan, RunSet const& passing,
                                                                Thresholds const& thresholds = {});

/// Whether a difference reaches both thresholds; they themselves do.
[[nodiscard]] RUNSIEVE_CORE_EXPORT bool isSignificant(double p, double d, Thresholds const& thresholds);

/// Puts significant parameters first, then orders by p-value, then by falling statistic; equal ones keep
/// their order.
RUNSIEVE_CORE_EXPORT void rankByDifference(std::vector<ParameterComparison>& parameters);

/// The middle of ascending values, or the mean of the two in the middle; NaN without any.
[[nodiscard]] RUNSIEVE_CORE_EXPORT double medianOfSorted(double const* values, std::size_t count);

} // namespace runsieve
