#include "app/explorer/gates/GatesPane.h"

#include "app/explorer/controls/Keys.h"
#include "app/explorer/controls/PlainText.h"
#include "app/explorer/gates/GateEdits.h"
#include "app/explorer/gates/GateForm.h"
#include "app/explorer/gates/GateListModel.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace runsieve::app {

GatesPane::GatesPane(Document& ofDocument, QWidget* parent) : QWidget(parent), document(ofDocument)
{
  setAccessibleName("Gates");
  join = new QComboBox;
  join->addItems({"all gates", "any of the gates"});
  join->setAccessibleName("How gates are joined");
  join->setToolTip("Whether a run must pass every gate that is on, or one of them");
  auto* label = new QLabel("Runs must pa&ss");
  label->setBuddy(join);
  auto* top = new QHBoxLayout;
  top->addWidget(label);
  top->addWidget(join);
  top->addStretch(1);
  total = new QLabel;
  total->setTextFormat(Qt::PlainText);
  total->setAccessibleName("Passing runs");
  top->addWidget(total);
  buildList();
  details = new QLabel;
  details->setTextFormat(Qt::PlainText);
  details->setWordWrap(true);
  details->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  details->setTextInteractionFlags(Qt::TextSelectableByMouse);
  buildButtons();
  auto* layout = new QVBoxLayout(this);
  constexpr int margin = 6;
  layout->setContentsMargins(margin, margin, margin, margin);
  layout->setSpacing(margin);
  layout->addLayout(top);
  layout->addWidget(view, 1);
  layout->addWidget(details);
  layout->addWidget(buttons);
  connect(join, qOverload<int>(&QComboBox::activated), this,
          [this](int index) { joinGates(document, index == 0 ? GateJoin::All : GateJoin::Any); });
  for (auto changed : {&Document::opened, &Document::stateChanged, &Document::passingChanged})
    connect(&document, changed, this, &GatesPane::refresh);
  connect(&document, &Document::highlightChanged, this, &GatesPane::showSelection);
  refresh();
}

void GatesPane::buildList()
{
  model = new GateListModel(document, this);
  view = new QTableView;
  view->setModel(model);
  view->setAccessibleName("List of gates");
  view->setSelectionBehavior(QAbstractItemView::SelectRows);
  view->setSelectionMode(QAbstractItemView::SingleSelection);
  view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view->setTextElideMode(Qt::ElideMiddle);
  view->setWordWrap(false);
  view->setShowGrid(false);
  view->setTabKeyNavigation(false);
  view->setDragDropMode(QAbstractItemView::InternalMove);
  view->setDragDropOverwriteMode(false);
  view->setContextMenuPolicy(Qt::CustomContextMenu);
  view->verticalHeader()->hide();
  view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 10);
  view->horizontalHeader()->setHighlightSections(false);
  view->horizontalHeader()->setSectionResizeMode(GateListModel::AsksFor, QHeaderView::Stretch);
  view->setColumnWidth(GateListModel::Name, view->fontMetrics().horizontalAdvance("MMMGate 10M"));
  view->setColumnWidth(GateListModel::Left, view->fontMetrics().horizontalAdvance("100,000 M"));
  constexpr int rows = 2; // that stand in the smallest pane
  view->setMinimumHeight((rows + 1) * view->verticalHeader()->defaultSectionSize());
  auto* keys = new Keys(*view);
  keys->on(Qt::Key_Delete, [this] { deleteSelected(); });
  keys->on(Qt::Key_Space, [this] { toggleSelected(); });
  keys->on(Qt::Key_Return, [this] { editSelected(); });
  keys->on(Qt::Key_Enter, [this] { editSelected(); });
  keys->on(Qt::ALT + Qt::Key_Up, [this] { moveSelectedUp(); });
  keys->on(Qt::ALT + Qt::Key_Down, [this] { moveSelectedDown(); });
  empty = new QLabel("No gates yet.\nDrag over the runs, or type one.", view->viewport());
  empty->setAlignment(Qt::AlignCenter);
  empty->setAttribute(Qt::WA_TransparentForMouseEvents);
  empty->setEnabled(false);
  view->viewport()->installEventFilter(this);
  connect(view, &QWidget::customContextMenuRequested, this, &GatesPane::showMenu);
  connect(view, &QAbstractItemView::doubleClicked, this, [this](QModelIndex const& index) {
    if (index.column() == GateListModel::Name)
      view->edit(index);
    else
      editSelected();
  });
  connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &GatesPane::takeSelection);
  connect(model, &QAbstractItemModel::modelReset, this, &GatesPane::showSelection);
}

