#include <runsieve/plot/PlotContainerPrivate.h>

#include <runsieve/adapters/DensityTable.h>
#include <runsieve/adapters/LinePlotTables.h>
#include <runsieve/adapters/ResidualTable.h>
#include <runsieve/adapters/SimpleTables.h>
#include <runsieve/adapters/SobolTable.h>
#include <runsieve/charts/ChartText.h>
#include <runsieve/records/Distribution.h>
#include <runsieve/records/FitRun.h>
#include <runsieve/records/FitSettings.h>
#include <runsieve/records/LinePlotData.h>
#include <runsieve/records/LinePlotTable.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/records/SobolPostProcessResult.h>
#include <runsieve/styles/DistributionChart.h>
#include <runsieve/styles/ItemLines.h>
#include <runsieve/styles/ResidualChart.h>
#include <runsieve/styles/SobolChart.h>
#include <runsieve/tables/ColumnNames.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAxis.h>
#include <vtkChartXY.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

using namespace runsieve;
using Kestrane::TypedConcentrationName;

namespace {

constexpr int pointMarker = 3;
constexpr double residualPointSize = 3.0;

std::string bareName(std::vector<TypedConcentrationName> const& names, int column)
{
  const auto i = static_cast<std::size_t>(column);
  return column >= 0 && i < names.size() ? names[i].second : std::string();
}

} // namespace

// ---- stacked runs

void PlotContainer::Private::rebuildFromLinePlotTable()
{
  const StackedTable stacked = stackedTable(plot.linePlotTable);
  replaceTable(stacked.table);
  plot.typedColumnNames = stacked.names;
  plot.parameterBounds.insert(plot.parameterBounds.end(), stacked.bounds.begin(), stacked.bounds.end());
  plot.findParameterColumns();
}

void PlotContainer::updateFromLinePlotTable(bool withQuartiles)
{
  if (!linePlotTable) return;
  d->rebuildFromLinePlotTable();
  if (metaData->getPlotStyle() == selectionCdfPlot) generateRankedParameters(plotData, 0);
  // With the stride that stood before: callers count on the stride coming last.
  if (withQuartiles) generateQuartiles();
  metaData->setStride(static_cast<int>(linePlotTable->trajectoryLength));
  dirty();
}

void PlotContainer::setLinePlotTable(boost::shared_ptr<LinePlotTable> table, bool withQuartiles)
{
  if (!table) return;
  metaData->blockSignals(true);
  linePlotTable = std::move(table);
  d->rebuildFromLinePlotTable();
  metaData->setStride(static_cast<int>(linePlotTable->trajectoryLength));
  if (metaData->getPlotStyle() == selectionCdfPlot) generateRankedParameters(plotData, 0);
  dirty();

  const std::vector<int>& parameters = metaData->parameterColumns;
  int x = timeColumnOf(typedColumnNames);
  if (x < 0) x = parameters.empty() ? static_cast<int>(typedColumnNames.size()) - 1 : parameters[0] - 2;
  setEntry0(metaData->xColumns, x);
  setEntry0(metaData->yColumns, 0);
  setEntry0(metaData->zColumns, 1);
  metaData->colorColumn = parameters.empty() ? x : parameters[0];
  metaData->xLabel = bareName(typedColumnNames, x);
  metaData->yLabel = bareName(typedColumnNames, 0);
  if (withQuartiles) generateQuartiles();
  redraw();
  metaData->blockSignals(false);
}

void PlotContainer::setLinePlotTableAsAdditionalData(LinePlotTable* record)
{
  if (!record) return;
  typedColumnNames.clear();
  tables.push_back(borrowedTable(*record));
}

// ---- time courses

void PlotContainer::setLinePlotData(LinePlotData* data)
{
  if (!data) return;
  metaData->blockSignals(true);
  vtkChart* chart = d->stage().toFill(ChartPart::plain);
  metaData->plotTitle.clear();
  chart->SetTitle("");
  d->replaceTable(copiedTable(*data));
  setEntry0(metaData->xColumns, 0);
  setXLabel(data->timeLabel);
  setYLabel(data->valueLabel);
  for (auto const& series : data->series) typedColumnNames.push_back(series.first);
  metaData->blockSignals(false);
}

void PlotContainer::setLinePlotDataAsAdditionalData(LinePlotData* data)
{
  if (data) tables.push_back(copiedTable(*data));
}

