#include <runsieve/plot/PlotContainer.h>

#include <runsieve/plot/TableAccess.h>
#include <runsieve/selection/ColumnPool.h>
#include <runsieve/selection/RowFilterInput.h>
#include <runsieve/selection/RowGather.h>
#include <runsieve/selection/RowSpans.h>
#include <runsieve/selection/vtkCombinedFilterAndSelectedRows.h>

#include <vtkAnnotationLayers.h>
#include <vtkIdTypeArray.h>
#include <vtkNew.h>
#include <vtkSelection.h>
#include <vtkSelectionNode.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>

using namespace runsieve;

namespace {

constexpr const char* runIndexColumn = ": Run Index";

/// The time column of a stacked table: the first whose name speaks of time, else the given default.
int findTimeColumn(vtkTable* table, int otherwise)
{
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c) {
    const std::string name = columnName(table, c);
    for (const char* word : {"Value", "Time", "Period"})
      if (name.find(word) != std::string::npos) return static_cast<int>(c);
  }
  return otherwise;
}

/// The column that numbers the runs: the first with "Index" in its name, else the given default.
vtkDoubleArray* findIndexColumn(vtkTable* table, int otherwise)
{
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c)
    if (columnName(table, c).find("Index") != std::string::npos) return doubleColumn(table, c);
  return doubleColumn(table, otherwise);
}

/// A run number, unless the value is no number that fits.
std::optional<int> runNumber(double value)
{
  constexpr double lowest = std::numeric_limits<int>::min();
  constexpr double highest = std::numeric_limits<int>::max();
  if (!(value > lowest - 1.0 && value < highest + 1.0)) return std::nullopt;
  return static_cast<int>(value);
}

void selectRows(vtkAnnotationLink* link, vtkIdTypeArray* rows)
{
  vtkNew<vtkSelectionNode> node;
  node->SetFieldType(vtkSelectionNode::ROW);
  node->SetContentType(vtkSelectionNode::INDICES);
  node->SetSelectionList(rows);
  vtkNew<vtkSelection> selection;
  selection->AddNode(node);
  link->SetCurrentSelection(selection);
}

/// The runs of all rows with a non-zero flag.
template <class Flags> void insertRuns(Flags* flags, vtkDoubleArray* runColumn, ParameterSelection& selection)
{
  const vtkIdType rows = std::min(flags->GetNumberOfTuples(), runColumn->GetNumberOfTuples());
  for (vtkIdType i = 0; i < rows; ++i) {
    if (flags->GetValue(i) == 0) continue;
    // Truncation as of a cast; rows of one run stand together, so the hint makes insertion cheap.
    if (auto run = runNumber(runColumn->GetValue(i)))
      selection.selectedRuns.insert(selection.selectedRuns.end(), *run);
  }
}

} // namespace

void PlotContainer::evaluateSelection(vtkAnnotationLink* link)
{
  std::vector<int> const& parameters = metaData->parameterColumns;
  tables.resize(2);
  auto filter =
      vtkSmartPointer<vtkCombinedFilterAndSelectedRows>::Take(vtkCombinedFilterAndSelectedRows::New());
  filter->ParameterColumns = parameters;
  filter->SetParaCount(static_cast<long long>(parameters.size()));
  filter->SetAnnotationLayersConnection(link->GetOutputPort(0));
  filter->SetSelectionConnection(link->GetOutputPort(2));
  filter->SetInputData(0, plotData);
  filter->AddOriginalRowIdsArrayOff();
  filter->SetTimeColumnIndex(findTimeColumn(plotData, parameters[0] - 2));
  filter->SetStride(metaData->getStride());
  filter->Update();

  // The filter dies here, so its outputs are handed over instead of copied.
  auto selected = vtkSmartPointer<vtkTable>::New();
  selected->ShallowCopy(vtkTable::SafeDownCast(filter->GetOutputDataObject(0)));
  vtkSmartPointer<vtkTable> complement = vtkTable::SafeDownCast(filter->GetOutputDataObject(1));
  if (selected->GetNumberOfRows() > 0 && complement) {
    auto append = [this](vtkTable* sample, RowSpans const& rows) {
      tables.emplace_back(sample);
      const std::size_t index = tables.size();
      rankParameters(sample, index, &rows);
      return index;
    };
    const std::size_t first = append(selected, filter->OutputRows(0));
    const std::size_t second = append(complement, filter->OutputRows(1));
    ksTestSelection(first, second);
  }
  ColumnPool::trim(); // what the former samples took beyond the present ones
  if (!drawingSelection) redraw();
}

