#include <runsieve/plot/PlotContainer.h>

#include <runsieve/adapters/ColumnNames.h>
#include <runsieve/plot/ChartLifetime.h>
#include <runsieve/plot/TableAccess.h>

#include <vtkAxis.h>
#include <vtkChartLegend.h>
#include <vtkChartXY.h>
#include <vtkColorSeries.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPlotBar.h>
#include <vtkPlotStacked.h>
#include <vtkTextProperty.h>

#include <algorithm>
#include <limits>
#include <locale>
#include <sstream>

using namespace runsieve;

namespace {

/// One cell of the table; NaN where the block has a gap.
float shownIndex(SobolPostProcessResult::Indices const& block, std::size_t species, std::size_t time,
                 std::size_t parameter)
{
  if (species >= block.size() || time >= block[species].size() || parameter >= block[species][time].size())
    return std::numeric_limits<float>::quiet_NaN();
  const double index = block[species][time][parameter];
  return static_cast<float>(index < 0.0 ? 0.0 : index); // keeps NaN
}

/// The outputs that get a bar. The last entry never does.
std::vector<std::size_t> outputsWithBars(SobolPostProcessResult const& result)
{
  std::vector<std::size_t> shown;
  for (std::size_t s = 0; s + 1 < result.species.size(); ++s) {
    const Kestrane::DataType type = result.species[s].first;
    if (type == Kestrane::Molecule || type == Kestrane::ComplexWithMolecule || type == Kestrane::Pattern)
      shown.push_back(s);
  }
  return shown;
}

/// Adds one column per parameter, with a row for each of `rows` indices.
template <class Index>
void addParameterColumns(vtkTable* table, SobolPostProcessResult const& result, std::size_t rows,
                         Index&& index)
{
  const std::size_t parameters = std::min(result.parameters.size(), result.parameterNames.size());
  for (std::size_t p = 0; p < parameters; ++p) {
    vtkNew<vtkFloatArray> column;
    column->SetName(result.parameterNames[p].c_str());
    for (std::size_t row = 0; row < rows; ++row) column->InsertNextValue(index(row, p));
    table->AddColumn(column);
  }
}

void addLabels(vtkTable* table, SobolPostProcessResult const& result, std::vector<std::size_t> const& outputs)
{
  vtkNew<vtkStringArray> names;
  names->SetName("Name");
  for (std::size_t s : outputs) names->InsertNextValue(typedColumnName(result.species[s]));
  table->AddColumn(names);
}

void addTimes(vtkTable* table, std::vector<double> const& times)
{
  vtkNew<vtkFloatArray> column;
  column->SetName("Time");
  for (double time : times) column->InsertNextValue(static_cast<float>(time));
  table->AddColumn(column);
}

std::string timeTitle(double time)
{
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << "Sensitivities at t= " << time << " s";
  return text.str();
}

/// All columns but the last become series 1, 2, and so on. A parameter called "Name" has made way for the labels,
/// which are no series.
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

void addBars(vtkChart* chart, vtkTable* table, bool total)
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
}

void addStackedAreas(vtkChart* chart, vtkTable* table, bool total)
{
  auto* areas = vtkPlotStacked::SafeDownCast(chart->AddPlot(vtkChart::STACKED));
  setIndexAxis(chart->GetAxis(vtkAxis::LEFT), total);
  chart->GetAxis(vtkAxis::BOTTOM)->SetTitle("Time [s]");
  areas->SetInputData(table);
  areas->SetInputArray(0, "Time");
  setSeries(areas, table);
  areas->SetColorSeries(seriesColors());
}

} // namespace

void PlotContainer::setSobolPostprocessResult(SobolPostProcessResult* result, bool atSingleTime, bool total,
                                              std::size_t timeIndex, std::size_t speciesIndex)
{
  SobolPostProcessResult::Indices const* block =
      !result ? nullptr : (total ? result->totalSensitivities : result->sensitivities);
  if (!block || !result->times) return;
  if (atSingleTime ? timeIndex >= result->times->size() : speciesIndex >= result->species.size()) return;
  metaData->blockSignals(true);
  metaData->plotTitle = total ? "Total " : "";
  auto table = vtkSmartPointer<vtkTable>::New();
  if (atSingleTime) {
    const std::vector<std::size_t> outputs = outputsWithBars(*result);
    addParameterColumns(table, *result, outputs.size(), [&](std::size_t row, std::size_t p) {
      return shownIndex(*block, outputs[row], timeIndex, p);
    });
    addLabels(table, *result, outputs);
    metaData->plotTitle += timeTitle((*result->times)[timeIndex]);
  } else {
    addParameterColumns(table, *result, result->times->size(), [&](std::size_t row, std::size_t p) {
      return shownIndex(*block, speciesIndex, row, p);
    });
    addTimes(table, *result->times);
    metaData->plotTitle += "Sensitivity of " + typedColumnName(result->species[speciesIndex]);
  }
  replacePlotData(table);
  setupStackedSobol(total);
}

void PlotContainer::setupStackedSobol(bool total)
{
  metaData->blockSignals(true);
  chartLifetime->keep(chartXY);
  vtkNew<vtkChartXY> chart;
  chartXY = chart;
  shapedChart = chart;
  item = chart;
  const plotStyles style = metaData->getPlotStyle();
  if (style == barPlot) addBars(chart, plotData, total);
  if (style == stackedPlot) addStackedAreas(chart, plotData, total);
  if (style == barPlot || style == stackedPlot) {
    chart->GetLegend()->SetInline(false);
    chart->SetShowLegend(true);
  }
  chart->ForceAxesToBoundsOn();
  chart->SetTitle(chartText(metaData->plotTitle));
  metaData->blockSignals(false);
}
