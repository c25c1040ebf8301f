#pragma once

#include <vtkAxis.h>

namespace runsieve {

/// Sets the limits of an axis 5 % of a column's range outside of it, computed in the precision of the column.
/// A column without numbers leaves the axis as it is. The behaviour of the axis is not touched.
template <class Array> void setPaddedRange(vtkAxis* axis, Array* column)
{
  constexpr double paddingFraction = 0.05;
  double range[2] = {1.0, 0.0};
  if (column) column->GetRange(range, 0);
  if (!(range[0] <= range[1])) return;
  const auto minimum = static_cast<typename Array::ValueType>(range[0]);
  const auto maximum = static_cast<typename Array::ValueType>(range[1]);
  const double pad = (maximum - minimum) * paddingFraction;
  axis->SetUnscaledMinimum(minimum - pad);
  axis->SetUnscaledMaximum(maximum + pad);
}

} // namespace runsieve
