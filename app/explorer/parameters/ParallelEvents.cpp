#include "app/explorer/parameters/ParallelRuns.h"
#include "app/explorer/parameters/ParallelView.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/SpanHold.h"
#include "app/explorer/parameters/TextHold.h"

#include <QMouseEvent>
#include <QScrollBar>

#include <cmath>

namespace runsieve::app {

namespace {

constexpr double besideAxis = 12.0; ///< pixels in which an axis is meant, not the lines between
constexpr double reach = 6.0;       ///< pixels from a line

} // namespace

std::optional<std::size_t> ParallelView::parameterAt(QPointF const& at) const
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
  return ParameterArea::viewportEvent(event);
}

QString ParallelView::tipAt(QPointF const& at)
{
  if (const std::optional<std::size_t> parameter = parameterAt(at)) {
    const QString difference = headline(numbersOf(document, *parameter));
    return titleOf(document.scan().parameters[*parameter].label) +
           (difference.isEmpty() ? QString() : "\n" + difference);
  }
  auto const run = document.hoveredRun();
  return run ? "Run " + QString::fromStdString(document.scan().runs[*run].key) : QString();
}

std::unique_ptr<GateHold> ParallelView::holdAt(QPointF const& at, std::size_t parameter,
                                               Qt::KeyboardModifiers modifiers)
{
  if (document.scan().parameters[parameter].isText()) {
    const TextBarRows rows = textRowsOf(parameter);
    const QRectF place = rows.place();
    if (at.y() < place.top() || at.y() > place.bottom()) return nullptr; // its name
    return std::make_unique<TextHold>(document, spans, parameter, rows, at, modifiers);
  }
  return std::make_unique<SpanHold>(document, spans, spanAxis(parameter), false, at,
                                    modifiers.testFlag(Qt::ShiftModifier));
}

void ParallelView::mousePressEvent(QMouseEvent* event)
{
  pressedRun.reset();
  if (event->button() == Qt::LeftButton && document.isOpen() && !parameterAt(event->localPos()))
    pressedRun = runAt(event->localPos());
  ParameterArea::mousePressEvent(event);
}

void ParallelView::mouseReleaseEvent(QMouseEvent* event)
{
  if (event->button() == Qt::LeftButton && document.isOpen() && pressedRun &&
      runAt(event->localPos()) == pressedRun)
    document.togglePin(*pressedRun);
  pressedRun.reset();
  ParameterArea::mouseReleaseEvent(event);
}

void ParallelView::hoverAt(QPointF const& at)
{
  const std::optional<std::size_t> parameter = parameterAt(at);
  document.hover(parameter ? std::nullopt : runAt(at));
  auto const hold = parameter ? holdAt(at, *parameter, Qt::NoModifier) : nullptr;
  viewport()->setCursor(hold ? hold->cursor() : parameter ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

} // namespace runsieve::app
