#include "app/explorer/runs/RunFinder.h"

#include "app/explorer/charts/DrawnTimes.h"

#include <algorithm>
#include <cmath>

namespace runsieve::app {

std::optional<FoundRun> findRun(Scan const& scan, std::size_t output, ChartFrame const& frame,
                                QPointF const& place, double reach, RunSet const& among)
{
  const std::vector<double> drawn = drawnTimes(scan.times, frame.horizontal());
  if (!frame.plot().contains(place) || place.x() < frame.xAt(drawn.front()) - reach ||
      place.x() > frame.xAt(drawn.back()) + reach)
    return std::nullopt;
  const double time = frame.xValue(place.x());
  auto const after = std::lower_bound(scan.times.begin(), scan.times.end(), time);
  auto const second = std::min<std::ptrdiff_t>(after - scan.times.begin(),
                                               static_cast<std::ptrdiff_t>(scan.times.size()) - 1);
  const auto right = static_cast<std::size_t>(second);
  const std::size_t left = right > 0 && scan.times[right] > time ? right - 1 : right;
  const double length = scan.times[right] - scan.times[left];
  const double share = length > 0.0 ? (time - scan.times[left]) / length : 0.0;
  std::optional<std::size_t> best;
  double nearest = reach;
  for (std::size_t run = 0; run < scan.runs.size(); ++run) {
    if (!among.contains(run)) continue;
    double const* values = scan.valuesOf(output, run);
    // Lines are straight on the screen, also on a logarithmic axis.
    const double y = (1.0 - share) * frame.yAt(values[left]) + share * frame.yAt(values[right]);
    const double distance = std::fabs(y - place.y());
    if (!(distance <= nearest)) continue;
    nearest = distance;
    best = run;
  }
  if (!best) return std::nullopt;
  const std::size_t at = share > 0.5 ? right : left;
  return FoundRun{*best, scan.times[at], scan.valuesOf(output, *best)[at]};
}

} // namespace runsieve::app
