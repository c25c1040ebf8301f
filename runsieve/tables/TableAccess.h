#pragma once

#include <string>
#include <vector>

class vtkDoubleArray;
class vtkFloatArray;
class vtkTable;

namespace runsieve {

/// Whether a table has a named column of that number. Column numbers come from hosts and files and can
/// outlive the table that they were meant for.
bool hasColumn(vtkTable* table, long long column);

/// The same, and it holds numbers.
bool isNumeric(vtkTable* table, long long column);

/// The name of a column, empty if there is none.
std::string columnName(vtkTable* table, long long column);

/// The column as packed doubles, null if it is missing, of another type or of several components.
vtkDoubleArray* doubleColumn(vtkTable* table, long long column);

/// The same for floats.
vtkFloatArray* floatColumn(vtkTable* table, long long column);

/// The first of a list of column numbers; -1, which is no column, without one.
int entry0(std::vector<int> const& columns);
void setEntry0(std::vector<int>& columns, int column);

/// The name of a parameter column without its type, which takes eleven characters; a shorter name gives
/// nothing.
std::string bareParameterName(std::string const& columnName);

} // namespace runsieve
