#include "support/PlotParts.h"
#include "support/Selections.h"
#include "support/TableBuilder.h"

#include <gmock/gmock.h>
#include <vtkContextScene.h>
#include <vtkFloatArray.h>

#include <cmath>
#include <limits>

using testing::DoubleEq;
using testing::Each;
using testing::ElementsAre;

namespace runsieve::test {
namespace {

/// Scaling of a column of the main table, in place.
struct ColumnScalingTest : testing::Test
{
  vtkNew<vtkContextScene> scene;
  PlotContainer container{nullptr};

  ColumnScalingTest() { scene->AddItem(container.getItem()); }

  void setColumns(std::vector<double> const& a, std::vector<double> const& b, int stride)
  {
    container.plotData = makeTable({{"a", a}, {"b", b}});
    container.metaData->xColumns = {1};
    container.metaData->yColumns = {0};
    container.metaData->setStride(stride);
  }

  std::vector<double> a() { return numbers(container.plotData, "a"); }
  std::vector<double> b() { return numbers(container.plotData, "b"); }
  double greatest(int time) { return numbers(container.quartileTable, "Maximum").at(time); }
};

TEST_F(ColumnScalingTest, EachRunIsMultipliedByItsFactor)
{
  setColumns({1, 2, 3, 4}, {0, 1, 0, 1}, 2);
  double factors[] = {10, 100};
  container.scaleColumn(factors, 0);
  EXPECT_THAT(a(), ElementsAre(10, 20, 300, 400));
  EXPECT_THAT(b(), ElementsAre(0, 1, 0, 1));
  EXPECT_EQ(greatest(1), 400);
}

TEST_F(ColumnScalingTest, RowsAfterTheLastCompleteRunStayAsTheyAre)
{
  setColumns({1, 2, 3, 4, 5}, {0, 1, 0, 1, 0}, 2);
  double factors[] = {10, 100};
  container.scaleColumn(factors, 0);
  EXPECT_THAT(a(), ElementsAre(10, 20, 300, 400, 5));
  container.scaleRelativeToMaxWithinTrajectory(0);
  EXPECT_EQ(a().back(), 5);
}

TEST_F(ColumnScalingTest, RelativeToTheMaximumEachRunPeaksAtOne)
{
  setColumns({1, 2, 4, 30, 10, 49}, {0, 1, 2, 0, 1, 2}, 3);
  container.scaleRelativeToMaxWithinTrajectory(0);
  EXPECT_THAT(a(), ElementsAre(DoubleEq(0.25), DoubleEq(0.5), DoubleEq(1), DoubleEq(30.0 / 49),
                               DoubleEq(10.0 / 49), DoubleEq(1)));
  EXPECT_DOUBLE_EQ(greatest(2), 1);
}

TEST_F(ColumnScalingTest, ARunOfNegativeValuesHasNoMaximumToGoBy)
{
  setColumns({-1, -2, -3, 0}, {0, 1, 0, 1}, 2);
  container.scaleRelativeToMaxWithinTrajectory(0);
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const auto values = a();
  EXPECT_EQ(values[0], -infinity);
  EXPECT_EQ(values[1], -infinity);
  EXPECT_EQ(values[2], -infinity);
  EXPECT_TRUE(std::isnan(values[3])) << "0 times infinity";
}

TEST_F(ColumnScalingTest, OneColumnMultipliesAnotherRowByRow)
{
  setColumns({1, 2, 3}, {10, 20, 30}, 2);
  container.scaleColumnByColumn(0, 1, false);
  EXPECT_THAT(a(), ElementsAre(10, 40, 90));
  EXPECT_THAT(b(), ElementsAre(10, 20, 30));
}

TEST_F(ColumnScalingTest, OneColumnDividesAnotherRowByRow)
{
  setColumns({1, 2, 3}, {2, 4, 0}, 2);
  container.scaleColumnByColumn(0, 1, true);
  EXPECT_THAT(a(), ElementsAre(0.5, 0.5, std::numeric_limits<double>::infinity()));
}

TEST_F(ColumnScalingTest, AColumnDividedByItselfIsOneAndTimesItselfItsSquare)
{
  setColumns({1, 2, -7}, {10, 20, 30}, 1);
  container.scaleColumnByColumn(0, 0, false);
  EXPECT_THAT(a(), ElementsAre(1, 4, 49));
  container.scaleColumnByColumn(0, 0, true);
  EXPECT_THAT(a(), Each(1.0));
}

TEST_F(ColumnScalingTest, ScalingByAColumnRenewsNothing)
{
  setColumns({1, 2}, {3, 4}, 1);
  container.generateQuartiles();
  auto* quartiles = container.quartileTable.Get();
  scene->SetDirty(false);
  container.scaleColumnByColumn(0, 1, false);
  EXPECT_EQ(container.quartileTable.Get(), quartiles);
  EXPECT_FALSE(scene->GetDirty());
}

TEST_F(ColumnScalingTest, ScalingByAMissingColumnChangesNothing)
{
  setColumns({1, 2}, {3, 4}, 1);
  for (int missing : {-1, 2, 99}) {
    container.scaleColumnByColumn(0, missing, true);
    container.scaleColumnByColumn(missing, 0, true);
  }
  EXPECT_THAT(a(), ElementsAre(1, 2));
  EXPECT_THAT(b(), ElementsAre(3, 4));
}

TEST_F(ColumnScalingTest, ScalingByAnotherKindOfNumbersChangesNothing)
{
  setColumns({1, 2}, {3, 4}, 1);
  container.plotData->AddColumn(makeColumn<vtkFloatArray>("c", std::vector<double>{5, 6}));
  container.scaleColumnByColumn(0, 2, false);
  container.scaleColumnByColumn(2, 0, false);
  EXPECT_THAT(a(), ElementsAre(1, 2));
  EXPECT_THAT(numbers(container.plotData, "c"), ElementsAre(5, 6));
}

TEST_F(ColumnScalingTest, ScalingOfRunsMarksTheSceneForRepainting)
{
  setColumns({1, 2, 3, 4}, {0, 1, 0, 1}, 2);
  double factors[] = {1, 1};
  scene->SetDirty(false);
  container.scaleColumn(factors, 0);
  EXPECT_TRUE(scene->GetDirty());
  scene->SetDirty(false);
  container.scaleRelativeToMaxWithinTrajectory(0);
  EXPECT_TRUE(scene->GetDirty());
}

TEST_F(ColumnScalingTest, ScalingOfRunsWithoutASceneIsAllowed)
{
  PlotContainer alone(nullptr);
  alone.plotData = makeTable({{"a", {1, 2}}});
  double factors[] = {2, 3};
  alone.scaleColumn(factors, 0);
  EXPECT_THAT(numbers(alone.plotData, "a"), ElementsAre(2, 6));
}

TEST_F(ColumnScalingTest, ImpossibleRequestsHaveNoEffect)
{
  setColumns({1, 2}, {3, 4}, 1);
  container.plotData->AddColumn(makeColumn<vtkFloatArray>("c", std::vector<double>{5, 6}));
  double factors[] = {10, 10};
  container.scaleColumn(nullptr, 0);
  for (int column : {-1, 2, 99}) {
    container.scaleColumn(factors, column);
    container.scaleRelativeToMaxWithinTrajectory(column);
  }
  container.metaData->setStride(0);
  container.scaleColumn(factors, 0);
  container.scaleRelativeToMaxWithinTrajectory(0);
  EXPECT_THAT(a(), ElementsAre(1, 2));
  EXPECT_THAT(b(), ElementsAre(3, 4));
  EXPECT_THAT(numbers(container.plotData, "c"), ElementsAre(5, 6));
}

TEST_F(ColumnScalingTest, ABorrowedColumnIsScaledInTheMemoryOfItsOwner)
{
  double owned[] = {1, 2, 3};
  vtkNew<vtkDoubleArray> column;
  column->SetName("a");
  column->SetArray(owned, 3, 1);
  container.plotData = vtkSmartPointer<vtkTable>::New();
  container.plotData->AddColumn(column);
  double factors[] = {2, 2, 2};
  container.metaData->setStride(1);
  container.scaleColumn(factors, 0);
  EXPECT_THAT(std::vector<double>(owned, owned + 3), ElementsAre(2, 4, 6));
}

} // namespace
} // namespace runsieve::test
