#pragma once

#include <runsieve/records/TypedConcentrationName.h>

#include <string>
#include <vector>

/// Sobol indices of a global sensitivity analysis: how much of the variance of each output at each time each
/// parameter explains (I. M. Sobol', Math. Comput. Simul. 55 (2001) 271-280). The vectors behind the pointers
/// stay the host's.
struct SobolPostProcessResult
{
  /// Indices addressed [species][time][parameter].
  using Indices = std::vector<std::vector<std::vector<double>>>;

  std::vector<double> parameters;          ///< nominal values; their number is the number of parameters
  std::vector<std::string> parameterNames; ///< display names, parallel to parameters
  std::vector<Kestrane::TypedConcentrationName> species; ///< the outputs
  std::vector<double>* times = nullptr;                  ///< in seconds
  Indices* sensitivities = nullptr;                      ///< first order
  Indices* totalSensitivities = nullptr;                 ///< total order
};
