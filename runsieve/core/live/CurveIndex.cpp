#include <runsieve/core/live/CurveIndex.h>

#include <runsieve/core/live/BlockWork.h>

#include <algorithm>

namespace runsieve {

namespace {

void markBlock(CurveBlock& block, ResolvedGate const& gate, std::uint8_t* marks)
{
  GridSpan const span{gate.first, gate.last};
  ValueRange const range{gate.range.low, gate.range.high};
  if (gate.gate.kind == GateKind::Inside)
    block.inside(span, range, marks);
  else
    block.ever(span, range, marks);
}

} // namespace

bool isRectangle(ResolvedGate const& gate)
{
  GateKind const kind = gate.gate.kind;
  return gate.target == GateTarget::Output &&
         (kind == GateKind::Inside || kind == GateKind::Ever || kind == GateKind::Never);
}

CurveIndex::CurveIndex(Scan const& scan, std::size_t output)
    : output(output), runs(scan.runs.size()), times(scan.times.size()), values(scan.outputs[output].values)
{
  for (std::size_t first = 0; first < runs; first += CurveBlock::mostRuns)
    blocks.emplace_back(values.get() + first * times, std::min(CurveBlock::mostRuns, runs - first), times);
}

bool CurveIndex::prepare(LiveWork const& work)
{
  return inBlocks(work, blocks.size(), [&](std::size_t block) { blocks[block].prepare({0, times - 1}); });
}

bool CurveIndex::mark(ResolvedGate const& gate, std::uint8_t* marks, LiveWork const& work)
{
  bool const opposite = (gate.gate.kind == GateKind::Never) != gate.gate.negated;
  return inBlocks(work, blocks.size(), [&](std::size_t block) {
    std::size_t const first = block * CurveBlock::mostRuns;
    markBlock(blocks[block], gate, marks + first);
    if (!opposite) return;
    std::size_t const end = std::min(first + CurveBlock::mostRuns, runs);
    for (std::size_t run = first; run < end; ++run) marks[run] ^= 1u;
  });
}

} // namespace runsieve
