#pragma once

#include <runsieve/selection/RowSpans.h>

#include <vtkIdTypeArray.h>
#include <vtkSmartPointer.h>

class vtkTable;

namespace runsieve {

/// A column of flags that knows which of them it has set, so that the next selection need not write all rows
/// again. To everybody else it is a vtkIdTypeArray, and copies of it are plain ones.
class FlagColumn : public vtkIdTypeArray
{
public:
  /// Puts a column into a table that is 1 in the given rows and 0 in all others. The storage of a column that
  /// an earlier call has put there is used again if nobody but the table holds that column and nobody has
  /// written to it.
  static void put(vtkTable* table, const char* name, RowSpans ones, bool asLast);

protected:
  FlagColumn() = default;
  ~FlagColumn() override = default;

private:
  static vtkSmartPointer<FlagColumn> reusable(vtkTable* table, const char* name);
  static vtkSmartPointer<FlagColumn> zeroed(const char* name, vtkIdType rows);
  void fill(vtkIdType value);

  RowSpans ones;
  vtkMTimeType writtenAt = 0;
};

} // namespace runsieve
