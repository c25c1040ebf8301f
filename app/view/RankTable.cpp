#include "app/view/RankTable.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <vtkDoubleArray.h>
#include <vtkTable.h>

namespace runsieve::app {

namespace {

constexpr std::size_t passingRanked = 3;
constexpr std::size_t othersRanked = 6;

/// Median of the ascending column of a parameter in a ranked table.
double medianOf(vtkTable* ranked, std::size_t parameter)
{
  auto* sorted = vtkDoubleArray::SafeDownCast(ranked->GetColumn(static_cast<vtkIdType>(2 * parameter + 1)));
  const vtkIdType n = sorted ? sorted->GetNumberOfTuples() : 0;
  if (n == 0) return std::numeric_limits<double>::quiet_NaN();
  return 0.5 * (sorted->GetValue((n - 1) / 2) + sorted->GetValue(n / 2));
}

} // namespace

std::vector<RankedParameter> rankedParameters(PlotContainer const& plot)
{
  std::vector<RankedParameter> ranked;
  PlotMetaData const& settings = *plot.metaData;
  if (plot.tables.size() <= othersRanked) return ranked;
  const std::size_t count = std::min(plot.ksStatistics.size(), settings.parameterColumns.size());
  for (std::size_t i = 0; i < count; ++i) {
    const auto [p, d] = plot.ksStatistics[i];
    const auto column = static_cast<std::size_t>(settings.parameterColumns[i]);
    const bool significant = p <= settings.getPThreshold() && d >= settings.getKsThreshold();
    ranked.push_back({plot.typedColumnNames[column].second, p, d, medianOf(plot.tables[passingRanked], i),
                      medianOf(plot.tables[othersRanked], i), significant});
  }
  std::stable_sort(ranked.begin(), ranked.end(), [](RankedParameter const& a, RankedParameter const& b) {
    return std::make_tuple(!a.significant, a.p, -a.d) < std::make_tuple(!b.significant, b.p, -b.d);
  });
  return ranked;
}

} // namespace runsieve::app
