#include <runsieve/styles/ParametersToShow.h>

#include <algorithm>

namespace runsieve {

std::vector<int> parametersToShow(std::vector<KsStatistics> const& statistics, std::size_t count,
                                  double pThreshold, double ksThreshold)
{
  std::vector<int> shown;
  std::vector<int> reserve;
  for (std::size_t i = 0; i < std::min(statistics.size(), count); ++i) {
    const bool significant = pThreshold >= statistics[i].p && statistics[i].d >= ksThreshold;
    (significant ? shown : reserve).push_back(static_cast<int>(i));
  }
  const std::size_t wholeRows = (shown.size() + chartsPerRow - 1) / chartsPerRow * chartsPerRow;
  const std::size_t goal = std::min(std::max<std::size_t>(wholeRows, chartsPerRow), count);
  for (std::size_t i = 0; i < reserve.size() && shown.size() < goal; ++i) shown.push_back(reserve[i]);
  for (int i = 0; shown.size() < goal; ++i)
    if (std::find(shown.begin(), shown.end(), i) == shown.end()) shown.push_back(i);
  return shown;
}

} // namespace runsieve
