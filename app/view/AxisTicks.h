#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve::app {

/// A number on an axis.
struct AxisTick
{
  double place; ///< from 0 to 1
  std::string label;
};

/// Where values stand on an axis, which has a little room at both ends. Takes any finite values: the largest
/// and the smallest that there are, and ranges of one value.
class AxisScale
{
public:
  /// Of the finite ones of these values; logarithmic if they are positive and span more than two decades.
  explicit AxisScale(std::vector<double> const& values);

  [[nodiscard]] bool isLogarithmic() const { return logarithmic; }
  /// From 0 to 1 for values that the scale was made of.
  [[nodiscard]] double place(double value) const;
  /// Round numbers, ascending. \param most at least 2
  [[nodiscard]] std::vector<AxisTick> ticks(std::size_t most) const;

private:
  [[nodiscard]] double position(double value) const;
  [[nodiscard]] std::vector<AxisTick> decades(std::size_t most) const;
  [[nodiscard]] std::vector<AxisTick> steps(std::size_t most) const;

  bool logarithmic = false;
  int exponent = 0; ///< values are divided by this power of 2, so that differences don't overflow
  double begin = 0.0;
  double length = 1.0;
};

} // namespace runsieve::app
