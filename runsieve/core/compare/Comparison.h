#pragma once

#include <runsieve/core/compare/ComparisonMethod.h>
#include <runsieve/core/compare/ComparisonWarning.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace runsieve {

/// Where a plain p-value comes from.
enum class PSource : std::uint8_t
{
  Exact,      ///< all ways to split the runs, given the ties
  Asymptotic, ///< Kolmogorov's distribution, for large samples
  Permutation ///< texts, which have no order: the permutations of the runs
};

/// "exact", "asymptotic" or "permutation".
[[nodiscard]] RUNSIEVE_CORE_EXPORT char const* pSourceName(PSource source);

/// How one parameter differs between the runs that pass and the others, each run counted once. Runs without a
/// value of the parameter are left out. What is not defined is NaN. docs/statistics.md has the formulas.
struct ParameterComparison
{
  static constexpr double UNDEFINED = std::numeric_limits<double>::quiet_NaN();

  std::string name;          ///< without a type
  std::size_t parameter = 0; ///< position in Scan::parameters
  bool isText = false;
  std::size_t passing = 0; ///< runs that pass and have a value
  std::size_t others = 0;  ///< other runs that have a value
  double medianPassing = UNDEFINED;
  double medianOthers = UNDEFINED;
  /// Two-sample Kolmogorov-Smirnov statistic in [-1, 1], positive where the passing runs are the larger ones;
  /// of texts the largest difference of shares, positive where the passing runs have the larger share.
  double d = UNDEFINED;
  double value = UNDEFINED; ///< where the curves are furthest apart
  std::string text;         ///< the text whose shares differ most, of a text parameter
  double area = UNDEFINED;  ///< between the curves, in units of the range of the parameter
  double medianShift =
      UNDEFINED; ///< median of the passing runs less that of the others, in interquartile ranges
  double rangeShare = UNDEFINED; ///< of the range of the parameter, what the passing runs span
  double p = UNDEFINED;          ///< of this parameter alone, if nothing else were looked at
  bool isBelow = false;          ///< p is a bound: the true one is smaller
  PSource source = PSource::Exact;
  double pHolm = UNDEFINED;
  double pBenjaminiHochberg = UNDEFINED;
  double pPermutation = UNDEFINED;
  bool significant = false;
};

/// A parameter that is not compared.
struct LeftOutParameter
{
  std::string name;      ///< without a type
  std::string reason;    ///< "does not vary"
  std::size_t parameter; ///< position in Scan::parameters
};

/// All parameters of a scan.
struct Comparison
{
  std::vector<ParameterComparison> parameters; ///< as rankByDifference() orders them
  std::vector<LeftOutParameter> leftOut;       ///< in the order of the scan
  ComparisonMethod method;                     ///< the one that was asked for
  std::size_t passing = 0;                     ///< runs compared
  std::size_t others = 0;
  std::size_t family = 0;       ///< tests that Holm's and Benjamini and Hochberg's p-values are adjusted for
  std::size_t permutations = 0; ///< that were made
  /// What |d| must exceed for an adjusted p-value by permutation of at most the threshold; NaN without enough
  /// permutations.
  double noiseFloor = std::numeric_limits<double>::quiet_NaN();
  /// False if some p-value by permutation is so close to the threshold that more permutations could move it
  /// to the other side.
  bool isSettled = true;
  std::vector<ComparisonWarning> warnings;
};

/// ComparisonWork::cancelled asked to stop.
class ComparisonCancelled : public std::runtime_error
{
public:
  ComparisonCancelled() : std::runtime_error("the comparison was stopped") {}
};

/// The runs that ended as they should: those that take part in a comparison unless somebody asks for others.
[[nodiscard]] RUNSIEVE_CORE_EXPORT RunSet completeRuns(Scan const& scan);

/// Compares each parameter between the runs of a scan that pass and all others. Parameters whose values are
/// all equal, missing ones aside, are left out. If one side is empty nothing is defined but the counts. May
/// be called from several threads. \param passing runs of the scan; those that are not eligible don't count
/// \param eligible the runs that take part: the result is that of a scan that has no others
/// \throw std::invalid_argument if a set is not of as many runs as the scan has, or a parameter, or the
/// method has no permutations to adjust by
/// \throw ComparisonCancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT Comparison compareParameters(Scan const& scan, RunSet const& passing,
                                                                RunSet const& eligible,
                                                                ComparisonMethod const& method = {},
                                                                ComparisonWork const& work = {});
/// The same with all runs taking part.
[[nodiscard]] RUNSIEVE_CORE_EXPORT Comparison compareParameters(Scan const& scan, RunSet const& passing,
                                                                ComparisonMethod const& method = {},
                                                                ComparisonWork const& work = {});

/// The p-value that decides whether a difference is significant.
[[nodiscard]] RUNSIEVE_CORE_EXPORT double adjustedP(ParameterComparison const& comparison,
                                                    Adjustment adjustment);

/// Whether a difference reaches both thresholds; they themselves do. NaN reaches none.
[[nodiscard]] RUNSIEVE_CORE_EXPORT bool isSignificant(double p, double d, Thresholds const& thresholds);

/// Puts significant parameters first, then orders by adjusted p-value, then by falling magnitude of d; equal
/// ones keep their order, and undefined ones are last.
RUNSIEVE_CORE_EXPORT void rankByDifference(std::vector<ParameterComparison>& parameters,
                                           Adjustment adjustment);

} // namespace runsieve
