#include "app/explorer/document/Opening.h"

#include "app/simulate/SimulateScan.h"
#include "app/view/SievedScan.h"

#include <QFile>
#include <QMetaObject>

#include <exception>
#include <string>
#include <utility>

namespace runsieve::app {

namespace {

/// What was selected, as a gate on the runs themselves.
NamedGate selectionGate(Scan const& scan, RunSet const& selected)
{
  NamedGate gate;
  gate.name = "Selection of the plot";
  gate.gate.kind = GateKind::Runs;
  for (std::size_t const run : selected.members()) gate.gate.runs.emplace_back(scan.runs[run].key);
  return gate;
}

State stateOf(OpenedScan const& opened)
{
  State state;
  state.view.outputs = {opened.output};
  if (opened.thresholds) state.method.thresholds = *opened.thresholds;
  state.join = opened.join;
  for (Gate const& gate : opened.gates)
    state.gates.push_back({"Gate " + std::to_string(state.gates.size() + 1), gate, true});
  if (opened.gates.empty() && opened.selected)
    state.gates.push_back(selectionGate(opened.scan, *opened.selected));
  return state;
}

} // namespace

Opening::Opening(QObject* parent) : QObject(parent)
{
  connect(&work, &Background::busyChanged, this, [this] {
    if (!work.isBusy()) Q_EMIT ended();
  });
}

void Opening::begin(QString const& name, Background::Work piece)
{
  work.cancel();
  file = name;
  Q_EMIT begun(name);
  work.start([this, name,
              piece = std::move(piece)](Background::Cancelled const& cancelled) -> std::function<void()> {
    try {
      return piece(cancelled);
    } catch (ReadCancelled const&) {
      return {};
    } catch (std::exception const& error) {
      return [this, name, message = QString::fromUtf8(error.what())] { Q_EMIT failed(name, message); };
    }
  });
}

void Opening::start(QString const& path, ReadOptions const& options)
{
  begin(path, [this, path, options](Background::Cancelled const& cancelled) -> std::function<void()> {
    const std::string name = QFile::encodeName(path).toStdString();
    ReadOptions read = options;
    read.progress = [this, &cancelled](double share) {
      QMetaObject::invokeMethod(
          this, [this, share] { Q_EMIT progressed(share); }, Qt::QueuedConnection);
      return !cancelled();
    };
    OpenedScan opened;
    if (isStoredPlot(name)) {
      opened = openedOf(readPlot(name));
    } else {
      ScanFile found = readScan(name, read);
      opened.scan = std::move(found.scan);
      opened.report = std::move(found.report);
    }
    const State state = stateOf(opened);
    const ScanSource source{name, options, std::move(opened.report)};
    auto const scan = std::make_shared<Scan const>(std::move(opened.scan));
    return [this, scan, source, state] { Q_EMIT finished(scan, source, state); };
  });
}

void Opening::startExample()
{
  begin("Example", [this](Background::Cancelled const&) -> std::function<void()> {
    auto const scan = std::make_shared<Scan const>(simulateScan(exampleModel(), {}));
    return [this, scan] { Q_EMIT finished(scan, {}, {}); };
  });
}

void Opening::cancel()
{
  work.cancel();
}

} // namespace runsieve::app
