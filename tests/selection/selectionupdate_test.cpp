#include "support/PlotScene.h"
#include "support/ScanBuilder.h"
#include "support/Selections.h"

#include <runsieve/selection/vtkSelectionUpdateCallback.h>

#include <gmock/gmock.h>

#include <cmath>

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

constexpr int runs = 40;

/// What a change of the link's selection does to flags, side tables and statistics.
struct SelectionUpdateTest : testing::Test
{
  PlotScene plot;
  PlotContainer& container = plot.container;

  /// 40 runs of 3 times: k1 is the run number, k2 wanders.
  void load(plotStyles style)
  {
    container.setPlotStyle(style);
    ScanShape shape;
    shape.runs = runs;
    shape.parameters = 2;
    shape.parameter = [](int p, int r) { return p == 0 ? r : std::sin(0.31 * r); };
    shape.bounds = {{0, runs}, {-1, 1}};
    container.setLinePlotTable(makeScan(shape), false);
  }

  /// Rows without a record: x, then columns of which one holds the times, then one parameter.
  void loadColumns(std::vector<std::pair<std::string, std::vector<double>>> const& columns, int stride)
  {
    container.plotData = makeTable(columns);
    container.metaData->parameterColumns = {static_cast<int>(columns.size()) - 1};
    container.parameterBounds = {{0, 10}};
    container.metaData->setStride(stride);
    container.typedColumnNames.clear();
  }

  /// The rows of some runs at one time.
  static Rows rowsAt(int time, int firstRun, int lastRun)
  {
    Rows rows;
    for (int run = firstRun; run <= lastRun; ++run) rows.push_back(3 * run + time);
    return rows;
  }

  std::vector<double> flags(std::string const& name) { return numbers(container.plotData, name); }

  /// Whether `change` ends with a redraw: that puts a plot into the emptied chart.
  template <class Change> bool redraws(Change change)
  {
    container.chartXY->ClearPlots();
    change();
    return container.chartXY->GetNumberOfPlots() > 0;
  }
};

TEST_F(SelectionUpdateTest, TheSideTablesHaveFixedPlaces)
{
  load(selectionCdfPlot);
  ASSERT_THAT(container.tables, SizeIs(2));
  const auto all = container.tables;
  selectRows(container, rowsAt(1, 0, 14));
  ASSERT_THAT(container.tables, SizeIs(8));
  EXPECT_EQ(container.tables[0], all[0]);
  EXPECT_EQ(container.tables[1], all[1]);
  EXPECT_EQ(container.tables[2]->GetNumberOfRows(), 15);
  EXPECT_EQ(container.tables[5]->GetNumberOfRows(), 25);
  for (int ranked : {0, 3, 6})
    EXPECT_THAT(columnNames(container.tables[ranked]),
                ElementsAre("Rank of k1", "Sorted k1", "Rank of k2", "Sorted k2"));
  for (int density : {1, 4, 7})
    EXPECT_THAT(columnNames(container.tables[density]),
                ElementsAre("Density of k1", "Locations of k1", "Density of k2", "Locations of k2"));
  EXPECT_EQ(container.tables[0]->GetNumberOfRows(), 40);
  EXPECT_EQ(container.tables[3]->GetNumberOfRows(), 15);
  EXPECT_EQ(container.tables[6]->GetNumberOfRows(), 25);
  for (int density : {1, 4, 7}) EXPECT_EQ(container.tables[density]->GetNumberOfRows(), 200);
}

TEST_F(SelectionUpdateTest, TheSelectedAndTheOtherRowsKeepTheColumnsOfTheScan)
{
  load(selectionCdfPlot);
  selectRows(container, rowsAt(2, 3, 5));
  EXPECT_THAT(numbers(container.tables[2], ": Run Index"), ElementsAre(3, 4, 5));
  EXPECT_THAT(numbers(container.tables[2], ": Time [s]"), ElementsAre(2, 2, 2));
  EXPECT_THAT(numbers(container.tables[3], "Sorted k1"), ElementsAre(3, 4, 5));
  EXPECT_EQ(container.tables[5]->GetNumberOfRows(), runs - 3);
  EXPECT_THAT(numbers(container.tables[5], ": Time [s]"), Each(2.0));
}

