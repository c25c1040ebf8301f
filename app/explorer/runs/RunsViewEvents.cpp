#include "app/explorer/charts/RoundedValue.h"
#include "app/explorer/runs/RunsOverlay.h"
#include "app/explorer/runs/RunsView.h"

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double reach = 7.0; ///< pixels from a side of a gate, or from a line

Qt::CursorShape cursorOf(GateGrip const& grip)
{
  if ((grip.left && grip.top) || (grip.right && grip.bottom)) return Qt::SizeFDiagCursor;
  if ((grip.right && grip.top) || (grip.left && grip.bottom)) return Qt::SizeBDiagCursor;
  if (grip.left || grip.right) return Qt::SizeHorCursor;
  if (grip.top || grip.bottom) return Qt::SizeVerCursor;
  return Qt::SizeAllCursor;
}

} // namespace

std::optional<std::pair<std::size_t, GateGrip>> RunsView::gateAt(QPointF const& at) const
{
  if (!axes.plot().adjusted(-reach, -reach, reach, reach).contains(at)) return std::nullopt;
  std::optional<std::pair<std::size_t, GateGrip>> best;
  auto const look = [&](std::size_t index) {
    const std::optional<QRectF> shape = gateShape(document, index, output, axes);
    const std::optional<GateGrip> grip = shape ? gripAt(*shape, at, reach) : std::nullopt;
    if (grip) best = {index, *grip};
    return grip.has_value();
  };
  // The selected gate is on top.
  if (auto const chosen = document.selectedGate(); chosen && look(*chosen)) return best;
  for (std::size_t i = document.state().gates.size(); i-- > 0;)
    if (look(i)) return best;
  return best;
}

Gate RunsView::finished(Gate gate) const
{
  Scan const& scan = document.scan();
  const double xStep =
      std::fabs(axes.xValue(axes.plot().center().x() + 1.0) - axes.xValue(axes.plot().center().x()));
  auto const yStep = [&](double value) {
    const double pixel = axes.yAt(value);
    return std::fabs(axes.yValue(pixel - 1.0) - value);
  };
  if (gate.span) {
    for (std::optional<double>* end : {&gate.span->first, &gate.span->last})
      if (*end) *end = std::clamp(roundedValue(**end, xStep), scan.times.front(), scan.times.back());
  }
  if (gate.kind == GateKind::TimeOfMax || gate.kind == GateKind::TimeOfMin) {
    gate.range = {roundedValue(gate.range.low, xStep), roundedValue(gate.range.high, xStep)};
  } else {
    gate.range.low = roundedValue(gate.range.low, yStep(gate.range.low));
    gate.range.high = roundedValue(gate.range.high, yStep(gate.range.high));
  }
  return gate;
}

void RunsView::focusInEvent(QFocusEvent* event)
{
  showsFocus = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  QWidget::focusInEvent(event);
}

void RunsView::focusOutEvent(QFocusEvent* event)
{
  showsFocus = false;
  QWidget::focusOutEvent(event);
}

void RunsView::mousePressEvent(QMouseEvent* event)
{
  if (!document.isOpen() || drag) return;
  const QPointF at = event->localPos();
  const bool left = event->button() == Qt::LeftButton;
  const bool right = event->button() == Qt::RightButton;
  Drag begun{};
  begun.from = at;
  begun.axes = axes;
  begun.negated = event->modifiers().testFlag(Qt::ShiftModifier);
  if (event->button() == Qt::MiddleButton || (left && tool == RunsTool::Pan)) {
    begun.kind = Drag::Kind::Pan;
  } else if (left && tool == RunsTool::Zoom) {
    begun.kind = Drag::Kind::Zoom;
  } else if (left || right) {
    if (!axes.plot().adjusted(-reach, -reach, reach, reach).contains(at)) return;
    auto const held = left ? gateAt(at) : std::nullopt;
    begun.kind = held ? Drag::Kind::Gate : Drag::Kind::NewGate;
    if (held) {
      begun.gate = held->first;
      begun.grip = held->second;
      begun.begun = document.state().gates[held->first].gate;
      document.selectGate(held->first);
    }
  } else {
    return;
  }
  drag = begun;
  pointer = at;
}

void RunsView::mouseMoveEvent(QMouseEvent* event)
{
  if (!document.isOpen()) return;
  pointer = event->localPos();
  if (!drag) {
    hoverAt(pointer);
    return;
  }
  const QPointF by = pointer - drag->from;
  if (!drag->moved && by.manhattanLength() < QApplication::startDragDistance() / 2.0) return;
  if (!drag->moved) {
    drag->moved = true;
    found.reset();
    document.hover(std::nullopt);
  }
  follow(pointer);
}

