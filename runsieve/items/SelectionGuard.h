#pragma once

#include <vtkFloatArray.h>
#include <vtkIdTypeArray.h>
#include <vtkPoints2D.h>
#include <vtkSmartPointer.h>

class vtkContext2D;

namespace runsieve {

/// Those of the selected rows that are below a number of rows: the array itself where all are.
vtkSmartPointer<vtkIdTypeArray> rowsBelow(vtkIdTypeArray* selection, vtkIdType rows);

/// A point plot, of a class that VTK or this library offers, that does not mark selected rows which it does
/// not have. The selection of a link can come from a longer table than that of the plot, and the base class
/// reads the points of all its rows. To everybody else it is a plot of that class.
template <class Plot> class SelectionGuard : public Plot
{
public:
  static vtkSmartPointer<SelectionGuard> create()
  {
    auto* plot = new SelectionGuard;
    plot->InitializeObjectBase();
    return vtkSmartPointer<SelectionGuard>::Take(plot);
  }

  bool Paint(vtkContext2D* painter) override
  {
    vtkIdTypeArray* selection = this->Selection;
    const auto drawn = rowsBelow(selection, this->Points ? this->Points->GetNumberOfPoints() : 0);
    this->Selection = drawn;
    // VTK 9.3 keeps what it has marked until the selection changes, even if the points do.
    if (this->GetMTime() > this->SelectedPoints->GetMTime()) this->SelectedPoints->SetNumberOfTuples(0);
    const bool painted = Plot::Paint(painter);
    this->Selection = selection;
    return painted;
  }

protected:
  SelectionGuard() = default;
  ~SelectionGuard() override = default;
};

} // namespace runsieve
