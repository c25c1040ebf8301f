// The MAPK cascade with negative feedback. B. N. Kholodenko, "Negative feedback and ultrasensitivity can
// bring about oscillations in the mitogen-activated protein kinase cascades", Eur. J. Biochem. 267:1583-1588
// (2000): rate laws of Table 1, constants of Table 2. The doubly phosphorylated MAPK inhibits the first step.
// Each kinase keeps its total.
//
// A transcription factor that the active MAPK phosphorylates is added, with constants of the cascade's own
// size, to have something downstream. It feeds back on nothing: neither its variable nor its four constants
// named TF... occur in an equation of the three kinases, so these constants cannot act on MKKK, MKK or MAPK
// in any form.
#include "app/simulate/ModelTable.h"

#include <cmath>

namespace runsieve::app {

namespace {

enum Parameter
{
  V1,
  Ki,
  N,
  K1,
  V2,
  K2,
  Kc3,
  K3,
  Kc4,
  K4,
  V5,
  K5,
  V6,
  K6,
  Kc7,
  K7,
  Kc8,
  K8,
  V9,
  K9,
  V10,
  K10,
  TfK,
  TfKm,
  TfV,
  TfVm
};
enum Species
{
  MKKK,
  MKKKP,
  MKK,
  MKKP,
  MKKPP,
  MAPK,
  MAPKP,
  MAPKPP,
  TF,
  TFP
};

double saturation(double substrate, double half)
{
  return substrate / (half + substrate);
}

void rates(double const* y, double const* p, double* dy)
{
  double const feedback = 1.0 + std::pow(std::fmax(y[MAPKPP], 0.0) / p[Ki], p[N]);
  double const v1 = p[V1] / feedback * saturation(y[MKKK], p[K1]);
  double const v2 = p[V2] * saturation(y[MKKKP], p[K2]);
  double const v3 = p[Kc3] * y[MKKKP] * saturation(y[MKK], p[K3]);
  double const v4 = p[Kc4] * y[MKKKP] * saturation(y[MKKP], p[K4]);
  double const v5 = p[V5] * saturation(y[MKKPP], p[K5]);
  double const v6 = p[V6] * saturation(y[MKKP], p[K6]);
  double const v7 = p[Kc7] * y[MKKPP] * saturation(y[MAPK], p[K7]);
  double const v8 = p[Kc8] * y[MKKPP] * saturation(y[MAPKP], p[K8]);
  double const v9 = p[V9] * saturation(y[MAPKPP], p[K9]);
  double const v10 = p[V10] * saturation(y[MAPKP], p[K10]);
  double const v11 = p[TfK] * y[MAPKPP] * saturation(y[TF], p[TfKm]);
  double const v12 = p[TfV] * saturation(y[TFP], p[TfVm]);
  dy[MKKK] = v2 - v1;
  dy[MKKKP] = v1 - v2;
  dy[MKK] = v6 - v3;
  dy[MKKP] = v3 + v5 - v4 - v6;
  dy[MKKPP] = v4 - v5;
  dy[MAPK] = v10 - v7;
  dy[MAPKP] = v7 + v9 - v8 - v10;
  dy[MAPKPP] = v8 - v9;
  dy[TF] = v12 - v11;
  dy[TFP] = v11 - v12;
}

} // namespace

Model mapkCascade()
{
  constexpr auto linear = ModelParameter::Scale::Linear;
  constexpr auto logarithmic = ModelParameter::Scale::Logarithmic;
  Model model;
  model.name = "mapk_cascade";
  model.title = "Signalling cascade of three kinases with negative feedback";
  model.citation = "Kholodenko, Eur. J. Biochem. 267:1583-1588 (2000)";
  model.timeUnit = "s";
  model.duration = 4000.0;
  model.species = {{"MKKK", 90.0, false, "nM", "first kinase, inactive"},
                   {"MKKK-P", 10.0, true, "nM", "first kinase, active"},
                   {"MKK", 280.0, false, "nM", "second kinase, inactive"},
                   {"MKK-P", 10.0, false, "nM", "second kinase, phosphorylated once"},
                   {"MKK-PP", 10.0, true, "nM", "second kinase, active"},
                   {"MAPK", 280.0, false, "nM", "third kinase, inactive"},
                   {"MAPK-P", 10.0, true, "nM", "third kinase, phosphorylated once"},
                   {"MAPK-PP", 10.0, true, "nM", "third kinase, active"},
                   {"TF", 100.0, false, "nM", "transcription factor, inactive"},
                   {"TF-P", 0.0, true, "nM", "transcription factor, active"}};
  model.parameters = {
      {"V1", 2.5, 1.25, 5.0, logarithmic, "nM/s", "activation of MKKK by the signal"},
      {"Ki", 9.0, 4.5, 18.0, logarithmic, "nM", "MAPK-PP at which the feedback halves the activation"},
      {"n", 1.0, 1.0, 2.0, linear, "1", "cooperativity of the feedback"},
      {"K1", 10.0, 5.0, 20.0, logarithmic, "nM", "Michaelis constant of the activation of MKKK"},
      {"V2", 0.25, 0.125, 0.5, logarithmic, "nM/s", "inactivation of MKKK-P"},
      {"K2", 8.0, 4.0, 16.0, logarithmic, "nM", "Michaelis constant of the inactivation of MKKK-P"},
      {"k3", 0.025, 0.0125, 0.05, logarithmic, "1/s", "first phosphorylation of MKK"},
      {"K3", 15.0, 7.5, 30.0, logarithmic, "nM", "its Michaelis constant"},
      {"k4", 0.025, 0.0125, 0.05, logarithmic, "1/s", "second phosphorylation of MKK"},
      {"K4", 15.0, 7.5, 30.0, logarithmic, "nM", "its Michaelis constant"},
      {"V5", 0.75, 0.375, 1.5, logarithmic, "nM/s", "dephosphorylation of MKK-PP"},
      {"K5", 15.0, 7.5, 30.0, logarithmic, "nM", "its Michaelis constant"},
      {"V6", 0.75, 0.375, 1.5, logarithmic, "nM/s", "dephosphorylation of MKK-P"},
      {"K6", 15.0, 7.5, 30.0, logarithmic, "nM", "its Michaelis constant"},
      {"k7", 0.025, 0.0125, 0.05, logarithmic, "1/s", "first phosphorylation of MAPK"},
      {"K7", 15.0, 7.5, 30.0, logarithmic, "nM", "its Michaelis constant"},
      {"k8", 0.025, 0.0125, 0.05, logarithmic, "1/s", "second phosphorylation of MAPK"},
      {"K8", 15.0, 7.5, 30.0, logarithmic, "nM", "its Michaelis constant"},
      {"V9", 0.5, 0.25, 1.0, logarithmic, "nM/s", "dephosphorylation of MAPK-PP"},
      {"K9", 15.0, 7.5, 30.0, logarithmic, "nM", "its Michaelis constant"},
      {"V10", 0.5, 0.25, 1.0, logarithmic, "nM/s", "dephosphorylation of MAPK-P"},
      {"K10", 15.0, 7.5, 30.0, logarithmic, "nM", "its Michaelis constant"},
      {"TF_k", 0.025, 0.0125, 0.05, logarithmic, "1/s", "phosphorylation of the transcription factor"},
      {"TF_Kk", 15.0, 7.5, 30.0, logarithmic, "nM", "its Michaelis constant"},
      {"TF_V", 0.5, 0.25, 1.0, logarithmic, "nM/s", "dephosphorylation of the transcription factor"},
      {"TF_KV", 15.0, 7.5, 30.0, logarithmic, "nM", "its Michaelis constant"}};
  model.rates = rates;
  // A transient answer: much active MAPK early, little later.
  model.exampleGates = {"Molecule: MAPK-PP @ 400 in 200..300", "Molecule: MAPK-PP @ 1200 in 0..60"};
  return model;
}

} // namespace runsieve::app
