#pragma once

#include <vtkSmartPointer.h>

#include <vector>

class FitSettings;
class vtkTable;
struct FitRun;

namespace runsieve {

/// What of a fit is shown.
struct ResidualView
{
  bool scaled;     ///< residuals are divided by the errors of the observations
  bool showCurves; ///< predictions and observations instead of residuals
};

/// Whether the data series of a fit run over its times.
bool isOverTime(FitSettings& settings);

/// The residuals of a fit, or predictions beside observations, a column of floats each, behind the times if
/// it is over time. Columns are as long as their series. \param predictions one vector per data series,
/// changed in place by normalization or standardization
vtkSmartPointer<vtkTable> residualTable(FitRun const& run, FitSettings& settings,
                                        std::vector<std::vector<double>>& predictions, ResidualView view);

} // namespace runsieve
