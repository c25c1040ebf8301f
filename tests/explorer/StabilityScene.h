#pragma once

#include "app/explorer/parameters/StabilityPicture.h"

#include <runsieve/core/compare/StabilityOfComparison.h>

#include <string>
#include <vector>

namespace runsieve::test {

/// A comparison with what parts of the runs tell of it, as a test wants them: at 10, 50 and 100 % of 100
/// passing runs and 300 others, with noise floors of 0.4, 0.2 and 0.1.
struct MadeStability
{
  Comparison comparison;
  ComparisonStability stability;

  MadeStability()
  {
    for (auto const& [share, floor] : {std::pair{0.1, 0.4}, {0.5, 0.2}, {1.0, 0.1}}) {
      ComparisonAtSize size;
      size.share = share;
      size.passing = static_cast<std::size_t>(100.0 * share);
      size.others = static_cast<std::size_t>(300.0 * share);
      size.noiseFloor = floor;
      stability.sizes.push_back(size);
    }
    stability.method.top = 1;
  }

  /// \param lows what 5 % of the samples of each size are below; medians are 0.05 above, and so on
  void add(std::string const& name, bool significant, std::vector<double> const& lows)
  {
    constexpr double apart = 0.05;
    ParameterComparison parameter;
    parameter.parameter = comparison.parameters.size();
    parameter.name = name;
    parameter.significant = significant;
    parameter.d = lows.back() + apart;
    comparison.parameters.push_back(parameter);
    stability.parameters.push_back({0.1, 0.9, 1.0});
    for (std::size_t i = 0; i < lows.size(); ++i)
      stability.sizes[i].parameters.push_back({lows[i], lows[i] + apart, lows[i] + 2.0 * apart});
  }
};

} // namespace runsieve::test
