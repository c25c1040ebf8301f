#include "app/explorer/parameters/StabilityPage.h"

#include "app/explorer/parameters/FoldingSplitter.h"
#include "app/explorer/parameters/ResultTable.h"
#include "app/explorer/parameters/Settling.h"

#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>

namespace runsieve::app {

namespace {

std::shared_ptr<StabilityOfRuns const> resampled(PassingWork::Task const& task, ComparisonWork const& how)
{
  StabilityMethod method;
  method.seed = task.method.seed;
  return std::make_shared<StabilityOfRuns const>(
      StabilityOfRuns{task.comparison, stabilityOfComparison(*task.scan, task.passing, task.eligible,
                                                             *task.comparison, method, how)});
}

} // namespace

StabilityPage::StabilityPage(Document& document, QWidget* parent)
    : QWidget(parent), resampling(
                           document,
                           [this](PassingWork::Task const& task, ComparisonWork const& how) {
                             auto found = resampled(task, how);
                             return [this, found] { take(found); };
                           },
                           [this] { take(nullptr); })
{
  progress = new WorkBar(resampling, "Comparing parts of the runs",
                         "then this page tells whether the scan has enough runs for what differs.");
  told = new QLabel;
  told->setTextFormat(Qt::PlainText);
  told->setWordWrap(true);
  told->setContentsMargins(8, 0, 8, 6);
  told->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  told->setAccessibleName("Which parameters are settled");
  list = resultTable(model, "How sure the parameters are", {StabilityModel::Name});
  chart = new StabilityCurves;
  auto* both = new FoldingSplitter;
  both->addWidget(list);
  both->addWidget(chart);
  both->setStretchFactor(0, 1);
  both->setStretchFactor(1, 1);
  both->setSizes({500, 500});
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(progress);
  layout->addWidget(told);
  layout->addWidget(both, 1);
  take(nullptr);
}

void StabilityPage::take(std::shared_ptr<StabilityOfRuns const> found)
{
  if (!chart) return; // nothing is built yet
  if (found) progress->setResult(verdictSentence(found->stability));
  told->setText(found ? settlingWords(*found->comparison, found->stability) : QString());
  told->setVisible(!told->text().isEmpty());
  model.show(found);
  chart->show(std::move(found));
}

QString StabilityPage::words() const
{
  return told->text();
}

void StabilityPage::showEvent(QShowEvent* event)
{
  QWidget::showEvent(event);
  resampling.setWanted(true);
}

void StabilityPage::hideEvent(QHideEvent* event)
{
  QWidget::hideEvent(event);
  resampling.setWanted(false);
}

} // namespace runsieve::app
