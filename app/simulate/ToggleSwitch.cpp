// The genetic toggle switch. T. S. Gardner, C. R. Cantor and J. J. Collins, "Construction of a genetic toggle
// switch in Escherichia coli", Nature 403:339-342 (2000): the two rate equations with the inducer term, and
// the constants of the legend of Figure 5. Repressor 1 is LacI, which IPTG inactivates; repressor 2 represses
// lacI and shares its transcript with a green fluorescent protein. Concentrations and time are those of the
// paper, without dimension: time in lifetimes of a repressor. A fluorescent protein of its own is added: its
// two constants, gfp_strength and gfp_loss, occur in no equation of the two repressors and cannot act on
// them.
//
// The run starts in the state "LacI high"; a dose of IPTG above a threshold flips the switch.
#include "app/simulate/ModelTable.h"

#include <cmath>

namespace runsieve::app {

namespace {

enum Parameter
{
  Alpha1,
  Alpha2,
  Beta,
  Gamma,
  Eta,
  K,
  Iptg,
  GfpStrength,
  GfpLoss
};
enum Species
{
  Repressor1,
  Repressor2,
  Gfp
};

void rates(double const* y, double const* p, double* dy)
{
  double const free = std::fmax(y[Repressor1], 0.0) / std::pow(1.0 + p[Iptg] / p[K], p[Eta]);
  double const second = 1.0 / (1.0 + std::pow(free, p[Gamma]));
  dy[Repressor1] = p[Alpha1] / (1.0 + std::pow(std::fmax(y[Repressor2], 0.0), p[Beta])) - y[Repressor1];
  dy[Repressor2] = p[Alpha2] * second - y[Repressor2];
  dy[Gfp] = p[GfpStrength] * second - p[GfpLoss] * y[Gfp];
}

} // namespace

Model toggleSwitch()
{
  constexpr auto linear = ModelParameter::Scale::Linear;
  constexpr auto logarithmic = ModelParameter::Scale::Logarithmic;
  Model model;
  model.name = "toggle_switch";
  model.title = "Switch of two genes that repress each other";
  model.citation = "Gardner, Cantor and Collins, Nature 403:339-342 (2000)";
  model.timeUnit = "lifetimes";
  model.duration = 20.0;
  model.species = {{"Repressor 1", 150.0, true, "1", "LacI, represses repressor 2"},
                   {"Repressor 2", 0.1, true, "1", "represses repressor 1"},
                   {"GFP", 0.0, true, "1", "reporter, transcribed with repressor 2"}};
  model.parameters = {
      {"alpha1", 156.25, 50.0, 500.0, logarithmic, "1", "synthesis of repressor 1"},
      {"alpha2", 15.6, 5.0, 50.0, logarithmic, "1", "synthesis of repressor 2"},
      {"beta", 2.5, 2.0, 3.0, linear, "1", "cooperativity of repression by repressor 2"},
      {"gamma", 1.0, 0.8, 1.2, linear, "1", "cooperativity of repression by repressor 1"},
      {"eta", 2.0015, 1.5, 2.5, linear, "1", "cooperativity of the binding of IPTG"},
      {"K", 2.9618e-5, 1e-5, 1e-4, logarithmic, "M", "dissociation constant of IPTG"},
      {"IPTG", 4e-5, 1e-6, 1e-3, logarithmic, "M", "dose of the inducer"},
      {"gfp_strength", 15.6, 5.0, 50.0, logarithmic, "1", "synthesis of the reporter"},
      {"gfp_loss", 1.0, 0.5, 2.0, logarithmic, "1", "loss of the reporter, in lifetimes of a repressor"}};
  model.rates = rates;
  // Late switching: not yet after four lifetimes, but in the end.
  model.exampleGates = {"Molecule: Repressor 2 @ 4 in 0..2", "Molecule: Repressor 2 @ 20 in 5..100"};
  return model;
}

} // namespace runsieve::app
