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

std::vector<KsStatistics> compareRanked(vtkTable* first, vtkTable* second, BlockRunner const& runner)
{
  if (!first || !second) return {};
  const vtkIdType pairs = std::min(first->GetNumberOfColumns(), second->GetNumberOfColumns()) / 2;
  const auto nA = static_cast<std::size_t>(first->GetNumberOfRows());
  const auto nB = static_cast<std::size_t>(second->GetNumberOfRows());
  std::vector<KsStatistics> statistics(static_cast<std::size_t>(pairs));
  runBlocks(runner, statistics.size(), [&](std::size_t i) {
    const auto column = static_cast<vtkIdType>(2 * i + 1);
    const double d = statisticOf(doubleColumn(first, column), doubleColumn(second, column));
    const TwoSampleTest test = testOf(d, nA, nB);
    statistics[i] = {test.p, test.d};
  });
  return statistics;
}

} // namespace runsieve
