#include "support/DumpBytes.h"
#include "support/Dumps.h"
#include "support/LoadedTable.h"

#include <gmock/gmock.h>
#include <vtkFloatArray.h>

#include <cmath>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// A plot whose dump goes into another one.
struct DumpRoundtripTest : LoadedTable
{
  PlotScene target;

  PlotContainer& read(QByteArray const& dump)
  {
    readInto(target.container, dump);
    return target.container;
  }
  PlotContainer& pass() { return read(dumpOf(container)); }

  static std::vector<int> selectedRows(PlotContainer const& plot)
  {
    auto flags = vtkSmartPointer<vtkIntArray>::Take(plot.getCurrentSelection());
    std::vector<int> rows;
    for (vtkIdType row = 0; flags && row < flags->GetNumberOfTuples(); ++row)
      if (flags->GetValue(row)) rows.push_back(static_cast<int>(row));
    return rows;
  }

  void addFlags(std::vector<int> const& flags)
  {
    container.plotData->AddColumn(makeColumn<vtkIntArray>("selected points", flags));
  }
};

TEST_F(DumpRoundtripTest, ColumnsComeBackWithNamesTypesAndValues)
{
  container.plotData = makeTable({{"a", {1.5, -2, INFINITY}}, {": Time [s]", {0, 1, 2}}});
  container.plotData->AddColumn(makeColumn<vtkIntArray>("n", std::vector<int>{7, -8, 9}));
  vtkTable* table = pass().plotData;
  EXPECT_THAT(columnNames(table), ElementsAre("a", ": Time [s]", "n"));
  EXPECT_TRUE(vtkDoubleArray::SafeDownCast(table->GetColumn(0)));
  EXPECT_TRUE(vtkDoubleArray::SafeDownCast(table->GetColumn(1)));
  EXPECT_TRUE(vtkIntArray::SafeDownCast(table->GetColumn(2)));
  EXPECT_THAT(numbers(table, "a"), ElementsAre(1.5, -2, INFINITY));
  EXPECT_THAT(numbers(table, ": Time [s]"), ElementsAre(0, 1, 2));
  EXPECT_THAT(numbers(table, "n"), ElementsAre(7, -8, 9));
}

TEST_F(DumpRoundtripTest, TypedNamesComeBack)
{
  container.typedColumnNames = {{Kestrane::Parameter, "k1"},
                                {Kestrane::Unnamed, ""},
                                {Kestrane::UndefinedType, "\xe9t\xe9"},
                                {static_cast<Kestrane::DataType>(42), "x"}};
  target.container.typedColumnNames = {{Kestrane::Molecule, "old"}};
  EXPECT_EQ(pass().typedColumnNames, container.typedColumnNames);
}

TEST_F(DumpRoundtripTest, BitsOfSpecialDoublesAreKept)
{
  std::vector<double> const values{std::nan(""), -std::nan("0x123"), -0.0, -INFINITY};
  container.plotData = makeTable({{"x", values}});
  auto* column = vtkDoubleArray::SafeDownCast(pass().plotData->GetColumn(0));
  ASSERT_TRUE(column);
  ASSERT_EQ(column->GetNumberOfTuples(), 4);
  for (int i = 0; i < 4; ++i) {
    double const value = column->GetValue(i);
    EXPECT_EQ(std::memcmp(&value, &values[i], sizeof value), 0) << i;
  }
}

TEST_F(DumpRoundtripTest, AColumnWithoutANameComesBackWithTheEmptyName)
{
  container.plotData = makeTable({{"x", {1}}});
  container.plotData->GetColumn(0)->SetName(nullptr);
  vtkTable* table = pass().plotData;
  ASSERT_EQ(table->GetNumberOfColumns(), 1);
  EXPECT_STREQ(table->GetColumn(0)->GetName(), "");
}

