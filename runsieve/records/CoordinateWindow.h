#pragma once

/// The scale of the axis that a remembered range was read from.
enum class WindowScale : unsigned char
{
  asTheAxis, ///< not known: the range is in the units of whatever axis it is put back to
  linear,
  logarithmic ///< the range is in powers of ten
};

/// The axis ranges that a user left a plot with, in the units of the axes (log10 on an active log axis).
struct CoordinateWindow
{
  double xMin = 0.0;
  double yMin = 0.0;
  double xMax = 0.0;
  double yMax = 0.0;
  bool valid = false; ///< set true on every store
  WindowScale xScale = WindowScale::asTheAxis;
  WindowScale yScale = WindowScale::asTheAxis;
};
