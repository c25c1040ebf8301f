#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <complex>
#include <cstddef>
#include <vector>

namespace runsieve {

/// The discrete Fourier transform of curves of one length, all of its terms, not normalised.
///
/// J. W. Cooley and J. W. Tukey (Math. Comp. 19 (1965) 297-301), by factors of 4, 2, 3, 5, and other primes
/// in the plain form, so that a length that is a large prime takes time with its square. The operations stand
/// in the order of vtkFFT, so that the numbers are the same to the last bit: the phase of a term that is zero
/// but for rounding hangs on nothing else.
class RUNSIEVE_CORE_EXPORT FourierTransform
{
public:
  /// \param length values of a curve, at least 1
  explicit FourierTransform(std::size_t length);

  /// The terms of a curve; they stay until the next call. \param curve as many values as the length
  std::vector<std::complex<double>> const& of(double const* curve);

private:
  using Term = std::complex<double>;

  /// A step that joins `factor` transforms of `part` terms each.
  struct Step
  {
    std::size_t factor;
    std::size_t part;
  };

  void findSteps();
  void transform(std::size_t step, double const* curve, std::size_t stride, Term* out);
  void join(Step step, std::size_t stride, Term* out);
  void join2(std::size_t part, std::size_t stride, Term* out) const;
  void join3(std::size_t part, std::size_t stride, Term* out) const;
  void join4(std::size_t part, std::size_t stride, Term* out) const;
  void join5(std::size_t part, std::size_t stride, Term* out) const;
  void joinAny(Step step, std::size_t stride, Term* out);

  std::size_t length;
  std::vector<Step> steps;
  std::vector<Term> roots; ///< of unity
  std::vector<Term> terms;
  std::vector<Term> held; ///< terms that joinAny() overwrites
};

} // namespace runsieve
