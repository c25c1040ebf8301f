#include "app/explorer/parameters/ParallelRuns.h"
#include "app/explorer/parameters/ParallelView.h"
#include "app/explorer/parameters/ParameterMenu.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/PlainTip.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double besideAxis = 12.0; ///< pixels in which an axis is meant, not the lines between
constexpr double reach = 6.0;       ///< pixels from a line

} // namespace

std::optional<std::size_t> ParallelView::axisAt(QPointF const& at) const
{
  const double place = (at.x() + horizontalScrollBar()->value()) / step - 0.5;
  const auto nearest = static_cast<std::ptrdiff_t>(std::lround(place));
  if (nearest < 0 || nearest >= static_cast<std::ptrdiff_t>(runs.order().size())) return std::nullopt;
  const auto axis = static_cast<std::size_t>(nearest);
  return std::fabs(xOf(axis) - at.x()) <= besideAxis ? std::optional(runs.order()[axis]) : std::nullopt;
}

std::optional<std::size_t> ParallelView::runAt(QPointF const& at) const
{
  const QRectF area = band();
  const double place = (at.x() + horizontalScrollBar()->value()) / step - 0.5;
  const auto left = static_cast<std::ptrdiff_t>(std::floor(place));
  if (left < 0 || left + 1 >= static_cast<std::ptrdiff_t>(runs.order().size()) || !area.contains(at))
    return std::nullopt;
  const double share = place - static_cast<double>(left);
  const std::size_t first = runs.order()[static_cast<std::size_t>(left)];
  const std::size_t second = runs.order()[static_cast<std::size_t>(left) + 1];
  const bool hidden = document.sieves() && document.state().view.focus == Focus::Hidden;
  std::vector<std::uint8_t> const& among = hidden ? runs.passing() : runs.eligible();
  std::optional<std::size_t> found;
  double nearest = reach;
  for (std::size_t run = 0; run < among.size(); ++run) {
    if (among[run] == 0) continue;
    const double y =
        (1.0 - share) * parallelPlace(runs, first, run) + share * parallelPlace(runs, second, run);
    const double away = std::fabs(area.bottom() - y * area.height() - at.y());
    if (!(away < nearest)) continue; // NaN is nowhere
    nearest = away;
    found = run;
  }
  return found;
}

bool ParallelView::viewportEvent(QEvent* event)
{
  if (event->type() == QEvent::Leave) document.hover(std::nullopt);
  if (event->type() == QEvent::ToolTip && document.isOpen()) {
    auto* help = static_cast<QHelpEvent*>(event);
    const std::optional<std::size_t> parameter = axisAt(help->pos());
    if (parameter && !drag.isActive()) {
      QString tip = titleOf(document.scan().parameters[*parameter].label);
      const QString difference = headline(numbersOf(document, *parameter));
      if (!difference.isEmpty()) tip += "\n" + difference;
      showPlainTip(help->globalPos(), tip, viewport());
    } else if (auto const run = document.hoveredRun()) {
      showPlainTip(help->globalPos(), "Run " + QString::fromStdString(document.scan().runs[*run].key),
                   viewport());
    } else {
      hidePlainTip();
    }
    return true;
  }
  return QAbstractScrollArea::viewportEvent(event);
}

void ParallelView::mousePressEvent(QMouseEvent* event)
{
  if (event->button() != Qt::LeftButton || !document.isOpen()) return;
  pressedRun.reset();
  const std::optional<std::size_t> parameter = axisAt(event->localPos());
  if (!parameter) {
    pressedRun = runAt(event->localPos());
    return;
  }
  currentParameter = parameter;
  viewport()->update();
  if (!document.scan().parameters[*parameter].isText())
    drag.begin(spanAxis(*parameter), event->localPos().y(), event->modifiers().testFlag(Qt::ShiftModifier));
}

