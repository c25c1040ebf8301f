// The repressilator: lacI represses tetR, tetR represses cI, cI represses lacI. M. B. Elowitz and S. Leibler,
// "A synthetic oscillatory network of transcriptional regulators", Nature 403:335-338 (2000), Box 1, in its
// physical units: 0.5 transcripts a second from a free promoter and 5e-4 from a repressed one, 20 proteins
// per transcript, Hill coefficient 2, protein half-life 10 min, mRNA half-life 2 min, half repression at 40
// monomers per cell. The promoters have a strength each here, so that a scan can break the symmetry of the
// paper.
//
// The green fluorescent protein stands for the paper's reporter plasmid, whose promoter is repressed by TetR.
// The paper gives no equations for it; here it is transcribed like the others, and matures in a first-order
// step. Nothing depends on it: its mRNA, its two forms and the five constants named gfp... occur in no
// equation of lacI, tetR or cI. So these constants cannot act on the three repressors, whatever their values;
// they do act on GFP itself.
#include "app/simulate/ModelTable.h"

#include <cmath>

namespace runsieve::app {

namespace {

enum Parameter
{
  LacIStrength,
  TetRStrength,
  CIStrength,
  Leakiness,
  HalfRepression,
  Hill,
  MrnaHalfLife,
  ProteinHalfLife,
  Translation,
  GfpStrength,
  GfpMrnaHalfLife,
  GfpHalfLife,
  GfpTranslation,
  GfpMaturation
};
enum Species
{
  LacIMrna,
  TetRMrna,
  CIMrna,
  LacI,
  TetR,
  CI,
  GfpMrna,
  GfpDark,
  Gfp
};

constexpr double ln2 = 0.69314718055994530942;

void rates(double const* y, double const* p, double* dy)
{
  auto transcription = [&](double strength, double repressor) {
    return strength *
           (p[Leakiness] +
            (1.0 - p[Leakiness]) / (1.0 + std::pow(std::fmax(repressor, 0.0) / p[HalfRepression], p[Hill])));
  };
  double const mrnaDecay = ln2 / p[MrnaHalfLife];
  double const proteinDecay = ln2 / p[ProteinHalfLife];
  double const translation = p[Translation] * mrnaDecay; // proteins per minute and transcript
  dy[LacIMrna] = transcription(p[LacIStrength], y[CI]) - mrnaDecay * y[LacIMrna];
  dy[TetRMrna] = transcription(p[TetRStrength], y[LacI]) - mrnaDecay * y[TetRMrna];
  dy[CIMrna] = transcription(p[CIStrength], y[TetR]) - mrnaDecay * y[CIMrna];
  dy[LacI] = translation * y[LacIMrna] - proteinDecay * y[LacI];
  dy[TetR] = translation * y[TetRMrna] - proteinDecay * y[TetR];
  dy[CI] = translation * y[CIMrna] - proteinDecay * y[CI];

  double const gfpMrnaDecay = ln2 / p[GfpMrnaHalfLife];
  double const gfpDecay = ln2 / p[GfpHalfLife];
  double const maturation = ln2 / p[GfpMaturation];
  dy[GfpMrna] = transcription(p[GfpStrength], y[TetR]) - gfpMrnaDecay * y[GfpMrna];
  dy[GfpDark] = p[GfpTranslation] * gfpMrnaDecay * y[GfpMrna] - (gfpDecay + maturation) * y[GfpDark];
  dy[Gfp] = maturation * y[GfpDark] - gfpDecay * y[Gfp];
}

} // namespace

Model repressilator()
{
  constexpr auto linear = ModelParameter::Scale::Linear;
  constexpr auto logarithmic = ModelParameter::Scale::Logarithmic;
  Model model;
  model.name = "repressilator";
  model.title = "Oscillator of three genes with a reporter";
  model.citation = "Elowitz and Leibler, Nature 403:335-338 (2000)";
  model.timeUnit = "min";
  model.duration = 300.0;
  model.species = {{"lacI mRNA", 0.0, false, "transcripts per cell", "messenger of LacI"},
                   {"tetR mRNA", 0.0, false, "transcripts per cell", "messenger of TetR"},
                   {"cI mRNA", 0.0, false, "transcripts per cell", "messenger of cI"},
                   {"LacI", 200.0, true, "monomers per cell", "represses tetR"},
                   {"TetR", 0.0, true, "monomers per cell", "represses cI and gfp"},
                   {"cI", 0.0, true, "monomers per cell", "represses lacI"},
                   {"gfp mRNA", 0.0, false, "transcripts per cell", "messenger of the reporter"},
                   {"GFP dark", 0.0, false, "monomers per cell", "reporter, not yet fluorescent"},
                   {"GFP", 0.0, true, "monomers per cell", "reporter, fluorescent"}};
  model.parameters = {
      {"lacI_strength", 30.0, 15.0, 60.0, logarithmic, "transcripts/min",
       "transcription from the free lacI promoter"},
      {"tetR_strength", 30.0, 15.0, 60.0, logarithmic, "transcripts/min",
       "transcription from the free tetR promoter"},
      {"cI_strength", 30.0, 15.0, 60.0, logarithmic, "transcripts/min",
       "transcription from the free cI promoter"},
      {"leakiness", 1e-3, 3e-4, 3e-3, logarithmic, "1", "repressed over free promoter strength"},
      {"half_repression", 40.0, 20.0, 80.0, logarithmic, "monomers/cell",
       "repressor at half promoter strength"},
      {"hill", 2.0, 1.8, 2.6, linear, "1", "Hill coefficient of repression"},
      {"mRNA_halflife", 2.0, 1.0, 4.0, logarithmic, "min", "of the repressors' messengers"},
      {"protein_halflife", 10.0, 5.0, 20.0, logarithmic, "min", "of the repressors"},
      {"translation", 20.0, 10.0, 40.0, logarithmic, "proteins/transcript",
       "translation efficiency of the repressors"},
      {"gfp_strength", 30.0, 15.0, 60.0, logarithmic, "transcripts/min",
       "transcription from the free gfp promoter"},
      {"gfp_mRNA_halflife", 2.0, 1.0, 4.0, logarithmic, "min", "of the reporter's messenger"},
      {"gfp_halflife", 90.0, 45.0, 180.0, logarithmic, "min", "of the reporter"},
      {"gfp_translation", 20.0, 10.0, 40.0, logarithmic, "proteins/transcript",
       "translation efficiency of the reporter"},
      {"gfp_maturation", 30.0, 15.0, 60.0, logarithmic, "min", "half-time until the reporter fluoresces"}};
  model.rates = rates;
  // A first peak that is high, and again a good deal of cI after four hours. A selection of slow oscillators
  // with strong promoters: the half-life of the repressors tells most, then the three strengths, translation
  // and the half-life of the messengers; the Hill coefficient a little. What the reporter is made of tells
  // nothing.
  model.exampleGates = {"Molecule: cI @ 30 in 3000..30000", "Molecule: cI @ 240 in 500..30000"};
  return model;
}

} // namespace runsieve::app
