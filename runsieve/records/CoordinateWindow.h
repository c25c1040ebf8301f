#pragma once

/// The axis ranges that a user left a plot with, in the units of the axes (log10 on an active log axis).
struct CoordinateWindow
{
  double xMin = 0.0;
  double yMin = 0.0;
  double xMax = 0.0;
  double yMax = 0.0;
  bool valid = false; ///< set true on every store
};
