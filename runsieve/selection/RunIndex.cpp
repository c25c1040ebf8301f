#include <runsieve/selection/RunIndex.h>

#include <iterator>

namespace runsieve {

RunValues const* RunIndex::values(vtkDoubleArray* column, long long stride)
{
  Entry* entry = current(column, stride);
  if (!entry) return nullptr;
  if (!entry->runs) entry->runs.emplace(entry->values, entry->rows, stride);
  return &*entry->runs;
}

ParameterOrder const* RunIndex::order(vtkDoubleArray* column, long long stride)
{
  RunValues const* runs = values(column, stride);
  if (!runs) return nullptr;
  Entry& entry = entries[column];
  if (!entry.order) entry.order.emplace(*runs);
  return &*entry.order;
}

RunGrid const* RunIndex::grid(vtkDoubleArray* times, long long stride)
{
  Entry* entry = current(times, stride);
  if (!entry) return nullptr;
  if (!entry->grid) entry->grid.emplace(entry->values, entry->rows, stride);
  return &*entry->grid;
}

RunIndex::Entry* RunIndex::current(vtkDoubleArray* column, long long stride)
{
  dropDeleted();
  const long long rows = column->GetNumberOfTuples();
  if (rows < 1) return nullptr;
  Entry& entry = entries[column];
  double const* values = column->GetPointer(0);
  const bool stands = entry.values == values && entry.time == column->GetMTime() && entry.rows == rows &&
                      entry.stride == stride;
  if (!stands) entry = {column, values, column->GetMTime(), rows, stride, {}, {}, {}};
  return &entry;
}

void RunIndex::dropDeleted()
{
  for (auto entry = entries.begin(); entry != entries.end();)
    entry = entry->second.column ? std::next(entry) : entries.erase(entry);
}

} // namespace runsieve
