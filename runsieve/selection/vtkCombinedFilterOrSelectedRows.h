#pragma once

#include <runsieve/runsieve_export.h>

#include <vtkTableAlgorithm.h>

/// Splits a table by a row selection: rows named by any selection node go to output 0, the other rows inside
/// the time span of the selected ones to output 1.
///
/// Input 0 is the table; input 1 (vtkSelection) and input 2 (vtkAnnotationLayers) are optional, but one must
/// be given; disabled and hidden annotations do not count. The filter deliberately writes the column
/// "vtkComplementSelection" (1 for a row of output 1) to its input table, where plots read it. A row named
/// twice stands twice in output 0. Without any enabled selection output 0 is a shallow copy of the table and
/// the input is not touched.
class RUNSIEVE_EXPORT vtkCombinedFilterOrSelectedRows : public vtkTableAlgorithm
{
public:
  static vtkCombinedFilterOrSelectedRows* New();
  vtkTypeMacro(vtkCombinedFilterOrSelectedRows, vtkTableAlgorithm)
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// Adds the column "vtkOriginalRowIds" to both outputs; default off.
  virtual void SetAddOriginalRowIdsArray(bool add);
  virtual bool GetAddOriginalRowIdsArray();
  virtual void AddOriginalRowIdsArrayOn();
  virtual void AddOriginalRowIdsArrayOff();
  /// Column of the time values; must be set. If there is no such numeric column, output 1 stays empty.
  virtual void SetTimeColumnIndex(long long index);
  virtual long long GetTimeColumnIndex();

  void SetSelectionConnection(vtkAlgorithmOutput* in);
  void SetAnnotationLayersConnection(vtkAlgorithmOutput* in);
  int FillInputPortInformation(int port, vtkInformation* info) override;

protected:
  vtkCombinedFilterOrSelectedRows();
  ~vtkCombinedFilterOrSelectedRows() override = default;

  int RequestData(vtkInformation*, vtkInformationVector**, vtkInformationVector*) override;

  bool AddOriginalRowIdsArray;
  long long TimeColumnIndex;

private:
  vtkCombinedFilterOrSelectedRows(vtkCombinedFilterOrSelectedRows const&) = delete;
  void operator=(vtkCombinedFilterOrSelectedRows const&) = delete;
};
