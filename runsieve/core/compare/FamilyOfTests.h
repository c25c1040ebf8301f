#pragma once

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/inference/PermutationTest.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// \throw std::invalid_argument if the method cannot be followed
void checkMethod(ComparisonMethod const& method);

/// What a method means for the permutations. Their cut is cutOf().
[[nodiscard]] PermutationOptions permutationOptions(ComparisonMethod const& method,
                                                    ComparisonWork const& work);

/// Makes all permutations. \throw ComparisonCancelled
[[nodiscard]] PermutationResult permuted(PermutationTest test, ComparisonWork const& work);

/// A p-value by permutation for all sets of gates that were tried (Bonferroni).
[[nodiscard]] double forGatesTried(double p, ComparisonMethod const& method);

/// Adjusts the plain p-values of one or several comparisons of the same parameters, as one family, and says
/// what is significant. Parameters that order the runs alike are one test.
/// \param originals for each parameter the one that it is a copy of, or itself
/// \return the size of the family: the tests that were made, times the sets of gates that were tried
std::size_t adjustFamily(std::vector<std::vector<ParameterComparison>*> const& comparisons,
                         std::vector<std::size_t> const& originals, ComparisonMethod const& method);

} // namespace runsieve
