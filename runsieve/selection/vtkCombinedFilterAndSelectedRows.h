#pragma once

#include <runsieve/runsieve_export.h>

#include <vtkTableAlgorithm.h>

#include <memory>
#include <vector>

namespace runsieve {
struct FilteredRows;
}

/// Keeps the runs of a stacked table that have a selected row at every time that holds any selected row.
///
/// Output 0: the selected rows of these runs. Output 1: all other rows at the selected times. Ports as in
/// vtkCombinedFilterOrSelectedRows. The filter deliberately writes three flag columns of vtkIdTypeArray to
/// its input table: "vtkRemainderSelection" (selected, run survives), "vtkReducedSelection" (selected, run
/// dropped) and "vtkComplementSelection" (not selected, at a selected time). An empty selection leaves them
/// as they are.
///
/// Times are compared exactly, so all runs share one grid; a NaN time is no time. Row r belongs to run r /
/// Stride. TimeColumnIndex and ParaCount must be set; the time column is read only if it is a vtkDoubleArray.
class RUNSIEVE_EXPORT vtkCombinedFilterAndSelectedRows : public vtkTableAlgorithm
{
public:
  static vtkCombinedFilterAndSelectedRows* New();
  vtkTypeMacro(vtkCombinedFilterAndSelectedRows, vtkTableAlgorithm)
  void PrintSelf(ostream& os, vtkIndent indent) override;

  std::vector<int> ParameterColumns; ///< the caller's copy; not read

  /// Adds the column "vtkOriginalRowIds" to both outputs; default off.
  virtual void SetAddOriginalRowIdsArray(bool add);
  virtual bool GetAddOriginalRowIdsArray();
  virtual void AddOriginalRowIdsArrayOn();
  virtual void AddOriginalRowIdsArrayOff();
  virtual void SetTimeColumnIndex(long long index); ///< default -1: not set
  virtual long long GetTimeColumnIndex();
  virtual void SetParaCount(long long count); ///< number of parameter columns; only validated; default -1
  virtual long long GetParaCount();
  virtual void SetStride(long long stride); ///< rows per run; default 1; below 1 counts as 1
  virtual long long GetStride();

  void SetSelectionConnection(vtkAlgorithmOutput* in);
  void SetAnnotationLayersConnection(vtkAlgorithmOutput* in);
  int FillInputPortInformation(int port, vtkInformation* info) override;

protected:
  vtkCombinedFilterAndSelectedRows();
  ~vtkCombinedFilterAndSelectedRows() override;

  int RequestData(vtkInformation*, vtkInformationVector**, vtkInformationVector*) override;

  bool AddOriginalRowIdsArray;
  long long TimeColumnIndex;
  long long ParaCount;
  long long Stride;

private:
  friend struct runsieve::FilteredRows;

  vtkCombinedFilterAndSelectedRows(vtkCombinedFilterAndSelectedRows const&) = delete;
  void operator=(vtkCombinedFilterAndSelectedRows const&) = delete;

  struct Internals;
  std::unique_ptr<Internals> Own;
};
