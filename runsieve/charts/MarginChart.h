#pragma once

#include <vtkChartXY.h>
#include <vtkSmartPointer.h>

namespace runsieve {

/// A vtkChartXY that fills its scene but for fixed margins. The base class measures its borders anew at every
/// paint, so that borders set from outside do not last. To everybody else it is a vtkChartXY.
class MarginChart : public vtkChartXY
{
public:
  static vtkSmartPointer<MarginChart> create();

  /// Pixels between the plot area and the edges of the scene, and the borders of the base class.
  void setMargins(int left, int bottom, int right, int top);

  bool Paint(vtkContext2D* painter) override;

protected:
  MarginChart();
  ~MarginChart() override = default;

private:
  int left = 0;
  int bottom = 0;
  int right = 0;
  int top = 0;
};

} // namespace runsieve
