#pragma once

#include "PlotScene.h"

#include <runsieve/records/FitRun.h>
#include <runsieve/records/FitSettings.h>

#include <gtest/gtest.h>

#include <vector>

namespace runsieve::test {

/// Fit settings whose type can be changed.
struct TypedFitSettings : FitSettings
{
  int type = timeCourse;
  [[nodiscard]] int getFitType() const override { return type; }
};

/// A plot in a scene, and a fit of two data series, "A" and "B", at the times 0, 1 and 2 s.
struct FitRecord : testing::Test, PlotScene
{
  FitRun run;
  TypedFitSettings fit;
  std::vector<std::vector<double>> predictions{{1, 2, 3}, {10, 20, 40}};

  FitRecord()
  {
    run.times = {0, 1, 2};
    fit.observations = {{2, 4, 8}, {11, 22, 33}};
    fit.observationErrors = {{0.5, 2, 4}, {1, 1, 2}};
    fit.seriesNames = {{Kestrane::Molecule, "A"}, {Kestrane::Pattern, "B"}};
  }

  void set(bool showCurves = false, bool scaled = false)
  {
    container.setResidualPlot(&run, &fit, predictions, scaled, showCurves);
  }
};

} // namespace runsieve::test
