#include <runsieve/core/kernels/CurveSpectra.h>

#include <runsieve/core/kernels/FourierTransform.h>

#include <cmath>

namespace runsieve {

std::vector<double> curveSpectra(double const* curves, std::size_t count, std::size_t points,
                                 SpectrumPart part)
{
  std::vector<double> spectra;
  if (points == 0) return spectra;
  spectra.reserve(count * points);
  FourierTransform transform(points);
  for (std::size_t i = 0; i < count; ++i)
    for (std::complex<double> const& term : transform.of(curves + i * points)) {
      const double re = term.real();
      const double im = term.imag();
      spectra.push_back(part == SpectrumPart::Magnitude ? std::sqrt(re * re + im * im) : std::atan2(im, re));
    }
  return spectra;
}

} // namespace runsieve
