#pragma once

#include <runsieve/records/TypedConcentrationName.h>
#include <runsieve/runsieve_export.h>

#include <vector>

/// The data that a model was fitted to, and how predictions are compared with them.
class RUNSIEVE_EXPORT FitSettings
{
public:
  enum FitType
  {
    steadyState = 0, ///< the series have no time axis: dose responses, end points
    timeCourse = 1   ///< the series run over FitRun::times
  };

  explicit FitSettings(int type = timeCourse) : fitType(type) {}
  FitSettings(FitSettings const&) = default;
  FitSettings& operator=(FitSettings const&) = default;
  virtual ~FitSettings();

  /// timeCourse, or any other number for data without a time axis.
  [[nodiscard]] virtual int getFitType() const { return fitType; }

  std::vector<std::vector<double>> observations;      ///< one vector per data series
  std::vector<std::vector<double>> observationErrors; ///< parallel to observations
  std::vector<Kestrane::TypedConcentrationName> seriesNames;
  bool fitGlobalScale = false;   ///< the global scale is one of the fitted parameters
  double globalScale = 1.0;      ///< factor of all observations when it is not fitted
  bool normalizeToPoint = false; ///< predictions are divided by their value at one sample
  int normalizationIndex = 0;    ///< that sample
  bool standardizeSeries =
      false; ///< predictions are standardized; goes before fitGlobalScale and normalizeToPoint

private:
  int fitType;
};
