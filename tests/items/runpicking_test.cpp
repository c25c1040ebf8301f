#include "support/DrawnLineSet.h"

#include <runsieve/items/RunPicking.h>

#include <vtkRect.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace runsieve::test {
namespace {

constexpr std::size_t times = 5;

/// Runs at times 0, 2, 4, ...; y of run r at time number t is 10 r + t.
std::vector<float> grid(std::size_t runs)
{
  std::vector<float> points;
  for (std::size_t run = 0; run < runs; ++run)
    for (std::size_t time = 0; time < times; ++time)
      points.insert(points.end(), {2.0f * static_cast<float>(time), static_cast<float>(10 * run + time)});
  return points;
}

std::optional<TimeColumns> columnsOf(std::vector<float> const& points)
{
  return TimeColumns::of(points.data(), points.size() / 2, times);
}

TEST(TimeColumns, FindsTheRunAtAPlace)
{
  const std::vector<float> points = grid(20);
  auto const columns = columnsOf(points);
  ASSERT_TRUE(columns);
  EXPECT_EQ(columns->find(points.data(), {4.1f, 72.4f, 0.5f, 1.0f}), 7 * times + 2);
  EXPECT_EQ(columns->find(points.data(), {8.0f, 194.0f, 0.5f, 0.5f}), 19 * times + 4);
  EXPECT_EQ(columns->find(points.data(), {0.0f, 0.0f, 0.5f, 0.5f}), 0u);
}

TEST(TimeColumns, FindsNothingWhereNothingIs)
{
  const std::vector<float> points = grid(20);
  auto const columns = columnsOf(points);
  EXPECT_FALSE(columns->find(points.data(), {5.0f, 72.0f, 0.9f, 1.0f}));
  EXPECT_FALSE(columns->find(points.data(), {4.0f, 77.0f, 0.5f, 1.0f}));
  EXPECT_FALSE(columns->find(points.data(), {-3.0f, 0.0f, 1.0f, 1.0f}));
  EXPECT_FALSE(columns->find(points.data(), {30.0f, 0.0f, 1.0f, 1000.0f}));
}

TEST(TimeColumns, TakesTheLeftmostPointAndThenTheFirstRun)
{
  const std::vector<float> points = grid(20);
  auto const columns = columnsOf(points);
  EXPECT_EQ(columns->find(points.data(), {4.0f, 60.0f, 3.0f, 25.0f}), 4 * times + 1);
}

TEST(TimeColumns, TheBorderOfTheRectangleIsOutside)
{
  const std::vector<float> points = grid(3);
  auto const columns = columnsOf(points);
  EXPECT_FALSE(columns->find(points.data(), {3.0f, 2.0f, 1.0f, 0.5f}));
  EXPECT_FALSE(columns->find(points.data(), {4.0f, 3.0f, 0.5f, 1.0f}));
  EXPECT_FALSE(columns->find(points.data(), {4.0f, 1.0f, 0.5f, 1.0f}));
}

TEST(TimeColumns, RunsWithTimesOfTheirOwnHaveNone)
{
  std::vector<float> points = grid(4);
  points[2 * (2 * times + 3)] += 0.25f;
  EXPECT_FALSE(columnsOf(points));
  points = grid(4);
  for (std::size_t i = 0; i < points.size(); i += 2) points[i] = -points[i];
  EXPECT_FALSE(columnsOf(points));
  points = grid(4);
  points[2] = std::numeric_limits<float>::quiet_NaN();
  EXPECT_FALSE(columnsOf(points));
  EXPECT_FALSE(TimeColumns::of(points.data(), 4, 0));
}

TEST(TimeColumns, AShortLastRunIsLookedAtToo)
{
  std::vector<float> points = grid(3);
  points.resize(points.size() - 4);
  auto const columns = columnsOf(points);
  ASSERT_TRUE(columns);
  EXPECT_EQ(columns->find(points.data(), {4.0f, 22.0f, 0.5f, 0.5f}), 2 * times + 2);
  EXPECT_FALSE(columns->find(points.data(), {8.0f, 24.0f, 0.5f, 0.5f}));
}

TEST(TimeColumns, MissingValuesAreNotFound)
{
  std::vector<float> points = grid(3);
  points[2 * (times + 1) + 1] = std::numeric_limits<float>::quiet_NaN();
  auto const columns = columnsOf(points);
  ASSERT_TRUE(columns);
  EXPECT_FALSE(columns->find(points.data(), {2.0f, 11.0f, 0.5f, 0.9f}));
}

/// The same table as points, which VTK searches by sorting.
TEST_F(DrawnLineSet, PicksWhatThePointsOfVtkPick)
{
  constexpr int stride = 8;
  std::mt19937 random(4);
  std::uniform_real_distribution<double> height(0.0, 40.0);
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 30 * stride; ++i) {
    x.push_back(i % stride);
    y.push_back(height(random));
  }
  table = makeTable({{"x", x}, {"y", y}});
  plot->SetInputData(table, "x", "y");
  plot->SetStride(stride);
  plot->Update();
  vtkNew<vtkPlotPoints> points;
  points->SetInputData(table, "x", "y");
  points->Update();
  int found = 0;
  for (int i = 0; i < 500; ++i) {
    const vtkVector2f place(static_cast<float>(height(random) / 5.0), static_cast<float>(height(random)));
    const vtkVector2f tolerance(0.4f, 0.2f); // one column at most, and seldom two runs
    vtkVector2f mine(-1.0f, -1.0f);
    vtkVector2f theirs(-1.0f, -1.0f);
    vtkIdType segment = -1;
    const vtkIdType picked = plot->GetNearestPoint(place, tolerance, &mine, &segment);
    const vtkIdType reference = points->GetNearestPoint(place, tolerance, &theirs, &segment);
    EXPECT_EQ(picked < 0, reference < 0);
    EXPECT_EQ(mine.GetX(), theirs.GetX());
    if (picked == reference) EXPECT_EQ(mine.GetY(), theirs.GetY());
    found += picked >= 0;
  }
  EXPECT_GT(found, 30);
}

