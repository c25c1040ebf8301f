#pragma once

#include <vtkContext2D.h>
#include <vtkRect.h>

namespace runsieve {

/// Draws a horizontal line across a legend entry at half its height, with the painter's pen.
inline void paintLineLegend(vtkContext2D* painter, vtkRectf const& rect)
{
  const auto middle = static_cast<float>(rect.GetY() + 0.5 * rect.GetHeight());
  painter->DrawLine(rect.GetX(), middle, rect.GetX() + rect.GetWidth(), middle);
}

} // namespace runsieve
