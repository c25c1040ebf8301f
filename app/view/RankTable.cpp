#include "app/view/RankTable.h"

#include <vtkDoubleArray.h>
#include <vtkTable.h>

#include <algorithm>
#include <cstddef>

namespace runsieve::app {

namespace {

constexpr std::size_t passingRanked = 3;
constexpr std::size_t othersRanked = 6;

/// Median of the ascending column of a parameter in a ranked table.
double medianOf(vtkTable* ranked, std::size_t parameter)
{
  auto* sorted = vtkDoubleArray::SafeDownCast(ranked->GetColumn(static_cast<vtkIdType>(2 * parameter + 1)));
  if (!sorted) return medianOfSorted(nullptr, 0);
  return medianOfSorted(sorted->GetPointer(0), static_cast<std::size_t>(sorted->GetNumberOfTuples()));
}

} // namespace

std::vector<RankedParameter> rankedParameters(PlotContainer const& plot)
{
  std::vector<RankedParameter> ranked;
  PlotMetaData const& settings = *plot.metaData;
  if (plot.tables.size() <= othersRanked) return ranked;
  const Thresholds thresholds{settings.getPThreshold(), settings.getKsThreshold()};
  const std::size_t count = std::min(plot.ksStatistics.size(), settings.parameterColumns.size());
  for (std::size_t i = 0; i < count; ++i) {
    const auto [p, d] = plot.ksStatistics[i];
    const auto column = static_cast<std::size_t>(settings.parameterColumns[i]);
    ranked.push_back({plot.typedColumnNames[column].second, p, d, medianOf(plot.tables[passingRanked], i),
                      medianOf(plot.tables[othersRanked], i), isSignificant(p, d, thresholds), i});
  }
  rankByDifference(ranked);
  return ranked;
}

} // namespace runsieve::app
