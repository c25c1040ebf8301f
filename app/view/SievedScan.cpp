#include "app/view/SievedScan.h"

#include "app/view/QuietLibrary.h"

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/core/gate/GateRows.h>

#include <utility>

namespace runsieve::app {

OpenedScan openedOf(StoredPlot const& stored)
{
  OpenedScan opened;
  opened.scan = scanOf(stored.scan);
  applyNotes(stored.notes, opened.scan);
  opened.report.format = "stored plot";
  opened.output = stored.view.output;
  opened.thresholds = Thresholds{stored.view.pThreshold, stored.view.ksThreshold};
  opened.gates = stored.gates;
  opened.join = stored.join;
  if (!stored.selectedRows.empty())
    opened.selected = runsThrough(stored.selectedRows, opened.scan.runs.size(), opened.scan.times.size());
  return opened;
}

SievedScan::SievedScan(SieveArguments const& arguments)
{
  if (isStoredPlot(arguments.file)) {
    stored = readPlot(arguments.file);
    gated = app::gated(openedOf(stored), arguments);
  } else {
    gated = openGated(arguments);
    stored.scan = linePlotTableOf(gated.scan());
    stored.notes = notesOf(gated.scan(), stored.scan);
  }
  stored.gates = gated.gates;
  stored.join = gated.join;
  if (gated.gates.empty()) return;
  stored.selectedRows = rowsToSelect(gated.passed.runs, gated.passed.resolved(), gated.scan());
  auto const& first = gated.passed.gates.front().gate;
  if (first.target != GateTarget::Output || first.column == stored.view.output) return;
  stored.view.output = first.column;
  stored.window.valid = false; // it was that of another output
}

void SievedScan::applyTo(PlotContainer& plot, ViewOptions const& options) const
{
  const QuietLibrary quiet;
  StoredPlot shown = stored;
  if (options.output != stored.view.output) shown.window.valid = false; // it was that of another output
  shown.view = options;
  showPlot(plot, shown);
}

} // namespace runsieve::app
