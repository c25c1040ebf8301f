#pragma once

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace runsieve {

/// How the stability of a comparison is looked at. The same method gives the same numbers on every machine.
struct StabilityMethod
{
  /// Of so many parameters with the largest |d| the membership is counted; 0: as many as are significant, at
  /// least 1.
  std::size_t top = 0;
  std::size_t resamples = 1000; ///< at least 1
  double confidence = 0.95;     ///< of the intervals of |d|, in (0, 1)
  /// Shares of the runs, ascending, each above 0 and at most 1.
  std::vector<double> shares = {0.1, 0.25, 0.5, 1.0};
  std::size_t subsamples = 200; ///< for each share, at least 1
  std::uint64_t seed = 1;
};

/// How sure the d of one parameter is; NaN if it has none.
struct SureDistance
{
  /// Ends of the interval of |d|, each of which fails with half of 1 - confidence: d less what cumulative
  /// shares anywhere change in resamples (Bickel and Krieger, J. Am. Stat. Assoc. 84, 1989), and d plus what
  /// the difference of two proportions is off where it is largest. [0, 1] where fewer than 3 runs of a side
  /// have a value.
  double low = ParameterComparison::UNDEFINED;
  double high = ParameterComparison::UNDEFINED;
  /// Share of resamples (Efron, Ann. Stat. 7, 1979) in which the parameter is among the top.
  double topShare = ParameterComparison::UNDEFINED;
};

/// |d| of a parameter in subsamples of one size; NaN if it has none.
struct DistanceAtSize
{
  double low = ParameterComparison::UNDEFINED; ///< 5 % of the subsamples have less
  double median = ParameterComparison::UNDEFINED;
  double high = ParameterComparison::UNDEFINED; ///< 5 % of the subsamples have more
};

/// What a share of the runs would have told.
struct ComparisonAtSize
{
  double share = 0.0;
  std::size_t passing = 0; ///< runs of a subsample
  std::size_t others = 0;
  /// What |d| must exceed to be beyond chance with so many runs: as Comparison::noiseFloor, which it is at
  /// all runs if there is one; NaN if there are too few subsamples for the threshold.
  double noiseFloor = std::numeric_limits<double>::quiet_NaN();
  std::vector<DistanceAtSize> parameters; ///< in the order of Comparison::parameters

  /// Whether |d| of a parameter is beyond the noise floor in at least 95 % of the subsamples.
  [[nodiscard]] bool isBeyond(std::size_t parameter) const { return parameters[parameter].low > noiseFloor; }
};

/// Whether there are enough runs.
enum class EnoughRuns : std::uint8_t
{
  Unknown,         ///< nothing could be compared
  NothingDiffers,  ///< no parameter is significant
  Enough,          ///< all significant parameters are beyond the noise floor with a part of the runs as well
  MoreWouldHelp,   ///< some significant parameters are lost in the noise with the largest part of the runs
  WithinNoiseFloor ///< |d| of some significant parameters is not beyond the noise floor of all runs
};

/// "unknown", "nothing differs", "enough", "more would help" or "within the noise floor".
[[nodiscard]] RUNSIEVE_CORE_EXPORT char const* enoughRunsName(EnoughRuns verdict);

/// How much of a comparison is due to the runs at hand.
struct ComparisonStability
{
  StabilityMethod method;               ///< `top` as it was used
  std::vector<SureDistance> parameters; ///< in the order of Comparison::parameters
  std::vector<ComparisonAtSize> sizes;  ///< one for each share; none if one side is empty
  EnoughRuns verdict = EnoughRuns::Unknown;
  std::string verdictText; ///< a sentence without a full stop
};

/// Resamples the runs of a comparison, and takes subsamples, passing runs and others each. Number parameters
/// are looked at by their cumulative shares, texts by the shares of each text, as their d is.
/// \param passing, eligible those that were compared
/// \param comparison what compareParameters() found
/// \throw std::invalid_argument if the comparison is not of the parameters of these runs, or the method is
/// out of range \throw ComparisonCancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT ComparisonStability stabilityOfComparison(
    Scan const& scan, RunSet const& passing, RunSet const& eligible, Comparison const& comparison,
    StabilityMethod const& method = {}, ComparisonWork const& work = {});

} // namespace runsieve
