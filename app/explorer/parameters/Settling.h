#pragma once

#include <runsieve/core/compare/StabilityOfComparison.h>

#include <QString>

#include <limits>
#include <vector>

namespace runsieve::app {

/// How much the runs at hand tell of a parameter.
struct Settling
{
  enum class Stage
  {
    Unknown,        ///< it has no d, or a noise floor is not known
    NotSignificant, ///< it does not differ
    WithinNoise,    ///< significant, but its |d| is not beyond the noise floor of all runs
    MoreRunsHelp,   ///< with the largest part of the runs it is lost in the noise
    Settled         ///< beyond the noise floor with a part of the runs as well
  };

  Stage stage = Stage::Unknown;
  /// The smallest part of the runs from which on it is beyond the noise floor; NaN unless it is settled.
  double share = std::numeric_limits<double>::quiet_NaN();
};

/// One per parameter, in the order of the comparison.
[[nodiscard]] std::vector<Settling> settlingOf(Comparison const& comparison,
                                               ComparisonStability const& stability);

/// What the verdict leaves out, in sentences: which significant parameters are settled and from which part of
/// the runs on, which others would need more runs, and how far the noise reaches. Empty if that is not known.
[[nodiscard]] QString settlingWords(Comparison const& comparison, ComparisonStability const& stability);

/// The answer to "enough runs?" as a sentence.
[[nodiscard]] QString verdictSentence(ComparisonStability const& stability);

/// "10 %", "all".
[[nodiscard]] QString shareOfRuns(double share);

} // namespace runsieve::app
