#include <runsieve/styles/ParametersToShow.h>

#include <algorithm>

namespace runsieve {

namespace {

/// All positions below count, those of the order first.
std::vector<int> inOrder(std::vector<int> const& order, std::size_t count)
{
  std::vector<int> positions;
  std::vector<bool> taken(count);
  auto const take = [&](int position) {
    if (position < 0 || static_cast<std::size_t>(position) >= count) return;
    if (taken[static_cast<std::size_t>(position)]) return;
    taken[static_cast<std::size_t>(position)] = true;
    positions.push_back(position);
  };
  for (int const position : order) take(position);
  for (std::size_t i = 0; i < count; ++i) take(static_cast<int>(i));
  return positions;
}

} // namespace

std::vector<int> parametersToShow(std::vector<KsStatistics> const& statistics, std::size_t count,
                                  double pThreshold, double ksThreshold, std::vector<int> const& order)
{
  std::vector<int> shown;
  std::vector<int> reserve;
  const std::vector<int> positions = inOrder(order, count);
  for (int const position : positions) {
    const auto i = static_cast<std::size_t>(position);
    if (i >= statistics.size()) continue;
    const bool significant = pThreshold >= statistics[i].p && statistics[i].d >= ksThreshold;
    (significant ? shown : reserve).push_back(position);
  }
  const std::size_t wholeRows = (shown.size() + chartsPerRow - 1) / chartsPerRow * chartsPerRow;
  const std::size_t goal = std::min(std::max<std::size_t>(wholeRows, chartsPerRow), count);
  for (std::size_t i = 0; i < reserve.size() && shown.size() < goal; ++i) shown.push_back(reserve[i]);
  for (std::size_t k = 0; k < positions.size() && shown.size() < goal; ++k)
    if (std::find(shown.begin(), shown.end(), positions[k]) == shown.end()) shown.push_back(positions[k]);
  if (order.empty()) return shown;
  std::vector<int> ordered;
  for (int const position : positions)
    if (std::find(shown.begin(), shown.end(), position) != shown.end()) ordered.push_back(position);
  return ordered;
}

} // namespace runsieve
