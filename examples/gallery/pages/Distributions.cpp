// One distribution of each kind, with the numbers of a prior for a model of signalling.
#include "Pages.h"

#include <runsieve/plot/PlotContainer.h>
#include <runsieve/records/Distribution.h>

namespace gallery {

namespace {

void show(PlotContainer& plot, const char* title, std::unique_ptr<Distribution> distribution)
{
  plot.setPlotTitle(title);
  plot.setDistribution(distribution.get());
}

void fillUniform(PlotContainer& plot)
{
  show(plot, "Hill coefficient: uniform from 1 to 4", runsieve::uniformDistribution(1.0, 4.0));
}

void fillNormal(PlotContainer& plot)
{
  show(plot, "pH of the endosome: normal", runsieve::normalDistribution(6.2, 0.3));
}

void fillLogUniform(PlotContainer& plot)
{
  show(plot, "Dissociation constant [nM]: log-uniform from 1 to 100",
       runsieve::logUniformDistribution(1.0, 100.0));
}

void fillLogNormal(PlotContainer& plot)
{
  show(plot, "EGFR per cell [thousands]: log-normal", runsieve::logNormalDistribution(4.5, 0.5));
}

void fillGamma(PlotContainer& plot)
{
  show(plot, "Proteins per burst: gamma", runsieve::gammaDistribution(3.0, 12.0));
}

void fillExponential(PlotContainer& plot)
{
  show(plot, "Lifetime of a complex [s]: exponential", runsieve::exponentialDistribution(0.05));
}

void fillWeibull(PlotContainer& plot)
{
  show(plot, "Time to division [h]: Weibull", runsieve::weibullDistribution(3.5, 22.0));
}

void fillBeta(PlotContainer& plot)
{
  show(plot, "Phosphorylated share of ERK: beta", runsieve::betaDistribution(2.0, 5.0));
}

void fillTriangular(PlotContainer& plot)
{
  show(plot, "Half-life of EGFR [h]: triangular", runsieve::triangularDistribution(6.0, 10.0, 24.0));
}

void fillPoint(PlotContainer& plot)
{
  show(plot, "Dose of EGF [nM]: point value", runsieve::pointDistribution(8.0));
}

} // namespace

std::vector<Page> distributionPages()
{
  constexpr Space space = {24, 36, 24, 36};
  return {{"distribution_uniform", "Distribution: uniform", fillUniform, space},
          {"distribution_normal", "Distribution: normal", fillNormal, space},
          {"distribution_log_uniform", "Distribution: log-uniform", fillLogUniform, space},
          {"distribution_log_normal", "Distribution: log-normal", fillLogNormal, space},
          {"distribution_gamma", "Distribution: gamma", fillGamma, space},
          {"distribution_exponential", "Distribution: exponential", fillExponential, space},
          {"distribution_weibull", "Distribution: Weibull", fillWeibull, space},
          {"distribution_beta", "Distribution: beta", fillBeta, space},
          {"distribution_triangular", "Distribution: triangular", fillTriangular, space},
          {"distribution_point", "Distribution: point value", fillPoint, space}};
}

} // namespace gallery
