#include "support/PlotScene.h"
#include "support/ScanBuilder.h"

#include <runsieve/plot/vtkShiftScaleCallback.h>
#include <runsieve/selection/vtkSelectionUpdateCallback.h>

#include <gmock/gmock.h>
#include <vtkChartXY.h>
#include <vtkCommand.h>
#include <vtkPlotPoints.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

std::vector<int> selectedRows(PlotContainer const& plot)
{
  auto flags = vtkSmartPointer<vtkIntArray>::Take(plot.getCurrentSelection());
  std::vector<int> rows;
  for (vtkIdType row = 0; flags && row < flags->GetNumberOfTuples(); ++row)
    if (flags->GetValue(row)) rows.push_back(static_cast<int>(row));
  return rows;
}

/// Gives a copy a scene of its own and draws it.
struct CopyScene
{
  vtkNew<vtkContextScene> scene;
  PlotContainer copy;

  explicit CopyScene(PlotContainer const& original) : copy(original)
  {
    scene->SetGeometry(800, 600);
    scene->AddItem(copy.getItem());
    copy.redraw();
  }
};

struct CopyTest : testing::Test
{
  PlotScene original;

  void loadScan(int parameters = 1)
  {
    ScanShape shape;
    shape.runs = 4;
    shape.parameters = parameters;
    original.settings().setPlotStyle(selectionCdfPlot);
    original.container.setLinePlotTable(makeScan(shape), false);
  }
};

TEST_F(CopyTest, CopiesSettingsAndLooks)
{
  original.settings().plotTitle = "title";
  original.settings().setPlotLine(true);
  original.container.leftMargin = 1;
  original.container.topMargin = 2;
  original.container.bottomMargin = 3;
  original.container.rightMargin = 4;
  original.container.horizontalGutter = 5;
  original.container.verticalGutter = 6;
  original.container.useIndexForXSeries = true;
  original.container.showDecorationPlots = true;
  original.container.parameterBounds = {{1, 2}};
  original.container.typedColumnNames = {{Kestrane::Parameter, "k"}};
  original.container.coordinateWindows[{1, 2, scatterPlot}] = {1, 2, 3, 4, true};
  PlotContainer copy(original.container);
  EXPECT_EQ(copy.metaData->plotTitle, "title");
  EXPECT_TRUE(copy.metaData->getPlotLine());
  EXPECT_EQ(copy.leftMargin, 1);
  EXPECT_EQ(copy.topMargin, 2);
  EXPECT_EQ(copy.bottomMargin, 3);
  EXPECT_EQ(copy.rightMargin, 4);
  EXPECT_EQ(copy.horizontalGutter, 5);
  EXPECT_EQ(copy.verticalGutter, 6);
  EXPECT_TRUE(copy.useIndexForXSeries);
  EXPECT_TRUE(copy.showDecorationPlots);
  EXPECT_THAT(copy.parameterBounds, SizeIs(1));
  EXPECT_THAT(copy.typedColumnNames, SizeIs(1));
  EXPECT_DOUBLE_EQ(copy.coordinateWindows.at({1, 2, scatterPlot}).xMax, 3);
}

TEST_F(CopyTest, LeavesDerivedDataBehind)
{
  loadScan(0);
  original.container.tables = {makeTable({}), makeTable({})};
  original.container.ksStatistics = {{0.5, 0.5}};
  original.container.generateQuartiles();
  original.container.clusterLabels = vtkSmartPointer<vtkIntArray>::New();
  original.container.decorationTable = makeTable({});
  original.container.clusterRunTable = makeTable({});
  original.container.xTickLabels = vtkSmartPointer<vtkStringArray>::New();
  original.container.xTickPositions = vtkSmartPointer<vtkDoubleArray>::New();
  PlotContainer copy(original.container);
  EXPECT_THAT(copy.tables, IsEmpty());
  EXPECT_THAT(copy.ksStatistics, IsEmpty());
  EXPECT_EQ(copy.linePlotTable.get(), nullptr);
  EXPECT_EQ(copy.quartileTable, nullptr);
  EXPECT_EQ(copy.clusterLabels, nullptr);
  EXPECT_EQ(copy.decorationTable, nullptr);
  EXPECT_EQ(copy.clusterRunTable, nullptr);
  EXPECT_EQ(copy.xTickLabels, nullptr);
  EXPECT_EQ(copy.xTickPositions, nullptr);
}

