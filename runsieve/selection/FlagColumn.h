#pragma once

#include <runsieve/core/kernels/RowSpans.h>
#include <runsieve/core/parallel/BlockRunner.h>

#include <vtkIdTypeArray.h>
#include <vtkSmartPointer.h>

#include <vector>

class vtkTable;

namespace runsieve {

/// A column of flags. To everybody else it is a vtkIdTypeArray, and copies of it are plain ones.
class FlagColumn : public vtkIdTypeArray
{
public:
  struct Flags
  {
    const char* name;
    RowSpans const& ones;
    bool asLast; ///< goes behind all columns, also if the table has one of that name
  };

  /// Puts columns into a table that are 1 in the given rows and 0 in all others. Every row is written: a host
  /// may have written to the former column. Its storage is used again if nobody but the table holds it.
  static void put(vtkTable* table, std::vector<Flags> const& list, BlockRunner const& runner);

  /// The rows that are 1; null if the column has been modified since they were written.
  [[nodiscard]] RowSpans const* ones();

protected:
  FlagColumn() = default;
  ~FlagColumn() override = default;

private:
  static vtkSmartPointer<FlagColumn> reusable(vtkTable* table, const char* name);
  static vtkSmartPointer<FlagColumn> withRows(const char* name, vtkIdType rows);
  void write(RowSpans const& ones);

  RowSpans written;
  vtkMTimeType writtenAt = 0;
};

} // namespace runsieve
