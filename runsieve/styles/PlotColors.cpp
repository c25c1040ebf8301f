#include <runsieve/styles/PlotColors.h>

#include <runsieve/records/PlotMetaData.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkDoubleArray.h>
#include <vtkLookupTable.h>
#include <vtkNew.h>
#include <vtkPlotPoints.h>
#include <vtkTable.h>

namespace runsieve {

void colorPlot(vtkPlot* plot, vtkTable* table, PlotMetaData const& settings)
{
  auto* points = vtkPlotPoints::SafeDownCast(plot);
  if (!points) return;
  points->SetScalarVisibility(0);
  if (settings.useSolidColor) {
    auto channel = [](int value) { return static_cast<unsigned char>(value); };
    points->SetColor(channel(settings.red), channel(settings.green), channel(settings.blue),
                     channel(settings.alpha));
    return;
  }
  vtkDoubleArray* column =
      hasColumn(table, settings.colorColumn) ? doubleColumn(table, settings.colorColumn) : nullptr;
  if (!column) return;
  double range[2];
  column->GetRange(range, 0);
  vtkNew<vtkLookupTable> colors;
  colors->SetAlpha(1.0);
  colors->SetHueRange(0.2, 0.8);
  colors->SetSaturationRange(0.95, 1.0);
  colors->SetValueRange(0.9, 0.9);
  colors->SetRamp(0);
  if (range[0] <= range[1]) colors->SetRange(range); // reversed if there is no number in the column
  colors->Build();
  points->SetScalarVisibility(1);
  points->SetLookupTable(colors);
  points->SelectColorArray(static_cast<vtkIdType>(settings.colorColumn));
}

} // namespace runsieve
