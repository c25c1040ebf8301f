#include <runsieve/plot/PlotContainer.h>

#include <runsieve/plot/TableAccess.h>
#include <runsieve/stats/RunIndex.h>

#include <algorithm>

using namespace runsieve;

// All three write raw storage and mark no array as modified: cached points and ranges stay until something
// else does.

namespace {

/// Calls scaleRun(first value, run) for each complete run.
template <class ScaleRun>
void forEachRun(vtkDoubleArray* column, vtkIdType rows, int stride, ScaleRun scaleRun)
{
  double* values = column->GetPointer(0);
  for (vtkIdType run = 0; run < rows / stride; ++run) scaleRun(values + run * stride, run);
}

} // namespace

void PlotContainer::scaleColumn(double* factors, int column)
{
  const int stride = metaData->getStride();
  vtkDoubleArray* values = doubleColumn(plotData, column);
  if (!factors || !values || stride < 1) return;
  forEachRun(values, plotData->GetNumberOfRows(), stride, [&](double* run, vtkIdType r) {
    for (int t = 0; t < stride; ++t) run[t] *= factors[r];
  });
  runIndex->clear();
  generateQuartiles();
  dirty();
}

void PlotContainer::scaleRelativeToMaxWithinTrajectory(int column)
{
  const int stride = metaData->getStride();
  vtkDoubleArray* values = doubleColumn(plotData, column);
  if (!values || stride < 1) return;
  forEachRun(values, plotData->GetNumberOfRows(), stride, [&](double* run, vtkIdType) {
    double largest = 0.0;
    for (int t = 0; t < stride; ++t) largest = std::max(largest, run[t]);
    const double factor = 1.0 / largest;
    for (int t = 0; t < stride; ++t) run[t] *= factor;
  });
  runIndex->clear();
  generateQuartiles();
  dirty();
}

void PlotContainer::scaleColumnByColumn(int column, int byColumn, bool divide)
{
  vtkDoubleArray* target = doubleColumn(plotData, column);
  vtkDoubleArray* factor = doubleColumn(plotData, byColumn);
  if (!target || !factor || target->GetNumberOfTuples() < 1) return;
  double* values = target->GetPointer(0);
  double const* by = factor->GetPointer(0);
  for (vtkIdType i = 0; i < plotData->GetNumberOfRows(); ++i) {
    // Read first: the two columns may be one.
    const double f = by[i];
    values[i] = divide ? values[i] / f : values[i] * f;
  }
  runIndex->clear();
}
