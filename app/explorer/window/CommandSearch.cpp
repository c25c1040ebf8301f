#include "app/explorer/window/CommandSearch.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace runsieve::app {

namespace {

QString nameOf(QAction const* action)
{
  return action->text().remove('&').remove("...");
}

/// Whether each word is in a text.
bool hasWords(QString const& known, QStringList const& words)
{
  return std::all_of(words.begin(), words.end(),
                     [&](QString const& word) { return known.contains(word, Qt::CaseInsensitive); });
}

} // namespace

CommandSearch::CommandSearch(QList<QAction*> ofWindow, QWidget* parent)
    : QDialog(parent), actions(std::move(ofWindow))
{
  setWindowTitle("Find a command");
  words = new QLineEdit;
  words->setPlaceholderText("What do you want to do?");
  words->setAccessibleName("Words of a command");
  words->setClearButtonEnabled(true);
  found = new QListWidget;
  found->setAccessibleName("Commands");
  found->setUniformItemSizes(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(words);
  layout->addWidget(found);
  resize(560, 380);
  words->installEventFilter(this);
  connect(words, &QLineEdit::textChanged, this, &CommandSearch::find);
  connect(words, &QLineEdit::returnPressed, this, &CommandSearch::choose);
  connect(found, &QListWidget::itemActivated, this, &CommandSearch::choose);
  find(QString());
}

void CommandSearch::find(QString const& text)
{
  const QStringList parts = text.simplified().split(' ');
  found->clear();
  QList<QAction*> others; // of which not the name says it, but what they do
  QList<QAction*> listed;
  for (QAction* action : actions) {
    if (hasWords(nameOf(action), parts))
      listed << action;
    else if (hasWords(nameOf(action) + ' ' + action->statusTip(), parts))
      others << action;
  }
  for (QAction* action : listed + others) {
    const QString key = action->shortcut().toString(QKeySequence::NativeText);
    auto* item =
        new QListWidgetItem(key.isEmpty() ? nameOf(action) : QString("%1   (%2)").arg(nameOf(action), key));
    item->setToolTip(action->statusTip());
    item->setData(Qt::UserRole, QVariant::fromValue(static_cast<void*>(action)));
    if (!action->isEnabled()) item->setFlags(Qt::NoItemFlags);
    found->addItem(item);
  }
  for (int row = 0; row < found->count(); ++row)
    if (found->item(row)->flags() != Qt::NoItemFlags) {
      found->setCurrentRow(row);
      break;
    }
}

void CommandSearch::choose()
{
  QListWidgetItem* item = found->currentItem();
  if (!item || item->flags() == Qt::NoItemFlags) return;
  auto* action = static_cast<QAction*>(item->data(Qt::UserRole).value<void*>());
  accept();
  action->trigger();
}

bool CommandSearch::eventFilter(QObject* watched, QEvent* event)
{
  // The list is walked through while words are typed.
  if (watched == words && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_PageDown || key == Qt::Key_PageUp) {
      const int step = key == Qt::Key_Down ? 1 : key == Qt::Key_Up ? -1 : key == Qt::Key_PageDown ? 10 : -10;
      const int row = std::clamp(found->currentRow() + step, 0, std::max(found->count() - 1, 0));
      found->setCurrentRow(row);
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

} // namespace runsieve::app