TEST_F(CopyTest, SharesNoObjectWithItsSource)
{
  PlotContainer copy(original.container);
  EXPECT_NE(copy.metaData, original.container.metaData);
  EXPECT_NE(copy.plotData, original.container.plotData);
  EXPECT_NE(copy.annotationLink, original.container.annotationLink);
  EXPECT_NE(copy.chartXY, original.container.chartXY);
  EXPECT_NE(copy.chartMatrix, original.container.chartMatrix);
  EXPECT_NE(copy.chartXYZ, original.container.chartXYZ);
  EXPECT_NE(copy.scatterPlotMatrix, original.container.scatterPlotMatrix);
  EXPECT_EQ(copy.item, copy.chartXY);
  EXPECT_EQ(copy.getItem()->GetScene(), nullptr);
  EXPECT_EQ(copy.chartXY->GetAnnotationLink(), copy.annotationLink.Get());
  EXPECT_EQ(copy.chartXY->GetSelectionMode(), vtkContextScene::SELECTION_ADDITION);
  EXPECT_EQ(copy.selectionCallback->plotContainer, &copy);
  EXPECT_EQ(copy.shiftScaleCallback->plotContainer, &copy);
  EXPECT_TRUE(copy.annotationLink->HasObserver(vtkCommand::AnnotationChangedEvent, copy.selectionCallback));
}

TEST_F(CopyTest, ItsTableIsIndependentOfTheSource)
{
  original.container.setPlotData(makeTable({{"a", {1, 2}}}));
  PlotContainer copy(original.container);
  original.container.plotData->SetValueByName(0, "a", 9.0);
  EXPECT_EQ(copy.plotData->GetValueByName(0, "a").ToDouble(), 1.0);
}

TEST_F(CopyTest, OutlivesTheRecordThatTheSourceBorrowedFrom)
{
  loadScan();
  CopyScene scene(original.container);
  original.container.setLinePlotTable(makeScan({}), false);
  EXPECT_EQ(scene.copy.plotData->GetNumberOfRows(), 12);
  EXPECT_EQ(scene.copy.plotData->GetValue(11, 0).ToDouble(), 32.0);
}

TEST_F(CopyTest, HasTheParentOfItsSource)
{
  QObject parent;
  PlotContainer child(&parent);
  PlotContainer copy(child);
  EXPECT_EQ(copy.parent(), &parent);
  copy.setParent(nullptr);
}

TEST_F(CopyTest, CannotDrawYetAndSaysSo)
{
  testing::internal::CaptureStdout();
  PlotContainer copy(original.container);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "void PlotContainer::redraw(): invalid scene\n");
  EXPECT_TRUE(copy.metaData->signalsBlocked());
}

TEST_F(CopyTest, ARedrawInASceneSetsItsSettingsFree)
{
  CopyScene scene(original.container);
  EXPECT_FALSE(scene.copy.metaData->signalsBlocked());
  scene.copy.setPlotStyle(scatterPlot3D);
  EXPECT_EQ(scene.copy.getItem(), scene.copy.chartXYZ.Get());
}

TEST_F(CopyTest, CarriesTheSelectionAsAFlagColumnAndInItsLink)
{
  loadScan();
  selectRows(original.container, {2, 5});
  PlotContainer copy(original.container);
  auto* flags = vtkIntArray::SafeDownCast(copy.plotData->GetColumnByName("selected points"));
  ASSERT_NE(flags, nullptr);
  EXPECT_EQ(flags->GetReferenceCount(), 1) << "it goes with the table";
  EXPECT_EQ(original.container.plotData->GetColumnByName("selected points"), nullptr);
  EXPECT_EQ(flags->GetValue(2), 1);
  EXPECT_EQ(flags->GetValue(3), 0);
  EXPECT_THAT(selectedRows(copy), ElementsAre(2, 5));
}

TEST_F(CopyTest, ACopyOfACopyKeepsTheSelection)
{
  loadScan();
  selectRows(original.container, {2, 5});
  PlotContainer copy(original.container);
  copy.addColumn(std::vector<double>(12, 0.0), "last of all");
  PlotContainer second(copy);
  EXPECT_THAT(selectedRows(second), ElementsAre(2, 5));
}