TEST_F(DumpRoundtripTest, CharactersAboveOneByteComeBackAsQuestionMarks)
{
  vtkTable* table = read(DumpBytes()
                             .number(1)
                             .number(1)
                             .text(u"\u03b1\u00e9")
                             .number(1)
                             .number(0)
                             .text(u"\u2211x")
                             .flag(true)
                             .bytes())
                        .plotData;
  EXPECT_THAT(target.container.typedColumnNames, ElementsAre(Pair(Kestrane::Molecule, "?\xe9")));
  EXPECT_THAT(columnNames(table), ElementsAre("?x"));
}

TEST_F(DumpRoundtripTest, ColumnsWithoutNamesStayApart)
{
  DumpBytes const dump = DumpBytes()
                             .number(0)
                             .number(3)
                             .number(1)
                             .text(u"")
                             .flag(true)
                             .real(1)
                             .nullText()
                             .flag(true)
                             .real(2)
                             .nullText()
                             .flag(false)
                             .number(3);
  vtkTable* table = read(dump.bytes()).plotData;
  ASSERT_EQ(table->GetNumberOfColumns(), 3);
  for (int c = 0; c < 3; ++c) EXPECT_EQ(table->GetValue(0, c).ToDouble(), c + 1);
}

TEST_F(DumpRoundtripTest, ColumnsWithoutRowsComeBackEmpty)
{
  container.plotData = makeTable({{"a", {}}});
  container.plotData->AddColumn(makeColumn<vtkIntArray>("b", std::vector<int>{}));
  container.plotData->AddColumn(makeColumn<vtkFloatArray>("c", std::vector<float>{}));
  vtkTable* table = pass().plotData;
  EXPECT_THAT(columnNames(table), ElementsAre("a", "b", "c"));
  EXPECT_EQ(table->GetNumberOfRows(), 0);
  EXPECT_TRUE(vtkDoubleArray::SafeDownCast(table->GetColumn(0)));
  EXPECT_TRUE(vtkIntArray::SafeDownCast(table->GetColumn(1)));
  EXPECT_TRUE(vtkIntArray::SafeDownCast(table->GetColumn(2)));
}

TEST_F(DumpRoundtripTest, AnEmptyContainerEmptiesTheOther)
{
  target.container.plotData = makeTable({{"x", {1}}});
  target.container.typedColumnNames = {{Kestrane::Molecule, "old"}};
  auto* former = target.container.plotData.Get();
  EXPECT_EQ(pass().plotData->GetNumberOfColumns(), 0);
  EXPECT_NE(target.container.plotData.Get(), former);
  EXPECT_THAT(target.container.typedColumnNames, IsEmpty());
}

TEST_F(DumpRoundtripTest, TheSameContainerCanReadItsOwnDump)
{
  load(makeScan({}));
  auto const before = columnNames(container.plotData);
  auto const values = numbers(container.plotData, "Molecule: A");
  readInto(container, dumpOf(container));
  EXPECT_EQ(columnNames(container.plotData), before);
  EXPECT_EQ(numbers(container.plotData, "Molecule: A"), values);
}

TEST_F(DumpRoundtripTest, RestoredColumnsOwnTheirMemory)
{
  load(makeScan({}));
  auto dump = std::make_unique<QByteArray>(dumpOf(container));
  target.container.readDump(dump.get());
  std::string const kept = dumpOf(target.container).toStdString();
  dump->fill('x');
  dump.reset();
  container.setLinePlotTable(makeScan({}), false);
  EXPECT_EQ(dumpOf(target.container).toStdString(), kept);
}

TEST_F(DumpRoundtripTest, TheDumpStaysTheCallers)
{
  load(makeScan({}));
  QByteArray dump = dumpOf(container);
  QByteArray const before = dump;
  target.container.readDump(&dump);
  EXPECT_EQ(dump, before);
}

TEST_F(DumpRoundtripTest, BytesBehindTheEndAreIgnored)
{
  container.plotData = makeTable({{"x", {1, 2}}});
  EXPECT_THAT(numbers(read(dumpOf(container) + QByteArray("more")).plotData, "x"), ElementsAre(1, 2));
}

