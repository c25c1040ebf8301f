#pragma once

#include "PlotScene.h"

#include <runsieve/records/SobolPostProcessResult.h>

#include <vtkStringArray.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace runsieve::test {

inline std::vector<std::string> strings(vtkAbstractArray* array)
{
  std::vector<std::string> found;
  auto* texts = vtkStringArray::SafeDownCast(array);
  for (vtkIdType i = 0; texts && i < texts->GetNumberOfValues(); ++i) found.push_back(texts->GetValue(i));
  return found;
}

/// A result with its own blocks: parameters "k1", "k2", "k3", times 0, 12.5 and 50 s. The first-order index
/// is (100 s + 10 t + p + 1) / 1000, the one of total order is ten times as large.
struct SobolRecord
{
  SobolPostProcessResult result;
  std::vector<double> times{0, 12.5, 50};
  SobolPostProcessResult::Indices first;
  SobolPostProcessResult::Indices total;

  explicit SobolRecord(std::vector<Kestrane::TypedConcentrationName> const& species)
  {
    result.parameters = {1, 2, 3};
    result.parameterNames = {"k1", "k2", "k3"};
    result.times = &times;
    result.sensitivities = &first;
    result.totalSensitivities = &total;
    setSpecies(species);
  }
  SobolRecord(SobolRecord const&) = delete;
  SobolRecord& operator=(SobolRecord const&) = delete;

  void setSpecies(std::vector<Kestrane::TypedConcentrationName> const& species)
  {
    result.species = species;
    first = block(1);
    total = block(10);
  }

private:
  [[nodiscard]] SobolPostProcessResult::Indices block(double factor) const
  {
    SobolPostProcessResult::Indices indices(result.species.size());
    for (std::size_t s = 0; s < indices.size(); ++s)
      for (std::size_t t = 0; t < times.size(); ++t) {
        double const base = 100.0 * static_cast<double>(s) + 10.0 * static_cast<double>(t);
        indices[s].push_back(
            {factor * (base + 1) / 1000, factor * (base + 2) / 1000, factor * (base + 3) / 1000});
      }
    return indices;
  }
};

/// A plot in a scene and a result of six species, one of each type that has a bar; the last one has none.
struct SobolPlot : testing::Test, PlotScene
{
  SobolRecord record{{{Kestrane::Complex, "B"},
                      {Kestrane::Molecule, "A"},
                      {Kestrane::Pattern, "P"},
                      {Kestrane::Unnamed, "Time [s]"},
                      {Kestrane::ComplexWithMolecule, "C"},
                      {Kestrane::Molecule, "last"}}};

  /// Without the redraw that the style would announce: the chart of a result stands in no scene.
  void setStyle(plotStyles style)
  {
    settings().blockSignals(true);
    settings().setPlotStyle(style);
    settings().blockSignals(false);
  }

  void setBars(bool total = false, std::size_t time = 1)
  {
    setStyle(barPlot);
    container.setSobolPostprocessResult(&record.result, true, total, time, 0);
  }

  void setArea(bool total = false, std::size_t species = 1)
  {
    setStyle(stackedPlot);
    container.setSobolPostprocessResult(&record.result, false, total, 0, species);
  }
};

} // namespace runsieve::test
