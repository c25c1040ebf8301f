#pragma once

#include <runsieve/core/inference/BoxTable.h>

#include <vector>

namespace runsieve {

/// The runs of a sample in a box, and those that one range alone keeps out of it: what a change of one limit
/// can let in.
struct BoxSurroundings
{
  BoxTally inside;
  /// The mark in the sample of each run that is outside by one range only, otherwise 0.
  std::vector<unsigned char> near;
};

/// \throw std::invalid_argument as checkSizes()
[[nodiscard]] BoxSurroundings surroundingsOf(BoxTable const& table, BoxSample const& sample, Box const& box);

/// How many runs of a sample are in a box. \throw std::invalid_argument as checkSizes()
[[nodiscard]] BoxMeasures measure(BoxTable const& table, BoxSample const& sample, Box const& box);

} // namespace runsieve
