#include <runsieve/core/kernels/CurveSpectra.h>
#include <runsieve/core/kernels/FourierTransform.h>

#include <gmock/gmock.h>

#include <cmath>
#include <complex>
#include <cstddef>
#include <limits>
#include <random>
#include <vector>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Curve = std::vector<double>;

constexpr double pi = 3.14159265358979323846;

Curve randomCurve(std::size_t length, unsigned seed)
{
  std::mt19937 random(seed);
  Curve curve;
  for (std::size_t t = 0; t < length; ++t)
    curve.push_back(static_cast<double>(random()) / 4294967296.0 - 0.5);
  return curve;
}

/// One term from the definition.
std::complex<double> termOf(Curve const& curve, std::size_t k)
{
  std::complex<double> sum;
  const std::size_t n = curve.size();
  for (std::size_t t = 0; t < n; ++t)
    sum += curve[t] * std::polar(1.0, -2.0 * pi * static_cast<double>(k * t % n) / static_cast<double>(n));
  return sum;
}

TEST(FourierTransformTest, IsThatOfTheDefinitionAtEveryLength)
{
  for (std::size_t length = 1; length <= 130; ++length) {
    const Curve curve = randomCurve(length, static_cast<unsigned>(length));
    FourierTransform transform(length);
    auto const& terms = transform.of(curve.data());
    ASSERT_EQ(terms.size(), length);
    for (std::size_t k = 0; k < length; ++k)
      EXPECT_LT(std::abs(terms[k] - termOf(curve, k)), 1e-12 * static_cast<double>(length))
          << "term " << k << " of " << length;
  }
}

TEST(FourierTransformTest, TransformsOneCurveAfterTheOther)
{
  FourierTransform transform(12);
  const Curve first = randomCurve(12, 1);
  const auto expected = transform.of(first.data());
  (void)transform.of(randomCurve(12, 2).data());
  EXPECT_EQ(transform.of(first.data()), expected);
}

TEST(CurveSpectraTest, HoldAllTermsOfEachCurve)
{
  const Curve curves = {1, 1, 1, 1, 0, 1, 0, -1};
  EXPECT_THAT(curveSpectra(curves.data(), 2, 4, SpectrumPart::Magnitude),
              ElementsAre(4, 0, 0, 0, 0, 2, 0, 2));
  const Curve phases = curveSpectra(curves.data() + 4, 1, 4, SpectrumPart::Phase);
  ASSERT_EQ(phases.size(), 4u);
  EXPECT_DOUBLE_EQ(phases[1], -pi / 2);
  EXPECT_DOUBLE_EQ(phases[3], pi / 2);
}

TEST(CurveSpectraTest, WithoutPointsThereIsNothing)
{
  EXPECT_THAT(curveSpectra(nullptr, 3, 0, SpectrumPart::Phase), IsEmpty());
}

} // namespace
} // namespace runsieve::test
