#pragma once

namespace runsieve::app {

/// The pages of the pane of the parameters, in their order.
enum class ParametersPage
{
  Charts,
  Pairs,
  Box,
  Parallel,
  Stability
};

} // namespace runsieve::app
