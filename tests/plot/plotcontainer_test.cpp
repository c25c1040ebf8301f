#include "support/PlotScene.h"
#include "support/ScanBuilder.h"

#include <runsieve/plot/vtkShiftScaleCallback.h>
#include <runsieve/selection/vtkSelectionUpdateCallback.h>

#include <gmock/gmock.h>
#include <QMetaMethod>
#include <vtkCommand.h>
#include <vtkPlotPoints.h>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

TEST(PlotContainerTest, AFreshPlotHasTheDefaultMarginsAndGutters)
{
  PlotContainer plot(nullptr);
  EXPECT_EQ(plot.leftMargin, 80);
  EXPECT_EQ(plot.topMargin, 20);
  EXPECT_EQ(plot.bottomMargin, 40);
  EXPECT_EQ(plot.rightMargin, 20);
  EXPECT_EQ(plot.horizontalGutter, 28);
  EXPECT_EQ(plot.verticalGutter, 28);
}

TEST(PlotContainerTest, AFreshPlotHasOneEmptyPointPlotInItsChart)
{
  PlotContainer plot(nullptr);
  ASSERT_EQ(plot.chartXY->GetNumberOfPlots(), 1);
  auto* points = vtkPlotPoints::SafeDownCast(plot.chartXY->GetPlot(0));
  ASSERT_NE(points, nullptr);
  EXPECT_EQ(points->GetInput(), nullptr);
  EXPECT_EQ(plot.item, plot.chartXY);
  EXPECT_EQ(plot.getItem(), plot.chartXY.Get());
  EXPECT_EQ(plot.chartXY->GetSelectionMode(), vtkContextScene::SELECTION_ADDITION);
  EXPECT_EQ(plot.chartXY->GetAnnotationLink(), plot.annotationLink.Get());
}

TEST(PlotContainerTest, AFreshPlotHoldsNoDataAndAllCharts)
{
  PlotContainer plot(nullptr);
  ASSERT_NE(plot.plotData, nullptr);
  EXPECT_EQ(plot.plotData->GetNumberOfColumns(), 0);
  EXPECT_THAT(plot.tables, IsEmpty());
  EXPECT_THAT(plot.typedColumnNames, IsEmpty());
  EXPECT_THAT(plot.parameterBounds, IsEmpty());
  EXPECT_THAT(plot.ksStatistics, IsEmpty());
  EXPECT_TRUE(plot.coordinateWindows.empty());
  EXPECT_EQ(plot.decorationTable, nullptr);
  EXPECT_EQ(plot.clusterRunTable, nullptr);
  EXPECT_EQ(plot.clusterLabels, nullptr);
  EXPECT_EQ(plot.quartileTable, nullptr);
  EXPECT_EQ(plot.xTickLabels, nullptr);
  EXPECT_EQ(plot.xTickPositions, nullptr);
  EXPECT_EQ(plot.linePlotTable.get(), nullptr);
  EXPECT_FALSE(plot.showDecorationPlots);
  EXPECT_FALSE(plot.selectionUpdatePending);
  EXPECT_FALSE(plot.useIndexForXSeries);
  EXPECT_NE(plot.metaData, nullptr);
  EXPECT_NE(plot.scatterPlotMatrix, nullptr);
  EXPECT_NE(plot.chartMatrix, nullptr);
  EXPECT_NE(plot.chartXYZ, nullptr);
  EXPECT_NE(plot.chartParallelCoordinates, nullptr);
}

TEST(PlotContainerTest, ConstructionDrawsNothing)
{
  testing::internal::CaptureStdout();
  PlotContainer plot(nullptr);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_FALSE(plot.metaData->signalsBlocked());
}

TEST(PlotContainerTest, CallbacksKnowTheirContainerAndTheLinkIsObserved)
{
  PlotContainer plot(nullptr);
  EXPECT_EQ(plot.selectionCallback->plotContainer, &plot);
  EXPECT_EQ(plot.shiftScaleCallback->plotContainer, &plot);
  EXPECT_TRUE(plot.annotationLink->HasObserver(vtkCommand::AnnotationChangedEvent, plot.selectionCallback));
  EXPECT_FALSE(plot.chartXY->HasObserver(vtkCommand::InteractionEvent, plot.shiftScaleCallback));
}

