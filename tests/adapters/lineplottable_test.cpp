#include "support/LoadedTable.h"

#include <boost/weak_ptr.hpp>
#include <gmock/gmock.h>

#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

using LinePlotTableTest = LoadedTable;

TEST_F(LinePlotTableTest, ColumnsAreNamedByTypeAndName)
{
  load(recordOf({{Kestrane::Complex, "a"},
                 {Kestrane::Molecule, "b"},
                 {Kestrane::ComplexWithMolecule, "c"},
                 {Kestrane::Pattern, "d"},
                 {Kestrane::Unnamed, "Time [s]"},
                 {Kestrane::Parameter, "e"},
                 {Kestrane::UndefinedType, "f"}}));
  EXPECT_THAT(columnNames(container.plotData),
              ElementsAre("Complex: a", "Molecule: b", "Complex With Molecule: c", "Pattern: d", ": Time [s]",
                          "Parameter: e", "Undefined Type: f"));
}

TEST_F(LinePlotTableTest, TypesThatDoNotExistHaveNoName)
{
  load(recordOf({{static_cast<Kestrane::DataType>(7), "a"}, {static_cast<Kestrane::DataType>(-1), "b"}}));
  EXPECT_THAT(columnNames(container.plotData), ElementsAre(": a", ": b"));
}

TEST_F(LinePlotTableTest, BorrowsTheColumnsOfTheRecord)
{
  auto record = makeScan({});
  load(record);
  ASSERT_EQ(container.plotData->GetNumberOfColumns(), 4);
  for (int i = 0; i < 4; ++i) {
    auto* column = vtkDoubleArray::SafeDownCast(container.plotData->GetColumn(i));
    ASSERT_NE(column, nullptr);
    EXPECT_EQ(column->GetPointer(0), record->columnData[i]);
    EXPECT_EQ(column->GetNumberOfTuples(), 9);
  }
  EXPECT_EQ(container.linePlotTable, record);
  EXPECT_EQ(container.typedColumnNames, record->columnNames);
}

TEST_F(LinePlotTableTest, TheRecordLivesAsLongAsAnyTableThatBorrowsFromIt)
{
  auto record = makeScan({});
  boost::weak_ptr<LinePlotTable> watch = record;
  load(record);
  record.reset();
  vtkSmartPointer<vtkTable> table = container.plotData;
  load(makeScan({}));
  EXPECT_FALSE(watch.expired());
  EXPECT_EQ(table->GetValue(8, 0).ToDouble(), 22.0);
  table = nullptr;
  EXPECT_TRUE(watch.expired()) << "nobody is left";
}

TEST_F(LinePlotTableTest, PlotsOfAReplacedRecordCanStillBePainted)
{
  load(makeScan({}));
  container.setScene(nullptr);
  testing::internal::CaptureStdout();
  load(makeScan({}));
  testing::internal::GetCapturedStdout();
  show();
  RecordingPainter recorder;
  paint(recorder);
  EXPECT_FALSE(recorder.markers().empty());
}

TEST_F(LinePlotTableTest, ParametersWithEqualBoundsBecomeNoColumn)
{
  ScanShape shape;
  shape.parameters = 2;
  shape.bounds = {{1, 1}, {1, 2}};
  load(makeScan(shape));
  EXPECT_THAT(columnNames(container.plotData),
              ElementsAre("Molecule: A", ": Time [s]", ": Run Index", "Parameter: k2"));
  EXPECT_THAT(container.parameterBounds, ElementsAre(testing::Pair(1.0, 2.0)));
  EXPECT_THAT(settings().parameterColumns, ElementsAre(3));
  EXPECT_THAT(container.typedColumnNames, SizeIs(4));
}

TEST_F(LinePlotTableTest, ABoundThatIsNotANumberKeepsItsParameter)
{
  double const nan = std::numeric_limits<double>::quiet_NaN();
  ScanShape shape;
  shape.bounds = {{nan, nan}};
  load(makeScan(shape));
  EXPECT_THAT(settings().parameterColumns, ElementsAre(3));
  EXPECT_THAT(container.parameterBounds, SizeIs(1));
}

