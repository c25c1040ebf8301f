#include <runsieve/styles/ResidualChart.h>

#include <runsieve/charts/Plots.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAbstractArray.h>
#include <vtkAxis.h>
#include <vtkChartXY.h>
#include <vtkPlot.h>
#include <vtkTable.h>

namespace runsieve {

namespace {

/// Points a plot at a column, which must be as long as the times to be drawn.
void setSeries(vtkPlot* plot, vtkTable* table, vtkIdType column, bool overTime)
{
  const vtkIdType x = overTime ? 0 : column;
  plot->SetColor(200, 30, 30, 255);
  plot->SetUseIndexForXSeries(!overTime);
  if (hasColumn(table, x) && hasColumn(table, column) &&
      table->GetColumn(x)->GetNumberOfTuples() == table->GetColumn(column)->GetNumberOfTuples())
    setPlotInput(plot, table, x, column);
}

} // namespace

void showResiduals(vtkChart* chart, vtkTable* table, std::size_t series, bool overTime, bool curves)
{
  chart->ClearPlots();
  vtkIdType column = overTime ? 1 : 0;
  for (std::size_t i = 0; i < series; ++i) {
    if (curves) setSeries(addLinePlot(chart), table, column++, overTime);
    setSeries(addPointPlot(chart), table, column++, overTime);
  }
  chart->GetAxis(vtkAxis::LEFT)->AutoScale();
  if (auto* xy = vtkChartXY::SafeDownCast(chart)) xy->ForceAxesToBoundsOn();
}

} // namespace runsieve
