#include "support/PlotScene.h"
#include "support/ScanBuilder.h"
#include "support/Selections.h"

#include <runsieve/selection/vtkSelectionUpdateCallback.h>

#include <gmock/gmock.h>
#include <vtkVariant.h>

#include <cmath>
#include <memory>
#include <stdexcept>
#include <thread>

namespace runsieve::test {
namespace {

constexpr int runs = 60;
constexpr int times = 4;

/// What a selection leaves behind, with threads and without, and after columns have changed.
struct SelectionRunnerTest : testing::Test
{
  static std::unique_ptr<PlotScene> scanPlot(BlockRunner runner = {})
  {
    auto plot = std::make_unique<PlotScene>();
    plot->container.setRunner(std::move(runner));
    plot->container.setPlotStyle(selectionCdfPlot);
    ScanShape shape;
    shape.runs = runs;
    shape.times = times;
    shape.species = 2;
    shape.parameters = 5;
    shape.parameter = [](int p, int r) { return std::sin(0.31 * (p + 1) * r); };
    shape.bounds.assign(5, {-1.0, 1.0});
    plot->container.setLinePlotTable(makeScan(shape), false);
    return plot;
  }

  static void select(PlotContainer& container, int from, int to)
  {
    Rows rows;
    for (int run = from; run < to; ++run)
      for (int time : {1, 2}) rows.push_back(times * run + time);
    container.annotationLink->SetCurrentSelection(selectionOf(rows));
  }

  static void expectSame(vtkTable* a, vtkTable* b)
  {
    ASSERT_EQ(columnNames(a), columnNames(b));
    for (std::string const& name : columnNames(a)) EXPECT_EQ(numbers(a, name), numbers(b, name)) << name;
  }

  static void expectSame(PlotContainer& a, PlotContainer& b)
  {
    expectSame(a.plotData, b.plotData);
    ASSERT_EQ(a.tables.size(), b.tables.size());
    for (std::size_t i = 0; i < a.tables.size(); ++i) expectSame(a.tables[i], b.tables[i]);
    ASSERT_EQ(a.ksStatistics.size(), b.ksStatistics.size());
    for (std::size_t i = 0; i < a.ksStatistics.size(); ++i) {
      EXPECT_EQ(a.ksStatistics[i].d, b.ksStatistics[i].d) << i;
      EXPECT_EQ(a.ksStatistics[i].p, b.ksStatistics[i].p) << i;
    }
  }
};

void inThreads(std::size_t count, std::function<void(std::size_t)> const& work)
{
  std::vector<std::thread> threads;
  for (std::size_t block = 0; block < count; ++block) threads.emplace_back(work, block);
  for (std::thread& thread : threads) thread.join();
}

TEST_F(SelectionRunnerTest, TablesFlagsAndStatisticsAreTheSameWithAnyThreads)
{
  const auto serial = scanPlot();
  const auto threads = scanPlot(inThreads);
  std::size_t calls = 0;
  const auto reversed = scanPlot([&](std::size_t count, std::function<void(std::size_t)> const& work) {
    ++calls;
    while (count > 0) work(--count);
  });
  for (int from : {0, 10, 3})
    for (PlotScene* plot : {serial.get(), threads.get(), reversed.get()})
      select(plot->container, from, from + 17);
  expectSame(threads->container, serial->container);
  expectSame(reversed->container, serial->container);
  EXPECT_GT(calls, 0u);
}

TEST_F(SelectionRunnerTest, ACopyUsesTheSameThreads)
{
  std::size_t calls = 0;
  const auto plot = scanPlot([&](std::size_t count, std::function<void(std::size_t)> const& work) {
    ++calls;
    for (std::size_t block = 0; block < count; ++block) work(block);
  });
  PlotContainer copy(plot->container);
  const std::size_t before = calls;
  select(copy, 0, 10);
  EXPECT_GT(calls, before);
}

TEST_F(SelectionRunnerTest, AColumnThatHasChangedCountsInTheNextSelection)
{
  const auto change = [](PlotContainer& container) {
    auto* k2 = vtkDoubleArray::SafeDownCast(container.plotData->GetColumnByName("Parameter: k2"));
    if (!k2) throw std::logic_error("no column k2");
    for (int row = 0; row < times; ++row) k2->SetValue(7 * times + row, 0.25);
    k2->SetValue(9 * times + 1, 0.75); // not constant within its run any more
    k2->Modified();
  };
  const auto before = scanPlot();
  change(before->container);
  select(before->container, 5, 20);
  const auto between = scanPlot();
  select(between->container, 0, 12);
  change(between->container);
  select(between->container, 5, 20);
  for (std::size_t i : {2u, 3u, 4u, 5u, 6u, 7u}) {
    SCOPED_TRACE(i);
    vtkTable* const a = between->container.tables.at(i);
    vtkTable* const b = before->container.tables.at(i);
    for (std::string const& name : columnNames(b)) EXPECT_EQ(numbers(a, name), numbers(b, name)) << name;
  }
  EXPECT_THAT(numbers(between->container.tables[2], "Parameter: k2"), testing::Contains(0.75));
}

} // namespace
} // namespace runsieve::test
