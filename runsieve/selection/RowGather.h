#pragma once

#include <runsieve/core/parallel/BlockRunner.h>

#include <functional>
#include <memory>
#include <vector>

class vtkDataArray;
class vtkDoubleArray;
class vtkTable;

namespace runsieve {

class RowSpans;
class RunIndex;
struct RunPart;

/// What is known of a stacked table, so that the columns that follow from it need not be read.
struct StackedRuns
{
  RunIndex* index = nullptr;       ///< none: every column is read
  long long stride = 1;            ///< rows per run, at least 1
  vtkDoubleArray* times = nullptr; ///< the time column of the table
};

/// Fills tables with rows of another one, keeping array types.
class RowGather
{
public:
  /// The table is not changed, and neither it nor the index may change before run().
  explicit RowGather(vtkTable* source, StackedRuns const& itsRuns = {}) : from(source), known(itsRuns) {}

  /// Gives a table the columns and the number of rows; then, if asked to, the column "vtkOriginalRowIds" with
  /// the row numbers, which replaces one of that name.
  /// \param rows in the order in which they come, ascending if something is known of the table; must live
  /// until run()
  void add(RowSpans const& rows, bool addRowIds, vtkTable* to);

  /// Writes the values of all tables. A block is a column.
  void run(BlockRunner const& runner = {});

private:
  using Parts = std::shared_ptr<std::vector<RunPart> const>;

  /// Sets up the values of a column; a block will write them.
  void addPacked(vtkDataArray* source, RowSpans const& rows, Parts const& parts, vtkDataArray* target);
  // These write a column from what is known; false if it has to be read.
  bool addFlags(vtkDataArray* source, RowSpans const& rows, void* values);
  bool addKnown(vtkDataArray* source, Parts const& parts, void* values);

  vtkTable* from;
  StackedRuns known;
  std::vector<std::function<void()>> blocks;
};

/// Fills one table with rows of another one, of which nothing is known.
void gatherTable(vtkTable* from, RowSpans const& rows, bool addRowIds, vtkTable* to);

} // namespace runsieve
