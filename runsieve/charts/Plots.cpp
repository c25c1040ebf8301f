#include <runsieve/charts/Plots.h>

#include <runsieve/items/LinePlot.h>
#include <runsieve/items/LinkedPlotPoints.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkChart.h>
#include <vtkColorSeries.h>
#include <vtkNew.h>
#include <vtkPen.h>
#include <vtkPlot.h>
#include <vtkTable.h>

namespace runsieve {

namespace {

/// Markers at the rows of a table.
class PointPlot : public LinkedPlotPoints
{
public:
  static vtkSmartPointer<PointPlot> create()
  {
    auto* plot = new PointPlot;
    plot->InitializeObjectBase();
    return vtkSmartPointer<PointPlot>::Take(plot);
  }

protected:
  PointPlot() = default;
  ~PointPlot() override = default;
};

/// The colour that a chart gives to the next plot of its own making, from the series that it starts with.
void takeNextColor(vtkChart* chart, vtkPlot* plot)
{
  vtkNew<vtkColorSeries> colors;
  vtkColor3ub color = colors->GetColorRepeating(static_cast<int>(chart->GetNumberOfPlots()));
  plot->GetPen()->SetColor(color.GetData());
}

} // namespace

vtkPlot* plot0(vtkChart* chart)
{
  return chart && chart->GetNumberOfPlots() > 0 ? chart->GetPlot(0) : nullptr;
}

vtkPlot* addPointPlot(vtkChart* chart)
{
  auto plot = PointPlot::create();
  takeNextColor(chart, plot);
  addPlot(chart, plot);
  return plot;
}

vtkPlot* addLinePlot(vtkChart* chart)
{
  auto plot = LinePlot::create();
  takeNextColor(chart, plot);
  addPlot(chart, plot);
  return plot;
}

void addPlot(vtkChart* chart, vtkPlot* plot)
{
  plot->SetInteractive(false);
  chart->AddPlot(plot);
}

void addAuxiliaryPlot(vtkChart* chart, vtkPlot* plot)
{
  plot->SetSelectable(false);
  addPlot(chart, plot);
}

bool setPlotInput(vtkPlot* plot, vtkTable* table, long long x, long long y)
{
  if (!hasColumn(table, x) || !hasColumn(table, y)) return false;
  plot->SetInputData(table, static_cast<vtkIdType>(x), static_cast<vtkIdType>(y));
  return true;
}

bool setPlotInput(vtkPlot* plot, vtkTable* table, std::string const& x, std::string const& y)
{
  if (!table || !table->GetColumnByName(x.c_str()) || !table->GetColumnByName(y.c_str())) return false;
  plot->SetInputData(table, x, y);
  return true;
}

} // namespace runsieve