TEST_F(SelectionUpdateTest, EachParameterGetsItsStatistic)
{
  load(selectionCdfPlot);
  selectRows(container, rowsAt(1, 0, 14));
  ASSERT_THAT(container.ksStatistics, SizeIs(2));
  EXPECT_NEAR(container.ksStatistics[0].d, 1.0, 1e-14);
  EXPECT_LT(container.ksStatistics[0].p, 1e-100);
  // k = np.sin(0.31*np.arange(40)); scipy.stats.ks_2samp(k[:15], k[15:]).statistic
  // scipy.stats.kstwo.sf(1/3, 15*25 // 40), SciPy 1.10.1
  EXPECT_NEAR(container.ksStatistics[1].d, 0.3333333333333333, 1e-14);
  EXPECT_NEAR(container.ksStatistics[1].p, 0.21557667539880687, 1e-9);
}

TEST_F(SelectionUpdateTest, OnlyRunsThroughAllSelectedPlacesAreSelected)
{
  load(selectionCdfPlot);
  Rows rows = rowsAt(0, 0, 9);
  const Rows second = rowsAt(2, 5, 20);
  rows.insert(rows.end(), second.begin(), second.end());
  selectRows(container, rows);
  EXPECT_THAT(numbers(container.tables[3], "Sorted k1"), ElementsAre(5, 6, 7, 8, 9));
  EXPECT_EQ(container.tables[2]->GetNumberOfRows(), 10);
  const auto remainder = flags("vtkRemainderSelection");
  for (int row = 0; row < 3 * runs; ++row) {
    const int run = row / 3, time = row % 3;
    EXPECT_EQ(remainder[row], run >= 5 && run <= 9 && time != 1) << "run " << run << ", time " << time;
  }
}

TEST_F(SelectionUpdateTest, PointsSelectedInAChartCountAsRows)
{
  load(selectionCdfPlot);
  container.annotationLink->SetCurrentSelection(selectionOf({pointNode(rowsAt(1, 0, 2))}));
  EXPECT_THAT(numbers(container.tables.at(3), "Sorted k1"), ElementsAre(0, 1, 2));
}

TEST_F(SelectionUpdateTest, ANewSelectionReplacesTheFormer)
{
  load(selectionCdfPlot);
  selectRows(container, rowsAt(1, 0, 14));
  selectRows(container, rowsAt(0, 30, 31));
  ASSERT_THAT(container.tables, SizeIs(8));
  EXPECT_THAT(numbers(container.tables[3], "Sorted k1"), ElementsAre(30, 31));
  EXPECT_THAT(container.ksStatistics, SizeIs(2));
  EXPECT_EQ(countColumns(container.plotData, "vtkRemainderSelection"), 1);
}

TEST_F(SelectionUpdateTest, WhenTheSelectedPlacesShareNoRunTheStatisticsAreSkipped)
{
  load(selectionCdfPlot);
  selectRows(container, rowsAt(1, 0, 14));
  const auto before = container.ksStatistics[1].d;
  Rows rows = rowsAt(0, 0, 1);
  rows.push_back(3 * 9 + 2);
  selectRows(container, rows);
  EXPECT_THAT(container.tables, SizeIs(2));
  EXPECT_EQ(container.ksStatistics[1].d, before);
  EXPECT_THAT(flags("vtkRemainderSelection"), Each(0.0));
}

TEST_F(SelectionUpdateTest, AClearedSelectionDropsTheTablesAndKeepsStatisticsAndFlags)
{
  load(scatterPlot);
  selectRows(container, rowsAt(1, 0, 14));
  const auto remainder = flags("vtkRemainderSelection");
  const double d = container.ksStatistics.at(1).d;
  EXPECT_TRUE(redraws([&] { selectRows(container, {}); }));
  EXPECT_THAT(container.tables, SizeIs(2));
  ASSERT_THAT(container.ksStatistics, SizeIs(2));
  EXPECT_EQ(container.ksStatistics[1].d, d);
  EXPECT_EQ(flags("vtkRemainderSelection"), remainder);
}

