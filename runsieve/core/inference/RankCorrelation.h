#pragma once

#include <runsieve/core/inference/OrderedValues.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// Spearman's rank correlation (Spearman, Am. J. Psychol. 15, 1904): Pearson's coefficient of mid-ranks, that
/// is, runs with equal values share the mean of their ranks.
///
/// A run that lacks one of the two values is left out, and the others are ranked without it.
/// \param members 0 or 1 per run: the runs that take part
/// \return in [-1, 1]; NaN where a parameter has fewer than two different values
[[nodiscard]] double rankCorrelation(OrderedValues const& x, OrderedValues const& y,
                                     std::vector<unsigned char> const& members);

/// The same of two arrays of `runs` values, NaN for none.
[[nodiscard]] double rankCorrelation(double const* x, double const* y, std::size_t runs);

/// Number of pairs of `parameters` parameters.
[[nodiscard]] constexpr std::size_t pairCount(std::size_t parameters)
{
  return parameters < 2 ? 0 : parameters * (parameters - 1) / 2;
}

/// Place of a pair in arrays of one entry per pair: (1, 0), (2, 0), (2, 1), (3, 0), ...; second < first.
[[nodiscard]] constexpr std::size_t pairPlace(std::size_t first, std::size_t second)
{
  return first * (first - 1) / 2 + second;
}

/// Ranks of some runs by each parameter, column by column, ready for products of columns.
///
/// A rank is doubled and centred (2 rank - m - 1 among m runs), which makes it a whole number: the sums of
/// products of up to 300,000 runs are exact, in whatever order they are added, and so equal on all machines.
struct RankTable
{
  std::size_t rows = 0;
  std::size_t columns = 0;
  std::vector<double> ranks;   ///< rows x columns; 0 where the run has no value
  std::vector<double> present; ///< rows x columns of 0 or 1; empty if every run has every value

  [[nodiscard]] double* column(std::size_t p) { return ranks.data() + p * rows; }
  [[nodiscard]] double* presence(std::size_t p) { return present.data() + p * rows; }
};

/// \param orders one per parameter
/// \param members 0 or 1 per run: the runs that take part, in the order of their positions
[[nodiscard]] RankTable rankTable(std::vector<OrderedValues> const& orders,
                                  std::vector<unsigned char> const& members);

/// Correlations of all pairs of parameters, one entry per pair as pairPlace() numbers them.
struct PairCorrelations
{
  std::vector<double> r; ///< NaN where not defined
  std::vector<double> n; ///< runs that have both values
};

/// Pearson's coefficients of the columns of a table, by one product of matrices. Where no value is missing
/// they are Spearman's; where some are, the ranks are not taken anew for each pair, which rankCorrelation()
/// does.
[[nodiscard]] PairCorrelations columnCorrelations(RankTable const& table);

/// Spearman's correlation of each pair of parameters.
[[nodiscard]] PairCorrelations rankCorrelations(std::vector<OrderedValues> const& orders,
                                                std::vector<unsigned char> const& members);

} // namespace runsieve
