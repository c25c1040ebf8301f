#pragma once

#include <vector>

namespace runsieve::app {

/// Places of labels of one height in a column, as near as can be to where they are wanted, in their order and
/// none over another: the least sum of squared moves, but for what the ends of the column ask. If the column
/// is too short they begin at its low end and leave it at the other.
/// Isotonic regression by pooling neighbours: Barlow et al., Statistical Inference under Order Restrictions,
/// Wiley 1972. \param wanted where each begins, ascending \param low, high ends of the column
[[nodiscard]] std::vector<double> stackedPlaces(std::vector<double> const& wanted, double height, double low,
                                                double high);

} // namespace runsieve::app
