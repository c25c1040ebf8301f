#include <runsieve/styles/ItemLines.h>

#include <runsieve/charts/Plots.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkChartXY.h>
#include <vtkColorSeries.h>
#include <vtkNew.h>
#include <vtkPlot.h>
#include <vtkTable.h>

namespace runsieve {

void showItemLines(vtkChart* chart, vtkTable* table, int x, std::vector<std::string> const& columns)
{
  chart->ClearPlots();
  vtkNew<vtkColorSeries> colors;
  colors->SetColorScheme(vtkColorSeries::WILD_FLOWER);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    vtkPlot* plot = addLinePlot(chart);
    setPlotInput(plot, table, columnName(table, x), columns[i]);
    const vtkColor3ub color = colors->GetColorRepeating(static_cast<int>(i));
    plot->SetColor(color.GetRed(), color.GetGreen(), color.GetBlue(), 255);
  }
  if (auto* xy = vtkChartXY::SafeDownCast(chart)) xy->ForceAxesToBoundsOn();
}

} // namespace runsieve
