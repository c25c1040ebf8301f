#include <runsieve/core/kernels/Correlation.h>
#include <runsieve/records/vtkKMeansPearson.h>

#include <gtest/gtest.h>
#include <vtkNew.h>
#include <vtkSmartPointer.h>
#include <vtkVariant.h>
#include <vtkVariantArray.h>

#include <cmath>
#include <random>
#include <vector>

namespace runsieve::test {
namespace {

using Curve = std::vector<double>;

constexpr double infinity = INFINITY;
const double notANumber = std::nan("");

double correlationOf(Curve const& x, Curve const& y)
{
  return correlation(x.data(), y.data(), x.size());
}

template <class Value> vtkSmartPointer<vtkVariantArray> tuple(std::vector<Value> const& values)
{
  auto array = vtkSmartPointer<vtkVariantArray>::New();
  for (Value value : values) array->InsertNextValue(vtkVariant(value));
  return array;
}

double distanceOf(Curve const& x, Curve const& y)
{
  vtkNew<vtkKMeansPearson> functor;
  double distance = -7;
  (*functor)(distance, tuple(x), tuple(y));
  return distance;
}

Curve scaled(Curve curve, double factor, double offset = 0)
{
  for (double& value : curve) value = factor * value + offset;
  return curve;
}

const Curve anscombeX{10, 8, 13, 9, 11, 14, 6, 4, 12, 7, 5};
const Curve anscombeY{8.04, 6.95, 7.58, 8.81, 8.33, 9.96, 7.24, 4.26, 10.84, 4.82, 5.68};

TEST(CorrelationTest, HasTheValuesOfClosedForms)
{
  EXPECT_DOUBLE_EQ(correlationOf({1, 2, 3, 4, 5}, {2, 4, 6, 8, 10}), 1);
  EXPECT_DOUBLE_EQ(correlationOf({1, 2, 3, 4, 5}, {5, 4, 3, 2, 1}), -1);
  EXPECT_DOUBLE_EQ(correlationOf({1, 2, 3}, {1, 3, 2}), 0.5);
  EXPECT_DOUBLE_EQ(correlationOf({1, 2, 3, 4}, {1, 4, 9, 16}), 25 / std::sqrt(5.0 * 129.0));
  EXPECT_NEAR(correlationOf({-1, 0, 1}, {1, 0, 1}), 0, 1e-16);
}

TEST(CorrelationTest, HasTheValueOfRForAnscombesFirstSet)
{
  EXPECT_NEAR(correlationOf(anscombeX, anscombeY), 0.81642051634484, 1e-14);
}

TEST(CorrelationTest, IsSymmetric)
{
  EXPECT_EQ(correlationOf(anscombeX, anscombeY), correlationOf(anscombeY, anscombeX));
}

TEST(CorrelationTest, OffsetsAndScalesDoNotMatter)
{
  double const r = correlationOf(anscombeX, anscombeY);
  EXPECT_NEAR(correlationOf(scaled(anscombeX, 3, -7), anscombeY), r, 1e-14);
  EXPECT_NEAR(correlationOf(scaled(anscombeX, -3, 100), anscombeY), -r, 1e-14);
}

TEST(CorrelationTest, ALargeOffsetTakesNoDigitsThatTheValuesStillHave)
{
  EXPECT_NEAR(correlationOf(scaled(anscombeX, 1, 1e9), scaled(anscombeY, 1, 1e6)), 0.81642051634484, 1e-8);
}

TEST(CorrelationTest, VeryLargeAndVerySmallValuesNeitherOverflowNorVanish)
{
  for (double factor : {1e-300, 1e-200, 1e-160, 1e160, 1e200, 1e300})
    EXPECT_NEAR(correlationOf(scaled({1, 2, 3}, factor), {1, 3, 2}), 0.5, 1e-12) << factor;
}

TEST(CorrelationTest, NeverLeavesItsRange)
{
  std::mt19937 random(11);
  std::normal_distribution<double> value;
  for (int i = 0; i < 2000; ++i) {
    Curve curve;
    for (int t = 0; t < 7; ++t) curve.push_back(value(random));
    double const factor = value(random);
    double const r = correlationOf(curve, scaled(curve, factor, 0.1));
    EXPECT_LE(std::fabs(r), 1) << i;
    EXPECT_NEAR(r, factor > 0 ? 1 : -1, 1e-6) << i;
  }
}

TEST(CorrelationTest, AConstantCurveCorrelatesWithNothing)
{
  for (double constant : {0.0, 5.0, 0.1, 1e300})
    EXPECT_EQ(correlationOf({constant, constant, constant}, {1, 3, 2}), 0) << constant;
  EXPECT_EQ(correlationOf({1, 3, 2}, {4, 4, 4}), 0);
  EXPECT_EQ(correlationOf({4, 4, 4}, {4, 4, 4}), 0);
}

TEST(CorrelationTest, ValuesThatAreNoNumbersGiveZero)
{
  for (double bad : {notANumber, infinity, -infinity}) {
    EXPECT_EQ(correlationOf({1, bad, 3}, {1, 3, 2}), 0) << bad;
    EXPECT_EQ(correlationOf({1, 3, 2}, {bad, 2, 3}), 0) << bad;
  }
}

TEST(CorrelationTest, FewerThanTwoValuesGiveZero)
{
  EXPECT_EQ(correlationOf({}, {}), 0);
  EXPECT_EQ(correlationOf({3}, {4}), 0);
  EXPECT_DOUBLE_EQ(correlationOf({3, 4}, {1, 9}), 1);
}

TEST(KMeansPearsonTest, TheDistanceIsOneMinusTheCorrelation)
{
  EXPECT_NEAR(distanceOf({1, 2, 3, 4, 5}, {2, 4, 6, 8, 10}), 0, 1e-15);
  EXPECT_NEAR(distanceOf({1, 2, 3, 4, 5}, {5, 4, 3, 2, 1}), 2, 1e-15);
  EXPECT_NEAR(distanceOf({1, 2, 3}, {1, 3, 2}), 0.5, 1e-15);
  EXPECT_NEAR(distanceOf(anscombeX, anscombeY), 1 - 0.81642051634484, 1e-14);
}

TEST(KMeansPearsonTest, CurvesWithoutAShapeAreAtDistanceOneOfAnything)
{
  for (Curve const& curve :
       std::vector<Curve>{{4, 4, 4}, {0, 0, 0}, {1, notANumber, 3}, {1, infinity, 3}, {1, -infinity, 3}}) {
    EXPECT_EQ(distanceOf(curve, {1, 3, 2}), 1.0);
    EXPECT_EQ(distanceOf({1, 3, 2}, curve), 1.0);
    EXPECT_EQ(distanceOf(curve, curve), 1.0);
  }
  EXPECT_EQ(distanceOf({}, {}), 1.0);
  EXPECT_EQ(distanceOf({2}, {3}), 1.0);
}

TEST(KMeansPearsonTest, ReadsNumbersOfAnyType)
{
  vtkNew<vtkKMeansPearson> functor;
  double distance = -7;
  (*functor)(distance, tuple<int>({1, 2, 3}), tuple<float>({1, 3, 2}));
  EXPECT_NEAR(distance, 0.5, 1e-15);
}

TEST(KMeansPearsonTest, OneFunctorServesCurvesOfDifferentLengthsOneAfterTheOther)
{
  vtkNew<vtkKMeansPearson> functor;
  double distance = -7;
  (*functor)(distance, tuple(anscombeX), tuple(anscombeY));
  (*functor)(distance, tuple<double>({1, 2, 3}), tuple<double>({1, 3, 2}));
  EXPECT_NEAR(distance, 0.5, 1e-15);
  (*functor)(distance, tuple(anscombeX), tuple(anscombeX));
  EXPECT_NEAR(distance, 0, 1e-15);
}

TEST(KMeansPearsonTest, LeavesTheCurvesAsTheyWere)
{
  vtkNew<vtkKMeansPearson> functor;
  auto x = tuple<double>({1, 2, 3});
  auto y = tuple<double>({1, 3, 2});
  double distance = 0;
  (*functor)(distance, x, y);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(x->GetValue(i).ToDouble(), i + 1);
  EXPECT_EQ(y->GetValue(1).ToDouble(), 3);
}

} // namespace
} // namespace runsieve::test
