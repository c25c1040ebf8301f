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

RowSpans const* FlagColumn::ones()
{
  return writtenAt == this->GetMTime() ? &written : nullptr;
}

void FlagColumn::write(RowSpans const& ones)
{
  vtkIdType* values = this->GetPointer(0);
  std::fill_n(values, this->GetNumberOfTuples(), 0);
  for (RowSpan span : ones.spans()) std::fill_n(values + span.first, span.count, 1);
}

void FlagColumn::put(vtkTable* table, std::vector<Flags> const& list, BlockRunner const& runner)
{
  std::vector<vtkSmartPointer<FlagColumn>> columns;
  for (Flags const& flags : list) {
    columns.push_back(reusable(table, flags.name));
    if (!columns.back()) columns.back() = withRows(flags.name, table->GetNumberOfRows());
  }
  runBlocks(runner, list.size(), [&](std::size_t i) { columns[i]->write(list[i].ones); });
  for (std::size_t i = 0; i < list.size(); ++i) {
    FlagColumn* const column = columns[i];
    column->Modified();
    column->written = list[i].ones;
    column->writtenAt = column->GetMTime();
    if (list[i].asLast) table->RemoveColumnByName(list[i].name);
    if (table->GetColumnByName(list[i].name) != column) table->AddColumn(column);
  }
  table->Modified();
}

} // namespace runsieve
