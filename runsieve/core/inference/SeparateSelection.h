#pragma once

#include <runsieve/core/inference/OrderedValues.h>

#include <cstdint>
#include <vector>

namespace runsieve {

/// The runs in bins by one parameter, fine enough to follow a selection of runs by this parameter: bins end
/// at quantiles of the passing runs, at their smallest and largest value, and at quantiles of the others. A
/// cut of the parameter lies between two bins.
struct ParameterBins
{
  static constexpr std::uint8_t NONE = 255; ///< bin of a run without a value

  std::vector<std::uint8_t> bin; ///< one per run
  std::size_t bins = 0;
};

/// \param passing 0 or 1 per run
[[nodiscard]] ParameterBins parameterBins(OrderedValues const& ordered,
                                          std::vector<unsigned char> const& passing);

/// The rank correlation that two parameters would have among the passing runs if whether a run passes were
/// decided by each of the parameters on its own: with probability f(x) g(y).
///
/// All runs are weighted by f and g so that the weighted runs are spread over the bins of x as the passing
/// runs are, and over those of y; f and g are found by iterative proportional fitting (Deming and Stephan,
/// Ann. Math. Stat. 11, 1940). The result is Spearman's coefficient of the weighted runs. For parameters that
/// are independent by design it is near 0; for correlated ones it tells what cutting their ranges leaves of
/// the correlation. \return in [-1, 1]; NaN where not defined
[[nodiscard]] double separateCorrelation(OrderedValues const& x, ParameterBins const& binsOfX,
                                         OrderedValues const& y, ParameterBins const& binsOfY,
                                         std::vector<unsigned char> const& passing);

} // namespace runsieve
