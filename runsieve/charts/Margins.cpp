#include <runsieve/charts/Margins.h>

#include <runsieve/charts/MarginChart.h>

#include <vtkChartMatrix.h>

namespace runsieve {

void setChartMargins(vtkChart* chart, Margins const& m)
{
  if (auto* single = dynamic_cast<MarginChart*>(chart))
    single->setMargins(m.left, m.bottom, m.right, m.top);
  else
    chart->SetBorders(m.left, m.bottom, m.right, m.top);
}

void setGridMargins(vtkChartMatrix* matrix, Margins const& m, int titleSpace)
{
  matrix->SetGutter(
      {static_cast<float>(m.horizontalGutter), static_cast<float>(m.verticalGutter + titleSpace)});
  matrix->SetBorders(m.left, m.bottom, m.right, m.top + titleSpace);
}

void setGridMarginsTurned(vtkChartMatrix* matrix, Margins const& m)
{
  matrix->SetGutter({static_cast<float>(m.verticalGutter), static_cast<float>(m.horizontalGutter)});
  matrix->SetBorders(m.left, m.bottom, m.right, m.top);
}

} // namespace runsieve
