#include <runsieve/adapters/LinePlotTables.h>

#include <runsieve/records/LinePlotData.h>
#include <runsieve/tables/BorrowedColumn.h>
#include <runsieve/tables/ColumnNames.h>

#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

#include <algorithm>

using Kestrane::TypedConcentrationName;

namespace runsieve {

namespace {

vtkSmartPointer<vtkDoubleArray> borrowColumn(LinePlotTable const& record, std::size_t i,
                                             std::shared_ptr<void> owner)
{
  auto column =
      BorrowedColumn::over(record.columnData[i], static_cast<vtkIdType>(record.rows()), std::move(owner));
  column->SetName(typedColumnName(record.columnNames[i]).c_str());
  return column;
}

std::size_t columnCount(LinePlotTable const& record)
{
  return std::min(record.columnData.size(), record.columnNames.size());
}

void addCopy(vtkTable* table, std::string const& name, std::vector<double> const* values)
{
  vtkNew<vtkDoubleArray> column;
  column->SetName(name.c_str());
  if (values)
    for (double value : *values) column->InsertNextValue(value);
  table->AddColumn(column);
}

} // namespace

StackedTable stackedTable(boost::shared_ptr<LinePlotTable> const& record)
{
  StackedTable stacked;
  stacked.table = vtkSmartPointer<vtkTable>::New();
  std::size_t parameter = 0;
  for (std::size_t i = 0; i < columnCount(*record); ++i) {
    const bool bounded =
        record->columnNames[i].first == Kestrane::Parameter && parameter < record->parameterBounds.size();
    if (bounded) {
      const std::pair<double, double> bounds = record->parameterBounds[parameter++];
      if (bounds.first == bounds.second) continue;
      stacked.bounds.push_back(bounds);
    }
    stacked.table->AddColumn(borrowColumn(*record, i, ownedBy(record)));
    stacked.names.push_back(record->columnNames[i]);
  }
  return stacked;
}

vtkSmartPointer<vtkTable> borrowedTable(LinePlotTable const& record)
{
  auto table = vtkSmartPointer<vtkTable>::New();
  for (std::size_t i = 0; i < columnCount(record); ++i) table->AddColumn(borrowColumn(record, i, nullptr));
  return table;
}

vtkSmartPointer<vtkTable> copiedTable(LinePlotData const& data)
{
  auto table = vtkSmartPointer<vtkTable>::New();
  addCopy(table, data.timeLabel, data.times);
  for (auto const& [name, values] : data.series) addCopy(table, typedColumnName(name), values);
  return table;
}

int timeColumnOf(std::vector<TypedConcentrationName> const& names)
{
  int found = -1;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].first != Kestrane::Unnamed) continue;
    if (names[i].second == "Time [s]") return static_cast<int>(i);
    if (names[i].second == "Value" || found < 0) found = static_cast<int>(i);
  }
  return found;
}

} // namespace runsieve
