#include <runsieve/core/kernels/CurveSpectra.h>
#include <runsieve/core/kernels/FourierTransform.h>
#include <runsieve/core/kernels/PearsonKMeans.h>

#include <gtest/gtest.h>

#include <vtkDoubleArray.h>
#include <vtkKMeansStatistics.h>
#include <vtkNew.h>
#include <vtkTable.h>
#include <vtkTableFFT.h>
#include <vtkVersionMacros.h>

#include <cmath>
#include <complex>
#include <cstddef>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace runsieve::test {
namespace {

using Curve = std::vector<double>;

/// The filter of VTK 9.3 leaves the term of a single value as it finds it in memory.
constexpr std::size_t shortestOfTheFilter = VTK_MAJOR_VERSION == 9 && VTK_MINOR_VERSION < 3 ? 1 : 2;

bool sameBits(double a, double b)
{
  return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
}

/// Whether a curve has the same terms as from the filter.
testing::AssertionResult hasTermsOfTheFilter(Curve const& curve)
{
  vtkNew<vtkTable> table;
  vtkNew<vtkDoubleArray> column;
  for (double value : curve) column->InsertNextValue(value);
  column->SetName("curve");
  table->AddColumn(column);
  vtkNew<vtkTableFFT> filter;
  filter->SetInputData(0, table);
  filter->Update();
  auto* expected = vtkDataArray::SafeDownCast(filter->GetOutput()->GetColumn(0));
  FourierTransform transform(curve.size());
  auto const& found = transform.of(curve.data());
  if (!expected || expected->GetNumberOfTuples() != static_cast<vtkIdType>(found.size()))
    return testing::AssertionFailure() << "other terms";
  for (std::size_t k = 0; k < found.size(); ++k) {
    const auto row = static_cast<vtkIdType>(k);
    if (!sameBits(found[k].real(), expected->GetComponent(row, 0)) ||
        !sameBits(found[k].imag(), expected->GetComponent(row, 1)))
      return testing::AssertionFailure()
             << "term " << k << " of " << curve.size() << ": " << found[k].real() << ", " << found[k].imag()
             << " instead of " << expected->GetComponent(row, 0) << ", " << expected->GetComponent(row, 1);
  }
  return testing::AssertionSuccess();
}

Curve randomCurve(std::size_t length, unsigned seed)
{
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> value(-3.0, 10.0);
  Curve curve;
  for (std::size_t t = 0; t < length; ++t) curve.push_back(value(random));
  return curve;
}

// A phase of a term that is zero but for rounding is noise: only equal bits give equal clusters.
TEST(ClusteringNumbers, TheTransformIsThatOfTheFilterToTheLastBit)
{
  for (std::size_t length = shortestOfTheFilter; length <= 400; ++length)
    EXPECT_TRUE(hasTermsOfTheFilter(randomCurve(length, static_cast<unsigned>(length))));
  for (std::size_t length : {512, 625, 729, 1000, 1001, 1009, 1024, 2401, 3600, 3721})
    EXPECT_TRUE(hasTermsOfTheFilter(randomCurve(length, 1)));
}

TEST(ClusteringNumbers, TheTransformOfOneValueIsThatValue)
{
  for (double value : {9.963402506993452, 0.0, 1e300, std::numeric_limits<double>::infinity()}) {
    auto transform = FourierTransform(1);
    auto const& terms = transform.of(&value);
    ASSERT_EQ(terms.size(), 1u);
    EXPECT_EQ(terms[0], std::complex<double>(value, 0.0));
  }
}

TEST(ClusteringNumbers, TheTransformOfCurvesWithoutSpreadOrNumbersIsThatOfTheFilter)
{
  for (std::size_t length = shortestOfTheFilter; length <= 60; ++length) {
    EXPECT_TRUE(hasTermsOfTheFilter(Curve(length, 0.1)));
    EXPECT_TRUE(hasTermsOfTheFilter(Curve(length, 0.0)));
    EXPECT_TRUE(hasTermsOfTheFilter(Curve(length, 1e300)));
    Curve curve = randomCurve(length, 7);
    curve[length / 2] = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(hasTermsOfTheFilter(curve));
    curve[length / 3] = std::nan("");
    EXPECT_TRUE(hasTermsOfTheFilter(curve));
  }
}

TEST(ClusteringNumbers, TheSearchEndsWhereThatOfTheFilterDoes)
{
  const vtkNew<vtkKMeansStatistics> filter;
  EXPECT_EQ(SearchLimits().mostSteps, filter->GetMaxNumIterations());
  EXPECT_EQ(SearchLimits().tolerance, filter->GetTolerance());
}

} // namespace
} // namespace runsieve::test
