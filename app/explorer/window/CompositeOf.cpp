#include "app/explorer/window/CompositeOf.h"

#include "app/composite/CompositeWindow.h"
#include "app/explorer/document/Document.h"
#include "app/explorer/session/ErrorDialog.h"

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/core/gate/GateRows.h>

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>

#include <exception>

namespace runsieve::app {

StoredPlot plotOf(Document const& document)
{
  State const& state = document.state();
  StoredPlot plot;
  plot.scan = linePlotTableOf(document.scan());
  plot.notes = notesOf(document.scan(), plot.scan);
  plot.view.output = state.view.outputs.front();
  plot.view.density = state.view.parameterLook == ParameterLook::Densities;
  plot.view.quantiles = state.view.runsLook == RunsLook::Bands;
  plot.view.plainLines = state.view.runsLook == RunsLook::Lines;
  plot.view.pThreshold = state.method.thresholds.largestP;
  plot.view.ksThreshold = state.method.thresholds.smallestD;
  plot.join = state.join;
  std::vector<ResolvedGate> resolved;
  for (std::size_t i = 0; i < state.gates.size(); ++i) {
    GateOutcome const& outcome = document.outcomes()[i];
    if (!state.gates[i].on || !outcome.resolved) continue;
    plot.gates.push_back(state.gates[i].gate);
    resolved.push_back(*outcome.resolved);
  }
  if (document.sieves()) plot.selectedRows = rowsToSelect(document.passing(), resolved, document.scan());
  return plot;
}

void showComposite(Document const& document, QString const& path, QWidget* parent)
{
  auto* window = new CompositeWindow(parent);
  window->setAttribute(Qt::WA_DeleteOnClose);
  constexpr int width = 1200;
  constexpr int height = 900;
  window->resize(width, height);
  window->show();
  window->show(plotOf(document), QFileInfo(path).fileName());
}

void savePlot(Document const& document, QWidget* parent)
{
  QString path = QFileDialog::getSaveFileName(parent, "Save plot", "plot.rsd", "Stored plot (*.rsd)");
  if (path.isEmpty()) return;
  if (QFileInfo(path).suffix().isEmpty()) path += ".rsd";
  try {
    writePlot(plotOf(document), QFile::encodeName(path).toStdString());
  } catch (std::exception const& error) {
    ErrorDialog::tell(parent, "The plot could not be saved", QString::fromUtf8(error.what()));
  }
}

} // namespace runsieve::app
