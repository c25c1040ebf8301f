#include "app/explorer/parameters/BoxPage.h"

#include "app/explorer/parameters/FoldingSplitter.h"
#include "app/explorer/parameters/ParameterNumbers.h"

#include <runsieve/core/gate/BoxGates.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

std::string freeName(std::string const& wanted, std::vector<NamedGate> const& gates)
{
  std::string name = wanted;
  auto const has = [&](NamedGate const& gate) { return gate.name == name; };
  for (int number = 2; std::any_of(gates.begin(), gates.end(), has); ++number)
    name = wanted + " (" + std::to_string(number) + ")";
  return name;
}

} // namespace

QString boxWords(BoxOfRuns const& box)
{
  if (box.restricted == 0) return "No range of any parameter holds the passing runs better than all runs do.";
  QString words =
      QString("The box holds %1 of the passing runs (coverage), and %2 of the runs inside pass (density), "
              "where %3 of all runs do. It holds %4 of all runs (mass: %L5 runs).")
          .arg(shareText(box.quality.coverage), shareText(box.quality.density), shareText(box.all.density),
               shareText(box.quality.mass))
          .arg(box.quality.runs);
  if (box.density.count > 0 && box.coverage.count > 0)
    words +=
        QString(
            " Boxes of halves of the runs, tried on the other halves (blue cross): coverage %1, density %2.")
            .arg(shareText(box.coverage.median), shareText(box.density.median));
  for (ComparisonWarning const& warning : box.warnings)
    words += " " + QString::fromStdString(warning.text) + ".";
  return words;
}

BoxPage::BoxPage(ParameterRuns& runs, QWidget* parent)
    : QWidget(parent), document(runs.ofDocument()),
      search(
          runs.ofDocument(),
          [this](PassingWork::Task const& task, ComparisonWork const& how) {
            auto found =
                std::make_shared<BoxOfRuns const>(findBox(*task.scan, task.passing, task.eligible, {}, how));
            return [this, found] { take(found); };
          },
          [this] { take(nullptr); })
{
  progress = new WorkBar(search, "Looking for the box of the passing runs",
                         "then this page tells which ranges of the parameters hold the runs that pass it.");
  told = new QLabel;
  told->setTextFormat(Qt::PlainText);
  told->setWordWrap(true);
  told->setContentsMargins(8, 2, 8, 6);
  told->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  told->setAccessibleName("The box in words");
  use = new QPushButton("&Use as gates");
  use->setToolTip("Add the limits of the box to the gates; Undo takes all of them back");
  ranges = new BoxLimits(runs);
  path = new BoxPathChart;
  auto* both = new FoldingSplitter;
  both->addWidget(ranges);
  both->addWidget(path);
  both->setStretchFactor(0, 1);
  both->setStretchFactor(1, 1);
  both->setSizes({500, 500});
  auto* row = new QHBoxLayout;
  row->setContentsMargins(0, 0, 10, 6);
  row->addWidget(told, 1);
  row->addWidget(use, 0, Qt::AlignTop);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(progress);
  layout->addLayout(row);
  layout->addWidget(both, 1);
  connect(use, &QPushButton::clicked, this, &BoxPage::useAsGates);
  // A box of other runs than those that pass now is no good as gates.
  connect(&search, &PassingWork::changed, this, [this] {
    use->setEnabled(box && box->restricted > 0 && search.stage() == PassingWork::Stage::Done);
  });
  take(nullptr);
}

void BoxPage::take(std::shared_ptr<BoxOfRuns const> found)
{
  if (!use) return; // nothing is built yet
  box = std::move(found);
  ranges->show(box);
  path->show(box);
  told->setText(box ? boxWords(*box) : QString());
  told->setVisible(box != nullptr);
  use->setVisible(box != nullptr && box->restricted > 0);
  progress->setResult(box ? QString("Limits on %L1 of %L2 parameters, the most certain first.")
                                .arg(box->restricted)
                                .arg(box->parameters.size())
                          : QString());
}

QString BoxPage::words() const
{
  return told->text();
}

std::size_t BoxPage::useAsGates()
{
  if (!box || !document.isOpen() || search.stage() != PassingWork::Stage::Done) return 0;
  std::vector<Gate> const gates = gatesOf(*box, document.scan());
  if (gates.empty()) return 0;
  document.change("Use the box as gates", [&](State& state) {
    for (Gate const& gate : gates) {
      const std::string name = freeName("Box: " + gate.column, state.gates);
      state.gates.push_back({name, gate, true});
    }
  });
  return gates.size();
}

void BoxPage::showEvent(QShowEvent* event)
{
  QWidget::showEvent(event);
  search.setWanted(true);
}

void BoxPage::hideEvent(QHideEvent* event)
{
  QWidget::hideEvent(event);
  search.setWanted(false);
}

} // namespace runsieve::app
