#include <runsieve/core/inference/BoxChoice.h>

#include <runsieve/core/inference/BoxPasting.h>
#include <runsieve/core/inference/BoxSignificance.h>

#include <stdexcept>

namespace runsieve {

namespace {

/// Whether a / b > c / d, of positive denominators.
bool isLarger(std::size_t a, std::size_t b, std::size_t c, std::size_t d)
{
  return a * d > c * b;
}

std::size_t densestStep(BoxPath const& path, double leastCoverage)
{
  std::size_t best = 0;
  for (std::size_t step = 1; step < path.steps.size(); ++step) {
    BoxTally const& a = path.steps[step].inside;
    BoxTally const& b = path.steps[best].inside;
    if (path.measures(step).coverage() >= leastCoverage && isLarger(a.passing, a.runs, b.passing, b.runs))
      best = step;
  }
  return best;
}

// With p of n runs inside passing, and P in all, 2 c d / (c + d) = 2 p / (n + P).
std::size_t kneeStep(BoxPath const& path)
{
  std::size_t best = 0;
  for (std::size_t step = 1; step < path.steps.size(); ++step) {
    BoxTally const& a = path.steps[step].inside;
    BoxTally const& b = path.steps[best].inside;
    if (isLarger(a.passing, a.runs + path.all.passing, b.passing, b.runs + path.all.passing)) best = step;
  }
  return best;
}

} // namespace

std::size_t chosenStep(BoxPath const& path, std::optional<double> leastCoverage)
{
  if (path.steps.empty()) throw std::invalid_argument("a path without boxes");
  if (!leastCoverage) return kneeStep(path);
  if (!(*leastCoverage >= 0.0 && *leastCoverage <= 1.0))
    throw std::invalid_argument("the coverage of a box is not in 0 to 1");
  return densestStep(path, *leastCoverage);
}

std::optional<Box> chosenBox(BoxTable const& table, BoxSample const& sample, BoxPath const& path,
                             PeelOptions const& options, BoxRule const& rule, StopAsked const& stopAsked)
{
  std::optional<Box> box = path.box(chosenStep(path, rule.leastCoverage));
  if (rule.paste) box = pasted(table, sample, std::move(*box), options, stopAsked);
  if (box && rule.largestQuasiP) box = significantLimits(table, sample, std::move(*box), *rule.largestQuasiP);
  return box;
}

} // namespace runsieve