QToolButton* GatesPane::addButton(QString const& text, QString const& tip, void (GatesPane::*slot)())
{
  auto* button = new QToolButton;
  button->setText(text);
  button->setToolTip(tip);
  button->setAccessibleName(tip);
  button->setFocusPolicy(Qt::TabFocus);
  buttons->layout()->addWidget(button);
  connect(button, &QToolButton::clicked, this, slot);
  return button;
}

void GatesPane::buildButtons()
{
  buttons = new QWidget;
  auto* row = new QHBoxLayout(buttons);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(4);
  creating = addButton("New...", "Type a new gate", &GatesPane::typeGate);
  editing = addButton("Edit...", "Change the selected gate by its numbers", &GatesPane::editSelected);
  inverting = addButton("Invert", "Let through exactly the other runs of the selected gate",
                        &GatesPane::invertSelected);
  up = addButton("", "Move the selected gate up (Alt+Up)", &GatesPane::moveSelectedUp);
  up->setArrowType(Qt::UpArrow);
  down = addButton("", "Move the selected gate down (Alt+Down)", &GatesPane::moveSelectedDown);
  down->setArrowType(Qt::DownArrow);
  row->addStretch(1);
  deleting = addButton("Delete", "Take the selected gate away", &GatesPane::deleteSelected);
}

void GatesPane::refresh()
{
  const bool open = document.isOpen();
  const std::size_t gates = document.state().gates.size();
  {
    const QSignalBlocker quiet(join);
    join->setCurrentIndex(document.state().join == GateJoin::All ? 0 : 1);
  }
  join->setEnabled(open);
  creating->setEnabled(open);
  empty->setVisible(open && model->rowCount() == 0);
  total->setVisible(open);
  if (open)
    total->setText(QString("%L1 of %L2 runs pass%3")
                       .arg(document.passing().count())
                       .arg(document.scan().runs.size())
                       .arg(document.sieves() || gates == 0 ? "" : "; no gate asks for anything"));
  showSelection();
  fitNames();
}

void GatesPane::takeSelection()
{
  const QModelIndexList rows = view->selectionModel()->selectedRows();
  if (rows.isEmpty()) return; // lost by a reset or a click beside the rows; the gate stays selected
  const auto row = static_cast<std::size_t>(rows.first().row());
  if (row < document.state().gates.size()) document.selectGate(row);
}

void GatesPane::showSelection()
{
  const auto gate = document.isOpen() ? document.selectedGate() : std::nullopt;
  const QModelIndexList rows = view->selectionModel()->selectedRows();
  if (!gate && !rows.isEmpty()) view->clearSelection();
  if (gate && (rows.isEmpty() || rows.first().row() != static_cast<int>(*gate)))
    view->selectRow(static_cast<int>(*gate));
  for (QToolButton* button : {editing, inverting, deleting}) button->setEnabled(gate.has_value());
  up->setEnabled(gate && *gate > 0);
  down->setEnabled(gate && *gate + 1 < document.state().gates.size());
  // The first line, what the gate asks for, stands in the list.
  const QString text = gate ? gateDetails(document, *gate).section('\n', 1) : QString();
  constexpr int most = 160;
  details->setText(text.size() > most ? text.left(most) + QString::fromUtf8("\u2026") : text);
  details->setToolTip(toolTipText(text));
  fitDetails();
}

