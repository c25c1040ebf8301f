#include <runsieve/selection/FlagColumn.h>

#include <runsieve/records/HugePages.h>

#include <vtkTable.h>

#include <algorithm>

namespace runsieve {

vtkSmartPointer<FlagColumn> FlagColumn::reusable(vtkTable* table, const char* name)
{
  auto* column = dynamic_cast<FlagColumn*>(table->GetColumnByName(name));
  const bool mine = column && column->GetReferenceCount() == 1 && column->GetMTime() == column->writtenAt &&
                    column->GetNumberOfTuples() == table->GetNumberOfRows();
  return mine ? column : nullptr;
}

vtkSmartPointer<FlagColumn> FlagColumn::zeroed(const char* name, vtkIdType rows)
{
  auto* column = new FlagColumn;
  column->InitializeObjectBase();
  column->SetName(name);
  const auto count = static_cast<std::size_t>(rows);
  auto* values = new vtkIdType[count];
  preferHugePages(values, count * sizeof(vtkIdType));
  std::fill_n(values, count, 0);
  column->SetArray(values, rows, 0, VTK_DATA_ARRAY_DELETE);
  return vtkSmartPointer<FlagColumn>::Take(column);
}

void FlagColumn::fill(vtkIdType value)
{
  vtkIdType* values = this->GetPointer(0);
  constexpr std::size_t ahead = 16;
  std::vector<RowSpan> const& spans = ones.spans();
  for (std::size_t i = 0; i < spans.size(); ++i) {
    if (i + ahead < spans.size()) {
      __builtin_prefetch(values + spans[i + ahead].first, 1);
      __builtin_prefetch(values + spans[i + ahead].first + 8, 1);
    }
    std::fill_n(values + spans[i].first, spans[i].count, value);
  }
}

void FlagColumn::put(vtkTable* table, const char* name, RowSpans ones, bool asLast)
{
  vtkSmartPointer<FlagColumn> column = reusable(table, name);
  if (column)
    column->fill(0);
  else
    column = zeroed(name, table->GetNumberOfRows());
  column->ones = std::move(ones);
  column->fill(1);
  column->Modified();
  column->writtenAt = column->GetMTime();
  if (asLast) table->RemoveColumnByName(name);
  if (table->GetColumnByName(name) != column) table->AddColumn(column);
  table->Modified();
}

} // namespace runsieve
