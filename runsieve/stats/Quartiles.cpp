#include <runsieve/stats/Quartiles.h>

#include <runsieve/records/PaddedNumber.h>
#include <runsieve/core/kernels/OrderStatistics.h>
#include <runsieve/tables/BorrowedColumn.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkOrderStatistics.h>
#include <vtkStringArray.h>
#include <vtkTable.h>

#include <array>
#include <vector>

namespace runsieve {

namespace {

// Columns of the quantile table.
constexpr int minimumColumn = 1;
constexpr int firstQuartileColumn = 2;
constexpr int thirdQuartileColumn = 4;
constexpr int maximumColumn = 5;

/// A column of stacked runs as doubles: its own memory, or converted into `own`.
double const* stackedValues(vtkTable* table, int column, std::vector<double>& own)
{
  if (vtkDoubleArray* doubles = doubleColumn(table, column)) return doubles->GetPointer(0);
  auto* array = vtkDataArray::SafeDownCast(table->GetColumn(column));
  own.resize(static_cast<std::size_t>(array->GetNumberOfTuples()));
  for (std::size_t row = 0; row < own.size(); ++row)
    own[row] = array->GetComponent(static_cast<vtkIdType>(row), 0);
  return own.data();
}

/// One row per time point: its number, then minimum, quartiles and maximum over all complete runs.
vtkSmartPointer<vtkTable> quantilesByTime(vtkTable* table, int column, int stride)
{
  std::vector<double> converted;
  double const* values = stackedValues(table, column, converted);
  const vtkIdType runs = vtkDataArray::SafeDownCast(table->GetColumn(column))->GetNumberOfTuples() / stride;
  if (runs < 1) return nullptr;
  const vtkNew<vtkOrderStatistics> filter; // to whose default the numbers keep
  const std::vector<FiveNumbers> five =
      orderStatistics(values, static_cast<std::size_t>(runs), static_cast<std::size_t>(stride),
                      static_cast<std::size_t>(filter->GetMaximumHistogramSize()));

  auto quantiles = vtkSmartPointer<vtkTable>::New();
  vtkNew<vtkStringArray> labels;
  labels->SetName("Quantile");
  for (int t = 0; t < stride; ++t) labels->InsertNextValue(paddedNumber(t, stride - 1));
  quantiles->AddColumn(labels);
  const std::array<const char*, 5> names{"Minimum", "First Quartile", "Median", "Third Quartile", "Maximum"};
  for (std::size_t i = 0; i < names.size(); ++i) {
    vtkNew<vtkDoubleArray> numbers;
    numbers->SetName(names[i]);
    for (FiveNumbers const& ofTime : five) numbers->InsertNextValue(ofTime[i]);
    quantiles->AddColumn(numbers);
  }
  return quantiles;
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
  vtkSmartPointer<vtkTable> quartiles = quantilesByTime(table, y, stride);
  if (!quartiles) return nullptr;
  addBand(quartiles, "Range", minimumColumn, maximumColumn, stride);
  addBand(quartiles, "QRange", firstQuartileColumn, thirdQuartileColumn, stride);
  quartiles->AddColumn(times);
  return quartiles;
}

} // namespace runsieve
