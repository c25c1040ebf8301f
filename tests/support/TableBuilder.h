#pragma once

#include <vtkDoubleArray.h>
#include <vtkIdTypeArray.h>
#include <vtkNew.h>
#include <vtkSmartPointer.h>
#include <vtkTable.h>

#include <string>
#include <utility>
#include <vector>

namespace runsieve::test {

template <class Array = vtkDoubleArray, class Value = double>
vtkSmartPointer<Array> makeColumn(std::string const& name, std::vector<Value> const& values)
{
  auto column = vtkSmartPointer<Array>::New();
  column->SetName(name.c_str());
  for (Value value : values) column->InsertNextValue(value);
  return column;
}

/// A table of double columns.
inline vtkSmartPointer<vtkTable>
makeTable(std::vector<std::pair<std::string, std::vector<double>>> const& columns)
{
  auto table = vtkSmartPointer<vtkTable>::New();
  for (auto const& [name, values] : columns) table->AddColumn(makeColumn(name, values));
  return table;
}

/// Takes the last rows of one column away, which leaves the table uneven.
inline void shorten(vtkTable* table, vtkIdType column, vtkIdType rows)
{
  table->GetColumn(column)->Resize(rows);
}

inline vtkSmartPointer<vtkIdTypeArray> makeIds(std::vector<vtkIdType> const& ids)
{
  return makeColumn<vtkIdTypeArray>("ids", ids);
}

} // namespace runsieve::test
