#pragma once

#include <runsieve/core/compare/ComparedRuns.h>
#include <runsieve/core/compare/ComparisonWarning.h>
#include <runsieve/core/inference/SampleWarnings.h>

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve {

/// Fewer runs than these are too few on a side.
inline constexpr std::size_t smallGroup = 10;

/// What is known of the parameters of all compared runs, whichever pass.
struct DesignOfRuns
{
  SampleDesign design = SampleDesign::INDEPENDENT;
  std::vector<FewLevels> levels;               ///< of number parameters; positions count `numbers`
  std::vector<DesignCorrelation> correlations; ///< likewise; of more than mostPairedParameters only copies
  std::vector<std::size_t> numbers;            ///< positions of the number parameters in ComparedRuns
};

[[nodiscard]] DesignOfRuns designOf(ComparedRuns const& runs);
/// The same without correlations, which take time for each pair of parameters.
[[nodiscard]] DesignOfRuns designWithoutCorrelations(ComparedRuns const& runs);

/// For each compared parameter the first one of which it is a copy, or itself.
[[nodiscard]] std::vector<std::size_t> originalsOf(DesignOfRuns const& design, std::size_t parameters);

/// Several things of one kind are one warning, which names the first; none of none.
void addWarning(std::vector<ComparisonWarning>& warnings, char const* kind,
                std::vector<std::string> const& things, char const* advice);

/// Warns of small groups, and of empty ones, which leave nothing to compare.
void warnOfGroups(std::vector<ComparisonWarning>& warnings, std::size_t passing, std::size_t others);

/// Warns of runs that are no independent draws, where that matters.
void warnOfDesign(std::vector<ComparisonWarning>& warnings, SampleDesign design);

/// A correlation in two digits.
[[nodiscard]] std::string correlationText(double r);

/// What makes the numbers of a comparison mean less than they seem to.
[[nodiscard]] std::vector<ComparisonWarning> warningsOf(ComparedRuns const& runs, DesignOfRuns const& design,
                                                        std::size_t passing, std::size_t others);

} // namespace runsieve
