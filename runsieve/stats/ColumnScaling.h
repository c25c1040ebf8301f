#pragma once

class vtkTable;

namespace runsieve {

// These write raw storage and mark no array as modified: cached points and ranges stay until something else
// does. They return false, and change nothing, without a column of doubles.

/// Multiplies each complete run by its factor. \param stride rows per run, at least 1
bool scaleRuns(vtkTable* table, int column, int stride, double const* factors);
/// Divides each complete run by its largest value, at least 0.
bool scaleRunsToMaximum(vtkTable* table, int column, int stride);
/// Multiplies, or divides, a column by another one, row by row.
bool scaleByColumn(vtkTable* table, int column, int byColumn, bool divide);

} // namespace runsieve
