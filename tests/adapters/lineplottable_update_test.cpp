#include "support/LoadedTable.h"

#include <gmock/gmock.h>

#include <algorithm>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// Records that change in place or stand beside the main one.
using LinePlotTableUpdateTest = LoadedTable;

TEST_F(LinePlotTableUpdateTest, AnUpdateTakesTheChangedContentWithoutDrawing)
{
  auto record = makeScan({});
  load(record);
  settings().xLabel = "mine";
  settings().xColumns = {2};
  auto drawn = chart()->GetPlot(0);
  double* added = record->addColumn(Kestrane::Parameter, "k2");
  std::fill(added, added + record->rows(), 4.0);
  RecordingPainter recorder;
  paint(recorder);
  container.updateFromLinePlotTable(false);
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 5);
  EXPECT_THAT(settings().parameterColumns, ElementsAre(3, 4));
  EXPECT_THAT(settings().xColumns, ElementsAre(2));
  EXPECT_EQ(settings().xLabel, "mine");
  EXPECT_EQ(chart()->GetPlot(0), drawn);
  EXPECT_NE(drawn->GetInput(), container.plotData.Get());
  EXPECT_TRUE(scene->GetDirty());
}

TEST_F(LinePlotTableUpdateTest, AnUpdateKeepsSideTablesAndAppendsBounds)
{
  ScanShape shape;
  shape.bounds = {{0, 9}};
  load(makeScan(shape));
  container.tables = {makeTable({}), makeTable({})};
  container.updateFromLinePlotTable(false);
  EXPECT_THAT(container.tables, SizeIs(2));
  EXPECT_THAT(container.parameterBounds, SizeIs(2));
}

TEST_F(LinePlotTableUpdateTest, AnUpdateComputesQuartilesBeforeTheStrideChanges)
{
  load(makeScan({}));
  settings().setStride(1);
  container.updateFromLinePlotTable(true);
  ASSERT_NE(container.quartileTable, nullptr);
  EXPECT_EQ(container.quartileTable->GetNumberOfRows(), 1);
  EXPECT_EQ(settings().getStride(), 3);
}

TEST_F(LinePlotTableUpdateTest, AnUpdateSurvivesAFormerStrideLongerThanTheTable)
{
  load(makeScan({}));
  settings().setStride(100);
  container.updateFromLinePlotTable(true);
  EXPECT_EQ(settings().getStride(), 3);
}

TEST_F(LinePlotTableUpdateTest, AdditionalDataIsAppendedWithAllItsColumns)
{
  load(makeScan({}));
  ScanShape shape;
  shape.bounds = {{1, 1}};
  auto additional = makeScan(shape);
  auto table = container.plotData;
  container.setLinePlotTableAsAdditionalData(additional.get());
  ASSERT_THAT(container.tables, SizeIs(1));
  EXPECT_THAT(columnNames(container.tables[0]),
              ElementsAre("Molecule: A", ": Time [s]", ": Run Index", "Parameter: k1"));
  EXPECT_EQ(vtkDoubleArray::SafeDownCast(container.tables[0]->GetColumn(0))->GetPointer(0),
            additional->columnData[0]);
  EXPECT_EQ(container.plotData, table);
  EXPECT_THAT(settings().parameterColumns, ElementsAre(3));
}

TEST_F(LinePlotTableUpdateTest, AdditionalDataEmptiesTheTypedNamesUntilTheNextUpdate)
{
  load(makeScan({}));
  auto additional = makeScan({});
  container.setLinePlotTableAsAdditionalData(additional.get());
  EXPECT_THAT(container.typedColumnNames, IsEmpty());
  container.updateFromLinePlotTable(false);
  EXPECT_THAT(container.typedColumnNames, SizeIs(4));
}

} // namespace
} // namespace runsieve::test
