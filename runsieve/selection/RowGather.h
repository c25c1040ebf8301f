#pragma once

class vtkTable;

namespace runsieve {

class RowSpans;

/// Fills a table with rows of another one, in the order of the spans, column by column and keeping array
/// types, then, if asked to, the column "vtkOriginalRowIds" with the row numbers, which replaces one of that
/// name.
void gatherTable(vtkTable* from, RowSpans const& rows, bool addRowIds, vtkTable* to);

} // namespace runsieve
