#include <runsieve/stats/RankedTest.h>

#include <runsieve/core/kernels/TwoSampleTest.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkDoubleArray.h>
#include <vtkTable.h>

#include <algorithm>

namespace runsieve {

namespace {

double statisticOf(vtkDoubleArray* a, vtkDoubleArray* b)
{
  if (!a || !b) return 0.0;
  return sortedStatistic(a->GetPointer(0), static_cast<std::size_t>(a->GetNumberOfTuples()), b->GetPointer(0),
                         static_cast<std::size_t>(b->GetNumberOfTuples()));
}

} // namespace

std::vector<KsStatistics> compareRanked(vtkTable* first, vtkTable* second)
{
  std::vector<KsStatistics> statistics;
  if (!first || !second) return statistics;
  const vtkIdType pairs = std::min(first->GetNumberOfColumns(), second->GetNumberOfColumns()) / 2;
  const auto nA = static_cast<std::size_t>(first->GetNumberOfRows());
  const auto nB = static_cast<std::size_t>(second->GetNumberOfRows());
  for (vtkIdType i = 0; i < pairs; ++i) {
    const double d = statisticOf(doubleColumn(first, 2 * i + 1), doubleColumn(second, 2 * i + 1));
    const TwoSampleTest test = testOf(d, nA, nB);
    statistics.push_back({test.p, test.d});
  }
  return statistics;
}

} // namespace runsieve
