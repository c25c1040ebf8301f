#include <runsieve/plot/PlotContainerPrivate.h>

#include <runsieve/records/ParameterSelection.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/selection/ColumnShrink.h>
#include <runsieve/selection/LinkedSelection.h>
#include <runsieve/selection/RowGather.h>
#include <runsieve/selection/RunNumbers.h>
#include <runsieve/tables/WindowKey.h>

#include <vtkAnnotationLink.h>
#include <vtkDoubleArray.h>
#include <vtkIdTypeArray.h>
#include <vtkIntArray.h>
#include <vtkTable.h>

#include <memory>

using namespace runsieve;

namespace {

constexpr const char* runIndexColumn = ": Run Index";

std::unique_ptr<ParameterSelection> selectionOf(PlotMetaData const& settings)
{
  auto selection = std::make_unique<ParameterSelection>();
  selection->sourceName = settings.sourceName;
  selection->sourceId = settings.sourceId;
  return selection;
}

} // namespace

vtkIntArray* PlotContainer::getCurrentSelection() const
{
  vtkSmartPointer<vtkIntArray> flags = selectionFlags(annotationLink, plotData);
  if (flags) flags->Register(nullptr); // becomes the caller's
  return flags;
}

void PlotContainer::selectionFromFlagColumn()
{
  if (const vtkSmartPointer<vtkIdTypeArray> rows = flaggedRows(plotData)) selectRows(annotationLink, rows);
}

ParameterSelection* PlotContainer::getSelection()
{
  auto* runColumn = vtkDoubleArray::SafeDownCast(plotData->GetColumnByName(runIndexColumn));
  if (!runColumn) return nullptr;
  auto selection = selectionOf(*metaData);
  auto* passing = vtkIdTypeArray::SafeDownCast(plotData->GetColumnByName("vtkRemainderSelection"));
  if (metaData->getPlotStyle() == selectionCdfPlot && passing) {
    selection->selectedRuns = runsOfFlags(passing, runColumn);
  } else {
    const vtkSmartPointer<vtkIntArray> flags = selectionFlags(annotationLink, plotData);
    if (!flags) return nullptr;
    selection->selectedRuns = runsOfFlags(flags, runColumn);
  }
  return selection.release();
}

void PlotContainer::setSelection(ParameterSelection* selection, int timeIndex)
{
  if (!selection || metaData->getStride() == 0) return;
  vtkDoubleArray* runColumn = findIndexColumn(plotData, 0);
  if (!runColumn) return;
  selectRows(annotationLink,
             rowsOfRuns(selection->selectedRuns, runColumn, metaData->getStride(), timeIndex));
}

void PlotContainer::setExternalSelection(ParameterSelection* selection)
{
  const long long stride = metaData->getStride();
  if (!selection || metaData->parameterColumns.empty() || stride < 1) return;
  vtkDoubleArray* runColumn = findIndexColumn(plotData, metaData->parameterColumns[0] - 1);
  if (!runColumn) return;
  auto table = vtkSmartPointer<vtkTable>::New();
  gatherTable(plotData, firstRowsOfRuns(selection->selectedRuns, runColumn, stride), false, table);
  if (!d->rankedTablesStand()) generateRankedParameters(plotData, 0);
  tables.push_back(table);
  generateRankedParameters(table, tables.size());
  dirty();
  redraw();
}

void PlotContainer::selectionsFromClusters(std::string const& name,
                                           std::vector<ParameterSelection*>& selections)
{
  if (!clusterLabels || clusterLabels->GetNumberOfTuples() < 1) return;
  double range[2];
  clusterLabels->GetRange(range, 0);
  const int top = static_cast<int>(range[1]);
  const std::size_t start = selections.size();
  for (int k = 0; k <= top; ++k) {
    auto record = selectionOf(*metaData);
    record->selectionName = name + " " + std::to_string(k);
    selections.push_back(record.release());
  }
  for (vtkIdType i = 0; i < clusterLabels->GetNumberOfTuples(); ++i) {
    // The range is cached by the array and can be older than its values.
    const int label = clusterLabels->GetValue(i);
    if (label >= 0 && label <= top)
      selections[start + static_cast<std::size_t>(label)]->selectedRuns.insert(static_cast<int>(i));
  }
}

void PlotContainer::shrinkToColumnSelection()
{
  // The keys of the windows hold column numbers, which are about to change.
  auto window = coordinateWindows.find(windowKey(*metaData));
  if (window != coordinateWindows.end()) metaData->coordinateWindow = window->second;
  coordinateWindows.clear();
  keepColumnsInUse(plotData, *metaData, typedColumnNames);
  d->runOrders.clear();
  if (const vtkSmartPointer<vtkIntArray> flags = selectionFlags(annotationLink, plotData))
    plotData->AddColumn(flags);
}