TEST_F(CopyTest, TheSelectionsOfCopyAndSourceAreIndependent)
{
  loadScan();
  selectRows(original.container, {2});
  PlotContainer copy(original.container);
  selectRows(copy, {7});
  EXPECT_THAT(selectedRows(original.container), ElementsAre(2));
}

TEST_F(CopyTest, WaitsForItsFirstViewToEvaluateTheSelection)
{
  loadScan();
  selectRows(original.container, {1, 4});
  PlotContainer waiting(original.container);
  EXPECT_TRUE(waiting.selectionUpdatePending);
  CopyScene scene(original.container);
  EXPECT_FALSE(scene.copy.selectionUpdatePending);
  EXPECT_THAT(scene.copy.tables, SizeIs(8));
  EXPECT_THAT(scene.copy.ksStatistics, SizeIs(1));
  for (auto const& table : scene.copy.tables) EXPECT_NE(table, nullptr);
}

TEST_F(CopyTest, ThePendingSelectionIsDrawnOnce)
{
  loadScan(5);
  selectRows(original.container, {1, 4});
  CopyScene scene(original.container);
  EXPECT_EQ(scene.scene->GetNumberOfItems(), 1u);
  EXPECT_EQ(scene.scene->GetItem(0), scene.copy.chartMatrix.Get());
  EXPECT_EQ(scene.copy.chartXY->GetNumberOfPlots(), 1);
  for (int column = 0; column < 4; ++column)
    EXPECT_EQ(scene.copy.chartMatrix->GetChart({column, 0})->GetNumberOfPlots(), 3) << column;
}

TEST_F(CopyTest, WithoutASelectionTheViewOfACopyShowsAllRunsOnly)
{
  loadScan(2);
  CopyScene scene(original.container);
  EXPECT_FALSE(scene.copy.selectionUpdatePending);
  EXPECT_THAT(scene.copy.tables, SizeIs(2));
  EXPECT_EQ(scene.copy.chartMatrix->GetChart({0, 0})->GetNumberOfPlots(), 1);
}

TEST_F(CopyTest, StaysPendingInOtherStyles)
{
  original.container.setPlotData(makeTable({{"a", {1, 2}}, {"b", {1, 2}}}));
  CopyScene scene(original.container);
  EXPECT_TRUE(scene.copy.selectionUpdatePending);
}

TEST_F(CopyTest, HasNoParallelCoordinatesAndDrawsNothingInThatStyle)
{
  original.container.setPlotData(makeTable({{"a", {1, 2}}, {"b", {1, 2}}}));
  CopyScene scene(original.container);
  EXPECT_EQ(scene.copy.chartParallelCoordinates, nullptr);
  scene.copy.setPlotStyle(parallelCoordinatesPlot);
  EXPECT_NE(scene.copy.getItem(), nullptr);
  scene.copy.setPlotStyle(scatterPlot);
  EXPECT_EQ(scene.copy.getItem(), scene.copy.chartXY.Get());
}

// Windows of logarithmic axes are kept in log units; a chart that never was logarithmic must not take them as
// plain.
TEST_F(CopyTest, BringsTheWindowOfALogarithmicAxisBack)
{
  original.container.setPlotData(makeTable({{"x", {1, 10, 100}}, {"y", {1, 2, 3}}}));
  original.settings().setLogX(true);
  original.container.coordinateWindows[{0, 1, scatterPlot}] = {-0.5, 0, 1.5, 4, true};
  original.container.setPlotCols(0, 1, 0, false);
  CopyScene scene(original.container);
  vtkAxis* axis = scene.copy.chartXY->GetAxis(vtkAxis::BOTTOM);
  EXPECT_TRUE(axis->GetLogScaleActive());
  EXPECT_DOUBLE_EQ(axis->GetMinimum(), -0.5);
  EXPECT_DOUBLE_EQ(axis->GetMaximum(), 1.5);
}

TEST_F(CopyTest, ACopyOfAPlotInEachStyleCanBeDrawn)
{
  loadScan(3);
  for (plotStyles style : {scatterPlot, barPlot, scatterPlotMatrixStyle, scatterPlot3D, selectionCdfPlot,
                           parallelCoordinatesPlot}) {
    original.container.setPlotStyle(style);
    CopyScene scene(original.container);
    EXPECT_NE(scene.copy.getItem(), nullptr) << style;
  }
}

} // namespace
} // namespace runsieve::test
