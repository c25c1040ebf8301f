#include <runsieve/core/kernels/FourierTransform.h>

#include <algorithm>
#include <cmath>

namespace runsieve {

namespace {

using Term = std::complex<double>;

/// Products by definition: those of the standard library repair what infinities do, at a cost, and so differ.
Term product(Term a, Term b)
{
  return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

/// A term turned by a right angle, clockwise.
Term turned(Term a)
{
  return {a.imag(), -a.real()};
}

} // namespace

FourierTransform::FourierTransform(std::size_t length_) : length(length_), roots(length_), terms(length_)
{
  constexpr double pi = 3.14159265358979323846;
  for (std::size_t i = 0; i < length; ++i) {
    const double phase = -2 * pi * static_cast<double>(i) / static_cast<double>(length);
    roots[i] = {std::cos(phase), std::sin(phase)};
  }
  findSteps();
}

void FourierTransform::findSteps()
{
  const auto largest = static_cast<std::size_t>(std::floor(std::sqrt(static_cast<double>(length))));
  std::size_t rest = length;
  std::size_t factor = 4;
  do {
    while (rest % factor != 0) {
      factor = factor == 4 ? 2 : (factor == 2 ? 3 : factor + 2);
      if (factor > largest) factor = rest;
    }
    rest /= factor;
    steps.push_back({factor, rest});
  } while (rest > 1);
}

std::vector<Term> const& FourierTransform::of(double const* curve)
{
  transform(0, curve, 1, terms.data());
  return terms;
}

/// The transform of every stride-th value, by the steps from one on.
void FourierTransform::transform(std::size_t step, double const* curve, std::size_t stride, Term* out)
{
  const auto [factor, part] = steps[step];
  for (std::size_t i = 0; i < factor; ++i) {
    if (part == 1)
      out[i] = {curve[i * stride], 0.0};
    else
      transform(step + 1, curve + i * stride, stride * factor, out + i * part);
  }
  join(steps[step], stride, out);
}

void FourierTransform::join(Step step, std::size_t stride, Term* out)
{
  switch (step.factor) {
  case 2:
    return join2(step.part, stride, out);
  case 3:
    return join3(step.part, stride, out);
  case 4:
    return join4(step.part, stride, out);
  case 5:
    return join5(step.part, stride, out);
  default:
    return joinAny(step, stride, out);
  }
}

void FourierTransform::join2(std::size_t part, std::size_t stride, Term* out) const
{
  for (std::size_t i = 0; i < part; ++i) {
    const Term second = product(out[part + i], roots[i * stride]);
    out[part + i] = out[i] - second;
    out[i] += second;
  }
}

void FourierTransform::join3(std::size_t part, std::size_t stride, Term* out) const
{
  const double height = roots[stride * part].imag();
  for (std::size_t i = 0; i < part; ++i) {
    const Term second = product(out[part + i], roots[i * stride]);
    const Term third = product(out[2 * part + i], roots[2 * i * stride]);
    const Term sum = second + third;
    const Term difference = (second - third) * height;
    const Term middle = out[i] - sum * 0.5;
    out[i] += sum;
    out[2 * part + i] = middle + turned(difference);
    out[part + i] = middle - turned(difference);
  }
}

void FourierTransform::join4(std::size_t part, std::size_t stride, Term* out) const
{
  for (std::size_t i = 0; i < part; ++i) {
    const Term second = product(out[part + i], roots[i * stride]);
    const Term third = product(out[2 * part + i], roots[2 * i * stride]);
    const Term fourth = product(out[3 * part + i], roots[3 * i * stride]);
    const Term evenSum = out[i] + third;
    const Term evenDifference = out[i] - third;
    const Term oddSum = second + fourth;
    const Term oddDifference = turned(second - fourth);
    out[i] = evenSum + oddSum;
    out[part + i] = evenDifference + oddDifference;
    out[2 * part + i] = evenSum - oddSum;
    out[3 * part + i] = evenDifference - oddDifference;
  }
}

void FourierTransform::join5(std::size_t part, std::size_t stride, Term* out) const
{
  const Term a = roots[stride * part];
  const Term b = roots[2 * stride * part];
  for (std::size_t i = 0; i < part; ++i) {
    const Term first = out[i];
    const Term second = product(out[part + i], roots[i * stride]);
    const Term third = product(out[2 * part + i], roots[2 * i * stride]);
    const Term fourth = product(out[3 * part + i], roots[3 * i * stride]);
    const Term fifth = product(out[4 * part + i], roots[4 * i * stride]);
    const Term outerSum = second + fifth;
    const Term outerDifference = second - fifth;
    const Term innerSum = third + fourth;
    const Term innerDifference = third - fourth;
    out[i] += outerSum + innerSum;
    const Term nearMiddle = first + outerSum * a.real() + innerSum * b.real();
    const Term nearHeight = turned(outerDifference) * a.imag() + turned(innerDifference) * b.imag();
    out[part + i] = nearMiddle - nearHeight;
    out[4 * part + i] = nearMiddle + nearHeight;
    const Term farMiddle = first + outerSum * b.real() + innerSum * a.real();
    const Term farHeight = turned(innerDifference) * a.imag() - turned(outerDifference) * b.imag();
    out[2 * part + i] = farMiddle + farHeight;
    out[3 * part + i] = farMiddle - farHeight;
  }
}

void FourierTransform::joinAny(Step step, std::size_t stride, Term* out)
{
  held.resize(step.factor);
  for (std::size_t i = 0; i < step.part; ++i) {
    for (std::size_t q = 0; q < step.factor; ++q) held[q] = out[i + q * step.part];
    for (std::size_t k = i; k < step.factor * step.part; k += step.part) {
      out[k] = held[0];
      std::size_t turn = 0;
      for (std::size_t q = 1; q < step.factor; ++q) {
        turn += stride * k;
        if (turn >= length) turn -= length;
        out[k] += product(held[q], roots[turn]);
      }
    }
  }
}

} // namespace runsieve
