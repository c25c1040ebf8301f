#include "app/explorer/parameters/PairsPage.h"

#include "app/explorer/parameters/FoldingSplitter.h"
#include "app/explorer/parameters/ResultTable.h"

#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace runsieve::app {

namespace {

QString summary(PairComparisons const& found)
{
  if (found.pairs.empty()) return "There are no two number parameters that vary.";
  const auto significant = std::count_if(found.pairs.begin(), found.pairs.end(),
                                         [](ParameterPair const& pair) { return pair.significant; });
  QString text = QString("%L1 of %L2 pairs of parameters go together in the %L3 passing runs.")
                     .arg(significant)
                     .arg(found.pairs.size())
                     .arg(found.passing);
  for (ComparisonWarning const& warning : found.warnings)
    text += " " + QString::fromStdString(warning.text) + ".";
  return text;
}

} // namespace

PairsPage::PairsPage(ParameterRuns& runs, QWidget* parent)
    : QWidget(parent), pairing(
                           runs.ofDocument(),
                           [this](PassingWork::Task const& task, ComparisonWork const& how) {
                             auto found = std::make_shared<PairComparisons const>(
                                 comparePairs(*task.scan, task.passing, task.eligible, task.method, how));
                             return [this, found] { take(found); };
                           },
                           [this] { take(nullptr); })
{
  progress = new WorkBar(pairing, "Looking for pairs of parameters that go together",
                         "then this page tells which parameters go together in the runs that pass it.");
  list = resultTable(model, "Pairs of parameters", {PairsModel::First, PairsModel::Second});
  charts = new PairCharts(runs);
  auto* both = new FoldingSplitter;
  both->addWidget(list);
  both->addWidget(charts);
  both->setStretchFactor(0, 2);
  both->setStretchFactor(1, 3);
  both->setSizes({400, 600});
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(progress);
  layout->addWidget(both, 1);
  connect(list->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &PairsPage::showCharts);
  connect(charts, &PairCharts::chosen, this, [this](std::size_t place) {
    if (place < std::min<std::size_t>(mostCharts, static_cast<std::size_t>(model.rowCount())))
      list->selectRow(static_cast<int>(place));
  });
}

void PairsPage::take(std::shared_ptr<PairComparisons const> pairs)
{
  if (!progress) return; // nothing is built yet
  if (pairs) progress->setResult(summary(*pairs));
  model.show(std::move(pairs));
  showCharts();
}

void PairsPage::showCharts()
{
  std::vector<ParameterPair> shown;
  std::size_t marked = mostCharts;
  if (PairComparisons const* found = model.pairs()) {
    const auto row = list->currentIndex().isValid() ? static_cast<std::size_t>(list->currentIndex().row())
                                                    : found->pairs.size();
    const std::size_t count = std::min(mostCharts, found->pairs.size());
    shown.assign(found->pairs.begin(), found->pairs.begin() + static_cast<std::ptrdiff_t>(count));
    marked = row;
    if (row >= count && row < found->pairs.size()) { // a weaker one that is asked for takes the last place
      shown.back() = found->pairs[row];
      marked = count - 1;
    }
  }
  charts->show(std::move(shown), marked);
}

void PairsPage::showEvent(QShowEvent* event)
{
  QWidget::showEvent(event);
  pairing.setWanted(true);
}

void PairsPage::hideEvent(QHideEvent* event)
{
  QWidget::hideEvent(event);
  pairing.setWanted(false);
}

} // namespace runsieve::app