TEST_F(LinePlotTableTest, WithoutBoundsEveryParameterStays)
{
  ScanShape shape;
  shape.parameters = 3;
  load(makeScan(shape));
  EXPECT_THAT(settings().parameterColumns, ElementsAre(3, 4, 5));
  EXPECT_THAT(container.parameterBounds, IsEmpty());
}

TEST_F(LinePlotTableTest, BoundsOfASecondRecordComeBehindThoseOfTheFirst)
{
  ScanShape shape;
  shape.bounds = {{0, 9}};
  load(makeScan(shape));
  load(makeScan(shape));
  EXPECT_THAT(container.parameterBounds, SizeIs(2));
  settings().setPlotStyle(selectionCdfPlot);
  testing::internal::CaptureStderr();
  load(makeScan(shape));
  EXPECT_THAT(
      testing::internal::GetCapturedStderr(),
      testing::HasSubstr("the number of parameter columns does not match the number of parameter bounds"));
}

TEST_F(LinePlotTableTest, ARecordWithoutColumnsDrawsNothing)
{
  load(recordOf({}));
  EXPECT_THAT(settings().xColumns, ElementsAre(-1));
  EXPECT_EQ(settings().xLabel, "");
  EXPECT_EQ(settings().yLabel, "");
  RecordingPainter recorder;
  paint(recorder);
  EXPECT_THAT(recorder.markers(), IsEmpty());
}

TEST_F(LinePlotTableTest, ARecordOfZeroRunsGivesColumnsWithoutRows)
{
  ScanShape shape;
  shape.runs = 0;
  container.setLinePlotTable(makeScan(shape), true);
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 4);
  EXPECT_EQ(container.plotData->GetNumberOfRows(), 0);
  EXPECT_EQ(settings().getStride(), 3);
  EXPECT_EQ(container.quartileTable, nullptr);
  shape.times = 0;
  container.setLinePlotTable(makeScan(shape), true);
  EXPECT_EQ(settings().getStride(), 0);
  EXPECT_EQ(container.quartileTable, nullptr);
  container.setPlotStyle(selectionCdfPlot);
  RecordingPainter recorder;
  paint(recorder);
}

TEST_F(LinePlotTableTest, QuartilesUseTheStrideOfTheNewRecord)
{
  settings().setStride(9);
  container.setLinePlotTable(makeScan({}), true);
  ASSERT_NE(container.quartileTable, nullptr);
  EXPECT_EQ(container.quartileTable->GetNumberOfRows(), 3);
  EXPECT_DOUBLE_EQ(container.quartileTable->GetValueByName(2, "Median").ToDouble(), 12.0);
}

TEST_F(LinePlotTableTest, RankedTablesHaveOneRowPerRunFromTheFirstLoadOn)
{
  settings().setPlotStyle(selectionCdfPlot);
  ASSERT_EQ(settings().getStride(), 1);
  load(makeScan({}));
  ASSERT_GE(container.tables.size(), 2u);
  EXPECT_EQ(container.tables[0]->GetNumberOfRows(), 3);
}

TEST_F(LinePlotTableTest, SettingsAreFreeAgainEvenWithoutAScene)
{
  PlotContainer alone(nullptr);
  alone.metaData->blockSignals(true);
  testing::internal::CaptureStdout();
  alone.setLinePlotTable(makeScan({}), false);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "void PlotContainer::redraw(): invalid scene\n");
  EXPECT_FALSE(alone.metaData->signalsBlocked());
}

TEST_F(LinePlotTableTest, NoRecordIsIgnored)
{
  load(makeScan({}));
  auto table = container.plotData;
  load(nullptr);
  EXPECT_EQ(container.plotData, table);
  PlotContainer fresh(nullptr);
  auto empty = fresh.plotData;
  fresh.updateFromLinePlotTable(true);
  EXPECT_EQ(fresh.plotData, empty);
}

TEST_F(LinePlotTableTest, ColumnsOfEqualNamesDoNoHarm)
{
  load(recordOf({{Kestrane::Molecule, "A"}, {Kestrane::Molecule, "A"}, {Kestrane::Unnamed, "Time [s]"}}));
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 2);
  RecordingPainter recorder;
  paint(recorder);
}

} // namespace
} // namespace runsieve::test
