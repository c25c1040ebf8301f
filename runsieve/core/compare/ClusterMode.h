#pragma once

#include <cstdint>

namespace runsieve {

/// What the shape of a run is.
enum class ClusterMode : std::uint8_t
{
  Curves,   ///< its time course
  Phase,    ///< the phase of its Fourier transform
  Magnitude ///< the magnitude of its Fourier transform
};

} // namespace runsieve
