// One row per run: what the rate constants of a run have to do with each other and with its peak.
#include "ExampleData.h"
#include "Pages.h"

#include <runsieve/plot/PlotContainer.h>

#include <vtkAxis.h>
#include <vtkChartParallelCoordinates.h>
#include <vtkDoubleArray.h>
#include <vtkLookupTable.h>
#include <vtkNew.h>
#include <vtkPen.h>
#include <vtkPlotParallelCoordinates.h>
#include <vtkTextProperty.h>

namespace gallery {

namespace {

// Columns of peakTable()
constexpr int uptake = 1;
constexpr int dephosphorylation = 3;
constexpr int peak = 4;

constexpr int titleSize = 10; ///< points

/// From dark blue to orange, which also readers without red or green cone cells tell apart.
vtkSmartPointer<vtkLookupTable> blueToOrange(double const range[2])
{
  auto colors = vtkSmartPointer<vtkLookupTable>::New();
  constexpr int steps = 16;
  colors->SetNumberOfTableValues(steps);
  for (int i = 0; i < steps; ++i) {
    const double x = i / (steps - 1.0);
    colors->SetTableValue(i, 0.9 * x, 0.2 + 0.35 * x, 0.6 * (1.0 - x), 1.0);
  }
  colors->SetRange(range[0], range[1]);
  return colors;
}

void fillScatter(PlotContainer& plot)
{
  plot.setPlotData(peakTable(400));
  plot.setColorScheme("kcat", false);
  plot.setPointSize(7.0);
  plot.setPlotTitle("Peak of active ERK; colour: kcat, rate constant of its phosphorylation");
  plot.setXLabel("Uptake of EGFR, kint [1/h]");
  plot.setYLabel("Highest ERK-PP [nM]");
  plot.setPlotCols(uptake, peak, 0, false);
}

void fillMultiPlot(PlotContainer& plot)
{
  plot.metaData->blockSignals(true);
  plot.metaData->setPlotStyle(multiPlot);
  plot.metaData->pointSize = 1.5;
  plot.metaData->plotTitle = "Runs and the pairs of their parameters";
  plot.setLinePlotTable(stimulationScan(60), false);
  plot.setYLabel("ERK-PP [nM]");
}

void fillScatterMatrix(PlotContainer& plot)
{
  plot.setPlotData(peakTable(250));
  plot.metaData->pointSize = 3.0;
  plot.setPlotStyle(scatterPlotMatrixStyle);
}

void fillScatter3D(PlotContainer& plot)
{
  plot.setPlotData(peakTable(400));
  plot.metaData->xColumns = {uptake};
  plot.metaData->yColumns = {dephosphorylation};
  plot.metaData->zColumns = {peak};
  plot.setPlotStyle(scatterPlot3D);
}

void fillParallelCoordinates(PlotContainer& plot)
{
  plot.setPlotData(peakTable(60));
  plot.metaData->colorColumn = peak;
  plot.setPlotStyle(parallelCoordinatesPlot);
  // The style chooses the column; whether and in which colours it shows is the host's.
  auto* lines = vtkPlotParallelCoordinates::SafeDownCast(plot.chartParallelCoordinates->GetPlot(0));
  double range[2];
  vtkDoubleArray::SafeDownCast(plot.plotData->GetColumn(peak))->GetRange(range, 0);
  lines->SetLookupTable(blueToOrange(range));
  lines->SetScalarVisibility(1);
  lines->GetPen()->SetOpacityF(1.0);
  // Names slant into a border of fixed height.
  for (int i = 0; i < plot.chartParallelCoordinates->GetNumberOfAxes(); ++i)
    plot.chartParallelCoordinates->GetAxis(i)->GetTitleProperties()->SetFontSize(titleSize);
}

} // namespace

Page scatterPage()
{
  return {"scatter", "Scatter plot, coloured by a parameter", fillScatter};
}

Page multiPlotPage()
{
  return {"multi_plot", "All pairs of parameters beside the runs", fillMultiPlot, {80, 48, 24, 36, 24}};
}

Page scatterMatrixPage()
{
  return {"scatter_matrix", "Scatter plot matrix", fillScatterMatrix, {64, 48, 64, 48, 20}};
}

Page scatter3DPage()
{
  return {"scatter_3d", "Scatter plot in space", fillScatter3D};
}

Page parallelCoordinatesPage()
{
  return {"parallel_coordinates", "Parallel coordinates, coloured by an output", fillParallelCoordinates};
}

} // namespace gallery