void RunsView::follow(QPointF const& at)
{
  const QPointF by = at - drag->from;
  switch (drag->kind) {
  case Drag::Kind::Pan: {
    const double x = by.x() / drag->axes.plot().width();
    const double y = by.y() / drag->axes.plot().height();
    zoom.show(drag->axes.horizontal().part(-x, 1.0 - x), output, drag->axes.vertical().part(y, 1.0 + y));
    break;
  }
  case Drag::Kind::Zoom:
    update();
    break;
  case Drag::Kind::Gate:
    document.previewGate(drag->gate, finished(draggedGate(drag->begun, axes, drag->grip, by)));
    break;
  case Drag::Kind::NewGate: {
    const QRectF plot = axes.plot();
    auto const inside = [&](QPointF const& p) {
      return QPointF(std::clamp(p.x(), plot.left(), plot.right()),
                     std::clamp(p.y(), plot.top(), plot.bottom()));
    };
    const QRectF rectangle = QRectF(inside(drag->from), inside(at)).normalized();
    Gate gate = gateOver(rectangle, axes, document.scan().outputs[output].label.fullName());
    gate.negated = drag->negated;
    document.previewGate(document.state().gates.size(), finished(gate));
    break;
  }
  }
  if (document.previewedGate())
    Q_EMIT told(
        QString("%L1 of %L2 runs pass").arg(document.passing().count()).arg(document.scan().runs.size()));
}

void RunsView::mouseReleaseEvent(QMouseEvent* event)
{
  pointer = event->localPos();
  if (!drag) return;
  const bool dragged = drag->moved;
  bool missed = false;
  if (!dragged && event->button() == Qt::RightButton)
    openMenu(pointer);
  else if (!dragged)
    click(pointer);
  else
    missed = !finish(pointer);
  drag.reset();
  Q_EMIT told(missed ? QString("No run passes there: nothing has changed") : QString());
  // What a drag has made is to be seen: the box of the run below comes with the next move.
  if (!dragged) hoverAt(pointer);
  update();
}

bool RunsView::finish(QPointF const& at)
{
  switch (drag->kind) {
  case Drag::Kind::Pan:
    break;
  case Drag::Kind::Zoom: {
    const QRectF part = QRectF(drag->from, at).normalized().intersected(axes.plot());
    if (part.width() < 3.0 || part.height() < 3.0) break;
    const QRectF plot = axes.plot();
    zoom.show(axes.horizontal().part((part.left() - plot.left()) / plot.width(),
                                     (part.right() - plot.left()) / plot.width()),
              output,
              axes.vertical().part((plot.bottom() - part.bottom()) / plot.height(),
                                   (plot.bottom() - part.top()) / plot.height()));
    break;
  }
  case Drag::Kind::Gate:
    document.commitPreview(drag->grip.isWhole() ? "Move gate" : "Resize gate");
    break;
  case Drag::Kind::NewGate:
    return document.commitPreview("Draw gate");
  }
  return true;
}

void RunsView::click(QPointF const& at)
{
  if (drag->kind == Drag::Kind::Gate && !drag->grip.isWhole()) return;
  auto const run = findRun(document.scan(), output, axes, at, reach, visibleRuns());
  clicked.reset();
  if (run && drag->kind != Drag::Kind::Gate) {
    clicked = run->run;
    document.togglePin(run->run);
  } else if (drag->kind == Drag::Kind::NewGate) {
    document.selectGate(std::nullopt);
  }
}

void RunsView::openMenu(QPointF const& at)
{
  auto const held = gateAt(at);
  if (!held) return;
  document.selectGate(held->first);
  // A menu has events of its own, which must not find this one unfinished.
  QMetaObject::invokeMethod(
      this, [this, place = mapToGlobal(at.toPoint())] { Q_EMIT gateMenuWanted(place); },
      Qt::QueuedConnection);
}

void RunsView::cancelDrag()
{
  if (!drag) return;
  drag.reset();
  document.cancelPreview();
  Q_EMIT told(QString());
  update();
}

void RunsView::hoverAt(QPointF const& at)
{
  auto const held = tool == RunsTool::Gate ? gateAt(at) : std::nullopt;
  setCursor(held ? cursorOf(held->second) : tool == RunsTool::Pan ? Qt::OpenHandCursor : Qt::CrossCursor);
  found = findRun(document.scan(), output, axes, at, reach, visibleRuns());
  document.hover(found ? std::optional(found->run) : std::nullopt);
  update();
}

} // namespace runsieve::app
