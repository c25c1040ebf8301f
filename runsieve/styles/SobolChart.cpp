#include <runsieve/styles/SobolChart.h>

#include <runsieve/tables/TableAccess.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartLegend.h>
#include <vtkColorSeries.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkPlotBar.h>
#include <vtkPlotStacked.h>
#include <vtkStringArray.h>
#include <vtkTable.h>
#include <vtkTextProperty.h>

namespace runsieve {

namespace {

/// All columns but the last become series 1, 2, and so on. A parameter called "Name" has made way for the
/// labels, which are no series.
void setSeries(vtkPlot* plot, vtkTable* table)
{
  for (vtkIdType k = 1; k < table->GetNumberOfColumns(); ++k)
    if (isNumeric(table, k - 1)) plot->SetInputArray(static_cast<int>(k), columnName(table, k - 1));
}

vtkSmartPointer<vtkColorSeries> seriesColors()
{
  auto colors = vtkSmartPointer<vtkColorSeries>::New();
  colors->SetColorScheme(vtkColorSeries::WILD_FLOWER);
  return colors;
}

void setIndexAxis(vtkAxis* axis, bool total)
{
  if (total)
    axis->SetMinimum(0.0);
  else
    axis->SetRange(0.0, 1.0);
  axis->SetTitle(total ? "Total Sensitivity" : "Sensitivity");
  axis->SetBehavior(vtkAxis::FIXED);
}

/// Names the bars by the column "Name", if there is one.
void setOutputTicks(vtkAxis* axis, vtkTable* table)
{
  auto* names = vtkStringArray::SafeDownCast(table->GetColumnByName("Name"));
  if (!names) return;
  vtkNew<vtkDoubleArray> positions;
  for (vtkIdType row = 0; row < names->GetNumberOfValues(); ++row)
    positions->InsertNextValue(static_cast<double>(row));
  axis->SetCustomTickPositions(positions, names);
  vtkTextProperty* labels = axis->GetLabelProperties();
  labels->SetOrientation(90.0);
  labels->SetJustification(VTK_TEXT_RIGHT);
  labels->SetVerticalJustification(VTK_TEXT_CENTERED);
  axis->SetTitle("Species");
}

void showLegendBeside(vtkChart* chart)
{
  chart->GetLegend()->SetInline(false);
  chart->SetShowLegend(true);
}

} // namespace

void addSobolBars(vtkChart* chart, vtkTable* table, bool total)
{
  auto* bars = vtkPlotBar::SafeDownCast(chart->AddPlot(vtkChart::BAR));
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  bottom->SetRange(-1.0, static_cast<double>(table->GetNumberOfRows() + 1));
  bottom->SetBehavior(vtkAxis::FIXED);
  setOutputTicks(bottom, table);
  setIndexAxis(chart->GetAxis(vtkAxis::LEFT), total);
  bars->SetUseIndexForXSeries(true);
  bars->SetInputData(table);
  setSeries(bars, table);
  bars->SetColorSeries(seriesColors());
  showLegendBeside(chart);
}

void addSobolAreas(vtkChart* chart, vtkTable* table, bool total)
{
  auto* areas = vtkPlotStacked::SafeDownCast(chart->AddPlot(vtkChart::STACKED));
  setIndexAxis(chart->GetAxis(vtkAxis::LEFT), total);
  chart->GetAxis(vtkAxis::BOTTOM)->SetTitle("Time [s]");
  areas->SetInputData(table);
  areas->SetInputArray(0, "Time");
  setSeries(areas, table);
  areas->SetColorSeries(seriesColors());
  showLegendBeside(chart);
}

} // namespace runsieve
