#include "app/explorer/parameters/ParameterGrid.h"

#include "app/explorer/parameters/ParameterMenu.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/PlainTip.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace runsieve::app {

namespace {

constexpr double reach = 5.0; ///< pixels around a plot in which gates begin

QString tipOf(ParameterRuns const& runs, std::size_t parameter)
{
  Document const& document = runs.ofDocument();
  if (document.scan().parameters[parameter].isText()) {
    const TextGroups groups = runs.textGroups(parameter);
    return parameterLines(document, parameter, groups.allPassing, groups.allOthers).join('\n');
  }
  const ParameterGroups groups = runs.groups(parameter);
  return parameterLines(document, parameter, groups.passing.total(), groups.others.total()).join('\n');
}

} // namespace

bool ParameterGrid::viewportEvent(QEvent* event)
{
  if (event->type() == QEvent::Enter) prepare();
  if (event->type() == QEvent::Leave && hovered) {
    hovered.reset();
    viewport()->update();
  }
  if (event->type() == QEvent::ToolTip) {
    auto* help = static_cast<QHelpEvent*>(event);
    const std::optional<std::size_t> place = placeAt(help->pos());
    if (place && !drag.isActive())
      showPlainTip(help->globalPos(), tipOf(runs, runs.order()[*place]), viewport());
    else
      hidePlainTip();
    return true;
  }
  return QAbstractScrollArea::viewportEvent(event);
}

void ParameterGrid::mousePressEvent(QMouseEvent* event)
{
  if (event->button() != Qt::LeftButton || !document.isOpen()) return;
  const std::optional<std::size_t> place = placeAt(event->localPos());
  if (!place) return;
  const std::size_t parameter = runs.order()[*place];
  setCurrent(parameter);
  pressed = parameter;
  feature.update();
  const ChartScene shown = scene();
  const ParameterChart chart(shown, parameter, cell(parameter));
  if (chart.hasAxis() && chart.plot().adjusted(-reach, 0.0, reach, 0.0).contains(event->localPos()))
    drag.begin(chart.axis(), event->localPos().x(), event->modifiers().testFlag(Qt::ShiftModifier));
}

void ParameterGrid::mouseMoveEvent(QMouseEvent* event)
{
  if (!document.isOpen()) return;
  if (!pressed) {
    hoverAt(event->localPos());
    return;
  }
  if (drag.follow(event->localPos().x()))
    Q_EMIT told(
        QString("%L1 of %L2 runs pass").arg(document.passing().count()).arg(document.scan().runs.size()));
}

void ParameterGrid::mouseReleaseEvent(QMouseEvent* event)
{
  if (event->button() != Qt::LeftButton || !pressed) return;
  const std::size_t parameter = *pressed;
  pressed.reset();
  const SpanDrag::End end = drag.finish();
  Q_EMIT told(end == SpanDrag::End::Nothing ? "No run passes there: nothing has changed" : QString());
  const std::optional<std::size_t> place = placeAt(event->localPos());
  if (end == SpanDrag::End::Click && place && runs.order()[*place] == parameter) Q_EMIT chosen(parameter);
  hoverAt(event->localPos());
}

void ParameterGrid::hoverAt(QPointF const& at)
{
  const std::optional<std::size_t> place = placeAt(at);
  const std::optional<std::size_t> under = place ? std::optional(runs.order()[*place]) : std::nullopt;
  Qt::CursorShape shape = Qt::ArrowCursor;
  if (under) {
    feature.update();
    const ChartScene shown = scene();
    const ParameterChart chart(shown, *under, cell(*under));
    auto const here = spans.find(*under);
    const bool isOnPlot = chart.hasAxis() && chart.plot().adjusted(-reach, 0.0, reach, 0.0).contains(at);
    auto const held =
        isOnPlot && here != spans.end() ? spanAt(here->second, chart.axis(), at.x()) : std::nullopt;
    shape = !isOnPlot                       ? Qt::PointingHandCursor
            : !held                         ? Qt::CrossCursor
            : held->grip == SpanGrip::Whole ? Qt::SizeAllCursor
                                            : Qt::SizeHorCursor;
  }
  viewport()->setCursor(shape);
  if (under == hovered) return;
  hovered = under;
  viewport()->update();
}

void ParameterGrid::cancelDrag()
{
  drag.cancel();
  pressed.reset();
  Q_EMIT told(QString());
}

void ParameterGrid::move(int by)
{
  auto const& order = runs.order();
  if (order.empty()) return;
  const auto last = static_cast<std::ptrdiff_t>(order.size()) - 1;
  const auto here = static_cast<std::ptrdiff_t>(placeOf(*current()));
  setCurrent(order[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(here + by, 0, last))]);
}

void ParameterGrid::keyPressEvent(QKeyEvent* event)
{
  constexpr int all = 1 << 20;
  const int page = perRow * std::max(1, static_cast<int>(viewport()->height() / size.height()));
  switch (event->key()) {
  case Qt::Key_Left:
    return move(-1);
  case Qt::Key_Right:
    return move(1);
  case Qt::Key_Up:
    return move(-perRow);
  case Qt::Key_Down:
    return move(perRow);
  case Qt::Key_PageUp:
    return move(-page);
  case Qt::Key_PageDown:
    return move(page);
  case Qt::Key_Home:
    return move(-all);
  case Qt::Key_End:
    return move(all);
  case Qt::Key_Return:
  case Qt::Key_Enter:
  case Qt::Key_Space:
    if (current()) Q_EMIT chosen(*current());
    return;
  case Qt::Key_Escape:
    if (drag.isActive())
      cancelDrag();
    else
      document.selectGate(std::nullopt);
    return;
  default:
    QAbstractScrollArea::keyPressEvent(event);
  }
}

void ParameterGrid::contextMenuEvent(QContextMenuEvent* event)
{
  if (!document.isOpen() || drag.isMoving()) return;
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  const std::optional<std::size_t> place = byKey ? std::nullopt : placeAt(event->pos());
  const std::optional<std::size_t> parameter = place   ? std::optional(runs.order()[*place])
                                               : byKey ? current()
                                                       : std::nullopt;
  if (!parameter) return;
  setCurrent(*parameter);
  QMenu menu(this);
  connect(menu.addAction("&Open large"), &QAction::triggered, this,
          [this, parameter = *parameter] { Q_EMIT chosen(parameter); });
  fillParameterMenu(menu, runs, *parameter);
  menu.exec(byKey ? viewport()->mapToGlobal(cell(*parameter).center().toPoint()) : event->globalPos());
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
