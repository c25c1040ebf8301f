#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace runsieve {

/// What makes a difference significant; both must hold.
struct Thresholds
{
  double largestP = 0.05; ///< largest adjusted p-value
  double smallestD = 0.1; ///< smallest magnitude of d
};

/// How p-values take account of the number of parameters that are looked at.
enum class Adjustment : std::uint8_t
{
  Permutation,       ///< single-step maxT of Westfall and Young: family-wise, exact for correlated parameters
  Holm,              ///< family-wise, for any dependence
  BenjaminiHochberg, ///< false discovery rate
  None
};

/// "permutation", "holm", "bh" or "none".
[[nodiscard]] RUNSIEVE_CORE_EXPORT char const* adjustmentName(Adjustment adjustment);
/// The reverse; nothing for other texts.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::optional<Adjustment> adjustmentNamed(std::string_view name);

/// How parameters are compared. The same method gives the same numbers on every machine. Counts are at most a
/// million.
struct ComparisonMethod
{
  Thresholds thresholds;
  Adjustment adjustment = Adjustment::Permutation;
  std::size_t permutations = 1000;      ///< at first; 0: none, which adjustment by permutation doesn't allow
  std::size_t mostPermutations = 10000; ///< more are made up to these where a p-value is near the threshold
  std::uint64_t seed = 1;
  /// Sets of gates that were looked at before these were chosen, these included: each is a chance to find
  /// something, so that all p-values but the plain one are of a family that is as many times as large.
  std::size_t gatesTried = 1;
};

/// The p-value of one set of gates that is as the threshold of all that were tried (Bonferroni). 0 and 1 if
/// the threshold is: no p-value reaches the former, and all reach the latter.
[[nodiscard]] RUNSIEVE_CORE_EXPORT double cutOf(ComparisonMethod const& method);

/// How the work is done; no effect on what comes out.
struct ComparisonWork
{
  unsigned threads = 0; ///< 0: as many as the machine has, at most 4
  std::function<bool()>
      cancelled; ///< asked now and then, if set; true ends the work with ComparisonCancelled
};

} // namespace runsieve