TEST_F(SelectionUpdateTest, ALinkWithoutAnySelectionIsAnEmptyOne)
{
  load(selectionCdfPlot);
  selectRows(container, rowsAt(1, 0, 14));
  container.annotationLink->SetCurrentSelection(nullptr);
  EXPECT_THAT(container.tables, SizeIs(2));
}

TEST_F(SelectionUpdateTest, WhenEveryRunIsSelectedThereIsNothingToCompareWith)
{
  load(selectionCdfPlot);
  selectRows(container, rowsAt(1, 0, runs - 1));
  ASSERT_THAT(container.tables, SizeIs(8));
  EXPECT_EQ(container.tables[5]->GetNumberOfRows(), 0);
  EXPECT_EQ(container.tables[6]->GetNumberOfRows(), 0);
  EXPECT_THAT(numbers(container.tables[7], "Density of k1"), testing::AllOf(SizeIs(200), Each(0.0)));
  ASSERT_THAT(container.ksStatistics, SizeIs(2));
  for (auto const& result : container.ksStatistics) {
    EXPECT_EQ(result.d, 0.0);
    EXPECT_EQ(result.p, 1.0);
  }
}

TEST_F(SelectionUpdateTest, InOtherStylesTheFirstTwoTablesStandEmpty)
{
  load(scatterPlot);
  ASSERT_THAT(container.tables, IsEmpty());
  selectRows(container, rowsAt(1, 0, 14));
  ASSERT_THAT(container.tables, SizeIs(8));
  EXPECT_FALSE(container.tables[0] || container.tables[1]);
  EXPECT_THAT(container.ksStatistics, SizeIs(2));
}

TEST_F(SelectionUpdateTest, AdditionalDataBeyondTwoTablesIsDropped)
{
  load(scatterPlot);
  container.tables = {makeTable({}), makeTable({}), makeTable({}), makeTable({})};
  const auto first = container.tables[0], second = container.tables[1];
  selectRows(container, {});
  EXPECT_THAT(container.tables, ElementsAre(first, second));
}

TEST_F(SelectionUpdateTest, ASelectionRedraws)
{
  load(scatterPlot);
  EXPECT_TRUE(redraws([&] { selectRows(container, rowsAt(1, 0, 3)); }));
}

TEST_F(SelectionUpdateTest, WithoutParametersNothingHappens)
{
  load(scatterPlot);
  container.metaData->parameterColumns.clear();
  container.tables = {makeTable({}), makeTable({}), makeTable({})};
  EXPECT_FALSE(redraws([&] { selectRows(container, rowsAt(1, 0, 3)); }));
  EXPECT_THAT(container.tables, SizeIs(3));
  EXPECT_EQ(countColumns(container.plotData, "vtkRemainderSelection"), 0);
}

TEST_F(SelectionUpdateTest, OnlyALinkCanCall)
{
  load(scatterPlot);
  container.tables = {makeTable({})};
  vtkNew<vtkTable> other;
  EXPECT_FALSE(redraws([&] {
    container.selectionCallback->Execute(nullptr, 0, nullptr);
    container.selectionCallback->Execute(other, 0, nullptr);
  }));
  EXPECT_THAT(container.tables, SizeIs(1));
}

TEST_F(SelectionUpdateTest, ACallbackWithoutAContainerDoesNothing)
{
  vtkNew<vtkSelectionUpdateCallback> callback;
  EXPECT_EQ(callback->plotContainer, nullptr);
  callback->Execute(container.annotationLink, 0, nullptr);
}

TEST_F(SelectionUpdateTest, ALinkThatOutlivesItsContainerIsHarmless)
{
  vtkSmartPointer<vtkAnnotationLink> link;
  vtkSmartPointer<vtkSelectionUpdateCallback> callback;
  {
    PlotContainer passing(nullptr);
    passing.metaData->parameterColumns = {0};
    link = passing.annotationLink;
    callback = passing.selectionCallback;
  }
  EXPECT_EQ(callback->plotContainer, nullptr);
  link->SetCurrentSelection(selectionOf(Rows{0}));
}