TEST_F(DumpRoundtripTest, AFlagColumnBecomesTheSelection)
{
  container.plotData = makeTable({{"x", {1, 2, 3, 4}}});
  addFlags({0, 1, 0, 1});
  EXPECT_THAT(selectedRows(pass()), ElementsAre(1, 3));
}

TEST_F(DumpRoundtripTest, OnlyFlagsOfExactlyOneSelect)
{
  container.plotData = makeTable({{"x", {1, 2, 3, 4}}});
  addFlags({2, 1, -1, 0});
  EXPECT_THAT(selectedRows(pass()), ElementsAre(1));
}

TEST_F(DumpRoundtripTest, WithoutAFlagColumnTheSelectionStays)
{
  selectRows(target.container, {2});
  container.plotData = makeTable({{"x", {1, 2, 3, 4}}});
  EXPECT_THAT(selectedRows(pass()), ElementsAre(2));
}

TEST_F(DumpRoundtripTest, AShrunkenPlotKeepsItsSelection)
{
  load(makeScan({}));
  selectRows(container, {1, 4});
  container.shrinkToColumnSelection();
  EXPECT_THAT(selectedRows(pass()), ElementsAre(1, 4));
}

TEST_F(DumpRoundtripTest, TheWindowOfTheSettingsComesBackUnderTheColumnsOfThePlot)
{
  PlotMetaData& settings = target.settings();
  settings.xColumns = {3};
  settings.yColumns = {1};
  settings.coordinateWindow = {1, 2, 3, 4, true};
  target.container.coordinateWindows[{3, 1, scatterPlot}] = {9, 9, 9, 9, true};
  target.container.coordinateWindows[{0, 1, scatterPlot}] = {5, 6, 7, 8, true};
  pass();
  auto& windows = target.container.coordinateWindows;
  EXPECT_THAT(windows, SizeIs(2));
  EXPECT_EQ(windows.at({3, 1, scatterPlot}).xMin, 1);
  EXPECT_EQ(windows.at({3, 1, scatterPlot}).yMax, 4);
  EXPECT_TRUE(windows.at({3, 1, scatterPlot}).valid);
  EXPECT_EQ(windows.at({0, 1, scatterPlot}).xMin, 5);
}

TEST_F(DumpRoundtripTest, AWindowThatIsNotValidIsNotStored)
{
  target.settings().coordinateWindow = {1, 2, 3, 4, false};
  EXPECT_TRUE(pass().coordinateWindows.empty());
}

TEST_F(DumpRoundtripTest, ZoomShrinkDumpAndReadBringTheZoomBack)
{
  load(makeScan({}));
  container.coordinateWindows[{1, 0, scatterPlot}] = {0.5, 1, 1.5, 2, true};
  container.shrinkToColumnSelection();
  PlotMetaData const& saved = settings();
  target.settings().xColumns = saved.xColumns;
  target.settings().yColumns = saved.yColumns;
  target.settings().coordinateWindow = saved.coordinateWindow;
  pass().redraw();
  EXPECT_DOUBLE_EQ(target.bottom()->GetMinimum(), 0.5);
  EXPECT_DOUBLE_EQ(target.left()->GetMaximum(), 2);
}

TEST_F(DumpRoundtripTest, QuartilesAreRenewedWithTheStrideOfTheSettings)
{
  container.plotData = makeTable({{"y", {1, 2, 3, 4, 5, 6}}, {"t", {0, 1, 2, 0, 1, 2}}});
  target.settings().xColumns = {1};
  target.settings().yColumns = {0};
  target.settings().setStride(3);
  pass();
  ASSERT_TRUE(target.container.quartileTable);
  EXPECT_THAT(numbers(target.container.quartileTable, "Maximum"), ElementsAre(4, 5, 6));
  EXPECT_THAT(numbers(target.container.quartileTable, "Time"), ElementsAre(0, 1, 2));
}