/// Most notes have room at all times, so that nothing moves when a gate is selected; a long one takes more,
/// up to some lines.
void GatesPane::fitDetails()
{
  constexpr int least = 2;
  constexpr int most = 5;
  const int needed = details->heightForWidth(view->width()); // -1 without a text
  const int line = fontMetrics().lineSpacing();
  details->setFixedHeight(std::clamp(needed, least * line, most * line));
}

/// Names have the room that they need, up to a part of the list.
void GatesPane::fitNames()
{
  constexpr double part = 0.45;
  constexpr int margin = 8;
  QAbstractItemView const& list = *view;
  const int most = static_cast<int>(part * view->viewport()->width());
  const int now = view->columnWidth(GateListModel::Name);
  const int wanted = std::min(list.sizeHintForColumn(GateListModel::Name) + margin, most);
  if (wanted > now) view->setColumnWidth(GateListModel::Name, wanted);
}

void GatesPane::resizeEvent(QResizeEvent* event)
{
  QWidget::resizeEvent(event);
  fitNames();
  fitDetails();
}

void GatesPane::typeGate()
{
  if (document.isOpen()) GateForm::edit(document, std::nullopt, this);
}

void GatesPane::editSelected()
{
  if (auto const gate = document.selectedGate()) GateForm::edit(document, gate, this);
}

void GatesPane::toggleSelected()
{
  if (auto const gate = document.selectedGate())
    switchGate(document, *gate, !document.state().gates[*gate].on);
}

void GatesPane::invertSelected()
{
  if (auto const gate = document.selectedGate()) invertGate(document, *gate);
}

void GatesPane::duplicateSelected()
{
  if (auto const gate = document.selectedGate()) duplicateGate(document, *gate);
}

void GatesPane::deleteSelected()
{
  if (auto const gate = document.selectedGate()) deleteGate(document, *gate);
}

void GatesPane::moveSelectedUp()
{
  auto const gate = document.selectedGate();
  if (gate && *gate > 0) moveGate(document, *gate, *gate - 1);
}

void GatesPane::moveSelectedDown()
{
  auto const gate = document.selectedGate();
  if (gate && *gate + 1 < document.state().gates.size()) moveGate(document, *gate, *gate + 1);
}

void GatesPane::showMenu(QPoint const& at)
{
  QMenu menu(this);
  connect(&document, &Document::opened, &menu, &QMenu::close); // its rows are those of the former scan
  menu.addAction("New gate...", this, &GatesPane::typeGate)->setEnabled(document.isOpen());
  if (auto const gate = document.selectedGate()) {
    menu.addAction("Edit...", this, &GatesPane::editSelected);
    menu.addAction("Rename", this,
                   [this, gate] { view->edit(model->index(static_cast<int>(*gate), GateListModel::Name)); });
    menu.addAction(document.state().gates[*gate].on ? "Switch off" : "Switch on", this,
                   &GatesPane::toggleSelected);
    menu.addAction("Invert", this, &GatesPane::invertSelected);
    menu.addAction("Duplicate", this, &GatesPane::duplicateSelected);
    menu.addSeparator();
    menu.addAction("Move up", this, &GatesPane::moveSelectedUp)->setEnabled(up->isEnabled());
    menu.addAction("Move down", this, &GatesPane::moveSelectedDown)->setEnabled(down->isEnabled());
    menu.addSeparator();
    menu.addAction("Delete", this, &GatesPane::deleteSelected);
  }
  menu.exec(view->viewport()->mapToGlobal(at));
}

bool GatesPane::eventFilter(QObject* watched, QEvent* event)
{
  if (watched == view->viewport() && event->type() == QEvent::Resize)
    empty->setGeometry(view->viewport()->rect());
  return QWidget::eventFilter(watched, event);
}

} // namespace runsieve::app
