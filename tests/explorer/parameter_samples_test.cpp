// Values of parameters in the two groups of a figure, and curves of them.

#include "FigureScene.h"

#include "app/explorer/figure/ParameterSamples.h"
#include "app/explorer/parameters/CountDensity.h"

#include <gmock/gmock.h>

#include <numeric>

namespace runsieve::test {
namespace {

using app::AxisMap;
using testing::ElementsAre;

TEST(CumulativeCurve, RisesInStepsFromOneEndOfTheAxisToTheOther)
{
  EXPECT_THAT(app::cumulativeCurve({3.0, 4.0, 4.0, 5.0}, AxisMap(2.0, 10.0)),
              ElementsAre(QPointF(2, 0), QPointF(3, 0), QPointF(3, 0.25), QPointF(4, 0.25), QPointF(4, 0.75),
                          QPointF(5, 0.75), QPointF(5, 1), QPointF(10, 1)));
}

TEST(CumulativeCurve, BeginsWithTheShareOfTheValuesBelowTheAxis)
{
  EXPECT_THAT(app::cumulativeCurve({1.0, 2.0, 2.0, 5.0}, AxisMap(2.0, 10.0)),
              ElementsAre(QPointF(2, 0.25), QPointF(2, 0.25), QPointF(2, 0.75), QPointF(5, 0.75),
                          QPointF(5, 1), QPointF(10, 1)));
  EXPECT_THAT(app::cumulativeCurve({1.0}, AxisMap(2.0, 10.0)), ElementsAre(QPointF(2, 1), QPointF(10, 1)));
}

TEST(CumulativeCurve, OfNoValuesIsNone)
{
  EXPECT_TRUE(app::cumulativeCurve({}, AxisMap(0.0, 1.0)).empty());
}

TEST(DensityCurve, NeedsAsManyValuesAsADensityMeansSomethingFor)
{
  std::vector<double> values(app::fewestForDensity - 1);
  std::iota(values.begin(), values.end(), 0.0);
  const AxisMap axis(0.0, 20.0);
  EXPECT_TRUE(app::densityCurve(values, axis).empty());
  values.push_back(12.0);
  const auto curve = app::densityCurve(values, axis);
  ASSERT_GT(curve.size(), 50u);
  EXPECT_EQ(curve.front().x(), 0.0);
  EXPECT_EQ(curve.back().x(), 1.0);
  double mass = 0.0;
  for (std::size_t i = 1; i < curve.size(); ++i)
    mass += 0.5 * (curve[i].y() + curve[i - 1].y()) * (curve[i].x() - curve[i - 1].x());
  EXPECT_NEAR(mass, 1.0, 0.01);
  values.back() = 30.0;
  EXPECT_TRUE(app::densityCurve(values, axis).empty()) << "one of them is not on the axis";
}

using ParameterSamples = FigureScene;

TEST_F(ParameterSamples, AreThoseOfTheRunsThatTakePartInAscendingOrder)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  app::FigureContent shown = content();
  const auto all = app::samplesOf(shown, 1);
  EXPECT_EQ(all.passing.size(), document.passing().count());
  EXPECT_EQ(all.passing.size() + all.others.size(), 40u);
  EXPECT_TRUE(std::is_sorted(all.passing.begin(), all.passing.end()));
  EXPECT_TRUE(std::is_sorted(all.others.begin(), all.others.end()));
  const std::size_t absent = shown.passing.members().front();
  shown.eligible.set(absent, false);
  EXPECT_EQ(app::samplesOf(shown, 1).passing.size(), all.passing.size() - 1);
  EXPECT_EQ(app::samplesOf(shown, 1).others, all.others);
}

TEST_F(ParameterSamples, HaveALogarithmicAxisIfTheContentSaysSo)
{
  app::FigureContent shown = content();
  EXPECT_FALSE(app::samplesOf(shown, 1).axis.isLogarithmic());
  shown.logParameters[1] = true;
  EXPECT_TRUE(app::samplesOf(shown, 1).axis.isLogarithmic());
}

} // namespace
} // namespace runsieve::test
