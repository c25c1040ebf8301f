#include <runsieve/stats/ColumnScaling.h>

#include <runsieve/tables/TableAccess.h>

#include <vtkDoubleArray.h>
#include <vtkTable.h>

#include <algorithm>

namespace runsieve {

namespace {

/// Calls scaleRun(first value, run) for each complete run.
template <class ScaleRun> bool forEachRun(vtkTable* table, int column, int stride, ScaleRun scaleRun)
{
  vtkDoubleArray* array = doubleColumn(table, column);
  if (!array || stride < 1) return false;
  double* values = array->GetPointer(0);
  for (vtkIdType run = 0; run < table->GetNumberOfRows() / stride; ++run)
    scaleRun(values + run * stride, run);
  return true;
}

} // namespace

bool scaleRuns(vtkTable* table, int column, int stride, double const* factors)
{
  return forEachRun(table, column, stride, [=](double* run, vtkIdType r) {
    for (int t = 0; t < stride; ++t) run[t] *= factors[r];
  });
}

bool scaleRunsToMaximum(vtkTable* table, int column, int stride)
{
  return forEachRun(table, column, stride, [stride](double* run, vtkIdType) {
    double largest = 0.0;
    for (int t = 0; t < stride; ++t) largest = std::max(largest, run[t]);
    const double factor = 1.0 / largest;
    for (int t = 0; t < stride; ++t) run[t] *= factor;
  });
}

bool scaleByColumn(vtkTable* table, int column, int byColumn, bool divide)
{
  vtkDoubleArray* target = doubleColumn(table, column);
  vtkDoubleArray* factor = doubleColumn(table, byColumn);
  if (!target || !factor || target->GetNumberOfTuples() < 1) return false;
  double* values = target->GetPointer(0);
  double const* by = factor->GetPointer(0);
  for (vtkIdType i = 0; i < table->GetNumberOfRows(); ++i) {
    // Read first: the two columns may be one.
    const double f = by[i];
    values[i] = divide ? values[i] / f : values[i] * f;
  }
  return true;
}

} // namespace runsieve