TEST(PlotContainerTest, DiesWithItsParent)
{
  auto parent = std::make_unique<QObject>();
  auto* plot = new PlotContainer(parent.get());
  bool gone = false;
  QObject::connect(plot, &QObject::destroyed, [&gone] { gone = true; });
  parent.reset();
  EXPECT_TRUE(gone);
}

// A host may hold the link, and a scene the chart, longer than the container lives.
TEST(PlotContainerTest, NothingCallsIntoADeadContainer)
{
  auto plot = std::make_unique<PlotContainer>(nullptr);
  plot->metaData->setPlotStyle(selectionCdfPlot);
  plot->setLinePlotTable(makeScan({}), false);
  vtkNew<vtkContextScene> scene;
  scene->AddItem(plot->getItem());
  plot->redraw();
  auto link = plot->annotationLink;
  auto chart = plot->chartXY;
  auto selectionCallback = plot->selectionCallback;
  auto windowCallback = plot->shiftScaleCallback;
  plot.reset();
  EXPECT_EQ(selectionCallback->plotContainer, nullptr);
  EXPECT_EQ(windowCallback->plotContainer, nullptr);
  EXPECT_FALSE(link->HasObserver(vtkCommand::AnnotationChangedEvent, selectionCallback));
  link->SetCurrentSelection(selectionOf(Rows{0}));
  chart->InvokeEvent(vtkCommand::InteractionEvent);
  selectionCallback->Execute(link, 0, nullptr);
  windowCallback->Execute(chart, 0, nullptr);
}

TEST(PlotContainerTest, SetPlotDataDropsTheSideTablesEvenForTheSameTable)
{
  PlotContainer plot(nullptr);
  plot.tables = {makeTable({}), makeTable({})};
  plot.setPlotData(plot.plotData);
  EXPECT_THAT(plot.tables, IsEmpty());
}

TEST(PlotContainerTest, SetPlotDataReplacesTheTableWithoutDrawing)
{
  PlotScene plot;
  plot.container.redraw();
  auto former = plot.container.plotData;
  auto table = makeTable({{"a", {1}}});
  testing::internal::CaptureStdout();
  plot.container.setPlotData(table);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(plot.container.plotData, table);
  EXPECT_NE(plot.chart()->GetPlot(0)->GetInput(), table.Get());
}

TEST(PlotContainerTest, SetPlotDataIgnoresNull)
{
  PlotContainer plot(nullptr);
  auto former = plot.plotData;
  plot.setPlotData(nullptr);
  EXPECT_EQ(plot.plotData, former);
}

TEST(PlotContainerTest, SetPlotDataFindsTheParametersByTheTypedNamesThatStand)
{
  PlotContainer plot(nullptr);
  plot.typedColumnNames = {{Kestrane::Molecule, "A"},
                           {Kestrane::Parameter, "k1"},
                           {Kestrane::Unnamed, "t"},
                           {Kestrane::Parameter, "k2"}};
  plot.metaData->parameterColumns = {9};
  plot.setPlotData(makeTable({{"a", {1}}}));
  EXPECT_THAT(plot.metaData->parameterColumns, ElementsAre(1, 3));
  EXPECT_THAT(plot.typedColumnNames, SizeIs(4));
}

TEST(PlotContainerTest, FindParameterColumnsStartsAnew)
{
  PlotContainer plot(nullptr);
  plot.metaData->parameterColumns = {4, 5};
  plot.findParameterColumns();
  EXPECT_THAT(plot.metaData->parameterColumns, IsEmpty());
}

TEST(PlotContainerTest, SetPlotStyleLeavesTheDrawingToTheSettings)
{
  PlotScene plot;
  plot.container.setPlotStyle(scatterPlot3D);
  EXPECT_EQ(plot.settings().getPlotStyle(), scatterPlot3D);
  EXPECT_EQ(plot.container.getItem(), plot.container.chartXYZ.Get());
  plot.settings().blockSignals(true);
  plot.container.setPlotStyle(scatterPlot);
  EXPECT_EQ(plot.container.getItem(), plot.container.chartXYZ.Get()) << "nobody asked for a redraw";
}

