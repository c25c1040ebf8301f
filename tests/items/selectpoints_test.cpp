#include "support/TableBuilder.h"

#include <runsieve/items/vtkPlotInvisiblePoints.h>

#include <vtkIdTypeArray.h>
#include <vtkVector.h>

#include <gmock/gmock.h>

#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace runsieve::test {
namespace {

/// Which points a dragged rectangle takes.
struct SelectPointsTest : testing::Test
{
  vtkNew<vtkPlotInvisiblePoints> plot;

  void setPoints(std::vector<double> const& x, std::vector<double> const& y)
  {
    plot->SetInputData(makeTable({{"x", x}, {"y", y}}), "x", "y");
    plot->Update();
  }

  std::vector<vtkIdType> taken(float left, float bottom, float right, float top)
  {
    plot->SelectPoints({left, bottom}, {right, top});
    vtkIdTypeArray* rows = plot->GetSelection();
    return {rows->GetPointer(0), rows->GetPointer(0) + rows->GetNumberOfValues()};
  }
};

TEST_F(SelectPointsTest, PointsExactlyOnEachEdgeBelongToTheRectangle)
{
  setPoints({1, 2, 3, 2, 2}, {5, 4, 5, 6, 5});
  EXPECT_THAT(taken(1, 4, 3, 6), ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(taken(2, 5, 2, 5), ElementsAre(4));
}

TEST_F(SelectPointsTest, PointsBeyondAnEdgeByTheLeastDoNot)
{
  setPoints({1, 2, 3, 2}, {5, 4, 5, 6});
  const float above = std::nextafter(1.0f, 2.0f);
  EXPECT_THAT(taken(above, 4, 3, 6), ElementsAre(1, 2, 3));
  EXPECT_THAT(taken(1, std::nextafter(4.0f, 5.0f), 3, 6), ElementsAre(0, 2, 3));
  EXPECT_THAT(taken(1, 4, std::nextafter(3.0f, 2.0f), 6), ElementsAre(0, 1, 3));
  EXPECT_THAT(taken(1, 4, 3, std::nextafter(6.0f, 5.0f)), ElementsAre(0, 1, 2));
}

TEST_F(SelectPointsTest, PointsThatAreNoNumbersAreNeverTaken)
{
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  setPoints({1, nan, 2}, {1, 1, nan});
  EXPECT_THAT(taken(-10, -10, 10, 10), ElementsAre(0));
  EXPECT_FALSE(plot->SelectPoints({5, 5}, {6, 6}));
  EXPECT_EQ(plot->GetSelection()->GetNumberOfValues(), 0);
}

} // namespace
} // namespace runsieve::test
