#pragma once

#include <vtkChart.h>

namespace runsieve {

/// The chart of an item; null if it stands alone.
inline vtkChart* chartOf(vtkAbstractContextItem* item)
{
  while (item && !vtkChart::SafeDownCast(item)) item = item->GetParent();
  return vtkChart::SafeDownCast(item);
}

} // namespace runsieve
