#pragma once

#include <vtkSmartPointer.h>
#include <vtkWeakPointer.h>

class vtkAxis;
class vtkDoubleArray;
class vtkStringArray;

namespace runsieve {

/// Tick texts that a plot has put on an axis, as opposed to those that a host has set there by itself.
class CustomTicks
{
public:
  /// Puts texts on an axis, at the given positions or, without any, at 0, 1, 2 and so on. Without texts the
  /// axis loses those that were put there before, and keeps whatever else it shows.
  void show(vtkAxis* axis, vtkStringArray* texts, vtkDoubleArray* positions);

private:
  void remove(vtkAxis* axis);

  vtkWeakPointer<vtkAxis> shownOn;
  vtkSmartPointer<vtkStringArray> shown;
};

} // namespace runsieve
