#include <runsieve/adapters/ResidualTable.h>

#include <runsieve/records/FitRun.h>
#include <runsieve/records/FitSettings.h>
#include <runsieve/records/standardize.h>

#include <vtkDataSetAttributes.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

#include <functional>
#include <limits>
#include <string>

namespace runsieve {

namespace {

using Series = std::vector<std::vector<double>>;

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

} // namespace

bool isOverTime(FitSettings& settings)
{
  return settings.getFitType() == FitSettings::timeCourse;
}

vtkSmartPointer<vtkTable> residualTable(FitRun const& run, FitSettings& settings, Series& predictions,
                                        ResidualView view)
{
  const double factor = scaleFactor(run, settings);
  prepare(predictions, settings);

  auto table = vtkSmartPointer<vtkTable>::New();
  if (isOverTime(settings))
    addColumnOf(table, "Time", run.times.size(), [&run](std::size_t k) { return run.times[k]; });
  for (std::size_t i = 0; i < settings.observations.size(); ++i) {
    const std::string bareName = i < settings.seriesNames.size() ? settings.seriesNames[i].second : "";
    const std::string name = " " + bareName + " " + std::to_string(i);
    const std::size_t rows = settings.observations[i].size();
    auto predicted = [&, i](std::size_t k) { return valueAt(predictions, i, k); };
    auto observed = [&, i](std::size_t k) { return settings.observations[i][k] * factor; };
    if (view.showCurves) {
      addColumnOf(table, "Prediction" + name, rows, predicted);
      addColumnOf(table, "Observation" + name, rows, observed);
    } else {
      addColumnOf(table, "Residual" + name, rows, [&, i](std::size_t k) {
        const double residual = observed(k) - predicted(k);
        return view.scaled ? residual / valueAt(settings.observationErrors, i, k) : residual;
      });
    }
  }
  return table;
}

} // namespace runsieve
