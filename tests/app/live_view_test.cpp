#include "RandomScan.h"

#include "app/view/LiveView.h"
#include "app/view/QuietLibrary.h"
#include "app/view/ScanPlot.h"
#include "app/view/ShownComparison.h"

#include <runsieve/adapters/ScanTable.h>

#include <gtest/gtest.h>

#include <vtkContextScene.h>
#include <vtkNew.h>

#include <algorithm>
#include <iterator>
#include <set>

namespace runsieve::app {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// A plot of a random scan, and the same scan followed live.
struct LiveScan
{
  explicit LiveScan(unsigned seed)
      : data(seed), runs(scanOf(data.table)), view(runs, RunSet(runs.runs.size()).complement())
  {
    scene->AddItem(plot.getItem());
    showScan(plot, data.table, {});
  }
  ~LiveScan() { plot.setScene(nullptr); }

  [[nodiscard]] std::vector<long long> rowsIn(DragRectangle const& r) const
  {
    std::vector<long long> rows;
    for (std::size_t run = 0; run < runs.runs.size(); ++run)
      for (std::size_t time = 0; time < runs.times.size(); ++time) {
        double const value = runs.outputs[0].values[run * runs.times.size() + time];
        if (runs.times[time] >= r.left && runs.times[time] <= r.right && value >= r.bottom && value <= r.top)
          rows.push_back(static_cast<long long>(run * runs.times.size() + time));
      }
    return rows;
  }

  /// What the plot holds when the rectangle is released, by sets.
  [[nodiscard]] std::vector<long long> released(DragRectangle const& r) const
  {
    std::vector<long long> const before = hasSelection(plot) ? selectedRows(plot) : std::vector<long long>();
    std::set<long long> rows(before.begin(), before.end());
    std::vector<long long> const own = rowsIn(r);
    if (r.modifiers == (Qt::ControlModifier | Qt::ShiftModifier))
      for (long long const row : own)
        if (rows.count(row))
          rows.erase(row);
        else
          rows.insert(row);
    else if (r.modifiers & Qt::ControlModifier)
      rows.insert(own.begin(), own.end());
    else if (r.modifiers & Qt::ShiftModifier)
      for (long long const row : own) rows.erase(row);
    else
      rows = {own.begin(), own.end()};
    return {rows.begin(), rows.end()};
  }

  test::RandomScan data;
  Scan runs;
  vtkNew<vtkContextScene> scene;
  PlotContainer plot{nullptr};
  LiveView view;
};

DragRectangle randomRectangle(std::mt19937& random, Scan const& scan)
{
  auto const share = [&] { return static_cast<double>(random() % 1001) / 1000.0; };
  std::vector<double> values(scan.outputs[0].values.get(), scan.outputs[0].values.get() + scan.rows());
  values.erase(std::remove_if(values.begin(), values.end(), [](double v) { return !std::isfinite(v); }),
               values.end());
  if (values.empty()) values.push_back(0.0);
  auto const [low, high] = std::minmax_element(values.begin(), values.end());
  double const width = scan.times.back() - scan.times.front();
  auto const x = std::minmax({scan.times.front() + share() * width, scan.times.front() + share() * width});
  auto const y = std::minmax({*low + share() * (*high - *low), *low + share() * (*high - *low)});
  DragRectangle rectangle{x.first, x.second, y.first, y.second, Qt::NoModifier};
  if (random() % 3 == 0) rectangle.top = infinity;
  if (random() % 3 == 0) rectangle.modifiers = Qt::ControlModifier;
  if (random() % 5 == 0) rectangle.modifiers = Qt::ShiftModifier;
  if (random() % 9 == 0) rectangle.modifiers = Qt::ControlModifier | Qt::ShiftModifier;
  return rectangle;
}

TEST(LiveView, LightsTheRunsThatPassAfterTheRelease)
{
  const QuietLibrary quiet;
  std::size_t some = 0;
  for (unsigned seed = 0; seed < 60; ++seed) {
    LiveScan scan(seed);
    std::mt19937 random(seed);
    for (int i = 0; i < 12; ++i) {
      scan.view.begin(scan.plot);
      DragRectangle const first = randomRectangle(random, scan.runs);
      static_cast<void>(scan.view.move(first, 0)); // where the pointer was before
      DragRectangle const rectangle = randomRectangle(random, scan.runs);
      std::size_t const count = scan.view.move(rectangle, 0);
      std::vector<unsigned char> const lit = scan.view.lit();
      std::vector<long long> const rows = scan.released(rectangle);
      selectRows(scan.plot, rows);
      RunSet const passing = runsThrough(rows, scan.runs.runs.size(), scan.runs.times.size());
      ASSERT_EQ(count, passing.count()) << seed << ' ' << i;
      for (std::size_t run = 0; run < lit.size(); ++run)
        ASSERT_EQ(lit[run] != 0, passing.contains(run)) << seed << ' ' << i;
      some += count > 0 && count < lit.size();
    }
  }
  EXPECT_GT(some, 150u);
}

TEST(LiveView, DistancesAreThoseOfTheComparison)
{
  const QuietLibrary quiet;
  int compared = 0;
  for (unsigned seed = 100; seed < 130; ++seed) {
    LiveScan scan(seed);
    std::mt19937 random(seed);
    scan.view.begin(scan.plot);
    DragRectangle rectangle = randomRectangle(random, scan.runs);
    rectangle.modifiers = Qt::NoModifier;
    std::size_t const count = scan.view.move(rectangle, 0);
    if (count == 0) continue;
    selectRows(scan.plot, scan.released(rectangle));
    RunSet const all = RunSet(scan.runs.runs.size()).complement();
    Comparison const comparison = compareParameters(scan.runs, passingRuns(scan.plot), all, {});
    std::vector<LiveDistance> const live = scan.view.distances();
    for (ParameterComparison const& c : comparison.parameters) {
      if (std::isnan(c.d)) continue;
      EXPECT_EQ(live[c.parameter].d, c.d);
      ++compared;
    }
  }
  EXPECT_GT(compared, 10);
}

TEST(LiveView, BetweenTwoTimesNothingIsAskedFor)
{
  const QuietLibrary quiet;
  LiveScan scan(3);
  scan.view.begin(scan.plot);
  double const between = scan.runs.times.back() + 1.0;
  EXPECT_EQ(scan.view.move({between, between, -infinity, infinity, Qt::NoModifier}, 0), 0u);
  selectRows(scan.plot, {0});
  scan.view.begin(scan.plot);
  EXPECT_EQ(scan.view.move({between, between, -infinity, infinity, Qt::ControlModifier}, 0), 1u);
}

TEST(LiveView, PreparationGoesOnUntilItIsDone)
{
  LiveScan scan(5);
  int slices = 1;
  while (!scan.view.prepare(0)) ASSERT_LT(++slices, 1000);
}

} // namespace
} // namespace runsieve::app
