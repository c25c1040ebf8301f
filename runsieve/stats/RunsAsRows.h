#pragma once

#include <vtkSmartPointer.h>

#include <string>

class vtkTable;

namespace runsieve {

/// A column of a stacked table as a table with one row per run and one column per time point.
vtkSmartPointer<vtkTable> runsAsRows(vtkTable* table, std::string const& column, int stride);

/// A table turned by a right angle, all cells being data.
vtkSmartPointer<vtkTable> transposed(vtkTable* table);

} // namespace runsieve