TEST_F(DrawnLineSet, PickingFollowsAChangeOfTheTable)
{
  setHeights({1, 2, 3, 4}, 2);
  for (vtkIdType row = 0; row < 4; ++row) table->SetValue(row, 0, static_cast<double>(row % 2));
  plot->Update();
  vtkVector2f location;
  vtkIdType segment = -1;
  EXPECT_EQ(plot->GetNearestPoint({1.0f, 4.0f}, {0.1f, 0.1f}, &location, &segment), 3);
  table->SetValue(3, 1, 9.0);
  table->GetColumn(1)->Modified();
  table->Modified();
  plot->Update();
  EXPECT_EQ(plot->GetNearestPoint({1.0f, 4.0f}, {0.1f, 0.1f}, &location, &segment), -1);
  EXPECT_EQ(plot->GetNearestPoint({1.0f, 9.0f}, {0.1f, 0.1f}, &location, &segment), 3);
}

TEST_F(DrawnLineSet, NothingIsPickedWithoutPointsOrStride)
{
  vtkVector2f location;
  vtkIdType segment = -1;
  EXPECT_EQ(plot->GetNearestPoint({0.0f, 0.0f}, {1.0f, 1.0f}, &location, &segment), -1);
  setHeights({1, 2, 3, 4}, 0);
  plot->Update();
  EXPECT_EQ(plot->GetNearestPoint({0.0f, 1.0f}, {1.0f, 1.0f}, &location, &segment), -1);
}

TEST_F(DrawnLineSet, RunsWithTimesOfTheirOwnArePickedAsPoints)
{
  setHeights({1, 2, 3, 4}, 2); // x goes on over the runs
  plot->Update();
  vtkVector2f location;
  vtkIdType segment = -1;
  EXPECT_EQ(plot->GetNearestPoint({2.0f, 3.0f}, {0.1f, 0.1f}, &location, &segment), 2);
}

} // namespace
} // namespace runsieve::test
