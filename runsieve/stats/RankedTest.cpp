#include <runsieve/stats/RankedTest.h>

#include <runsieve/core/kernels/KolmogorovSmirnov.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkDoubleArray.h>
#include <vtkTable.h>

#include <algorithm>
#include <cmath>

namespace runsieve {

namespace {

using Ks = KolmogorovSmirnov<double*, double*>;

double statisticOf(vtkDoubleArray* a, vtkDoubleArray* b)
{
  if (!a || !b || a->GetNumberOfTuples() == 0 || b->GetNumberOfTuples() == 0) return 0.0;
  return Ks::statistic(a->GetPointer(0), a->GetPointer(0) + a->GetNumberOfTuples(), b->GetPointer(0),
                       b->GetPointer(0) + b->GetNumberOfTuples());
}

} // namespace

std::vector<KsStatistics> compareRanked(vtkTable* first, vtkTable* second)
{
  std::vector<KsStatistics> statistics;
  if (!first || !second) return statistics;
  const vtkIdType pairs = std::min(first->GetNumberOfColumns(), second->GetNumberOfColumns()) / 2;
  const auto nA = static_cast<double>(first->GetNumberOfRows());
  const auto nB = static_cast<double>(second->GetNumberOfRows());
  const double effective = std::floor(nA * nB / (nA + nB)); // NaN for two empty samples
  const std::size_t n = effective > 0.0 ? static_cast<std::size_t>(effective) : 0;
  for (vtkIdType i = 0; i < pairs; ++i) {
    const double d = statisticOf(doubleColumn(first, 2 * i + 1), doubleColumn(second, 2 * i + 1));
    statistics.push_back({std::min(Ks::p(d, n), 1.0), d});
  }
  return statistics;
}

} // namespace runsieve
