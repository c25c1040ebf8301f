#include <runsieve/plot/PlotContainerPrivate.h>

#include <runsieve/items/LineSetPicture.h>
#include <runsieve/plot/vtkShiftScaleCallback.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/selection/ColumnPool.h>
#include <runsieve/selection/SplitTable.h>
#include <runsieve/selection/vtkSelectionUpdateCallback.h>
#include <runsieve/styles/Styles.h>

#include <vtkAnnotationLink.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkChartParallelCoordinates.h>
#include <vtkChartXYZ.h>
#include <vtkContextScene.h>
#include <vtkDoubleArray.h>
#include <vtkScatterPlotMatrix.h>
#include <vtkStringArray.h>
#include <vtkTable.h>

using namespace runsieve;

PlotContainer::Private::Private(PlotContainer& itsPlot)
    : linePicture(std::make_shared<LineSetPicture>()), plot(itsPlot)
{}

PlotContainer::Private::~Private()
{
  // The tables of the plot are gone by now, but for those in charts that an event may still stand in.
  lifetime.dropPlotsOfUnheld();
  ColumnPool::trim();
}

ChartStage PlotContainer::Private::stage()
{
  const Margins margins = {plot.leftMargin, plot.bottomMargin,     plot.rightMargin,
                           plot.topMargin,  plot.horizontalGutter, plot.verticalGutter};
  return {plot.chartXY,
          plot.item,
          plot.scatterPlotMatrix,
          plot.chartMatrix,
          plot.chartXYZ,
          plot.chartParallelCoordinates,
          plot.annotationLink,
          plot.shiftScaleCallback,
          margins,
          roles,
          lifetime,
          ticks};
}

StyleModel PlotContainer::Private::model()
{
  return {*plot.metaData,
          plot.plotData,
          plot.tables,
          plot.typedColumnNames,
          plot.ksStatistics,
          plot.parameterOrder,
          plot.quartileTable,
          plot.xTickLabels,
          plot.xTickPositions,
          plot.coordinateWindows,
          plot.useIndexForXSeries,
          linePicture,
          plot.densityColors,
          stage()};
}

void PlotContainer::Private::build(plotStyles number, vtkContextScene* scene)
{
  if (!scene) return;
  Style const& style = styleOf(number);
  if (style.needsDistributions) {
    finishSelectionOfCopy();
    if (!rankedTablesStand()) plot.generateRankedParameters(plot.plotData, 0);
  }
  StyleModel shown = model();
  style.build(shown, scene);
  lifetime.dropPlotsOfUnheld();
}

/// The selection of a copy reaches tables and statistics first; one drawing then shows them.
void PlotContainer::Private::finishSelectionOfCopy()
{
  if (!plot.selectionUpdatePending) return;
  plot.selectionUpdatePending = false;
  drawing = true;
  plot.selectionCallback->Execute(plot.annotationLink, 0, nullptr);
  drawing = false;
}

void PlotContainer::Private::replaceTable(vtkSmartPointer<vtkTable> table)
{
  plot.plotData = std::move(table);
  plot.metaData->rankedParametersValid = false;
  runOrders.clear();
  ColumnPool::trim();
}

bool PlotContainer::Private::rankedTablesStand() const
{
  return plot.metaData->rankedParametersValid && rankedFrom.GetPointer() == plot.plotData.GetPointer() &&
         plot.tables.size() >= 2 && plot.tables[0] && plot.tables[1];
}

void PlotContainer::Private::rank(vtkTable* table, std::size_t index, RowSpans const* rows)
{
  const ParameterSource source = {plot.plotData, plot.metaData->parameterColumns, plot.typedColumnNames,
                                  plot.parameterBounds, plot.metaData->getStride()};
  rankParameters(source, table, rows, runOrders, plot.tables, index, runner);
  if (table != plot.plotData) return;
  plot.metaData->rankedParametersValid = true;
  rankedFrom = plot.plotData;
}

void PlotContainer::Private::evaluateSelection(vtkAnnotationLink* link)
{
  plot.tables.resize(2);
  const SplitTable split = splitBySelection(link, plot.plotData, plot.metaData->parameterColumns,
                                            plot.metaData->getStride(), runOrders, runner);
  if (split.passing->GetNumberOfRows() > 0) {
    auto append = [this](vtkTable* table, RowSpans const& rows) {
      plot.tables.push_back(table);
      const std::size_t index = plot.tables.size();
      rank(table, index, &rows);
      return index;
    };
    const std::size_t passing = append(split.passing, split.passingRows);
    const std::size_t others = append(split.others, split.otherRows);
    plot.ksTestSelection(passing, others);
  }
  ColumnPool::trim(); // what the former samples took beyond the present ones
  if (!drawing) plot.redraw();
}
