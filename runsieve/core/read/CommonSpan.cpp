#include <runsieve/core/read/CommonSpan.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace runsieve {

namespace {

constexpr double nearSteps = 3.0;
constexpr double nearShare = 0.1; ///< of the span of a run
constexpr std::size_t oneOf = 10; ///< of so many runs may go on behind the common end

/// Where a run ends, and how far away another end is still the same.
struct End
{
  double time;
  double tolerance;

  [[nodiscard]] double low() const { return time - tolerance; }
  [[nodiscard]] double high() const { return time + tolerance; }
};

double toleranceOf(RunTimes const& runs, std::size_t run, double stepAtEnd)
{
  double const span = runs.last(run) - runs.first(run);
  double const meanStep = span / static_cast<double>(runs.length(run) - 1);
  return std::min(nearSteps * std::max(stepAtEnd, meanStep), nearShare * span);
}

/// The time that is an end of the most runs, of those that few runs go on behind; the latest of several.
double mostCommon(std::vector<End> const& ends)
{
  std::vector<double> lows;
  std::vector<double> highs;
  for (End const& end : ends) {
    lows.push_back(end.low());
    highs.push_back(end.high());
  }
  std::sort(lows.begin(), lows.end());
  std::sort(highs.begin(), highs.end());
  std::size_t most = 0;
  double found = lows.back();
  for (std::size_t i = ends.size() - 1 - ends.size() / oneOf; i < ends.size(); ++i) {
    auto const over =
        static_cast<std::size_t>(std::lower_bound(highs.begin(), highs.end(), lows[i]) - highs.begin());
    if (i + 1 - over < most) continue;
    most = i + 1 - over;
    found = lows[i];
  }
  return found;
}

double commonEnd(std::vector<End> const& ends)
{
  double const wanted = mostCommon(ends);
  double common = ends.front().time;
  bool isFirst = true;
  for (End const& end : ends) {
    if (end.low() > wanted || end.high() < wanted) continue;
    common = isFirst ? end.time : std::min(common, end.time);
    isFirst = false;
  }
  return common;
}

} // namespace

TimeSpan commonSpan(RunTimes const& runs)
{
  std::vector<End> starts; // of time that runs backwards
  std::vector<End> ends;
  for (std::size_t run = 0; run < runs.runs(); ++run) {
    double const* const times = runs.of(run);
    std::size_t const count = runs.length(run);
    double const firstStep = count > 1 ? times[1] - times[0] : 0.0;
    double const lastStep = count > 1 ? times[count - 1] - times[count - 2] : 0.0;
    starts.push_back({-runs.first(run), count > 1 ? toleranceOf(runs, run, firstStep) : 0.0});
    ends.push_back({runs.last(run), count > 1 ? toleranceOf(runs, run, lastStep) : 0.0});
  }
  return {-commonEnd(starts), commonEnd(ends)};
}

} // namespace runsieve
