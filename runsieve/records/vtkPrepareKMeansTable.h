#pragma once

#include <runsieve/runsieve_export.h>

#include <vtkTableAlgorithm.h>

/// Turns one column of a stacked table into a table with one row per run and one column per time point.
///
/// Cell (r, t) is the value of the input array, chosen by SetInputArrayToProcess(0, ...), in row r * stride +
/// t. Rows after the last complete run are left out. The columns are vtkDoubleArray and are named by the time
/// index, padded with zeros to equal length, so that their alphabetical order is the order of time.
class RUNSIEVE_EXPORT vtkPrepareKMeansTable : public vtkTableAlgorithm
{
public:
  static vtkPrepareKMeansTable* New();
  vtkTypeMacro(vtkPrepareKMeansTable, vtkTableAlgorithm)
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// Rows per run; default 1. Below 1 the run fails with an error.
  vtkSetMacro(Stride, int);
  vtkGetMacro(Stride, int);

protected:
  vtkPrepareKMeansTable() = default;
  ~vtkPrepareKMeansTable() override = default;

  int RequestData(vtkInformation*, vtkInformationVector**, vtkInformationVector*) override;

private:
  vtkPrepareKMeansTable(vtkPrepareKMeansTable const&) = delete;
  void operator=(vtkPrepareKMeansTable const&) = delete;

  int Stride = 1;
};
