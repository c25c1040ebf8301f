#include <runsieve/stats/RunIndex.h>

#include <vtkDoubleArray.h>

namespace runsieve {

ParameterOrder const* RunIndex::order(vtkDoubleArray* column, long long stride)
{
  const long long rows = column->GetNumberOfTuples();
  if (rows < 1) return nullptr;
  Entry& entry = entries[column];
  double const* values = column->GetPointer(0);
  const bool current = entry.values == values && entry.time == column->GetMTime() && entry.rows == rows &&
                       entry.stride == stride;
  if (!current) entry = {values, column->GetMTime(), rows, stride, ParameterOrder(values, rows, stride)};
  return &entry.order;
}

} // namespace runsieve
