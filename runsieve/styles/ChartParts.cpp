#include <runsieve/styles/ChartParts.h>

#include <runsieve/charts/AxisWindow.h>
#include <runsieve/charts/ChartLooks.h>
#include <runsieve/charts/ChartText.h>
#include <runsieve/charts/CustomTicks.h>
#include <runsieve/charts/Plots.h>
#include <runsieve/items/vtkPlotLineSet.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkPlotPoints.h>

namespace runsieve {

void setTitles(vtkChart* chart, StyleModel const& model)
{
  chart->GetAxis(vtkAxis::BOTTOM)->SetTitle(chartText(model.settings.xLabel));
  chart->GetAxis(vtkAxis::LEFT)->SetTitle(chartText(model.settings.yLabel));
  chart->SetTitle(chartText(model.settings.plotTitle));
}

void setTickTexts(vtkAxis* axis, StyleModel& model)
{
  model.stage.ticks.show(axis, model.tickTexts, nullptr);
}

bool applyRememberedWindow(vtkChart* chart, StyleModel const& model)
{
  PlotMetaData const& settings = model.settings;
  auto found = model.windows.find(
      ReducedMetaData{entry0(settings.xColumns), entry0(settings.yColumns), settings.getPlotStyle()});
  if (found == model.windows.end()) return false;
  applyWindow(chart, found->second, settings.getLogX());
  return true;
}

void setMainInput(vtkPlot* plot, StyleModel const& model)
{
  setPlotInput(plot, model.data, entry0(model.settings.xColumns), entry0(model.settings.yColumns));
}

vtkSmartPointer<vtkPlotPoints> runLines(StyleModel const& model, bool onlySelected)
{
  auto lines = vtkSmartPointer<vtkPlotLineSet>::Take(vtkPlotLineSet::New());
  lines->SetStride(model.settings.getStride());
  lines->SetOnlyShowSelected(onlySelected);
  lines->SetPicture(model.linePicture);
  lines->SetDensityColors(model.densityColors);
  return lines;
}

void setMarkerSize(vtkChart* chart, double size)
{
  if (auto* points = vtkPlotPoints::SafeDownCast(plot0(chart)))
    points->SetMarkerSize(static_cast<float>(size));
}

void setParameterTitle(vtkAxis* axis, vtkTable* table, int column)
{
  axis->SetTitle(chartText(bareParameterName(columnName(table, column))));
}

void setParameterAxes(vtkChart* chart, StyleModel const& model, int x, int y, bool titleX, bool titleY)
{
  const bool log = model.settings.getLogParameterAxes();
  auto setUp = [&](int side, int column, bool titled) {
    vtkAxis* axis = chart->GetAxis(side);
    if (titled) {
      setParameterTitle(axis, model.data, column);
    } else {
      axis->SetTitle("");
      axis->SetLabelsVisible(false);
    }
    axis->SetLogScale(log);
  };
  setUp(vtkAxis::BOTTOM, x, titleX);
  setUp(vtkAxis::LEFT, y, titleY);
  settleLogScale(chart, log);
}

} // namespace runsieve
