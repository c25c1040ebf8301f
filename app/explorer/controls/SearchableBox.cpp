#include "app/explorer/controls/SearchableBox.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>

namespace runsieve::app {

SearchableBox::SearchableBox(QWidget* parent) : QComboBox(parent)
{
  setEditable(true);
  setInsertPolicy(QComboBox::NoInsert);
  completer()->setCompletionMode(QCompleter::PopupCompletion);
  completer()->setFilterMode(Qt::MatchContains);
  constexpr int characters = 14;
  setMinimumContentsLength(characters);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(lineEdit(), &QLineEdit::returnPressed, this, &SearchableBox::takeTyped);
}

void SearchableBox::takeTyped()
{
  const QString typed = lineEdit()->text();
  if (findText(typed, Qt::MatchFixedString | Qt::MatchCaseSensitive) >= 0) return; // the box takes it
  const int found = typed.trimmed().isEmpty() ? -1 : findText(typed.trimmed(), Qt::MatchContains);
  if (found < 0) return restore();
  setCurrentIndex(found);
  Q_EMIT activated(found);
}

void SearchableBox::restore()
{
  if (currentIndex() >= 0) lineEdit()->setText(itemText(currentIndex()));
}

void SearchableBox::focusOutEvent(QFocusEvent* event)
{
  QComboBox::focusOutEvent(event);
  if (!completer()->popup()->isVisible()) restore();
}

} // namespace runsieve::app
