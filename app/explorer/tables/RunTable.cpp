#include "app/explorer/tables/RunTable.h"

#include "app/explorer/controls/Keys.h"
#include "app/explorer/controls/PlainText.h"
#include "app/explorer/controls/TableColumns.h"
#include "app/explorer/tables/RunSelection.h"
#include "app/explorer/tables/RunTableModel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalBlocker>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace runsieve::app {

RunTable::RunTable(Document& ofDocument, QWidget* parent) : QWidget(parent), document(ofDocument)
{
  setAccessibleName("Table of runs");
  build();
  buildMenu();
  connectWork();
  connect(&document, &Document::opened, this, [this] {
    const QSignalBlocker quiet(keys);
    keys->clear();
    tell({});
    view->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    listFilters();
  });
  connect(&document, &Document::stateChanged, this, &RunTable::listFilters);
  connect(model, &QAbstractItemModel::modelReset, this, &RunTable::refresh);
  connect(model, &RunTableModel::settled, this, &RunTable::refresh);
  connect(selection, &RunSelection::changed, this, &RunTable::refresh);
  listFilters();
  refresh();
}

void RunTable::build()
{
  model = new RunTableModel(document, this);
  view = new QTableView;
  view->setModel(model);
  view->setAccessibleName("Runs");
  styleTable(*view);
  view->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  view->setSortingEnabled(true);
  new TableColumns(*view);
  selection = new RunSelection(document, *model, *view);
  which = new QComboBox;
  which->setAccessibleName("Which runs");
  which->setToolTip("Which runs the table shows");
  which->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  constexpr int letters = 14;
  which->setMinimumContentsLength(letters);
  keys = new QLineEdit;
  keys->setPlaceholderText("Filter by run");
  keys->setAccessibleName("Filter by run");
  keys->setToolTip("Shows the runs whose number or name holds this text");
  keys->setClearButtonEnabled(true);
  status = new QLabel;
  status->setAccessibleName("Runs shown and selected");
  told = new QLabel;
  told->setTextFormat(Qt::PlainText);
  told->setWordWrap(true);
  told->hide();
  exporting = new QToolButton;
  exporting->setText("Export  "); // room for the mark of a menu
  exporting->setAccessibleName("Export");
  exporting->setToolTip("Write runs to a file, or copy them");
  exporting->setPopupMode(QToolButton::InstantPopup);
  cancelling = new QToolButton;
  cancelling->setText("Cancel");
  cancelling->hide();
  auto* bar = new QHBoxLayout;
  bar->addWidget(which);
  bar->addWidget(keys, 1);
  bar->addWidget(cancelling);
  bar->addWidget(exporting);
  auto* layout = new QVBoxLayout(this);
  constexpr int margin = 6;
  layout->setContentsMargins(margin, margin, margin, margin);
  layout->setSpacing(margin);
  layout->addLayout(bar);
  layout->addWidget(view, 1);
  layout->addWidget(status);
  layout->addWidget(told);
  connect(which, qOverload<int>(&QComboBox::activated), this, &RunTable::takeFilter);
  connect(keys, &QLineEdit::textChanged, this, &RunTable::takeFilter);
  connect(view, &QWidget::customContextMenuRequested, this, &RunTable::showMenu);
  auto* hotKeys = new Keys(*view);
  hotKeys->on(QKeySequence::Copy, [this] { copy(); });
  hotKeys->on(Qt::Key_Delete, [] {}); // else the window would delete the selected gate
}

void RunTable::listFilters()
{
  const QSignalBlocker quiet(which);
  which->clear();
  auto const add = [this](QString const& text, RunFilter::Kind kind, QString const& set = {}) {
    which->addItem(text, set);
    which->setItemData(which->count() - 1, static_cast<int>(kind), Qt::UserRole + 1);
    if (kind == model->filter().kind && set.toStdString() == model->filter().set)
      which->setCurrentIndex(which->count() - 1);
  };
  add("All runs", RunFilter::Kind::All);
  add("Passing runs", RunFilter::Kind::Passing);
  add("Other runs", RunFilter::Kind::Others);
  add("Pinned runs", RunFilter::Kind::Pinned);
  if (!document.state().sets.empty()) which->insertSeparator(which->count());
  for (NamedSet const& set : document.state().sets)
    add("In " + shownText(set.name), RunFilter::Kind::Set, QString::fromStdString(set.name));
}

void RunTable::takeFilter()
{
  RunFilter filter;
  filter.kind = static_cast<RunFilter::Kind>(which->currentData(Qt::UserRole + 1).toInt());
  filter.set = which->currentData().toString().toStdString();
  filter.text = keys->text().trimmed();
  model->setFilter(filter);
}

QString RunTable::statusText() const
{
  return status->text();
}

bool RunTable::isSettled() const
{
  return model->isSettled() && !work.isBusy();
}

void RunTable::refresh()
{
  setEnabled(document.isOpen());
  if (!document.isOpen()) {
    status->clear();
    return;
  }
  const std::size_t selected = selection->runs().size();
  QString text = QString("%L1 of %L2 runs").arg(model->shownRuns().size()).arg(document.scan().runs.size());
  if (selected > 0) text += QString("   |   %L1 selected").arg(selected);
  if (selected > RunSelection::mostPinned)
    text += QString(", too many to point out in the charts (up to %1)").arg(RunSelection::mostPinned);
  status->setText(text);
}

std::vector<std::size_t> RunTable::runsOf(Rows rows) const
{
  return rows == Rows::Shown ? model->shownRuns() : selection->runs();
}

std::vector<std::size_t> RunTable::shownColumns() const
{
  std::vector<std::size_t> columns;
  QHeaderView const* header = view->horizontalHeader();
  for (int place = 0; place < header->count(); ++place) {
    const int column = header->logicalIndex(place);
    if (!header->isSectionHidden(column)) columns.push_back(static_cast<std::size_t>(column));
  }
  return columns;
}

} // namespace runsieve::app
