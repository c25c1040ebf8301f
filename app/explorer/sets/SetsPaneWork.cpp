#include "app/explorer/controls/PlainText.h"
#include "app/explorer/sets/ClusterOrigin.h"
#include "app/explorer/sets/RunLists.h"
#include "app/explorer/sets/SetComparison.h"
#include "app/explorer/sets/SetsPane.h"
#include "app/explorer/sets/TypeRunsForm.h"

#include <runsieve/core/compare/Clusters.h>

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>

#include <algorithm>

namespace runsieve::app {

namespace {

/// A file that lists runs has no more than some bytes for each.
constexpr qint64 mostBytes = 256 * 1024 * 1024;

} // namespace

std::string SetsPane::keptOrigin() const
{
  std::size_t on = 0;
  for (std::size_t i = 0; i < document.state().gates.size(); ++i)
    on += document.state().gates[i].on && document.outcomes()[i].resolved ? 1 : 0;
  return on == 0 ? "all runs" : "passing " + plural(on, "gate").toStdString();
}

void SetsPane::keepPassing(std::string const& name)
{
  if (!document.isOpen()) return;
  if (document.passing().count() == 0) {
    tell("No run passes the gates, so there is nothing to keep.");
    return;
  }
  tell({});
  addSets(document, "Keep passing runs", {{name, document.passing(), keptOrigin()}});
}

void SetsPane::keepPassingRuns()
{
  if (!document.isOpen()) return;
  const std::string proposed = freeSetName(document.state().sets, "Passing");
  bool goes = false;
  const QString name = QInputDialog::getText(
      this, "Keep passing runs", QString("Name of the set of %L1 runs").arg(document.passing().count()),
      QLineEdit::Normal, QString::fromStdString(proposed), &goes);
  const QString kept = name.trimmed();
  if (goes) keepPassing(kept.isEmpty() ? proposed : kept.toStdString());
}

void SetsPane::typeRuns()
{
  if (!document.isOpen()) return;
  tell({});
  TypeRunsForm(document, this).exec();
}

void SetsPane::chooseFile()
{
  if (!document.isOpen()) return;
  const QString path = QFileDialog::getOpenFileName(this, "Set from a file with a run in each line",
                                                    QString(), "Lists (*.txt *.csv *.tsv);;All files (*)");
  if (!path.isEmpty() && document.isOpen()) readFile(path);
}

void SetsPane::readFile(QString const& path)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    tell(path + ": " + file.errorString());
    return;
  }
  if (file.size() > mostBytes) {
    tell(path + ": this file is too large for a list of runs");
    return;
  }
  const QByteArray bytes = file.readAll();
  const ListedRuns listed =
      listedRuns({bytes.constData(), static_cast<std::size_t>(bytes.size())}, document.scan());
  QStringList unknown;
  constexpr std::size_t most = 5;
  for (std::size_t i = 0; i < std::min(most, listed.unknown.size()); ++i)
    unknown << "\"" + shownText(listed.unknown[i]).left(40) + "\"";
  if (listed.unknown.size() > most) unknown << QString("and %L1 more").arg(listed.unknown.size() - most);
  const QString missing = unknown.isEmpty() ? QString() : "The scan has no runs " + unknown.join(", ") + ".";
  const QString name = QFileInfo(path).fileName();
  if (listed.runs.count() == 0) {
    tell(name + " lists no run of this scan. " + missing);
    return;
  }
  addSets(document, "Set from file",
          {{QFileInfo(path).completeBaseName().toStdString(), listed.runs, "file " + name.toStdString()}});
  tell(missing.isEmpty() ? plural(listed.runs.count(), "run") + " from " + name + "."
                         : plural(listed.runs.count(), "run") + " from " + name + ". " + missing);
}

void SetsPane::groupRuns()
{
  if (!document.isOpen() || document.scan().outputs.empty()) return;
  ClusterForm form(document, this);
  if (form.exec() == QDialog::Accepted && document.isOpen()) cluster(form.request());
}

void SetsPane::cluster(ClusterRequest const& request)
{
  tell({});
  Q_EMIT groupingBegun();
  clustering.start([this, request, scan = document.sharedScan()](
                       Background::Cancelled const& cancelled) -> std::function<void()> {
    const std::vector<int> labels =
        clusterRuns(*scan, request.output, request.mode, request.clusters, 0, {0, cancelled});
    return [this, request, scan, labels] {
      if (document.sharedScan() == scan) takeClusters(request, labels);
    };
  });
}

void SetsPane::takeClusters(ClusterRequest const& request, std::vector<int> const& labels)
{
  if (labels.empty()) {
    tell("The runs cannot be grouped.");
    return;
  }
  const std::string output = document.scan().outputs[request.output].label.name;
  const auto count = static_cast<int>(clusterSizes(labels).size());
  std::vector<NewSet> sets;
  for (int number = 0; number < count; ++number) {
    RunSet runs(labels.size());
    for (std::size_t run = 0; run < labels.size(); ++run) runs.set(run, labels[run] == number);
    // The number at the end, where names that are cut keep it.
    sets.push_back({output + ", cluster " + std::to_string(number), std::move(runs),
                    clusterOrigin(number, count, output, modeName(request.mode))});
  }
  addSets(document, "Group runs", sets);
}

void SetsPane::keepIncomplete()
{
  if (!document.isOpen()) return;
  std::vector<ScanRun> const& all = document.scan().runs;
  RunSet runs(all.size());
  for (std::size_t run = 0; run < all.size(); ++run) runs.set(run, all[run].status != RunStatus::Complete);
  if (runs.count() == 0) {
    tell("All runs are complete.");
    return;
  }
  tell({});
  addSets(document, "Set of runs that are not complete", {{"Not complete", runs, "short and failed runs"}});
}

void SetsPane::combine(SetOperation operation, bool swapped)
{
  const std::vector<std::size_t> sets = selected();
  if (sets.empty() || (operation != SetOperation::Not && sets.size() != 2)) return;
  NamedSet const& a = document.state().sets[swapped ? sets.back() : sets.front()];
  NamedSet const& b = document.state().sets[swapped ? sets.front() : sets.back()];
  const std::string name = combinedName(a.name, b.name, operation);
  RunSet runs = combined(a.runs, b.runs, operation);
  if (runs.count() == 0) {
    tell("There is no run in " + shownText(name) + ".");
    return;
  }
  tell({});
  addSets(document, "Combine sets", {{name, std::move(runs), "combined"}});
}

void SetsPane::useAsGate()
{
  const std::vector<std::size_t> sets = selected();
  if (sets.size() != 1) return;
  NamedSet const& set = document.state().sets[sets.front()];
  auto const gate = gateOnRuns(set.runs, document.scan());
  if (!gate) {
    tell(set.runs.count() == 0
             ? QString("The set has no runs; a gate on it would let none pass.")
             : QString(
                   "A gate lists runs by their keys, up to %L1 keys and spans; this set takes more. Use the "
                   "gates that it was made with.")
                   .arg(mostListed));
    return;
  }
  tell({});
  document.change("Set as gate", [&](State& state) { state.gates.push_back({set.name, *gate, true}); });
  document.selectGate(document.state().gates.size() - 1);
}

void SetsPane::compareSelected()
{
  const std::vector<std::size_t> sets = selected();
  if (sets.size() != 2) return;
  SetComparison(document, document.state().sets[sets[0]], document.state().sets[sets[1]], this).exec();
}

void SetsPane::deleteSelected()
{
  deleteSets(document, selected());
}

} // namespace runsieve::app