vtkIntArray* PlotContainer::getCurrentSelection() const
{
  auto* layers = vtkAnnotationLayers::SafeDownCast(annotationLink->GetAnnotationLayers());
  vtkSelection* current = annotationLink->GetCurrentSelection();
  if (!layers && !current) return nullptr;
  std::vector<long long> rows;
  const UnitedSelection united = uniteSelections(current, layers);
  if (!selectedRows(united.selection, plotData, rows)) return nullptr;
  const vtkIdType count = plotData->GetNumberOfRows();
  int* flags = new int[static_cast<std::size_t>(count)]();
  for (long long row : rows) flags[row] = 1;
  vtkIntArray* column = vtkIntArray::New();
  column->SetName("selected points");
  column->SetArray(flags, count, 0, vtkIntArray::VTK_DATA_ARRAY_DELETE);
  return column;
}

void PlotContainer::selectionFromFlagColumn()
{
  const vtkIdType columns = plotData->GetNumberOfColumns();
  auto* flags = columns > 0 ? vtkIntArray::SafeDownCast(plotData->GetColumn(columns - 1)) : nullptr;
  if (!flags || flags->GetNumberOfComponents() != 1) return;
  vtkNew<vtkIdTypeArray> rows;
  for (vtkIdType i = 0; i < flags->GetNumberOfTuples(); ++i)
    if (flags->GetValue(i) == 1) rows->InsertNextValue(i);
  selectRows(annotationLink, rows);
}

ParameterSelection* PlotContainer::getSelection()
{
  auto* runColumn = vtkDoubleArray::SafeDownCast(plotData->GetColumnByName(runIndexColumn));
  auto* remainder = vtkIdTypeArray::SafeDownCast(plotData->GetColumnByName("vtkRemainderSelection"));
  if (!runColumn) return nullptr;
  auto selection = std::make_unique<ParameterSelection>();
  if (metaData->getPlotStyle() == selectionCdfPlot && remainder) {
    insertRuns(remainder, runColumn, *selection);
  } else {
    auto flags = vtkSmartPointer<vtkIntArray>::Take(getCurrentSelection());
    if (!flags) return nullptr;
    insertRuns(flags.GetPointer(), runColumn, *selection);
  }
  selection->sourceName = metaData->sourceName;
  selection->sourceId = metaData->sourceId;
  return selection.release();
}

void PlotContainer::setSelection(ParameterSelection* selection, int timeIndex)
{
  if (!selection || metaData->getStride() == 0) return;
  // Both are taken as unsigned after sign extension, so a negative time counts from the far end of that
  // range.
  const auto stride = static_cast<std::uint64_t>(static_cast<std::int64_t>(metaData->getStride()));
  const std::uint64_t offset = static_cast<std::uint64_t>(static_cast<std::int64_t>(timeIndex)) % stride;
  vtkDoubleArray* runColumn = findIndexColumn(plotData, 0);
  if (!runColumn) return;
  const auto rows = static_cast<std::uint64_t>(runColumn->GetNumberOfTuples());
  vtkNew<vtkIdTypeArray> ids;
  std::uint64_t row = 0;
  for (int run : selection->selectedRuns) {
    while (row < rows && runColumn->GetValue(static_cast<vtkIdType>(row)) < run)
      row = rows - row > stride ? row + stride : rows;
    if (row < rows && runColumn->GetValue(static_cast<vtkIdType>(row)) == run)
      ids->InsertNextValue(static_cast<vtkIdType>(row + offset));
  }
  selectRows(annotationLink, ids);
}

void PlotContainer::setExternalSelection(ParameterSelection* selection)
{
  const long long stride = metaData->getStride();
  if (!selection || metaData->parameterColumns.empty() || stride < 1) return;
  vtkDoubleArray* runColumn = findIndexColumn(plotData, metaData->parameterColumns[0] - 1);
  if (!runColumn) return;
  const long long rows = plotData->GetNumberOfRows();
  RowSpans found;
  long long row = 0;
  for (int run : selection->selectedRuns) {
    while (row < rows && runColumn->GetValue(row) != run) row += stride;
    if (row >= rows) break;
    found.append(row);
  }
  auto table = vtkSmartPointer<vtkTable>::New();
  gatherTable(plotData, found, false, table);
  if (!rankedTablesStand()) generateRankedParameters(plotData, 0);
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
    auto record = std::make_unique<ParameterSelection>();
    record->sourceName = metaData->sourceName;
    record->sourceId = metaData->sourceId;
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
