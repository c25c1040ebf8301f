#pragma once

#include "app/explorer/charts/AxisMap.h"

#include <QString>

#include <vector>

namespace runsieve::app {

/// A mark on an axis.
struct Tick
{
  double value;
  QString label; ///< empty for a small mark between others
};

/// Round numbers on an axis, ascending, with small marks between them. Labels are at most as many as asked
/// for, different from one another, and as short as tells them apart. \param labels 2 or more
[[nodiscard]] std::vector<Tick> ticksOf(AxisMap const& axis, int labels);

/// A number for people, in as few digits as it takes to tell it from its neighbours at a resolution: on an
/// axis, in a tooltip. \param step smallest difference that counts; 0: six digits
[[nodiscard]] QString numberText(double value, double step = 0.0);

} // namespace runsieve::app
