#include "app/explorer/document/GatePreview.h"

#include "app/view/ThreadPool.h"

#include <chrono>
#include <utility>

namespace runsieve::app {

namespace {

constexpr auto patience = std::chrono::milliseconds(8); ///< of preparing, so that a hover doesn't stutter
constexpr qint64 leastPause = 100;                      ///< ms between distances that a reader can follow

} // namespace

void GatePreview::reset(Scan const* opened, RunSet compared)
{
  live.reset();
  fixedFor.reset();
  scan = opened;
  eligible = std::move(compared);
}

LiveSieve& GatePreview::sieve()
{
  if (!live) live = std::make_unique<LiveSieve>(*scan, eligible);
  return *live;
}

bool GatePreview::prepare(std::size_t output)
{
  if (!scan || output >= scan->outputs.size()) return true;
  const auto start = std::chrono::steady_clock::now();
  LiveWork work;
  work.interrupted = [start] { return std::chrono::steady_clock::now() - start > patience; };
  return sieve().prepare(output, work);
}

void GatePreview::forgetOthers()
{
  fixedFor.reset();
}

RunSet GatePreview::passing(std::size_t index, ResolvedGate const& gate, GateOutcomes const& others)
{
  const bool any = others.joined() == GateJoin::Any;
  if (fixedFor != index) {
    sieve().setFixed(any ? RunSet(scan->runs.size(), true) : others.passingBut(index));
    sinceDistances.invalidate();
  }
  fixedFor = index;
  isJoint = !any;
  LiveWork work;
  work.runner = sharedThreads();
  sieve().update(gate, work);
  std::vector<std::uint8_t> const& mask = sieve().mask();
  RunSet through(mask.size());
  for (std::size_t run = 0; run < mask.size(); ++run) through.set(run, mask[run] != 0);
  if (any && others.sievesBut(index)) through |= others.passingBut(index);
  return through;
}

std::optional<std::vector<LiveDistance>> GatePreview::newDistances()
{
  if (!isJoint || (sinceDistances.isValid() && sinceDistances.elapsed() < leastPause)) return std::nullopt;
  auto distances = sieve().distances();
  sinceDistances.start();
  return distances;
}

} // namespace runsieve::app
