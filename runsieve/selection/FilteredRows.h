#pragma once

#include <runsieve/core/kernels/RowSpans.h>
#include <runsieve/core/parallel/BlockRunner.h>

class vtkCombinedFilterAndSelectedRows;

namespace runsieve {

class RunIndex;

/// The library's own access to a filter.
struct FilteredRows
{
  /// Spares later runs of the filter what is known of its table, and lends them threads. The index must
  /// outlive them.
  static void help(vtkCombinedFilterAndSelectedRows& filter, RunIndex& index, BlockRunner const& runner);

  /// The input rows of output 0 or 1 of the last run, ascending.
  static RowSpans const& of(vtkCombinedFilterAndSelectedRows const& filter, int port);
};

} // namespace runsieve
