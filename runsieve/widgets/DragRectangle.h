#pragma once

#include <Qt>

/// A rectangle that is being dragged over the chart of a plot to select in it, in the units of its axes.
struct DragRectangle
{
  double left = 0.0; ///< not above right
  double right = 0.0;
  double bottom = 0.0; ///< not above top
  double top = 0.0;
  Qt::KeyboardModifiers
      modifiers; ///< of the keyboard at the moment: Ctrl adds to the selection, Shift takes away
};
