#include <runsieve/plot/PlotContainer.h>

#include <runsieve/plot/ChartRole.h>
#include <runsieve/plot/TableAccess.h>
#include <runsieve/records/standardize.h>

#include <vtkAxis.h>
#include <vtkChartXY.h>
#include <vtkDataSetAttributes.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPlotPoints.h>

#include <functional>
#include <limits>

using namespace runsieve;

namespace {

using Series = std::vector<std::vector<double>>;

constexpr int residualMarker = 3;
constexpr double residualPointSize = 3.0;

/// Value k of a series; NaN outside of it.
double valueAt(Series const& series, std::size_t i, std::size_t k)
{
  return i < series.size() && k < series[i].size() ? series[i][k] : std::numeric_limits<double>::quiet_NaN();
}

/// Adds a column of any length: series need not have one number of samples, which vtkTable::AddColumn asks
/// for.
void addColumnOf(vtkTable* table, std::string const& name, std::size_t rows,
                 std::function<double(std::size_t)> const& value)
{
  vtkNew<vtkFloatArray> column;
  column->SetName(name.c_str());
  for (std::size_t k = 0; k < rows; ++k) column->InsertNextValue(static_cast<float>(value(k)));
  table->GetRowData()->AddArray(column);
}

double scaleFactor(FitRun const& run, FitSettings const& settings)
{
  if (settings.standardizeSeries) return 1.0;
  if (settings.fitGlobalScale) {
    auto fitted = run.fittedParameters.find("Global Scale");
    if (fitted != run.fittedParameters.end()) return static_cast<double>(fitted->second);
  }
  return settings.globalScale;
}

void normalizeTo(std::vector<double>& series, int index)
{
  if (index < 0 || static_cast<std::size_t>(index) >= series.size()) return;
  const double factor = 1.0 / series[static_cast<std::size_t>(index)];
  for (double& value : series) value *= factor;
}

void prepare(Series& predictions, FitSettings const& settings)
{
  for (std::vector<double>& series : predictions) {
    if (settings.standardizeSeries)
      standardize(series);
    else if (settings.normalizeToPoint)
      normalizeTo(series, settings.normalizationIndex);
  }
}

/// Adds a plot of two columns, which must have one length to be drawn.
void addSeriesPlot(vtkPlot* plot, vtkTable* table, vtkIdType x, vtkIdType y, bool indexAsX)
{
  plot->SetColor(200, 30, 30, 255);
  plot->SetUseIndexForXSeries(indexAsX);
  if (hasColumn(table, x) && hasColumn(table, y) &&
      table->GetColumn(x)->GetNumberOfTuples() == table->GetColumn(y)->GetNumberOfTuples())
    setPlotInput(plot, table, x, y);
}

} // namespace

void PlotContainer::setResidualPlot(FitRun* run, FitSettings* settings, Series& predictions, bool scaled,
                                    bool showCurves)
{
  if (!run || !settings) return;
  metaData->blockSignals(true);
  const bool overTime = settings->getFitType() == FitSettings::timeCourse;
  const double factor = scaleFactor(*run, *settings);
  prepare(predictions, *settings);

  auto table = vtkSmartPointer<vtkTable>::New();
  if (overTime) addColumnOf(table, "Time", run->times.size(), [run](std::size_t k) { return run->times[k]; });
  for (std::size_t i = 0; i < settings->observations.size(); ++i) {
    const std::string bareName = i < settings->seriesNames.size() ? settings->seriesNames[i].second : "";
    const std::string name = " " + bareName + " " + std::to_string(i);
    const std::size_t rows = settings->observations[i].size();
    auto predicted = [&, i](std::size_t k) { return valueAt(predictions, i, k); };
    auto observed = [&, i](std::size_t k) { return settings->observations[i][k] * factor; };
    if (showCurves) {
      addColumnOf(table, "Prediction" + name, rows, predicted);
      addColumnOf(table, "Observation" + name, rows, observed);
    } else {
      addColumnOf(table, "Residual" + name, rows, [&, i](std::size_t k) {
        const double residual = observed(k) - predicted(k);
        return scaled ? residual / valueAt(settings->observationErrors, i, k) : residual;
      });
    }
  }
  replacePlotData(table);

  vtkChart* chart = chartToFill();
  chart->ClearPlots();
  const vtkIdType first = overTime ? 1 : 0;
  for (std::size_t i = 0; i < predictions.size(); ++i) {
    const vtkIdType y = first + static_cast<vtkIdType>(showCurves ? 2 * i : i);
    auto x = [overTime](vtkIdType column) { return overTime ? 0 : column; };
    if (showCurves) addSeriesPlot(addLinePlot(chart), plotData, x(y), y, !overTime);
    const vtkIdType points = showCurves ? y + 1 : y;
    addSeriesPlot(addPointPlot(chart), plotData, x(points), points, !overTime);
  }
  chart->GetAxis(vtkAxis::LEFT)->AutoScale();
  setMarkerStyle(residualMarker);
  setPointSize(residualPointSize);
  if (auto* xy = vtkChartXY::SafeDownCast(chart)) xy->ForceAxesToBoundsOn();
  setPlotTitle(scaled ? "Scaled Residuals" : "Residuals");
  metaData->blockSignals(false);
}
