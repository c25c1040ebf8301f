#pragma once

#include <vtkSmartPointer.h>

#include <vector>

class vtkTable;

namespace runsieve {

/// Points as columns "x" and "y" of floats, with a column "error" if there are as many errors as points.
vtkSmartPointer<vtkTable> pointTable(std::vector<double> const& x, std::vector<double> const& y,
                                     std::vector<double> const& errors);

/// Curves to show before there are data: 400 rows of x, y and z.
vtkSmartPointer<vtkTable> exampleTable();

} // namespace runsieve
