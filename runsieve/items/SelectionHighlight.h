#pragma once

#include <vtkContext2D.h>
#include <vtkPen.h>

namespace runsieve {

/// Sets the painter's pen to the colour of selected runs, wider than what it is painted over.
/// \param baseWidth pixels
inline void applySelectionHighlight(vtkContext2D* painter, double baseWidth)
{
  painter->GetPen()->SetColor(255, 50, 0, 150);
  painter->GetPen()->SetWidth(static_cast<float>(baseWidth + 2.7));
}

} // namespace runsieve
