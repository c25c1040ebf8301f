#pragma once

#include "app/explorer/charts/AxisMap.h"

#include <runsieve/core/scan/Scan.h>

#include <cstddef>

namespace runsieve::app {

/// What the values of a number parameter reach.
struct ParameterSpread
{
  double low = 0.0; ///< of the finite values; 0 to 1 without any
  double high = 1.0;
  double lowestPositive = 0.0; ///< 0 if there is none
  std::size_t present = 0;     ///< runs with a finite value
  /// Whether they are spread by ratios rather than by differences: all positive, over more than two decades,
  /// and with a median that stands nearer to the middle of a logarithmic axis than of a linear one.
  bool isLogarithmic = false;

  /// Whether a logarithmic axis shows anything.
  [[nodiscard]] bool allowsLogarithm() const { return lowestPositive > 0.0; }
  /// The axis from the lowest to the highest value; on a logarithmic one from the lowest positive value.
  [[nodiscard]] AxisMap axis(bool logarithmic) const;
};

/// Linear in the runs. \param parameter of numbers
[[nodiscard]] ParameterSpread spreadOf(ScanParameter const& parameter);

} // namespace runsieve::app
