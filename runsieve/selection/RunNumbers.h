#pragma once

#include <runsieve/core/kernels/RowSpans.h>

#include <vtkSmartPointer.h>

#include <set>

class vtkDoubleArray;
class vtkIdTypeArray;
class vtkIntArray;
class vtkTable;

namespace runsieve {

/// The numbers of the runs, as a column holds them, of all rows with a flag that is not 0. Values are cut to
/// whole numbers; those that do not fit are left out.
std::set<int> runsOfFlags(vtkIdTypeArray* flags, vtkDoubleArray* runColumn);
std::set<int> runsOfFlags(vtkIntArray* flags, vtkDoubleArray* runColumn);

/// The column that numbers the runs: the first with "Index" in its name, else the given one. Null unless it
/// holds doubles.
vtkDoubleArray* findIndexColumn(vtkTable* table, int otherwise);

/// One row for each run that the column knows: the one timeIndex rows behind the first of the run. Run
/// numbers must ascend. \param stride rows per run, not 0. It and timeIndex are taken as unsigned after sign
/// extension, so a negative time counts from the far end of that range.
vtkSmartPointer<vtkIdTypeArray> rowsOfRuns(std::set<int> const& runs, vtkDoubleArray* runColumn, int stride,
                                           int timeIndex);

/// The first row of each run. A number that the column does not hold ends the walk. \param stride at least 1
RowSpans firstRowsOfRuns(std::set<int> const& runs, vtkDoubleArray* runColumn, long long stride);

} // namespace runsieve
