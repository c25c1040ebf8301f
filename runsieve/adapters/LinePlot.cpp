#include <runsieve/plot/PlotContainer.h>

#include <runsieve/adapters/ColumnNames.h>
#include <runsieve/plot/BorrowedColumn.h>
#include <runsieve/plot/ChartRole.h>
#include <runsieve/plot/TableAccess.h>

#include <vtkAxis.h>
#include <vtkChartXY.h>
#include <vtkColorSeries.h>
#include <vtkNew.h>
#include <vtkPlot.h>

#include <algorithm>

using namespace runsieve;
using Kestrane::TypedConcentrationName;

namespace {

vtkSmartPointer<vtkDoubleArray> borrowColumn(LinePlotTable const& record, std::size_t i,
                                             std::shared_ptr<void> owner)
{
  auto column =
      BorrowedColumn::over(record.columnData[i], static_cast<vtkIdType>(record.rows()), std::move(owner));
  column->SetName(typedColumnName(record.columnNames[i]).c_str());
  return column;
}

std::size_t columnCount(LinePlotTable const& record)
{
  return std::min(record.columnData.size(), record.columnNames.size());
}

void addCopy(vtkTable* table, std::string const& name, std::vector<double> const* values)
{
  vtkNew<vtkDoubleArray> column;
  column->SetName(name.c_str());
  if (values)
    for (double value : *values) column->InsertNextValue(value);
  table->AddColumn(column);
}

/// The position of the time column among the typed names, -1 if no auxiliary column offers itself.
int findTimeColumn(std::vector<TypedConcentrationName> const& names)
{
  int found = -1;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].first != Kestrane::Unnamed) continue;
    if (names[i].second == "Time [s]") return static_cast<int>(i);
    if (names[i].second == "Value" || found < 0) found = static_cast<int>(i);
  }
  return found;
}

} // namespace

void PlotContainer::rebuildFromLinePlotTable()
{
  LinePlotTable const& record = *linePlotTable;
  replacePlotData(vtkSmartPointer<vtkTable>::New());
  typedColumnNames.clear();
  std::size_t parameter = 0;
  for (std::size_t i = 0; i < columnCount(record); ++i) {
    const bool bounded =
        record.columnNames[i].first == Kestrane::Parameter && parameter < record.parameterBounds.size();
    if (bounded) {
      const std::pair<double, double> bounds = record.parameterBounds[parameter++];
      if (bounds.first == bounds.second) continue;
      parameterBounds.push_back(bounds);
    }
    plotData->AddColumn(borrowColumn(record, i, ownedBy(linePlotTable)));
    typedColumnNames.push_back(record.columnNames[i]);
  }
  findParameterColumns();
}

void PlotContainer::updateFromLinePlotTable(bool withQuartiles)
{
  if (!linePlotTable) return;
  rebuildFromLinePlotTable();
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
  rebuildFromLinePlotTable();
  metaData->setStride(static_cast<int>(linePlotTable->trajectoryLength));
  if (metaData->getPlotStyle() == selectionCdfPlot) generateRankedParameters(plotData, 0);
  dirty();

  const std::vector<int>& parameters = metaData->parameterColumns;
  int x = findTimeColumn(typedColumnNames);
  if (x < 0) x = parameters.empty() ? static_cast<int>(typedColumnNames.size()) - 1 : parameters[0] - 2;
  setEntry0(metaData->xColumns, x);
  setEntry0(metaData->yColumns, 0);
  setEntry0(metaData->zColumns, 1);
  metaData->colorColumn = parameters.empty() ? x : parameters[0];
  auto bareName = [this](int column) {
    const auto i = static_cast<std::size_t>(column);
    return column >= 0 && i < typedColumnNames.size() ? typedColumnNames[i].second : std::string();
  };
  metaData->xLabel = bareName(x);
  metaData->yLabel = bareName(0);
  if (withQuartiles) generateQuartiles();
  redraw();
  metaData->blockSignals(false);
}

void PlotContainer::setLinePlotTableAsAdditionalData(LinePlotTable* record)
{
  if (!record) return;
  auto table = vtkSmartPointer<vtkTable>::New();
  typedColumnNames.clear();
  for (std::size_t i = 0; i < columnCount(*record); ++i) table->AddColumn(borrowColumn(*record, i, nullptr));
  tables.push_back(table);
}

void PlotContainer::setLinePlotData(LinePlotData* data)
{
  if (!data) return;
  metaData->blockSignals(true);
  vtkChart* chart = chartToFill();
  metaData->plotTitle.clear();
  chart->SetTitle("");
  replacePlotData(vtkSmartPointer<vtkTable>::New());
  addCopy(plotData, data->timeLabel, data->times);
  setEntry0(metaData->xColumns, 0);
  metaData->xLabel = data->timeLabel;
  metaData->yLabel = data->valueLabel;
  chart->GetAxis(vtkAxis::BOTTOM)->SetTitle(chartText(data->timeLabel));
  chart->GetAxis(vtkAxis::LEFT)->SetTitle(chartText(data->valueLabel));
  for (auto const& [name, values] : data->series) {
    addCopy(plotData, typedColumnName(name), values);
    typedColumnNames.push_back(name);
  }
  metaData->blockSignals(false);
}

void PlotContainer::setLinePlotDataAsAdditionalData(LinePlotData* data)
{
  if (!data) return;
  auto table = vtkSmartPointer<vtkTable>::New();
  addCopy(table, data->timeLabel, data->times);
  for (auto const& [name, values] : data->series) addCopy(table, typedColumnName(name), values);
  tables.push_back(table);
}

void PlotContainer::setLinePlotItems(std::vector<TypedConcentrationName>* items)
{
  if (!items) return;
  vtkChart* chart = chartToFill();
  chart->ClearPlots();
  vtkNew<vtkColorSeries> colors;
  colors->SetColorScheme(vtkColorSeries::WILD_FLOWER);
  const int x = metaData->xColumns.empty() ? -1 : metaData->xColumns[0];
  for (std::size_t i = 0; i < items->size(); ++i) {
    vtkPlot* plot = addLinePlot(chart);
    setPlotInput(plot, plotData, columnName(plotData, x), typedColumnName((*items)[i]));
    const vtkColor3ub color = colors->GetColorRepeating(static_cast<int>(i));
    plot->SetColor(color.GetRed(), color.GetGreen(), color.GetBlue(), 255);
  }
  if (auto* xy = vtkChartXY::SafeDownCast(chart)) xy->ForceAxesToBoundsOn();
}
