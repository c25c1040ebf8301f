#include "app/explorer/gates/GateCounts.h"

#include "app/cli/GatedScan.h"

#include <runsieve/core/gate/GateRuns.h>

namespace runsieve::app {

GateCounts::GateCounts(Document& ofDocument, std::optional<std::size_t> index, QObject* parent)
    : QObject(parent), document(ofDocument)
{
  isOnly = true;
  const bool all = document.state().join == GateJoin::All;
  others = RunSet(document.scan().runs.size(), all);
  for (std::size_t i = 0; i < document.state().gates.size(); ++i) {
    if (i == index || !document.state().gates[i].on || !document.outcomes()[i].resolved) continue;
    isOnly = false;
    if (all)
      others &= document.outcomes()[i].alone;
    else
      others |= document.outcomes()[i].alone;
  }
  connect(&work, &Background::failed, this, &GateCounts::failed);
}

void GateCounts::count(Gate const& gate)
{
  work.start([this, gate, scan = document.sharedScan(), others = others, isOnly = isOnly,
              join = document.state().join](Background::Cancelled const&) -> std::function<void()> {
    RunSet through = runsThrough(resolveGate(gate, *scan), *scan, gateContext());
    const std::size_t alone = through.count();
    if (!isOnly && join == GateJoin::All) through &= others;
    if (!isOnly && join == GateJoin::Any) through |= others;
    return [this, alone, all = through.count()] { Q_EMIT counted(alone, all); };
  });
}

void GateCounts::cancel()
{
  work.cancel();
}

} // namespace runsieve::app
