#pragma once

#include <vtkSmartPointer.h>

class Distribution;
class vtkTable;

namespace runsieve {

/// A distribution, sampled.
struct DensityTable
{
  vtkSmartPointer<vtkTable> table; ///< columns "x" and "pdf" of floats, as the distribution gives them
  vtkSmartPointer<vtkTable>
      drawn; ///< the same as far as charts can draw it; null if they cannot draw its range
  double lower;
  double upper;
  double height; ///< the highest density drawn; 0 for a point value, although its peak is drawn at 1
};

/// 50 points of a density, or a peak at a point value. Densities that are infinite, or beyond what the axes
/// of VTK can show, are drawn as high as just beside them.
DensityTable densityTable(Distribution& distribution);

} // namespace runsieve
