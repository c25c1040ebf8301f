#include <runsieve/stats/RunIndex.h>

#include <iterator>

namespace runsieve {

ParameterOrder const* RunIndex::order(vtkDoubleArray* column, long long stride)
{
  dropDeleted();
  const long long rows = column->GetNumberOfTuples();
  if (rows < 1) return nullptr;
  Entry& entry = entries[column];
  double const* values = column->GetPointer(0);
  const bool current = entry.values == values && entry.time == column->GetMTime() && entry.rows == rows &&
                       entry.stride == stride;
  if (!current)
    entry = {column, values, column->GetMTime(), rows, stride, ParameterOrder(values, rows, stride)};
  return &entry.order;
}

void RunIndex::dropDeleted()
{
  for (auto entry = entries.begin(); entry != entries.end();)
    entry = entry->second.column ? std::next(entry) : entries.erase(entry);
}

} // namespace runsieve