TEST_F(SelectionUpdateTest, AnUpdateByHandEvaluatesTheSelectionAnew)
{
  load(selectionCdfPlot);
  selectRows(container, rowsAt(1, 0, 14));
  container.ksStatistics.clear();
  container.tables.resize(2);
  container.annotationUpdate();
  EXPECT_THAT(container.tables, SizeIs(8));
  EXPECT_THAT(container.ksStatistics, SizeIs(2));
}

TEST_F(SelectionUpdateTest, EnabledAnnotationsSelectToo)
{
  load(selectionCdfPlot);
  container.annotationLink->GetAnnotationLayers()->AddAnnotation(annotationOf(rowsAt(1, 7, 8)));
  container.annotationUpdate();
  EXPECT_THAT(numbers(container.tables.at(3), "Sorted k1"), ElementsAre(7, 8));
}

TEST_F(SelectionUpdateTest, TheTimeColumnStandsTwoBeforeTheFirstParameter)
{
  loadColumns(
      {{"x", {5, 6, 7, 5}}, {"when", {0, 1, 0, 1}}, {"run", {0, 0, 1, 1}}, {"Parameter: k", {1, 1, 2, 2}}},
      2);
  selectRows(container, {0});
  EXPECT_THAT(flags("vtkComplementSelection"), ElementsAre(0, 0, 1, 0));
}

TEST_F(SelectionUpdateTest, TheFirstColumnNamedForTimeGoesBeforeThat)
{
  for (auto const* name : {"Molecule: Timer", "Pattern: Periodic", ": Value", "aTimeb"}) {
    loadColumns({{"x", {9, 8, 7, 6}},
                 {name, {5, 6, 6, 5}},
                 {": Time [s]", {0, 1, 0, 1}},
                 {"run", {0, 0, 1, 1}},
                 {"Parameter: k", {1, 1, 2, 2}}},
                2);
    selectRows(container, {0});
    EXPECT_THAT(flags("vtkComplementSelection"), ElementsAre(0, 0, 0, 1)) << name;
  }
}

TEST_F(SelectionUpdateTest, NamesForTimeAreCaseSensitive)
{
  loadColumns({{"time value period", {5, 6, 6, 5}},
               {"when", {0, 1, 0, 1}},
               {"run", {0, 0, 1, 1}},
               {"Parameter: k", {1, 1, 2, 2}}},
              2);
  selectRows(container, {0});
  EXPECT_THAT(flags("vtkComplementSelection"), ElementsAre(0, 0, 1, 0));
}

TEST_F(SelectionUpdateTest, WithoutATimeColumnTheSelectionIsNotEvaluated)
{
  loadColumns({{"x", {5, 6}}, {"Parameter: k", {1, 2}}}, 1);
  container.tables.resize(5);
  OutputWindowLog log;
  EXPECT_TRUE(redraws([&] { selectRows(container, {0}); }));
  EXPECT_THAT(log.text(), HasSubstr("TimeColumnIndex not set."));
  EXPECT_THAT(container.tables, SizeIs(2));
  EXPECT_THAT(columnNames(container.plotData), ElementsAre("x", "Parameter: k"));
}

TEST_F(SelectionUpdateTest, AStrideBelowOneTakesEachRowAsARun)
{
  for (int stride : {0, -2}) {
    loadColumns({{"x", {5, 6}}, {"Time", {0, 0}}, {"run", {0, 1}}, {"Parameter: k", {1, 2}}}, stride);
    selectRows(container, {0});
    EXPECT_THAT(flags("vtkRemainderSelection"), ElementsAre(1, 0)) << stride;
  }
}

