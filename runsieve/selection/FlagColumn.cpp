#include <runsieve/selection/FlagColumn.h>

#include <runsieve/core/kernels/HugePages.h>

#include <vtkTable.h>

#include <algorithm>

namespace runsieve {

vtkSmartPointer<FlagColumn> FlagColumn::reusable(vtkTable* table, const char* name)
{
  auto* column = dynamic_cast<FlagColumn*>(table->GetColumnByName(name));
  const bool mine = column && column->GetReferenceCount() == 1 && column->GetNumberOfComponents() == 1 &&
                    column->GetNumberOfTuples() == table->GetNumberOfRows();
  return mine ? column : nullptr;
}

vtkSmartPointer<FlagColumn> FlagColumn::withRows(const char* name, vtkIdType rows)
{
  auto* column = new FlagColumn;
  column->InitializeObjectBase();
  column->SetName(name);
  const auto count = static_cast<std::size_t>(rows);
  auto* values = new vtkIdType[count];
  preferHugePages(values, count * sizeof(vtkIdType));
  column->SetArray(values, rows, 0, VTK_DATA_ARRAY_DELETE);
  return vtkSmartPointer<FlagColumn>::Take(column);
}

void FlagColumn::write(RowSpans const& ones)
{
  vtkIdType* values = this->GetPointer(0);
  std::fill_n(values, this->GetNumberOfTuples(), 0);
  for (RowSpan span : ones.spans()) std::fill_n(values + span.first, span.count, 1);
}

void FlagColumn::put(vtkTable* table, const char* name, RowSpans const& ones, bool asLast)
{
  vtkSmartPointer<FlagColumn> column = reusable(table, name);
  if (!column) column = withRows(name, table->GetNumberOfRows());
  column->write(ones);
  column->Modified();
  if (asLast) table->RemoveColumnByName(name);
  if (table->GetColumnByName(name) != column) table->AddColumn(column);
  table->Modified();
}

} // namespace runsieve
