#pragma once

#include <vtkFloatArray.h>
#include <vtkIdTypeArray.h>
#include <vtkSmartPointer.h>
#include <vtkStdString.h>

class vtkContext2D;
class vtkPoints2D;
class vtkTable;

namespace runsieve {

/// As long as it lives a plot has no selected rows beyond its points: the selection of a link can come from a
/// longer table than that of the plot, and vtkPlotPoints reads the points of all its rows.
class ExistingRows
{
public:
  /// \param marks where the selected points were at the last paint. They are forgotten if the plot was
  /// modified since: VTK 9.3 keeps them until the selection changes, even if the points do.
  ExistingRows(vtkIdTypeArray*& selection, vtkPoints2D* points, vtkFloatArray* marks, vtkMTimeType plotTime);
  ~ExistingRows();
  ExistingRows(ExistingRows const&) = delete;
  ExistingRows& operator=(ExistingRows const&) = delete;

private:
  vtkIdTypeArray*& place;
  vtkIdTypeArray* whole;
  vtkSmartPointer<vtkIdTypeArray> existing;
};

/// As long as it lives a plot is not coloured by a column that its table does not have: vtkPlotPoints would
/// use the colours of a column that is gone, or none at all where it needs some.
class ExistingColors
{
public:
  ExistingColors(int& visibility, vtkStdString const& column, vtkTable* table);
  ~ExistingColors();
  ExistingColors(ExistingColors const&) = delete;
  ExistingColors& operator=(ExistingColors const&) = delete;

private:
  int& place;
  int whole;
};

/// A point plot, of a class that VTK or this library offers, with both guards. To everybody else it is a plot
/// of that class.
template <class Plot> class GuardedPlot : public Plot
{
public:
  static vtkSmartPointer<GuardedPlot> create()
  {
    auto* plot = new GuardedPlot;
    plot->InitializeObjectBase();
    return vtkSmartPointer<GuardedPlot>::Take(plot);
  }

  void Update() override
  {
    const ExistingColors colors(this->ScalarVisibility, this->ColorArrayName, this->GetInput());
    Plot::Update();
  }

  bool Paint(vtkContext2D* painter) override
  {
    const ExistingColors colors(this->ScalarVisibility, this->ColorArrayName, this->GetInput());
    const ExistingRows rows(this->Selection, this->Points, this->SelectedPoints, this->GetMTime());
    return Plot::Paint(painter);
  }

protected:
  GuardedPlot() = default;
  ~GuardedPlot() override = default;
};

} // namespace runsieve
