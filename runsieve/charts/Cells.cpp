#include <runsieve/charts/Cells.h>

#include <vtkChart.h>
#include <vtkChartMatrix.h>

namespace runsieve {

std::vector<vtkChart*> chartsIn(vtkChartMatrix* matrix)
{
  std::vector<vtkChart*> charts;
  for (vtkIdType i = 0; i < matrix->GetNumberOfItems(); ++i)
    if (auto* chart = vtkChart::SafeDownCast(matrix->GetItem(i))) charts.push_back(chart);
  return charts;
}

} // namespace runsieve
