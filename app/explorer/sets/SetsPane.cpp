#include "app/explorer/sets/SetsPane.h"

#include "app/explorer/charts/Theme.h"
#include "app/explorer/controls/Keys.h"
#include "app/explorer/controls/PlainText.h"
#include "app/explorer/controls/TableColumns.h"
#include "app/explorer/sets/SetListModel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>

namespace runsieve::app {

SetsPane::SetsPane(Document& ofDocument, QWidget* parent) : QWidget(parent), document(ofDocument)
{
  setAccessibleName("Sets of runs");
  build();
  for (auto changed : {&Document::opened, &Document::stateChanged})
    connect(&document, changed, this, &SetsPane::refresh);
  connect(&document, &Document::opened, this, [this] {
    clustering.cancel();
    tell({});
  });
  connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &SetsPane::refresh);
  connect(&clustering, &Background::busyChanged, this, [this] { progress->setVisible(clustering.isBusy()); });
  connect(&clustering, &Background::failed, this, &SetsPane::tell);
  refresh();
}

void SetsPane::build()
{
  model = new SetListModel(document, this);
  view = new QTableView;
  view->setModel(model);
  view->setAccessibleName("List of sets");
  styleTable(*view);
  view->setAlternatingRowColors(false);
  view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 10);
  view->horizontalHeader()->setSectionsMovable(false);
  view->horizontalHeader()->setSectionResizeMode(SetListModel::Origin, QHeaderView::Stretch);
  const int letter = view->fontMetrics().averageCharWidth();
  for (auto [column, letters] : {std::pair(SetListModel::Name, 24), std::pair(SetListModel::Passing, 9)})
    view->setColumnWidth(column, letter * letters);
  // "874 of 875" must not be cut: it would read as another number.
  view->horizontalHeader()->setSectionResizeMode(SetListModel::Runs, QHeaderView::ResizeToContents);
  auto* keys = new Keys(*view);
  keys->on(Qt::Key_Delete, [this] { deleteSelected(); });
  keys->on(Qt::Key_F2, [this] {
    if (selected().size() == 1)
      view->edit(model->index(static_cast<int>(selected().front()), SetListModel::Name));
  });
  keys->on(Qt::Key_Space, [this] {
    for (std::size_t set : selected()) showSet(document, set, !document.state().sets[set].shown);
  });
  empty = new QLabel("No sets yet.\nKeep the passing runs, type some, or group runs by their shape.");
  empty->setAlignment(Qt::AlignCenter);
  empty->setWordWrap(true);
  empty->setEnabled(false);
  message = new QLabel;
  message->setTextFormat(Qt::PlainText);
  message->setWordWrap(true);
  message->setTextInteractionFlags(Qt::TextSelectableByMouse);
  message->setAccessibleName("Message");
  message->hide();
  auto* layout = new QVBoxLayout(this);
  constexpr int margin = 6;
  layout->setContentsMargins(margin, margin, margin, margin);
  layout->setSpacing(margin);
  layout->addWidget(view, 1);
  layout->addWidget(empty, 1);
  layout->addWidget(message);
  buildProgress();
  buildButtons();
  connect(view, &QWidget::customContextMenuRequested, this, &SetsPane::showMenu);
  connect(view, &QAbstractItemView::doubleClicked, this,
          [this](QModelIndex const& index) { view->edit(model->index(index.row(), SetListModel::Name)); });
}

void SetsPane::buildProgress()
{
  progress = new QWidget;
  auto* row = new QHBoxLayout(progress);
  row->setContentsMargins(0, 0, 0, 0);
  auto* bar = new QProgressBar;
  bar->setRange(0, 0); // the search does not know how long it takes
  bar->setAccessibleName("Grouping runs");
  bar->setMaximumHeight(fontMetrics().height());
  auto* cancelling = new QToolButton;
  cancelling->setText("Cancel");
  row->addWidget(new QLabel("Grouping"));
  row->addWidget(bar, 1);
  row->addWidget(cancelling);
  progress->hide();
  layout()->addWidget(progress);
  connect(cancelling, &QToolButton::clicked, this, [this] {
    clustering.cancel();
    progress->hide();
    tell("Grouping was cancelled.");
  });
}

void SetsPane::buildButtons()
{
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(4);
  auto const add = [&](QString const& text, QString const& tip) {
    auto* button = new QToolButton;
    button->setText(text);
    button->setAccessibleName(text.trimmed());
    button->setToolTip(tip);
    button->setFocusPolicy(Qt::TabFocus);
    buttons->addWidget(button);
    return button;
  };
  adding = add("New  ", "Make a set of runs");
  adding->setPopupMode(QToolButton::InstantPopup);
  adding->setMenu(new QMenu(adding));
  fillNewMenu(*adding->menu());
  combining = add("Combine  ",
                  "Make a set of the selected ones: runs of both, of either, of one only, or all others");
  combining->setPopupMode(QToolButton::InstantPopup);
  combining->setMenu(new QMenu(combining));
  connect(combining->menu(), &QMenu::aboutToShow, this, [this] {
    combining->menu()->clear();
    fillCombineMenu(*combining->menu());
  });
  comparing = add("Compare...", "Which parameters differ between the two selected sets");
  gating = add("As gate", "Let only the runs of the selected set pass");
  buttons->addStretch(1);
  deleting = add("Delete", "Take the selected sets away");
  static_cast<QVBoxLayout*>(layout())->addLayout(buttons);
  connect(comparing, &QToolButton::clicked, this, &SetsPane::compareSelected);
  connect(gating, &QToolButton::clicked, this, &SetsPane::useAsGate);
  connect(deleting, &QToolButton::clicked, this, &SetsPane::deleteSelected);
}

