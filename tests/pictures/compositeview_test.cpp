#include "ScanPicture.h"

#include <gmock/gmock.h>

using testing::Each;
using testing::IsEmpty;

namespace runsieve::test {
namespace {

/// Numbers first, then the picture that shows them.
using CompositeViewTest = ScanPicture;

TEST_F(CompositeViewTest, NoSelection)
{
  show(3);
  EXPECT_EQ(app::survivingRuns(*plot), 0);
  EXPECT_THAT(plot->ksStatistics, IsEmpty());
  EXPECT_EQ(shown(), firstParameters(4));
  EXPECT_TRUE(looksLike("NoSelection"));
}

TEST_F(CompositeViewTest, FourParameters)
{
  show(3);
  selectLast(20);
  EXPECT_EQ(app::survivingRuns(*plot), 20);
  EXPECT_EQ(significant(), 3);
  EXPECT_EQ(shown(), firstParameters(4));
  EXPECT_TRUE(looksLike("FourParameters"));
}

TEST_F(CompositeViewTest, EightParameters)
{
  show(7, {}, 560);
  selectLast(20);
  EXPECT_EQ(app::survivingRuns(*plot), 20);
  EXPECT_EQ(significant(), 7);
  EXPECT_EQ(shown(), firstParameters(8));
  EXPECT_TRUE(looksLike("EightParameters"));
}

TEST_F(CompositeViewTest, TwelveParameters)
{
  show(11, {}, 700);
  selectLast(20);
  EXPECT_EQ(app::survivingRuns(*plot), 20);
  EXPECT_EQ(significant(), 11);
  EXPECT_EQ(shown(), firstParameters(12));
  EXPECT_TRUE(looksLike("TwelveParameters"));
}

TEST_F(CompositeViewTest, Densities)
{
  app::ViewOptions options;
  options.density = true;
  show(3, options);
  selectLast(20);
  EXPECT_EQ(app::survivingRuns(*plot), 20);
  EXPECT_EQ(shown(), firstParameters(4));
  EXPECT_NE(tops()[0], tops()[1]) << "each chart has a scale of its own";
  EXPECT_TRUE(looksLike("Densities"));
}

TEST_F(CompositeViewTest, DensitiesOnACommonScale)
{
  app::ViewOptions options;
  options.density = true;
  options.commonScale = true;
  show(3, options);
  selectLast(20);
  EXPECT_EQ(app::survivingRuns(*plot), 20);
  EXPECT_EQ(shown(), firstParameters(4));
  EXPECT_GT(tops()[0], 0.0);
  EXPECT_THAT(tops(), Each(tops()[0]));
  EXPECT_TRUE(looksLike("DensitiesOnACommonScale"));
}

TEST_F(CompositeViewTest, QuartileBands)
{
  app::ViewOptions options;
  options.quantiles = true;
  show(3, options);
  selectLast(5);
  EXPECT_EQ(app::survivingRuns(*plot), 5);
  EXPECT_EQ(plot->chartXY->GetNumberOfPlots(), 4) << "three bands and the runs";
  EXPECT_TRUE(looksLike("QuartileBands"));
}

TEST_F(CompositeViewTest, LogAxes)
{
  app::ViewOptions options;
  options.logAxes = true;
  show(3, options);
  selectLast(20);
  EXPECT_EQ(app::survivingRuns(*plot), 20);
  view->render();
  EXPECT_TRUE(plot->chartMatrix->GetChart({1, 0})->GetAxis(vtkAxis::BOTTOM)->GetLogScaleActive());
  EXPECT_TRUE(looksLike("LogAxes"));
}

TEST_F(CompositeViewTest, Points)
{
  app::ViewOptions options;
  options.points = true;
  show(3, options);
  selectLast(20);
  EXPECT_EQ(app::survivingRuns(*plot), 20);
  EXPECT_EQ(plot->metaData->getPlotLine(), false);
  EXPECT_TRUE(looksLike("Points"));
}

/// The tolerance must not hide what matters: here one run, one parameter, the kind of curve.
TEST_F(CompositeViewTest, OneRunMoreIsAnotherPicture)
{
  show(3);
  selectLast(20);
  const QImage twenty = picture();
  selectLast(21);
  EXPECT_FALSE(isWithin(differenceOf(picture(), twenty)));
}

TEST_F(CompositeViewTest, OneGrowingParameterLessIsAnotherPicture)
{
  show(3);
  const QImage three = picture();
  show(2);
  EXPECT_FALSE(isWithin(differenceOf(picture(), three)));
}

TEST_F(CompositeViewTest, CurvesAreNotDensities)
{
  show(3);
  selectLast(20);
  const QImage curves = picture();
  app::ViewOptions options;
  options.density = true;
  show(3, options);
  selectLast(20);
  EXPECT_FALSE(isWithin(differenceOf(picture(), curves)));
}

TEST_F(CompositeViewTest, DrawnTwiceAPictureIsTheSame)
{
  show(3);
  selectLast(20);
  const QImage first = picture();
  show(3);
  selectLast(20);
  EXPECT_EQ(first, picture());
}

} // namespace
} // namespace runsieve::test
