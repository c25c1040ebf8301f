#pragma once

#include <runsieve/core/kernels/RowSpans.h>
#include <runsieve/core/parallel/BlockRunner.h>

#include <vtkSmartPointer.h>

#include <vector>

class vtkAnnotationLink;
class vtkTable;

namespace runsieve {

class RunIndex;

/// The rows of a stacked table at the selected times.
struct SplitTable
{
  vtkSmartPointer<vtkTable> passing; ///< selected rows of runs that pass at all selected times
  vtkSmartPointer<vtkTable> others;
  RowSpans passingRows; ///< where the rows of both stand in the table
  RowSpans otherRows;
};

/// Evaluates the selection of a link by vtkCombinedFilterAndSelectedRows, which writes its flag columns to
/// the table. The time column is the first with "Value", "Time" or "Period" in its name, else the second
/// before the parameters.
/// \param parameters column numbers, at least one
/// \param index of the table: columns that follow from it are not read
SplitTable splitBySelection(vtkAnnotationLink* link, vtkTable* table, std::vector<int> const& parameters,
                            int stride, RunIndex& index, BlockRunner const& runner);

} // namespace runsieve