void SetsPane::fillNewMenu(QMenu& menu)
{
  menu.addAction("Keep passing runs...", this, &SetsPane::keepPassingRuns);
  menu.addAction("Type runs...", this, &SetsPane::typeRuns);
  menu.addAction("From file...", this, &SetsPane::chooseFile);
  menu.addAction("Group runs by shape...", this, &SetsPane::groupRuns);
  menu.addAction("Runs that are not complete", this, &SetsPane::keepIncomplete);
}

void SetsPane::fillCombineMenu(QMenu& menu)
{
  const std::vector<std::size_t> sets = selected();
  auto const name = [&](std::size_t place) {
    return elided(menuText(shownText(document.state().sets[sets[place]].name)), font(),
                  fontMetrics().averageCharWidth() * 24);
  };
  if (sets.size() == 1) menu.addAction("Not " + name(0), this, [this] { combine(SetOperation::Not); });
  if (sets.size() != 2) {
    menu.addAction("Select two sets to combine them")->setEnabled(false);
    return;
  }
  menu.addAction(name(0) + " and " + name(1), this, [this] { combine(SetOperation::And); });
  menu.addAction(name(0) + " or " + name(1), this, [this] { combine(SetOperation::Or); });
  menu.addAction(name(0) + " minus " + name(1), this, [this] { combine(SetOperation::Minus); });
  menu.addAction(name(1) + " minus " + name(0), this, [this] { combine(SetOperation::Minus, true); });
}

void SetsPane::fillSetMenu(QMenu& menu)
{
  const std::size_t set = selected().front();
  menu.addAction("Rename", this,
                 [this, set] { view->edit(model->index(static_cast<int>(set), SetListModel::Name)); });
  QMenu* colors = menu.addMenu("Colour");
  for (std::size_t color = 0; color < std::tuple_size<decltype(Theme::sets)>::value; ++color) {
    QAction* action = colors->addAction(colorIcon(color, palette(), fontMetrics().ascent()),
                                        QString("Colour %1").arg(color + 1), this,
                                        [this, set, color] { colorSet(document, set, color); });
    action->setCheckable(true);
    action->setChecked(color == document.state().sets[set].color);
  }
  const bool shown = document.state().sets[set].shown;
  menu.addAction(shown ? "Hide in the charts" : "Show in the charts", this,
                 [this, set, shown] { showSet(document, set, !shown); });
  menu.addAction("Pin its runs", this, [this, set] {
    const std::vector<std::size_t> runs = document.state().sets[set].runs.members();
    constexpr std::size_t most = 100;
    if (runs.size() > most)
      tell(QString("The set has %L1 runs; up to %2 can be pointed out.").arg(runs.size()).arg(most));
    else
      document.pin({runs.begin(), runs.end()});
  });
}

void SetsPane::showMenu(QPoint const& at)
{
  QMenu menu(this);
  connect(&document, &Document::opened, &menu, &QMenu::close); // its rows are those of the former scan
  if (selected().size() == 1) fillSetMenu(menu);
  QMenu* creating = menu.addMenu("New");
  fillNewMenu(*creating);
  creating->setEnabled(document.isOpen());
  if (!selected().empty()) {
    fillCombineMenu(*menu.addMenu("Combine"));
    menu.addAction("Compare...", this, &SetsPane::compareSelected)->setEnabled(comparing->isEnabled());
    menu.addAction("Use as gate", this, &SetsPane::useAsGate)->setEnabled(gating->isEnabled());
    menu.addSeparator();
    menu.addAction("Delete", this, &SetsPane::deleteSelected);
  }
  menu.exec(view->viewport()->mapToGlobal(at));
}

void SetsPane::refresh()
{
  const std::size_t chosen = selected().size();
  const bool any = document.isOpen() && !document.state().sets.empty();
  view->setVisible(any);
  empty->setVisible(!any);
  adding->setEnabled(document.isOpen());
  combining->setEnabled(chosen == 1 || chosen == 2);
  comparing->setEnabled(chosen == 2);
  gating->setEnabled(chosen == 1);
  deleting->setEnabled(chosen > 0);
}

void SetsPane::tell(QString const& text)
{
  constexpr int most = 400;
  message->setText(text.size() > most ? text.left(most) + QString::fromUtf8("\u2026") : text);
  message->setVisible(!text.isEmpty());
  Q_EMIT toldAnew(message->text());
}

QString SetsPane::told() const
{
  return message->text();
}

std::vector<std::size_t> SetsPane::selected() const
{
  std::vector<std::size_t> sets;
  if (!document.isOpen()) return sets;
  for (QModelIndex const& index : view->selectionModel()->selectedRows())
    if (static_cast<std::size_t>(index.row()) < document.state().sets.size())
      sets.push_back(static_cast<std::size_t>(index.row()));
  std::sort(sets.begin(), sets.end());
  return sets;
}

} // namespace runsieve::app