void PlotContainer::setLinePlotItems(std::vector<TypedConcentrationName>* items)
{
  if (!items) return;
  std::vector<std::string> columns;
  for (TypedConcentrationName const& item : *items) columns.push_back(typedColumnName(item));
  showItemLines(d->stage().toFill(ChartPart::plain), plotData, entry0(metaData->xColumns), columns);
}

// ---- Sobol indices

void PlotContainer::setSobolPostprocessResult(SobolPostProcessResult* result, bool atSingleTime, bool total,
                                              std::size_t timeIndex, std::size_t speciesIndex)
{
  if (!result) return;
  const SobolTable slice = sobolTable(*result, {atSingleTime, total, timeIndex, speciesIndex});
  if (!slice.table) return;
  metaData->blockSignals(true);
  metaData->plotTitle = slice.title;
  d->replaceTable(slice.table);
  setupStackedSobol(total);
}

void PlotContainer::setupStackedSobol(bool total)
{
  metaData->blockSignals(true);
  vtkChart* chart = d->stage().forSensitivities();
  const plotStyles style = metaData->getPlotStyle();
  if (style == barPlot) addSobolBars(chart, plotData, total);
  if (style == stackedPlot) addSobolAreas(chart, plotData, total);
  if (auto* xy = vtkChartXY::SafeDownCast(chart)) xy->ForceAxesToBoundsOn();
  chart->SetTitle(chartText(metaData->plotTitle));
  d->lifetime.dropPlotsOfUnheld();
  metaData->blockSignals(false);
}

// ---- fits

void PlotContainer::setResidualPlot(FitRun* run, FitSettings* settings,
                                    std::vector<std::vector<double>>& predictions, bool scaled,
                                    bool showCurves)
{
  if (!run || !settings) return;
  metaData->blockSignals(true);
  d->replaceTable(residualTable(*run, *settings, predictions, {scaled, showCurves}));
  showResiduals(d->stage().toFill(ChartPart::plain), plotData, predictions.size(), isOverTime(*settings),
                showCurves);
  setMarkerStyle(pointMarker);
  setPointSize(residualPointSize);
  setPlotTitle(scaled ? "Scaled Residuals" : "Residuals");
  metaData->blockSignals(false);
}

// ---- distributions

void PlotContainer::setDistribution(Distribution* distribution)
{
  if (!distribution) return;
  metaData->blockSignals(true);
  const DensityTable density = densityTable(*distribution);
  d->replaceTable(density.table);
  vtkChart* chart = d->stage().toFill(ChartPart::distribution);
  showDensity(chart, density.drawn, density.height, density.upper - density.lower);
  chart->SetTitle(chartText(metaData->plotTitle));
  metaData->blockSignals(false);
}

// ---- plain vectors

void PlotContainer::setSimpleXYPlot(std::vector<double>& x, std::vector<double>& y,
                                    std::vector<double>& errors)
{
  metaData->blockSignals(true);
  d->replaceTable(vtkSmartPointer<vtkTable>::New());
  if (x.size() != y.size()) {
    if (chartXY) chartXY->SetTitle("SimpleXYPlot: x and y sizes differ.");
    return; // the settings stay blocked until the next redraw
  }
  const bool withErrors = errors.size() == x.size();
  d->replaceTable(pointTable(x, y, errors));
  metaData->setPlotStyle(withErrors ? scatterPlotWithErrorBars : scatterPlot);
  setEntry0(metaData->zColumns, withErrors ? 2 : 0);
  setEntry0(metaData->xColumns, 0);
  setEntry0(metaData->yColumns, 1);
  setLineWidth(1.0);
  setPointSize(2.0);
  setMarkerStyle(pointMarker);
  redraw();
  metaData->blockSignals(false);
}

int PlotContainer::addColumn(std::vector<double> const& values, std::string const& name)
{
  if (static_cast<vtkIdType>(values.size()) != plotData->GetNumberOfRows()) return -1;
  vtkNew<vtkDoubleArray> column;
  column->SetName(name.c_str());
  for (double value : values) column->InsertNextValue(value);
  plotData->AddColumn(column);
  return static_cast<int>(plotData->GetNumberOfColumns()) - 1;
}

void PlotContainer::example()
{
  d->replaceTable(exampleTable());
  setPlotCols(0, 1, 0, false);
  setPlotTitle("Example Plot");
}
