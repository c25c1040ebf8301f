#pragma once

#include <cstddef>
#include <vector>

namespace runsieve {

/// p-values adjusted for the number of tests they belong to: comparing one with a level bounds an error rate
/// of the whole family. NaN stands for a test that was not made: it stays NaN and does not count.
///
/// \param p p-values in any order
/// \param family number of tests made, those not in `p` included, such as the gates tried; 0 for the number
///   of those in `p` that are not NaN
/// \throws std::invalid_argument if the family is smaller than that number
/// \return one per p-value, at most 1, in the order of `p`

/// Holm, Scand. J. Statist. 6, 1979: the chance of any false positive. The i-th smallest of n becomes the
/// largest of (n + 1 - j) p_(j) over j <= i.
[[nodiscard]] std::vector<double> holmAdjusted(std::vector<double> const& p, std::size_t family = 0);

/// Benjamini and Hochberg, J. R. Statist. Soc. B 57, 1995: the share of false ones among the positives, for
/// tests that are independent or positively dependent. The i-th smallest of n becomes the smallest of
/// n / j p_(j) over j >= i.
[[nodiscard]] std::vector<double> benjaminiHochbergAdjusted(std::vector<double> const& p,
                                                            std::size_t family = 0);

} // namespace runsieve
