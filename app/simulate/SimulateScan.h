#pragma once

#include "app/simulate/Model.h"
#include "app/simulate/Sampling.h"

#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <cstdint>

namespace runsieve::app {

struct SimulateOptions
{
  std::size_t runs = 1000; ///< at least 1
  std::size_t times = 101; ///< at least 2, the first being 0 and the last the model's duration
  std::uint64_t seed = 1;
  Sampling sampling = Sampling::LatinHypercube;
  unsigned threads = 0; ///< 0: as many as the machine has, at most 4; the result does not depend on it
};

/// Runs a model with sampled parameters: its recorded species and its varied parameters, with units and
/// meanings. \throw std::invalid_argument for sizes out of range \throw std::runtime_error if the solver
/// cannot go on
[[nodiscard]] Scan simulateScan(Model const& model, SimulateOptions const& options);

} // namespace runsieve::app