TEST_F(SelectionUpdateTest, TheRankedTablesAreThoseOfTheSideTables)
{
  container.setPlotStyle(selectionCdfPlot);
  ScanShape shape;
  shape.runs = 300;
  shape.parameters = 3; // wandering, on a lattice of seven values, with some runs alike
  shape.parameter = [](int p, int r) {
    return p == 0 ? std::cos(0.7 * r) : p == 1 ? (r * 5) % 7 : std::sin(r / 2);
  };
  shape.bounds = {{-1, 1}, {0, 6}, {-1, 1}};
  container.setLinePlotTable(makeScan(shape), false);
  testing::internal::CaptureStdout(); // lists of different sizes are reported
  for (int modulus : {2, 7, 150}) {
    Rows rows;
    for (int run = 0; run < shape.runs; ++run)
      for (int time = 0; time < 3; ++time)
        if (run % modulus == 0 || (run + time) % 5 == 0) rows.push_back(3 * run + time);
    selectRows(container, rows);
    ASSERT_THAT(container.tables, SizeIs(8));
    for (int side : {2, 5}) {
      vtkNew<vtkTable> copy;
      copy->DeepCopy(container.tables[side]);
      container.generateRankedParameters(copy.Get(), 20);
      for (int table : {0, 1})
        for (auto const& name : columnNames(container.tables[20 + table]))
          EXPECT_EQ(numbers(container.tables[side + 1 + table], name),
                    numbers(container.tables[20 + table], name))
              << name << " of table " << side + 1 + table;
    }
  }
  testing::internal::GetCapturedStdout();
}

TEST_F(SelectionUpdateTest, AParameterThatVariesWithinARunIsReadFromTheSelectedRows)
{
  loadColumns(
      {{"x", {5, 6, 7, 8}}, {"Time", {0, 1, 0, 1}}, {"run", {0, 0, 1, 1}}, {"Parameter: k", {1, 2, 3, 4}}},
      2);
  container.metaData->setPlotStyle(selectionCdfPlot);
  selectRows(container, {1});
  EXPECT_THAT(numbers(container.tables.at(3), "Sorted k"), ElementsAre(2));
  EXPECT_THAT(numbers(container.tables.at(6), "Sorted k"), ElementsAre(4));
}

TEST_F(SelectionUpdateTest, AColumnChangedInPlaceIsReadAnew)
{
  load(selectionCdfPlot);
  selectRows(container, rowsAt(1, 1, 3));
  std::vector<double> factors(runs, 0.5);
  container.scaleColumn(factors.data(), container.metaData->parameterColumns[0]);
  selectRows(container, rowsAt(1, 2, 4));
  EXPECT_THAT(numbers(container.tables.at(3), "Sorted k1"), ElementsAre(1, 1.5, 2));
  container.generateRankedParameters(container.plotData, 0);
  EXPECT_EQ(numbers(container.tables[0], "Sorted k1").back(), 0.5 * (runs - 1));
}

TEST_F(SelectionUpdateTest, ARecordChangedInPlaceIsReadAnewAfterAnUpdate)
{
  load(selectionCdfPlot);
  selectRows(container, rowsAt(1, 1, 3));
  double* k1 = container.linePlotTable->columnData[3];
  for (int row = 0; row < 3 * runs; ++row) k1[row] = runs - row / 3;
  container.parameterBounds.clear();
  container.updateFromLinePlotTable(false);
  EXPECT_EQ(numbers(container.tables.at(0), "Sorted k1").front(), 1);
  selectRows(container, rowsAt(1, 0, 1));
  EXPECT_THAT(numbers(container.tables.at(3), "Sorted k1"), ElementsAre(runs - 1, runs));
}

TEST_F(SelectionUpdateTest, RowsOfAnEarlierLongerTableAreIgnored)
{
  load(selectionCdfPlot);
  selectRows(container, {1, 3 * runs, 100000});
  EXPECT_THAT(numbers(container.tables.at(3), "Sorted k1"), ElementsAre(0));
}

TEST_F(SelectionUpdateTest, ManyChangesOfTheSelectionLeaveNothingBehind)
{
  load(selectionCdfPlot);
  for (int round = 0; round < 50; ++round)
    selectRows(container, rowsAt(round % 3, round % 20, 20 + round % 15));
  EXPECT_THAT(container.tables, SizeIs(8));
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 5 + 3);
  EXPECT_EQ(plot.scene->GetNumberOfItems(), 1u);
}

} // namespace
} // namespace runsieve::test
