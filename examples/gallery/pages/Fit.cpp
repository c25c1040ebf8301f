// A fitted curve over measured points, and the way of the fit through its parameters.
#include "ExampleData.h"
#include "Pages.h"

#include <runsieve/plot/PlotContainer.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkPlot.h>

#include <array>
#include <cmath>

namespace gallery {

namespace {

void setRange(vtkAxis* axis, double lower, double upper)
{
  axis->SetBehavior(vtkAxis::FIXED);
  axis->SetRange(lower, upper);
}

void fillErrorBars(PlotContainer& plot)
{
  const Stimulation cell;
  RandomNumbers random(1996);
  std::vector<double> times = timesUntil(1800.0, 16);
  std::vector<double> means;
  std::vector<double> errors;
  for (double t : times) {
    errors.push_back(3.0 + 0.07 * cell.activeKinase(t));
    means.push_back(random.normal(cell.activeKinase(t), 0.7 * errors.back()));
  }
  const std::vector<double> fine = timesUntil(1800.0, 181);
  std::vector<double> fitted;
  for (double t : fine) fitted.push_back(cell.activeKinase(t));

  // The curve is the second series, from a table of its own.
  plot.tables = {tableOf({{"Time [s]", &fine}, {"ERK-PP", &fitted}})};
  plot.metaData->xColumns = {0, 0};
  plot.metaData->yColumns = {1, 1};
  plot.metaData->plotTitle = "Active ERK: means of three blots, standard errors, fitted curve";
  plot.metaData->xLabel = "Time [s]";
  plot.metaData->yLabel = "ERK-PP [nM]";
  plot.metaData->blue = 160;
  plot.metaData->green = 90;
  plot.setSimpleXYPlot(times, means, errors);
  plot.setLineWidth(1.5);
  plot.chartXY->GetPlot(1)->SetColor(213, 94, 0, 255);
  // Axes follow points, not bars, which may reach further.
  setRange(plot.chartXY->GetAxis(vtkAxis::LEFT), 0.0, 110.0);
  setRange(plot.chartXY->GetAxis(vtkAxis::BOTTOM), -60.0, 1860.0);
}

struct FittedParameter
{
  const char* name;
  double start;
  double best;
};

constexpr std::array<FittedParameter, 4> parameters = {
    {{"kon", 60.0, 20.0}, {"kint", 2.0, 6.0}, {"kcat", 250.0, 100.0}, {"kdp", 4.0, 10.0}}};

/// A population that narrows on the best values while its score falls. Columns: score, iteration, parameters.
vtkSmartPointer<vtkTable> courseOfTheFit()
{
  constexpr int iterations = 30;
  constexpr int population = 12;
  RandomNumbers random(1973);
  std::vector<double> scores;
  std::vector<double> numbers;
  std::array<std::vector<double>, parameters.size()> values;
  for (int iteration = 0; iteration < iterations; ++iteration)
    for (int member = 0; member < population; ++member) {
      const double away = std::exp(-iteration / 9.0);
      double score = 1.5;
      for (std::size_t p = 0; p < parameters.size(); ++p) {
        const double distance =
            away * std::log(parameters[p].start / parameters[p].best) + random.normal(0.0, 0.05 + 0.4 * away);
        values[p].push_back(parameters[p].best * std::exp(distance));
        score += 60.0 * distance * distance;
      }
      scores.push_back(score);
      numbers.push_back(iteration);
    }
  return tableOf({{"Score", &scores},
                  {"Iteration", &numbers},
                  {"Parameter: kon", &values[0]},
                  {"Parameter: kint", &values[1]},
                  {"Parameter: kcat", &values[2]},
                  {"Parameter: kdp", &values[3]}});
}

void fillFitCourse(PlotContainer& plot)
{
  plot.typedColumnNames = {{Kestrane::Unnamed, "Score"}, {Kestrane::Unnamed, "Iteration"}};
  for (FittedParameter const& parameter : parameters)
    plot.typedColumnNames.emplace_back(Kestrane::Parameter, parameter.name);
  plot.setPlotData(courseOfTheFit());
  plot.setPlotStyle(fitParameterDistributionPlot);
}

} // namespace

Page errorBarsPage()
{
  return {"error_bars", "Points with error bars and a fitted curve", fillErrorBars};
}

Page fitCoursePage()
{
  return {"fit_course", "Parameters in the course of a fit", fillFitCourse, {72, 48, 24, 20, 52}};
}

} // namespace gallery