TEST_F(DumpRoundtripTest, WithoutAStrideTheFormerQuartilesStay)
{
  auto former = makeTable({{"q", {1}}});
  target.container.quartileTable = former;
  target.settings().setStride(0);
  container.plotData = makeTable({{"y", {1, 2}}});
  EXPECT_EQ(pass().quartileTable, former);
}

TEST_F(DumpRoundtripTest, EverythingElseStays)
{
  PlotContainer& plot = target.container;
  plot.tables = {makeTable({{"side", {1}}})};
  plot.parameterBounds = {{1, 2}};
  plot.clusterLabels = vtkSmartPointer<vtkIntArray>::New();
  plot.xTickLabels = vtkSmartPointer<vtkStringArray>::New();
  plot.leftMargin = 33;
  plot.metaData->parameterColumns = {7, 8};
  plot.metaData->plotTitle = "title";
  auto* labels = plot.clusterLabels.Get();
  auto* ticks = plot.xTickLabels.Get();
  container.typedColumnNames = {{Kestrane::Parameter, "k"}};
  container.plotData = makeTable({{"k", {1, 2}}});
  pass();
  EXPECT_THAT(plot.tables, SizeIs(1));
  EXPECT_THAT(plot.parameterBounds, SizeIs(1));
  EXPECT_EQ(plot.clusterLabels.Get(), labels);
  EXPECT_EQ(plot.xTickLabels.Get(), ticks);
  EXPECT_EQ(plot.leftMargin, 33);
  EXPECT_THAT(plot.metaData->parameterColumns, ElementsAre(7, 8));
  EXPECT_EQ(plot.metaData->plotTitle, "title");
  EXPECT_FALSE(plot.metaData->signalsBlocked());
}

TEST_F(DumpRoundtripTest, NothingIsDrawnUntilTheNextRedraw)
{
  target.container.plotData = makeTable({{"old x", {1}}, {"old y", {1}}});
  target.container.setPlotCols(0, 1, 0, false);
  container.plotData = makeTable({{"x", {1}}, {"y", {1}}});
  auto* plot = target.chart()->GetPlot(0);
  pass();
  ASSERT_EQ(target.chart()->GetPlot(0), plot);
  EXPECT_EQ(drawnColumn(plot, 1), "old y");
  target.container.redraw();
  EXPECT_EQ(drawnColumn(target.chart()->GetPlot(0), 1), "y");
}

TEST_F(DumpRoundtripTest, TheRecordOfRunsStaysAndCanBringItsTableBack)
{
  target.container.setLinePlotTable(makeScan({}), false);
  pass();
  EXPECT_EQ(target.container.plotData->GetNumberOfColumns(), 0);
  ASSERT_TRUE(target.container.linePlotTable);
  target.container.updateFromLinePlotTable(false);
  EXPECT_EQ(target.container.plotData->GetNumberOfRows(), 9);
}

TEST_F(DumpRoundtripTest, ACopyHasNoSelectionPendingAfterReading)
{
  load(makeScan({}));
  selectRows(container, {1, 4});
  PlotContainer copy(container);
  ASSERT_TRUE(copy.selectionUpdatePending);
  readInto(copy, dumpOf(container));
  EXPECT_FALSE(copy.selectionUpdatePending);
}

TEST_F(DumpRoundtripTest, ACopyDrawsAReadScanWithoutAnUpdateOfItsSelection)
{
  settings().setPlotStyle(selectionCdfPlot);
  load(makeScan({}));
  vtkNew<vtkContextScene> view; // outlives the copy
  view->SetGeometry(800, 600);
  PlotContainer copy(container);
  readInto(copy, dumpOf(container));
  copy.setScene(view);
  copy.ksStatistics = {{0.25, 0.5}};
  copy.tables = {nullptr, nullptr, makeTable({{"kept", {1}}})};
  copy.redraw();
  EXPECT_THAT(copy.tables, SizeIs(testing::Ge(3u))) << "an update would cut the side tables to two";
}

} // namespace
} // namespace runsieve::test
