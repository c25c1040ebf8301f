#pragma once

#include <cstddef>

namespace runsieve::app {

/// Values on an axis: linear or logarithmic.
class AxisMap
{
public:
  AxisMap() = default;
  /// Ends that are equal, or that the axis cannot show, are moved apart so that it can. \param logarithmic
  /// both ends above 0; else the axis begins a million times below a positive high end
  AxisMap(double low, double high, bool logarithmic = false);

  [[nodiscard]] double low() const { return first; }
  [[nodiscard]] double high() const { return last; }
  [[nodiscard]] bool isLogarithmic() const { return logarithmic; }

  /// From 0 at the low end to 1 at the high end, and beyond; NaN for what the axis does not have: NaN, and
  /// what is not positive on a logarithmic axis.
  [[nodiscard]] double place(double value) const;
  /// The reverse.
  [[nodiscard]] double value(double place) const;

  /// The axis of the places from one to another.
  [[nodiscard]] AxisMap part(double fromPlace, double toPlace) const;
  /// With a little room at both ends. \param share of the axis, at each end
  [[nodiscard]] AxisMap widened(double share) const { return part(-share, 1.0 + share); }

  friend bool operator==(AxisMap const& a, AxisMap const& b)
  {
    return a.first == b.first && a.last == b.last && a.logarithmic == b.logarithmic;
  }
  friend bool operator!=(AxisMap const& a, AxisMap const& b) { return !(a == b); }

private:
  double first = 0.0;
  double last = 1.0;
  bool logarithmic = false;
  double begin = 0.0; ///< first, or its logarithm
  double length = 1.0;
};

} // namespace runsieve::app
