// What a fit leaves over: of three series over time, and of dose responses, which have no time axis.
#include "ExampleData.h"
#include "Pages.h"

#include <runsieve/plot/PlotContainer.h>
#include <runsieve/records/FitRun.h>
#include <runsieve/records/FitSettings.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkPlotPoints.h>
#include <vtkStringArray.h>

#include <cmath>

namespace gallery {

namespace {

constexpr double largeMarker = 7.0; ///< pixels, about the size of VTK's own

using Series = std::vector<std::vector<double>>;

/// A fit and the data that it was made to.
struct FittedData
{
  explicit FittedData(int type) : settings(type) {}

  FitRun run;
  FitSettings settings;
  Series predictions;

  /// Adds a series: measured values scatter around the prediction, in units of which the global scale makes
  /// nM.
  void add(const char* name, std::vector<double> const& predicted)
  {
    constexpr double scale = 2.5;
    settings.globalScale = scale;
    settings.seriesNames.emplace_back(Kestrane::Molecule, name);
    settings.observations.emplace_back();
    settings.observationErrors.emplace_back();
    for (double value : predicted) {
      const double error = 1.0 + 0.06 * value;
      settings.observationErrors.back().push_back(error);
      settings.observations.back().push_back(random.normal(value, error) / scale);
    }
    predictions.push_back(predicted);
  }

private:
  RandomNumbers random{1867};
};

FittedData timeCourses()
{
  FittedData data(FitSettings::timeCourse);
  const Stimulation cell;
  data.run.times = timesUntil(1800.0, 31);
  std::vector<double> receptor;
  std::vector<double> kinase;
  for (double t : data.run.times) {
    receptor.push_back(cell.receptor(t));
    kinase.push_back(cell.activeKinase(t));
  }
  data.add("EGFR-P", receptor);
  data.add("ERK-PP", kinase);
  return data;
}

FittedData doseResponses()
{
  FittedData data(FitSettings::steadyState);
  std::vector<double> receptor;
  std::vector<double> kinase;
  for (int i = 0; i < 16; ++i) {
    const double dose = std::pow(10.0, -1.0 + 0.2 * i); // nM
    receptor.push_back(90.0 * dose / (dose + 8.0));
    kinase.push_back(220.0 * dose * dose / (dose * dose + 4.0));
  }
  data.add("EGFR-P", receptor);
  data.add("ERK-PP", kinase);
  return data;
}

/// Ticks at multiples of a step. The axis ends at the lowest and highest value, from which it would count.
void setTicks(vtkAxis* axis, double lowest, double highest, double step)
{
  vtkNew<vtkDoubleArray> positions;
  vtkNew<vtkStringArray> labels;
  for (double tick = lowest; tick <= highest; tick += step) {
    positions->InsertNextValue(tick);
    labels->InsertNextValue(std::to_string(std::lround(tick)));
  }
  axis->SetCustomTickPositions(positions, labels);
}

void fill(PlotContainer& plot, FittedData data, bool scaled, bool curves)
{
  plot.setResidualPlot(&data.run, &data.settings, data.predictions, scaled, curves);
  const bool overTime = data.settings.getFitType() == FitSettings::timeCourse;
  plot.setXLabel(overTime ? "Time [s]" : "Sample (by dose of EGF)");
  const char* residual = scaled ? "Residual [standard errors]" : "Residual [nM]";
  plot.setYLabel(curves ? "Concentration [nM]" : residual);
  vtkAxis* left = plot.chartXY->GetAxis(vtkAxis::LEFT);
  if (curves) {
    plot.setPlotTitle("Predictions (lines) and observations (points)");
    plot.setMarkerStyle(vtkPlotPoints::NONE); // of the first line
    setTicks(left, 0.0, 400.0, 20.0);
  } else {
    plot.setPointSize(largeMarker); // the first series has squares, the others circles
    setTicks(left, -40.0, 40.0, scaled ? 1.0 : 2.0);
  }
}

void fillResidualsOverTime(PlotContainer& plot)
{
  fill(plot, timeCourses(), false, false);
}

void fillCurvesOverTime(PlotContainer& plot)
{
  fill(plot, timeCourses(), false, true);
}

void fillScaledResidualsOfSamples(PlotContainer& plot)
{
  fill(plot, doseResponses(), true, false);
}

void fillCurvesOfSamples(PlotContainer& plot)
{
  fill(plot, doseResponses(), false, true);
}

} // namespace

std::vector<Page> residualPages()
{
  return {
      {"residuals_over_time", "Residuals of time courses", fillResidualsOverTime},
      {"curves_over_time", "Predictions and observations over time", fillCurvesOverTime},
      {"scaled_residuals_of_samples", "Scaled residuals without a time axis", fillScaledResidualsOfSamples},
      {"curves_of_samples", "Predictions and observations without a time axis", fillCurvesOfSamples}};
}

} // namespace gallery
