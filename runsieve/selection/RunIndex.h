#pragma once

#include <runsieve/core/kernels/ParameterOrder.h>
#include <runsieve/core/kernels/RunGrid.h>
#include <runsieve/core/kernels/RunValues.h>

#include <vtkDoubleArray.h>
#include <vtkWeakPointer.h>

#include <cstddef>
#include <map>
#include <optional>

namespace runsieve {

/// What is known of the columns of one stacked table: found on first use and kept until a column is modified
/// or deleted. A column that is written in place counts as the same until Modified() is called on it.
///
/// All results are null if the column has no rows, and stand until the next call for that column. Strides are
/// rows per run, at least 1.
class RunIndex
{
public:
  void clear() { entries.clear(); }

  /// One value per run.
  RunValues const* values(vtkDoubleArray* column, long long stride);
  /// The order of the runs by a column.
  ParameterOrder const* order(vtkDoubleArray* column, long long stride);
  /// The times that the runs share.
  RunGrid const* grid(vtkDoubleArray* times, long long stride);

  [[nodiscard]] std::size_t size() const { return entries.size(); }

private:
  struct Entry
  {
    vtkWeakPointer<vtkDoubleArray> column;
    double const* values = nullptr;
    vtkMTimeType time = 0;
    long long rows = 0;
    long long stride = 0;
    std::optional<RunValues> runs;
    std::optional<ParameterOrder> order;
    std::optional<RunGrid> grid;
  };

  /// The entry of a column as it is now. Those of columns that exist no more go.
  Entry* current(vtkDoubleArray* column, long long stride);
  void dropDeleted();

  std::map<vtkDoubleArray*, Entry> entries;
};

} // namespace runsieve
