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
}

void SearchableBox::focusOutEvent(QFocusEvent* event)
{
  QComboBox::focusOutEvent(event);
  if (currentIndex() >= 0 && !completer()->popup()->isVisible())
    lineEdit()->setText(itemText(currentIndex()));
}

} // namespace runsieve::app