TEST(PlotContainerTest, LabelsAreTheColumnNamesByteForByte)
{
  PlotContainer plot(nullptr);
  EXPECT_TRUE(plot.getLabels().isEmpty());
  plot.setPlotData(makeTable({{"Molecule: A", {1}}, {": Time [s]", {2}}, {"\xb5M", {3}}}));
  EXPECT_EQ(plot.getLabels(), QStringList({"Molecule: A", ": Time [s]", QString::fromUtf8("µM")}));
}

TEST(PlotContainerTest, DirtyMarksTheSceneAndDoesNothingWithoutOne)
{
  PlotContainer alone(nullptr);
  alone.dirty();
  PlotScene plot;
  RecordingPainter recorder;
  plot.paint(recorder);
  ASSERT_FALSE(plot.scene->GetDirty());
  plot.container.dirty();
  EXPECT_TRUE(plot.scene->GetDirty());
}

TEST(PlotContainerTest, SetSceneMovesTheItemAndClearsTheSceneItLeaves)
{
  PlotScene plot;
  vtkNew<vtkContextScene> other;
  plot.container.setScene(other);
  EXPECT_EQ(plot.container.getItem()->GetScene(), other.Get());
  EXPECT_EQ(plot.scene->GetNumberOfItems(), 0u);
  EXPECT_EQ(other->GetNumberOfItems(), 0u) << "the view adds the item";
  plot.container.setScene(nullptr);
  EXPECT_EQ(plot.container.getItem()->GetScene(), nullptr);
}

TEST(PlotContainerTest, AnnotationUpdateEvaluatesTheSelectionByHand)
{
  PlotScene plot;
  plot.settings().setPlotStyle(selectionCdfPlot);
  plot.container.setLinePlotTable(makeScan({}), false);
  selectRows(plot.container, {1});
  ASSERT_THAT(plot.container.tables, SizeIs(8));
  plot.container.tables.resize(2);
  plot.container.ksStatistics.clear();
  plot.container.annotationUpdate();
  EXPECT_THAT(plot.container.tables, SizeIs(8));
  EXPECT_THAT(plot.container.ksStatistics, SizeIs(1));
}

/// The slots as the meta object lists them, with the names of their parameters.
std::vector<std::string> slotsOf(QMetaObject const& meta)
{
  std::vector<std::string> found;
  for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
    const QMetaMethod method = meta.method(i);
    std::string text = method.methodSignature().toStdString();
    for (QByteArray const& name : method.parameterNames()) text += " " + name.toStdString();
    if (method.methodType() == QMetaMethod::Slot) found.push_back(text);
  }
  return found;
}

TEST(PlotContainerTest, HostsFindTheSlotsByTheirTextInAFixedOrder)
{
  EXPECT_THAT(slotsOf(PlotContainer::staticMetaObject),
              testing::ElementsAre(
                  "setPlotData(vtkSmartPointer<vtkTable>) data", "setLinePlotData(LinePlotData*) data",
                  "setLinePlotDataAsAdditionalData(LinePlotData*) data",
                  "setLinePlotItems(std::vector<Kestrane::TypedConcentrationName>*) ",
                  "setPlotStyle(plotStyles) plotStyle", "setLogScaleY(bool) log",
                  "setShowLegend(bool) legend", "redraw()", "dirty()", "annotationUpdate()"));
}

TEST(PlotContainerTest, ClusteringCanBeTakenAsAFunctionOfTwoNumbers)
{
  void (PlotContainer::*cluster)(int, int) = &PlotContainer::clusterTimeSeries;
  PlotContainer plot(nullptr);
  (plot.*cluster)(0, 0);
  EXPECT_EQ(plot.clusterLabels, nullptr) << "there is no data";
}

TEST(PlotContainerTest, ARedrawMakesNoChartsInEmptyCells)
{
  PlotScene plot;
  plot.container.chartMatrix->SetSize({3, 3});
  plot.container.redraw();
  EXPECT_EQ(plot.container.chartMatrix->GetNumberOfItems(), 0);
}

} // namespace
} // namespace runsieve::test
