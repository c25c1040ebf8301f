#pragma once

#include <runsieve/core/kernels/ParameterOrder.h>

#include <vtkDoubleArray.h>
#include <vtkWeakPointer.h>

#include <cstddef>
#include <map>

namespace runsieve {

/// The orders of the runs of one table by its parameters, made on first use and kept until a column is
/// modified or deleted.
class RunIndex
{
public:
  void clear() { entries.clear(); }

  /// The order by a column, null if the column has no rows. Orders by columns that exist no more go.
  ParameterOrder const* order(vtkDoubleArray* column, long long stride);

  [[nodiscard]] std::size_t size() const { return entries.size(); }

private:
  struct Entry
  {
    vtkWeakPointer<vtkDoubleArray> column;
    double const* values = nullptr;
    vtkMTimeType time = 0;
    long long rows = 0;
    long long stride = 0;
    ParameterOrder order;
  };

  void dropDeleted();

  std::map<vtkDoubleArray*, Entry> entries;
};

} // namespace runsieve
