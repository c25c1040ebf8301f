#include "app/gate/GateRows.h"

#include "app/gate/Gate.h"
#include "ScanColumns.h"
#include "support/RowFilterRun.h"
#include "support/ScanBuilder.h"

#include <runsieve/selection/vtkCombinedFilterAndSelectedRows.h>

#include <vtkDoubleArray.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>

namespace runsieve::test {
namespace {

using app::parseGate;
using app::ResolvedGate;
using app::resolveGate;
using app::rowsOfGate;
using app::rowsOfGates;
using app::runsThroughGates;
using testing::ElementsAre;
using testing::IsEmpty;

using Numbers = std::vector<long long>;

// Outputs "A" and "B" of four runs at times 0, 1, 2.
constexpr double valuesA[4][3] = {{0, 1, 5}, {0, 2, 5}, {0, 3, 1}, {0, 1, 1}};
constexpr double valuesB[4][3] = {{9, 9, 9}, {9, 1, 9}, {9, 9, 9}, {9, 9, 9}};

boost::shared_ptr<LinePlotTable> fourRuns()
{
  ScanShape shape = shapeOf(4, 3, 2, 1);
  shape.value = [](int s, int run, int time) { return s == 0 ? valuesA[run][time] : valuesB[run][time]; };
  return makeScan(shape);
}

std::vector<ResolvedGate> gatesOf(std::vector<std::string> const& texts, LinePlotTable const& scan)
{
  std::vector<ResolvedGate> gates;
  for (auto const& text : texts) gates.push_back(resolveGate(parseGate(text), scan));
  return gates;
}

/// The runs that the library's filter keeps when rows are selected.
Numbers survivors(LinePlotTable const& scan, Numbers const& rows)
{
  vtkNew<vtkTable> table;
  for (std::size_t i = 0; i < scan.columnData.size(); ++i) {
    vtkNew<vtkDoubleArray> column;
    column->SetName(scan.columnNames[i].second.c_str());
    column->SetArray(scan.columnData[i], static_cast<vtkIdType>(scan.rows()), 1);
    table->AddColumn(column);
  }
  RowFilterRun<vtkCombinedFilterAndSelectedRows> filter;
  filter.setTable(table.Get());
  filter.filter->SetStride(static_cast<long long>(scan.trajectoryLength));
  filter.filter->SetParaCount(1);
  filter.filter->SetTimeColumnIndex(2);
  filter.select(Rows(rows.begin(), rows.end()));
  filter.run();
  EXPECT_EQ(filter.errors.text(), "");
  std::set<long long> runs;
  for (double run : filter.output(0, "Run Index")) runs.insert(static_cast<long long>(run));
  return {runs.begin(), runs.end()};
}

TEST(GateRows, OneGateSelectsTheRowsInItsRectangle)
{
  auto scan = fourRuns();
  auto gates = gatesOf({"A @ 1..2 in 1..2"}, *scan);
  EXPECT_THAT(rowsOfGate(gates[0], *scan), ElementsAre(1, 4, 8, 10, 11)) << "both ends belong to the range";
  EXPECT_EQ(rowsOfGates(gates, *scan), rowsOfGate(gates[0], *scan));
}

TEST(GateRows, ARunMustBeInTheRangeAtEveryTimeOfASpan)
{
  auto scan = fourRuns();
  auto gates = gatesOf({"A @ 1..2 in 1..2"}, *scan);
  EXPECT_THAT(runsThroughGates(gates, *scan), ElementsAre(3));
  EXPECT_THAT(survivors(*scan, rowsOfGates(gates, *scan)), ElementsAre(3));
}

TEST(GateRows, GatesAtTwoTimesIntersect)
{
  auto scan = fourRuns();
  auto gates = gatesOf({"A @ 1 in 1..2", "A @ 2 in 5..9"}, *scan);
  EXPECT_THAT(runsThroughGates(gates, *scan), ElementsAre(0, 1));
  EXPECT_THAT(survivors(*scan, rowsOfGates(gates, *scan)), ElementsAre(0, 1));
}

TEST(GateRows, GatesOnTwoOutputsAtOneTimeIntersectToo)
{
  auto scan = fourRuns();
  auto gates = gatesOf({"A @ 1 in 1..2", "B @ 1 in 5..inf"}, *scan);
  EXPECT_THAT(runsThroughGates(gates, *scan), ElementsAre(0, 3));
  EXPECT_THAT(rowsOfGates(gates, *scan), ElementsAre(1, 10));
  EXPECT_THAT(survivors(*scan, rowsOfGates(gates, *scan)), ElementsAre(0, 3));
}

TEST(GateRows, APlaceThatNoRunReachesLetsNoneSurvive)
{
  auto scan = fourRuns();
  auto gates = gatesOf({"A @ 1 in 1..2", "A @ 2 in 100..200"}, *scan);
  EXPECT_THAT(runsThroughGates(gates, *scan), IsEmpty());
  EXPECT_THAT(rowsOfGates(gates, *scan), IsEmpty());
  EXPECT_THAT(survivors(*scan, rowsOfGates(gates, *scan)), IsEmpty());
}

TEST(GateRows, WithoutGatesNothingIsSelected)
{
  auto scan = fourRuns();
  EXPECT_THAT(rowsOfGates({}, *scan), IsEmpty());
  EXPECT_THAT(runsThroughGates({}, *scan), ElementsAre(0, 1, 2, 3));
}

TEST(GateRows, NanLiesInNoRange)
{
  auto scan = fourRuns();
  scan->columnData[0][1] = std::nan("");
  EXPECT_THAT(runsThroughGates(gatesOf({"A @ 1 in -inf..inf"}, *scan), *scan), ElementsAre(1, 2, 3));
}

// Random scans and gates, against the library's own filter.
TEST(GateRows, AlwaysLeaveTheRunsThatPassAllGates)
{
  std::mt19937 random(3);
  auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
  int nonEmpty = 0;
  for (int round = 0; round < 200; ++round) {
    ScanShape shape = shapeOf(30, 5, 2, 1);
    shape.value = [&](int, int, int) { return below(10); };
    auto scan = makeScan(shape);
    std::vector<ResolvedGate> gates;
    for (int i = 1 + below(3); i > 0; --i) {
      int const first = below(5);
      int const low = below(6);
      gates.push_back(
          resolveGate({below(2) == 0 ? "A" : "B", double(first), double(std::min(first + below(2), 4)),
                       double(low), double(low + 3 + below(4))},
                      *scan));
    }
    Numbers const expected = runsThroughGates(gates, *scan);
    EXPECT_EQ(survivors(*scan, rowsOfGates(gates, *scan)), expected) << round;
    nonEmpty += expected.empty() ? 0 : 1;
  }
  EXPECT_GT(nonEmpty, 100);
}

} // namespace
} // namespace runsieve::test
