#include <runsieve/core/live/LiveSieve.h>

#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/core/live/BlockWork.h>
#include <runsieve/core/live/ChangedRuns.h>
#include <runsieve/core/live/CurveIndex.h>
#include <runsieve/core/live/LiveParameter.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

namespace runsieve {

namespace {

using Mask = std::vector<std::uint8_t>;

void requireRuns(std::size_t found, Scan const& scan, char const* what)
{
  if (found != scan.runs.size())
    throw std::invalid_argument(std::string(what) + " is of " + std::to_string(found) +
                                " runs, the scan has " + std::to_string(scan.runs.size()));
}

std::size_t countOf(Mask const& mask)
{
  return static_cast<std::size_t>(std::count(mask.begin(), mask.end(), 1));
}

void leaveCommon(Mask& mask, Mask const& other)
{
  for (std::size_t run = 0; run < mask.size(); ++run) mask[run] &= other[run];
}

} // namespace

struct LiveSieve::Private
{
  Private(Scan const& scan, RunSet eligibleRuns)
      : scan(scan), eligible(std::move(eligibleRuns)), fixed(scan.runs.size(), 1), passing(fixed),
        next(fixed), compared(scan.runs.size(), 0), parameters(scan.parameters.size())
  {
    requireRuns(eligible.runs(), scan, "the set of eligible runs");
    for (ScanParameter const& parameter : scan.parameters)
      requireRuns(parameter.values.size(), scan, "a parameter");
  }

  CurveIndex& curvesOf(std::size_t output)
  {
    if (!curves || curves->positionOfOutput() != output) curves.emplace(scan, output);
    return *curves;
  }

  bool prepareParameters(LiveWork const& work)
  {
    return inBlocks(work, parameters.size(), [&](std::size_t i) {
      if (parameters[i]) return;
      parameters[i].emplace(scan, i, eligible);
      parameters[i]->flip(comparedRuns(), compared.data());
    });
  }

  [[nodiscard]] std::vector<std::uint32_t> comparedRuns() const
  {
    std::vector<std::uint32_t> runs;
    findChanged(Mask(compared.size(), 0), compared, runs);
    return runs;
  }

  /// \return false if interrupted
  bool mark(ResolvedGate const& moving, LiveWork const& work)
  {
    if (isRectangle(moving)) return curvesOf(moving.column).mark(moving, next.data(), work);
    next = runsThrough(moving, scan).mask();
    return true;
  }

  std::size_t takeNext()
  {
    findChanged(passing, next, changed);
    passing.swap(next);
    return countOf(passing);
  }

  Scan const& scan;
  RunSet eligible;
  Mask fixed;    ///< runs that pass the gates that stand still
  Mask passing;  ///< those that pass now
  Mask next;     ///< room for those that pass next
  Mask compared; ///< those that the parameters know as passing
  std::vector<std::uint32_t> changed;
  std::vector<std::optional<LiveParameter>>
      parameters; ///< in the order of the scan; nothing before it is needed
  std::optional<CurveIndex> curves;
};

LiveSieve::LiveSieve(Scan const& scan) : LiveSieve(scan, RunSet(scan.runs.size(), true)) {}

LiveSieve::LiveSieve(Scan const& scan, RunSet eligible)
    : d(std::make_unique<Private>(scan, std::move(eligible)))
{}

LiveSieve::LiveSieve(LiveSieve&&) noexcept = default;
LiveSieve& LiveSieve::operator=(LiveSieve&&) noexcept = default;
LiveSieve::~LiveSieve() = default;

bool LiveSieve::prepare(std::size_t output, LiveWork const& work)
{
  return d->curvesOf(output).prepare(work) && d->prepareParameters(work);
}

std::size_t LiveSieve::setFixed(RunSet const& fixed)
{
  requireRuns(fixed.runs(), d->scan, "the set of runs that pass the fixed gates");
  d->fixed = fixed.mask();
  d->next = d->fixed;
  return d->takeNext();
}

std::optional<std::size_t> LiveSieve::update(ResolvedGate const& moving, LiveWork const& work)
{
  if (!d->mark(moving, work)) return std::nullopt;
  leaveCommon(d->next, d->fixed);
  return d->takeNext();
}

std::vector<std::uint8_t> const& LiveSieve::mask() const
{
  return d->passing;
}

std::vector<std::uint32_t> const& LiveSieve::changed() const
{
  return d->changed;
}

std::optional<std::vector<LiveDistance>> LiveSieve::distances(LiveWork const& work)
{
  if (!d->prepareParameters(work)) return std::nullopt;
  std::vector<std::uint32_t> changed;
  findChanged(d->compared, d->passing, changed);
  std::vector<LiveDistance> distances(d->parameters.size());
  // Not interrupted: each parameter takes well below a millisecond, and all must know the same runs.
  inBlocks({work.runner, {}}, distances.size(), [&](std::size_t i) {
    d->parameters[i]->flip(changed, d->passing.data());
    distances[i] = d->parameters[i]->distance();
  });
  d->compared = d->passing;
  return distances;
}

} // namespace runsieve
