#include "support/PlotScene.h"

#include <gmock/gmock.h>
#include <vtkFloatArray.h>

#include <cmath>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

struct ExampleTest : testing::Test, PlotScene
{
  float value(int row, int column)
  {
    return vtkFloatArray::SafeDownCast(container.plotData->GetColumn(column))->GetValue(row);
  }
};

TEST_F(ExampleTest, HasThreeColumnsOfFourHundredFloats)
{
  container.example();
  vtkTable* table = container.plotData;
  ASSERT_EQ(table->GetNumberOfColumns(), 3);
  EXPECT_EQ(table->GetNumberOfRows(), 400);
  char const* const names[] = {"x", "y", "z"};
  for (int i = 0; i < 3; ++i) {
    EXPECT_STREQ(table->GetColumnName(i), names[i]);
    EXPECT_TRUE(table->GetColumn(i)->IsA("vtkFloatArray"));
  }
}

TEST_F(ExampleTest, FollowsItsFormulaInSinglePrecision)
{
  container.example();
  EXPECT_EQ(value(0, 0), 0.0f);
  EXPECT_EQ(value(0, 1), static_cast<float>(0.16 + 0.4 - 0.7));
  for (int i = 0; i < 400; ++i) {
    float const x = static_cast<float>(i) / 400;
    double const wide = x;
    float const y = static_cast<float>(0.16 * std::cos(56.548667764616276 * wide) +
                                       (0.4 * std::cos(18.84955592153876 * wide) + x * x) - 0.7);
    ASSERT_EQ(value(i, 0), x) << i;
    ASSERT_EQ(value(i, 1), y) << i;
    ASSERT_EQ(value(i, 2), static_cast<float>(std::sin(static_cast<double>(y)) * std::cos(wide))) << i;
  }
}

TEST_F(ExampleTest, ShowsItsFirstTwoColumnsAndItsTitle)
{
  settings().xColumns = {2};
  settings().yColumns = {2};
  container.example();
  EXPECT_THAT(settings().xColumns, ElementsAre(0));
  EXPECT_THAT(settings().yColumns, ElementsAre(1));
  EXPECT_EQ(settings().plotTitle, "Example Plot");
  EXPECT_EQ(chart()->GetTitle(), "Example Plot");
  EXPECT_EQ(drawnColumn(chart()->GetPlot(0), 1), "y");
}

TEST_F(ExampleTest, WithoutASceneItsTitleIsSetAllTheSame)
{
  PlotContainer alone(nullptr);
  testing::internal::CaptureStdout();
  alone.example();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "void PlotContainer::redraw(): invalid scene\n");
  EXPECT_TRUE(alone.metaData->signalsBlocked());
  EXPECT_EQ(alone.chartXY->GetTitle(), "Example Plot");
  EXPECT_EQ(alone.metaData->plotTitle, "Example Plot");
}

TEST_F(ExampleTest, CanFollowAStyleThatReleasedThePlainChart)
{
  container.example();
  settings().zColumns = {2};
  container.setPlotStyle(scatterPlot3D);
  container.example();
  EXPECT_EQ(settings().plotTitle, "Example Plot");
  container.setPlotStyle(scatterPlot);
  EXPECT_EQ(chart()->GetTitle(), "Example Plot");
}

using AddColumnTest = ExampleTest;

TEST_F(AddColumnTest, AppendsDoublesAndReturnsTheirIndex)
{
  container.example();
  EXPECT_EQ(container.addColumn(std::vector<double>(400, 0.5), "w"), 3);
  auto* column = vtkDoubleArray::SafeDownCast(container.plotData->GetColumn(3));
  ASSERT_NE(column, nullptr);
  EXPECT_STREQ(column->GetName(), "w");
  EXPECT_EQ(column->GetValue(399), 0.5);
}

TEST_F(AddColumnTest, RefusesAnotherLengthWithoutAnyChange)
{
  container.example();
  EXPECT_EQ(container.addColumn(std::vector<double>(401), "long"), -1);
  EXPECT_EQ(container.addColumn(std::vector<double>(399), "short"), -1);
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 3);
}

TEST_F(AddColumnTest, ANewTableTakesAnEmptyColumnOnly)
{
  EXPECT_EQ(container.addColumn({1.0}, "one"), -1);
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 0);
  EXPECT_EQ(container.addColumn({}, "none"), 0);
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 1);
}

TEST_F(AddColumnTest, AColumnOfThatNameIsReplacedInPlace)
{
  container.example();
  EXPECT_EQ(container.addColumn(std::vector<double>(400, 7.0), "x"), 2) << "the number of the last column";
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 3);
  EXPECT_EQ(container.plotData->GetValueByName(0, "x").ToDouble(), 7.0);
  EXPECT_STREQ(container.plotData->GetColumnName(0), "x");
}

TEST_F(AddColumnTest, NothingElseChanges)
{
  container.example();
  auto* drawn = chart()->GetPlot(0);
  container.addColumn(std::vector<double>(400), "w");
  EXPECT_EQ(chart()->GetPlot(0), drawn);
  EXPECT_TRUE(container.typedColumnNames.empty());
  EXPECT_THAT(settings().yColumns, ElementsAre(1));
}

} // namespace
} // namespace runsieve::test