void ParallelView::mouseMoveEvent(QMouseEvent* event)
{
  if (!document.isOpen()) return;
  if (!drag.isActive()) {
    hoverAt(event->localPos());
    return;
  }
  if (drag.follow(event->localPos().y()))
    Q_EMIT told(
        QString("%L1 of %L2 runs pass").arg(document.passing().count()).arg(document.scan().runs.size()));
}

void ParallelView::mouseReleaseEvent(QMouseEvent* event)
{
  if (event->button() != Qt::LeftButton || !document.isOpen()) return;
  if (drag.isActive()) {
    const std::size_t parameter = drag.axis().parameter;
    const SpanDrag::End end = drag.finish();
    Q_EMIT told(end == SpanDrag::End::Nothing ? "No run passes there: nothing has changed" : QString());
    if (end == SpanDrag::End::Click && axisAt(event->localPos()) == parameter) Q_EMIT chosen(parameter);
  } else if (pressedRun && runAt(event->localPos()) == pressedRun) {
    document.togglePin(*pressedRun);
  }
  pressedRun.reset();
}

void ParallelView::hoverAt(QPointF const& at)
{
  const std::optional<std::size_t> parameter = axisAt(at);
  document.hover(parameter ? std::nullopt : runAt(at));
  if (!parameter || document.scan().parameters[*parameter].isText()) {
    viewport()->setCursor(Qt::ArrowCursor);
    return;
  }
  auto const here = spans.find(*parameter);
  auto const held = here == spans.end() ? std::nullopt : spanAt(here->second, spanAxis(*parameter), at.y());
  viewport()->setCursor(!held                           ? Qt::CrossCursor
                        : held->grip == SpanGrip::Whole ? Qt::SizeAllCursor
                                                        : Qt::SizeVerCursor);
}

void ParallelView::moveCurrent(int by)
{
  auto const& order = runs.order();
  if (order.empty()) return;
  const auto here = std::find(order.begin(), order.end(), *current()) - order.begin();
  const auto next = static_cast<std::size_t>(
      std::clamp<std::ptrdiff_t>(here + by, 0, static_cast<std::ptrdiff_t>(order.size()) - 1));
  currentParameter = order[next];
  const double x = xOf(next);
  const double half = 0.5 * step;
  if (x - half < 0.0)
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + static_cast<int>(std::floor(x - half)));
  else if (x + half > viewport()->width())
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                    static_cast<int>(std::ceil(x + half - viewport()->width())));
  setAccessibleDescription(titleOf(document.scan().parameters[order[next]].label));
  viewport()->update();
}

void ParallelView::keyPressEvent(QKeyEvent* event)
{
  constexpr int all = 1 << 20;
  switch (event->key()) {
  case Qt::Key_Left:
    return moveCurrent(-1);
  case Qt::Key_Right:
    return moveCurrent(1);
  case Qt::Key_Home:
    return moveCurrent(-all);
  case Qt::Key_End:
    return moveCurrent(all);
  case Qt::Key_Return:
  case Qt::Key_Enter:
  case Qt::Key_Space:
    if (current()) Q_EMIT chosen(*current());
    return;
  case Qt::Key_Escape:
    if (drag.isActive())
      drag.cancel();
    else
      document.selectGate(std::nullopt);
    return;
  default:
    QAbstractScrollArea::keyPressEvent(event);
  }
}

void ParallelView::contextMenuEvent(QContextMenuEvent* event)
{
  if (!document.isOpen() || drag.isMoving()) return;
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  const std::optional<std::size_t> parameter = byKey ? current() : axisAt(event->pos());
  if (!parameter) return;
  QMenu menu(this);
  connect(menu.addAction("&Open large"), &QAction::triggered, this,
          [this, parameter = *parameter] { Q_EMIT chosen(parameter); });
  fillParameterMenu(menu, runs, *parameter);
  menu.exec(byKey ? viewport()->mapToGlobal(axisLine(*parameter).center().toPoint()) : event->globalPos());
}

} // namespace runsieve::app
