#include "app/explorer/parameters/ParameterGrid.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/PinMarks.h"

#include <QEvent>

#include <algorithm>

namespace runsieve::app {

bool ParameterGrid::viewportEvent(QEvent* event)
{
  if (event->type() == QEvent::Enter) prepare();
  if (event->type() == QEvent::Leave && hovered) {
    hovered.reset();
    viewport()->update();
  }
  return ParameterArea::viewportEvent(event);
}

QString ParameterGrid::tipAt(QPointF const& at)
{
  const std::optional<std::size_t> parameter = parameterAt(at);
  if (!parameter) return {};
  QStringList lines;
  if (document.scan().parameters[*parameter].isText()) {
    const TextGroups groups = runs.textGroups(*parameter);
    lines = parameterLines(document, *parameter, groups.allPassing, groups.allOthers);
  } else {
    const ParameterGroups groups = runs.groups(*parameter);
    lines = parameterLines(document, *parameter, groups.passing.total(), groups.others.total());
  }
  lines += chart(*parameter).barLines(at - originOf(*parameter));
  lines += pinLines(document, *parameter);
  lines << gestureWords(document.scan().parameters[*parameter]);
  return lines.join('\n');
}

void ParameterGrid::hoverAt(QPointF const& at)
{
  const std::optional<std::size_t> under = parameterAt(at);
  Qt::CursorShape shape = Qt::ArrowCursor;
  if (under) {
    auto const hold = holdAt(at, *under, Qt::NoModifier);
    shape = hold ? hold->cursor() : Qt::PointingHandCursor;
  }
  viewport()->setCursor(shape);
  if (under == hovered) return;
  hovered = under;
  viewport()->update();
}

int ParameterGrid::stepOf(int key) const
{
  const int page = perRow * std::max(1, static_cast<int>(viewport()->height() / size.height()));
  switch (key) {
  case Qt::Key_Up:
    return -perRow;
  case Qt::Key_Down:
    return perRow;
  case Qt::Key_PageUp:
    return -page;
  case Qt::Key_PageDown:
    return page;
  default:
    return ParameterArea::stepOf(key);
  }
}

void ParameterGrid::focusInEvent(QFocusEvent* event)
{
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void ParameterGrid::focusOutEvent(QFocusEvent* event)
{
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

} // namespace runsieve::app
