#include <runsieve/stats/Quartiles.h>

#include <runsieve/stats/RunsAsRows.h>
#include <runsieve/tables/BorrowedColumn.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkDoubleArray.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkOrderStatistics.h>
#include <vtkTable.h>
#include <vtkTransposeTable.h>

namespace runsieve {

namespace {

// Columns of the transposed quantile table.
constexpr int minimumColumn = 1;
constexpr int firstQuartileColumn = 2;
constexpr int thirdQuartileColumn = 4;
constexpr int maximumColumn = 5;

/// One row per time point: a label, then minimum, quartiles and maximum by the rule of vtkOrderStatistics.
vtkSmartPointer<vtkTable> quantilesByTime(vtkTable* runs)
{
  vtkNew<vtkOrderStatistics> statistics;
  statistics->SetInputData(0, runs);
  for (vtkIdType c = 0; c < runs->GetNumberOfColumns(); ++c) statistics->AddColumn(runs->GetColumnName(c));
  statistics->SetQuantize(true);
  statistics->SetLearnOption(true);
  statistics->SetDeriveOption(true);
  statistics->Update();
  auto* model = vtkMultiBlockDataSet::SafeDownCast(statistics->GetOutputDataObject(1));
  if (!model || model->GetNumberOfBlocks() < 1) return nullptr;
  auto* quantiles = vtkTable::SafeDownCast(model->GetBlock(model->GetNumberOfBlocks() - 1));
  if (!quantiles || quantiles->GetNumberOfColumns() < 2) return nullptr;
  vtkNew<vtkTransposeTable> transpose;
  transpose->SetUseIdColumn(true);
  transpose->SetInputData(0, quantiles);
  transpose->Update();
  return transpose->GetOutput();
}

void addBand(vtkTable* table, const char* name, int lower, int upper, vtkIdType rows)
{
  auto* low = vtkDataArray::SafeDownCast(table->GetColumn(lower));
  auto* high = vtkDataArray::SafeDownCast(table->GetColumn(upper));
  if (!low || !high) return;
  vtkNew<vtkDoubleArray> band;
  band->SetNumberOfComponents(2);
  band->SetNumberOfTuples(rows);
  for (vtkIdType t = 0; t < rows; ++t) band->SetTuple2(t, low->GetTuple1(t), high->GetTuple1(t));
  band->SetName(name);
  table->AddColumn(band);
}

/// The times of the first run. A double column is shared, and kept alive, not copied.
vtkSmartPointer<vtkDoubleArray> firstRunTimes(vtkTable* table, int column, int stride)
{
  auto* source = vtkDataArray::SafeDownCast(table->GetColumn(column));
  if (!source || source->GetNumberOfTuples() < stride) return nullptr;
  vtkSmartPointer<vtkDoubleArray> times;
  if (vtkDoubleArray* doubles = doubleColumn(table, column)) {
    times = BorrowedColumn::over(doubles->GetPointer(0), stride, ownedBy(doubles));
  } else {
    times = vtkSmartPointer<vtkDoubleArray>::New();
    for (int t = 0; t < stride; ++t) times->InsertNextValue(source->GetComponent(t, 0));
  }
  times->SetName("Time");
  return times;
}

} // namespace

vtkSmartPointer<vtkTable> quartilesByTime(vtkTable* table, int x, int y, int stride)
{
  if (stride < 1 || table->GetNumberOfRows() < stride) return nullptr;
  if (!hasColumn(table, x) || !isNumeric(table, y)) return nullptr;
  const vtkSmartPointer<vtkDoubleArray> times = firstRunTimes(table, x, stride);
  if (!times) return nullptr;
  vtkSmartPointer<vtkTable> quartiles = quantilesByTime(runsAsRows(table, columnName(table, y), stride));
  if (!quartiles || quartiles->GetNumberOfRows() != stride) return nullptr;
  addBand(quartiles, "Range", minimumColumn, maximumColumn, stride);
  addBand(quartiles, "QRange", firstQuartileColumn, thirdQuartileColumn, stride);
  quartiles->AddColumn(times);
  return quartiles;
}

} // namespace runsieve
