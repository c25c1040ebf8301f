#include <runsieve/core/kernels/RunIntersection.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>

using testing::ElementsAre;
using testing::IsEmpty;

namespace runsieve::test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

using Rows = std::vector<long long>;

Rows listed(RowSpans const& spans)
{
  Rows rows(static_cast<std::size_t>(spans.rowCount()));
  spans.expand(rows.data());
  return rows;
}

struct Selected
{
  std::vector<double> times;
  std::vector<unsigned char> flags;
  long long stride;

  long long rows() const { return static_cast<long long>(times.size()); }
  RunGrid grid() const { return {times.data(), rows(), stride}; }
};

struct SplitRows
{
  Rows remainder, reduced, complement, others;

  bool operator==(SplitRows const& other) const
  {
    return remainder == other.remainder && reduced == other.reduced && complement == other.complement &&
           others == other.others;
  }
};

SplitRows split(Selected const& selected)
{
  const RunGrid grid = selected.grid();
  auto const found =
      RunIntersection(selected.flags.data(), selected.times.data(), selected.rows(), selected.stride, grid)
          .split();
  return {listed(found.remainder), listed(found.reduced), listed(found.complement), listed(found.others)};
}

bool anySelected(Selected const& selected)
{
  const RunGrid grid = selected.grid();
  return RunIntersection(selected.flags.data(), selected.times.data(), selected.rows(), selected.stride, grid)
      .anySelected();
}

/// The same from the definition: the runs of each selected time, intersected.
SplitRows wanted(Selected const& selected)
{
  std::map<double, std::set<long long>> runsAt;
  for (long long row = 0; row < selected.rows(); ++row)
    if (selected.flags[row] && !std::isnan(selected.times[row]))
      runsAt[selected.times[row]].insert(row / selected.stride);
  SplitRows rows;
  for (long long row = 0; row < selected.rows(); ++row) {
    const bool timeless = std::isnan(selected.times[row]);
    bool survives = !timeless;
    for (auto const& [time, runs] : runsAt) survives = survives && runs.count(row / selected.stride) > 0;
    const bool atSelectedTime = !timeless && runsAt.count(selected.times[row]) > 0;
    if (!selected.flags[row] && !atSelectedTime) continue;
    Rows& group = !selected.flags[row] ? rows.complement : survives ? rows.remainder : rows.reduced;
    group.push_back(row);
    if (&group != &rows.remainder) rows.others.push_back(row);
  }
  return rows;
}

TEST(RunIntersectionTest, RunsWithASelectedRowAtEverySelectedTimeSurvive)
{
  const SplitRows rows = split({{0, 1, 2, 0, 1, 2, 0, 1, 2}, {0, 1, 1, 0, 1, 0, 0, 0, 1}, 3});
  EXPECT_THAT(rows.remainder, ElementsAre(1, 2));
  EXPECT_THAT(rows.reduced, ElementsAre(4, 8));
  EXPECT_THAT(rows.complement, ElementsAre(5, 7));
  EXPECT_THAT(rows.others, ElementsAre(4, 5, 7, 8));
}

TEST(RunIntersectionTest, ASelectedRowWithoutATimeIsReducedEvenIfItsRunSurvives)
{
  for (auto const& times :
       {std::vector<double>{0, 1, 0, nan, 0, 1}, std::vector<double>{0, nan, 0, nan, 0, nan}}) {
    const SplitRows rows = split({times, {1, 0, 1, 1, 0, 0}, 2});
    EXPECT_THAT(rows.remainder, ElementsAre(0, 2));
    EXPECT_THAT(rows.reduced, ElementsAre(3));
    EXPECT_THAT(rows.complement, ElementsAre(4));
    EXPECT_THAT(rows.others, ElementsAre(3, 4));
  }
}

TEST(RunIntersectionTest, OnlyASelectedRowWithATimeCounts)
{
  EXPECT_FALSE(anySelected(Selected{{0, 1}, {0, 0}, 2}));
  EXPECT_FALSE(anySelected(Selected{{nan, 1}, {1, 0}, 2}));
  EXPECT_TRUE(anySelected(Selected{{nan, 1}, {0, 1}, 2}));
}

TEST(RunIntersectionTest, ATimeThatStandsTwiceInARunIsOneTime)
{
  const SplitRows rows = split({{0, 0, 1, 0, 0, 1}, {1, 1, 0, 0, 1, 0}, 3});
  EXPECT_THAT(rows.remainder, ElementsAre(0, 1, 4));
  EXPECT_THAT(rows.complement, ElementsAre(3));
  EXPECT_THAT(rows.reduced, IsEmpty());
}

TEST(RunIntersectionTest, WithoutRowsNothingIsSelected)
{
  EXPECT_FALSE(anySelected(Selected{{}, {}, 3}));
}

/// Runs on one grid of times and runs off it, the last one short, times that repeat and times that are none.
TEST(RunIntersectionTest, AnyTableIsSplitByTheDefinition)
{
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    Selected selected{{}, {}, 1 + static_cast<long long>(random() % 5)};
    std::vector<double> grid;
    for (long long t = 0; t < selected.stride; ++t) grid.push_back(static_cast<double>(random() % 6));
    if (random() % 2 == 0) std::sort(grid.begin(), grid.end());
    if (random() % 4 == 0) grid[random() % grid.size()] = nan;
    const auto rows = 1 + random() % 30;
    const auto density = 1 + random() % 4;
    for (std::size_t row = 0; row < rows; ++row) {
      selected.times.push_back(grid[row % grid.size()]);
      if (random() % 12 == 0) selected.times.back() = static_cast<double>(random() % 7);
      if (random() % 20 == 0) selected.times.back() = nan;
      selected.flags.push_back(random() % 4 < density ? 1 : 0);
    }
    ASSERT_TRUE(split(selected) == wanted(selected)) << "round " << round;
  }
}

} // namespace
} // namespace runsieve::test
