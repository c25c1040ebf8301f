#include <runsieve/tables/TableAccess.h>

#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>
#include <vtkTable.h>

namespace runsieve {

bool hasColumn(vtkTable* table, long long column)
{
  return table && column >= 0 && column < table->GetNumberOfColumns() && table->GetColumnName(column);
}

bool isNumeric(vtkTable* table, long long column)
{
  return hasColumn(table, column) && vtkDataArray::SafeDownCast(table->GetColumn(column));
}

std::string columnName(vtkTable* table, long long column)
{
  return hasColumn(table, column) ? table->GetColumnName(column) : std::string();
}

namespace {

template <class Array> Array* columnOf(vtkTable* table, long long column)
{
  if (!table || column < 0 || column >= table->GetNumberOfColumns()) return nullptr;
  auto* array = Array::SafeDownCast(table->GetColumn(column));
  return array && array->GetNumberOfComponents() == 1 ? array : nullptr;
}

} // namespace

vtkDoubleArray* doubleColumn(vtkTable* table, long long column)
{
  return columnOf<vtkDoubleArray>(table, column);
}

vtkFloatArray* floatColumn(vtkTable* table, long long column)
{
  return columnOf<vtkFloatArray>(table, column);
}

int entry0(std::vector<int> const& columns)
{
  return columns.empty() ? -1 : columns[0];
}

void setEntry0(std::vector<int>& columns, int column)
{
  if (columns.empty()) columns.resize(1);
  columns[0] = column;
}

std::string bareParameterName(std::string const& columnName)
{
  constexpr std::size_t prefix = 11; // "Parameter: "
  return columnName.size() > prefix ? columnName.substr(prefix) : std::string();
}

} // namespace runsieve
