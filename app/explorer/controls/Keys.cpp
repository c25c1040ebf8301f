#include "app/explorer/controls/Keys.h"

#include <QKeyEvent>
#include <QWidget>

#include <utility>

namespace runsieve::app {

Keys::Keys(QWidget& ofWidget) : QObject(&ofWidget), widget(ofWidget)
{
  widget.installEventFilter(this);
}

void Keys::on(QKeySequence const& key, std::function<void()> handler)
{
  entries.push_back({key, std::move(handler)});
}

Keys::Entry const* Keys::entryOf(QKeyEvent const& event) const
{
  const auto modifiers = event.modifiers() & ~Qt::KeypadModifier;
  const QKeySequence pressed(static_cast<int>(modifiers) | event.key());
  for (Entry const& entry : entries)
    if (entry.key == pressed) return &entry;
  return nullptr;
}

bool Keys::isEditing() const
{
  QWidget const* focus = widget.focusWidget();
  return focus && focus != &widget && focus->isVisible();
}

bool Keys::eventFilter(QObject* watched, QEvent* event)
{
  if ((event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) && !isEditing())
    if (Entry const* entry = entryOf(*static_cast<QKeyEvent*>(event))) {
      if (event->type() == QEvent::KeyPress) entry->handler();
      event->accept();
      return true;
    }
  return QObject::eventFilter(watched, event);
}

} // namespace runsieve::app
