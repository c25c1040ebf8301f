#pragma once

#include <runsieve/items/PlotGuards.h>

#include <vtkPlotLine.h>
#include <vtkPoints2D.h>

namespace runsieve {

/// A line that says nothing when it has no two points; vtkPlotLine reports that as an error at each paint. To
/// everybody else it is a vtkPlotLine.
class LinePlot : public GuardedPlot<vtkPlotLine>
{
public:
  static vtkSmartPointer<LinePlot> create()
  {
    auto* plot = new LinePlot;
    plot->InitializeObjectBase();
    return vtkSmartPointer<LinePlot>::Take(plot);
  }

  bool Paint(vtkContext2D* painter) override
  {
    const bool isLine = !this->Points || this->Points->GetNumberOfPoints() > 1;
    return isLine || this->MarkerStyle != NONE ? this->GuardedPlot<vtkPlotLine>::Paint(painter) : true;
  }

protected:
  LinePlot() = default;
  ~LinePlot() override = default;
};

} // namespace runsieve
