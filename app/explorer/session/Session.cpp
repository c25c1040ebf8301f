#include "app/explorer/session/Session.h"

#include <runsieve/core/read/ParametersFile.h>
#include <runsieve/core/sieve/Fingerprint.h>

#include <QFile>
#include <QFileInfo>

#include <stdexcept>
#include <utility>

namespace runsieve::app {

namespace {

/// Position of a column by its full name; nothing if it is gone or several have the name.
std::optional<std::size_t> outputOf(Scan const& scan, std::string const& name)
{
  try {
    return scan.findOutput(name);
  } catch (std::invalid_argument const&) {
    return std::nullopt;
  }
}

std::optional<std::size_t> parameterOf(Scan const& scan, std::string const& name)
{
  try {
    return scan.findParameter(name);
  } catch (std::invalid_argument const&) {
    return std::nullopt;
  }
}

SessionView viewOf(ViewState const& view, Scan const& scan)
{
  SessionView kept;
  auto const output = [&](std::size_t i) { return scan.outputs[i].label.fullName(); };
  for (std::size_t const i : view.outputs)
    if (i < scan.outputs.size()) kept.outputs.push_back(output(i));
  for (auto const& [i, on] : view.logOutputs)
    if (i < scan.outputs.size()) kept.logOutputs[output(i)] = on;
  for (auto const& [i, range] : view.outputRanges)
    if (i < scan.outputs.size()) kept.outputRanges[output(i)] = range;
  for (auto const& [i, on] : view.logParameters)
    if (i < scan.parameters.size()) kept.logParameters[scan.parameters[i].label.fullName()] = on;
  kept.timeRange = view.timeRange;
  kept.runsLook = view.runsLook;
  kept.focus = view.focus;
  kept.parameterLook = view.parameterLook;
  return kept;
}

QString shown(std::string const& text)
{
  return QString("\"%1\"").arg(QString::fromStdString(text));
}

ViewState viewOn(SessionView const& kept, Scan const& scan, QStringList& notes)
{
  ViewState view;
  view.outputs.clear();
  for (std::string const& name : kept.outputs) {
    if (auto const i = outputOf(scan, name))
      view.outputs.push_back(*i);
    else
      notes << QString("the scan has no output %1, which was shown").arg(shown(name));
  }
  for (auto const& [name, on] : kept.logOutputs)
    if (auto const i = outputOf(scan, name)) view.logOutputs[*i] = on;
  for (auto const& [name, range] : kept.outputRanges)
    if (auto const i = outputOf(scan, name)) view.outputRanges[*i] = range;
  for (auto const& [name, on] : kept.logParameters)
    if (auto const i = parameterOf(scan, name)) view.logParameters[*i] = on;
  view.timeRange = kept.timeRange;
  view.runsLook = kept.runsLook;
  view.focus = kept.focus;
  view.parameterLook = kept.parameterLook;
  return view;
}

/// So that it is found whatever the folder in which a program is started.
std::string rooted(std::string const& path)
{
  return QFileInfo(QFile::decodeName(path.c_str())).absoluteFilePath().toStdString();
}

SieveCounts countsOf(Document const& document)
{
  SieveCounts counts;
  counts.runs = document.scan().runs.size();
  counts.passing = document.passing().count();
  for (std::size_t i = 0; i < document.outcomes().size(); ++i)
    if (document.state().gates[i].on) counts.afterGate.push_back(document.outcomes()[i].left);
  return counts;
}

} // namespace

Session sessionOf(Document const& document, std::optional<std::string> fingerprint)
{
  Session session;
  session.program = "runsieve " RUNSIEVE_VERSION;
  Scan const& scan = document.scan();
  State const& state = document.state();
  if (!document.source().path.empty()) session.path = rooted(document.source().path);
  session.fingerprint = fingerprint ? std::move(*fingerprint) : fingerprintOf(scan);
  session.read = document.source().read;
  session.read.progress = nullptr;
  if (!session.read.parametersFile.empty())
    session.read.parametersFile = rooted(givenParametersFile(document.source().path, session.read));
  session.counts = countsOf(document);
  session.gates = state.gates;
  session.join = state.join;
  session.method = state.method;
  for (NamedSet const& set : state.sets) {
    std::vector<RunKey> keys = keysOf(set.runs, scan);
    keys.insert(keys.end(), set.absent.begin(), set.absent.end());
    session.sets.push_back({set.name, std::move(keys), set.color, set.shown, set.origin});
  }
  session.view = viewOf(state.view, scan);
  for (std::size_t const run : document.pins().inOrder()) session.pinned.emplace_back(scan.runs[run].key);
  return session;
}

RestoredState restoredOn(Session const& session, Scan const& scan)
{
  RestoredState restored;
  restored.state.gates = session.gates;
  restored.state.join = session.join;
  restored.state.method = session.method;
  for (SessionSet const& set : session.sets) {
    std::vector<RunKey> absent;
    RunSet runs = runsOf(set.runs, scan, &absent);
    const std::size_t all = runs.count() + countOf(absent);
    if (!absent.empty())
      restored.notes << QString("the scan has %L1 of the %L2 runs of the set %3; the others come back with "
                                "data that have them")
                            .arg(runs.count())
                            .arg(all)
                            .arg(shown(set.name));
    restored.state.sets.push_back(
        {set.name, std::move(runs), set.color, set.shown, set.origin, std::move(absent)});
  }
  restored.state.view = viewOn(session.view, scan, restored.notes);
  std::vector<RunKey> unpinned;
  restored.pinned = PinnedRuns(orderedRuns(session.pinned, scan, &unpinned));
  if (!unpinned.empty())
    restored.notes << QString("pinned runs that the scan does not have: %L1").arg(countOf(unpinned));
  return restored;
}

QStringList applySession(Document& document, Session const& session, std::shared_ptr<Scan const> const& scan,
                         ScanSource source)
{
  RestoredState restored = restoredOn(session, *scan);
  document.open(scan, std::move(source), std::move(restored.state));
  document.setPins(std::move(restored.pinned));
  for (std::string const& name : gatesWithoutEffect(document.state().gates, document.outcomes()))
    restored.notes << QString("the gate %1 does not fit the scan and asks for nothing").arg(shown(name));
  return restored.notes;
}

} // namespace runsieve::app
