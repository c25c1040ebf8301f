#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// What is taken of each term of a Fourier transform.
enum class SpectrumPart
{
  Phase,    ///< -pi to pi
  Magnitude ///< not normalised
};

/// The Fourier transform of each curve: as many values as the curve has, one curve after the other.
/// \param curves count curves of points values each, one after the other
RUNSIEVE_CORE_EXPORT std::vector<double> curveSpectra(double const* curves, std::size_t count,
                                                      std::size_t points, SpectrumPart part);

} // namespace runsieve
