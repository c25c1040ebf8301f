#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve::app {

/// How the parameter space is covered.
enum class Sampling
{
  LatinHypercube, ///< in each dimension one point in each of as many strata as there are points (McKay et al.
                  ///< 1979)
  Sobol           ///< Sobol' sequence with a random digital shift; best with a power of 2 of points
};

/// Points of the open unit cube, one after the other. The same seed gives the same points on every machine.
/// \throw std::invalid_argument for more dimensions than the Sobol' tables have
[[nodiscard]] std::vector<double> unitPoints(Sampling sampling, std::size_t points, std::size_t dimensions,
                                             std::uint64_t seed);

} // namespace runsieve::app
