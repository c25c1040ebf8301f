// Sensitivity of the outputs of a signalling model to its rate constants.
#include "ExampleData.h"
#include "Pages.h"

#include <runsieve/plot/PlotContainer.h>
#include <runsieve/records/SobolPostProcessResult.h>

#include <cmath>

namespace gallery {

namespace {

/// Indices of a cascade: early its first steps matter, later uptake and dephosphorylation. Interactions add
/// to the total order.
struct Sensitivities
{
  std::vector<double> times = timesUntil(1800.0, 61);
  SobolPostProcessResult::Indices first;
  SobolPostProcessResult::Indices total;
  SobolPostProcessResult result;

  Sensitivities()
  {
    result.parameterNames = {"kon", "kint", "kcat", "kdp", "EGFR_0"};
    result.parameters = {20.0, 6.0, 100.0, 10.0, 90.0};
    // The last entry never gets a bar; an analysis appends the objective there.
    result.species = {{Kestrane::Molecule, "EGFR-P"},
                      {Kestrane::Molecule, "MEK-PP"},
                      {Kestrane::Molecule, "ERK-PP"},
                      {Kestrane::Pattern, "pY1068"},
                      {Kestrane::Unnamed, "Objective"}};
    result.times = &times;
    for (std::size_t s = 0; s < result.species.size(); ++s) addOutput(0.25 * static_cast<double>(s));
    result.sensitivities = &first;
    result.totalSensitivities = &total;
  }

private:
  /// \param depth how far down the cascade the output is, 0 to 1
  void addOutput(double depth)
  {
    first.emplace_back();
    total.emplace_back();
    for (double time : times) {
      const double late = 1.0 - std::exp(-time / (400.0 + 600.0 * depth));
      const std::vector<double> weights = {1.3 * (1.0 - late) + 0.05, (1.0 - 0.6 * depth) * late, 0.7 * depth,
                                           0.9 * depth * late, 0.35};
      double sum = 0.0;
      for (double weight : weights) sum += weight;
      const double interactions = 0.12 + 0.18 * late;
      first.back().emplace_back();
      total.back().emplace_back();
      for (double weight : weights) {
        first.back().back().push_back((1.0 - interactions) * weight / sum);
        total.back().back().push_back((1.0 + interactions) * weight / sum);
      }
    }
  }
};

void fillBars(PlotContainer& plot)
{
  Sensitivities sensitivities;
  plot.metaData->blockSignals(true); // neither bars nor areas are drawn by a redraw
  plot.setPlotStyle(barPlot);
  constexpr std::size_t afterTenMinutes = 20;
  plot.setSobolPostprocessResult(&sensitivities.result, true, false, afterTenMinutes, 0);
}

void fillStacked(PlotContainer& plot)
{
  Sensitivities sensitivities;
  plot.metaData->blockSignals(true);
  plot.setPlotStyle(stackedPlot);
  constexpr std::size_t activeKinase = 2;
  plot.setSobolPostprocessResult(&sensitivities.result, false, true, 0, activeKinase);
}

} // namespace

Page sobolBarsPage()
{
  return {"sobol_bars", "Sobol indices of first order at one time", fillBars};
}

Page sobolStackedPage()
{
  return {"sobol_stacked", "Sobol indices of total order over time", fillStacked};
}

} // namespace gallery
