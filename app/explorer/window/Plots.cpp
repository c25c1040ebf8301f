#include "app/explorer/window/Plots.h"

#include "app/composite/CompositeWindow.h"
#include "app/explorer/charts/RunBands.h"
#include "app/explorer/document/ReadFiles.h"
#include "app/explorer/session/ErrorDialog.h"
#include "app/view/SaveName.h"

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/core/gate/GateRows.h>
#include <runsieve/core/scan/ScanError.h>

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

#include <utility>

namespace runsieve::app {

namespace {

constexpr char notSaved[] = "The plot could not be saved";

/// Copies of what a document changes.
struct PlotSource
{
  std::shared_ptr<Scan const> scan;
  StoredPlot plot; ///< without what the scan makes
  std::vector<ResolvedGate> resolved;
  std::optional<RunSet> passing;
};

PlotSource sourceOf(Document const& document)
{
  State const& state = document.state();
  PlotSource source;
  source.scan = document.sharedScan();
  source.plot.view.output = state.view.outputs.front();
  source.plot.view.density = state.view.parameterLook == ParameterLook::Densities;
  source.plot.view.quantiles = bandsKindOf(state.view.runsLook).has_value();
  source.plot.view.plainLines = state.view.runsLook == RunsLook::Lines;
  source.plot.view.pThreshold = state.method.thresholds.largestP;
  source.plot.view.ksThreshold = state.method.thresholds.smallestD;
  source.plot.join = state.join;
  for (std::size_t i = 0; i < state.gates.size(); ++i) {
    GateOutcome const& outcome = document.outcomes()[i];
    if (!state.gates[i].on || !outcome.resolved) continue;
    source.plot.gates.push_back(state.gates[i].gate);
    source.resolved.push_back(*outcome.resolved);
  }
  if (document.sieves()) source.passing = document.passing();
  return source;
}

/// The pointer tells that the interface is at work, as long as this lives.
struct WaitingPointer
{
  WaitingPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~WaitingPointer() { QGuiApplication::restoreOverrideCursor(); }
  WaitingPointer(WaitingPointer const&) = delete;
  WaitingPointer& operator=(WaitingPointer const&) = delete;
};

/// \param name of the scan, for the title
void openComposite(StoredPlot const& plot, QString const& name, QWidget& parent)
{
  const WaitingPointer waiting;
  auto* composite = new CompositeWindow(&parent);
  composite->setAttribute(Qt::WA_DeleteOnClose);
  constexpr int width = 1200;
  constexpr int height = 900;
  composite->resize(width, height);
  composite->show();
  composite->show(plot, name);
}

} // namespace

std::function<StoredPlot()> plotOf(Document const& document)
{
  return [source = sourceOf(document)] {
    StoredPlot plot = source.plot;
    plot.scan = linePlotTableOf(*source.scan);
    plot.notes = notesOf(*source.scan, plot.scan);
    if (source.passing) plot.selectedRows = rowsToSelect(*source.passing, source.resolved, *source.scan);
    return plot;
  };
}

Plots::Plots(Document const& ofDocument, QWidget& ofWindow)
    : QObject(&ofWindow), document(ofDocument), window(ofWindow)
{
  connect(&showing, &Background::failed, this, [this](QString const& message) {
    ErrorDialog::tell(&window, "The composite view could not be made", message);
  });
  connect(&writing, &Background::failed, this, [this](QString const& message) {
    ErrorDialog::tell(&window, notSaved, message, FileUse::Writing);
  });
}

void Plots::showComposite(QString const& path)
{
  Q_EMIT told("Making the composite view...");
  showing.start([this, make = plotOf(document),
                 name = QFileInfo(path).fileName()](Background::Cancelled const&) -> std::function<void()> {
    return [this, plot = make(), name] {
      openComposite(plot, name, window);
      Q_EMIT told(QString());
    };
  });
}

void Plots::save()
{
  const QString path = askForSaveName(&window, "Save plot", "plot.rsd", "Stored plot (*.rsd)", "rsd");
  if (!path.isEmpty()) write(path);
}

void Plots::write(QString const& path)
{
  if (writing.isBusy()) {
    Q_EMIT told("A plot is still being saved: nothing has been begun");
    return;
  }
  try {
    requireOtherFile(document.source(), path);
  } catch (ScanError const& error) {
    ErrorDialog::tell(&window, notSaved, QString::fromUtf8(error.what()), FileUse::Writing);
    return;
  }
  Q_EMIT told("Saving the plot...");
  writing.start([this, make = plotOf(document), path](Background::Cancelled const&) -> std::function<void()> {
    writePlot(make(), QFile::encodeName(path).toStdString());
    return [this, path] { Q_EMIT told("Saved " + QFileInfo(path).fileName()); };
  });
}

} // namespace runsieve::app
