#pragma once

#include <runsieve/core/kernels/RowSpans.h>

class vtkCombinedFilterAndSelectedRows;

namespace runsieve {

/// The library's own access to the rows that the last run of a filter has given to its outputs.
struct FilteredRows
{
  /// The input rows of output 0 or 1, ascending.
  static RowSpans const& of(vtkCombinedFilterAndSelectedRows const& filter, int port);
};

} // namespace runsieve
