#include "app/explorer/parameters/ParameterArea.h"

#include "app/explorer/controls/LostMouse.h"
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

ParameterArea::ParameterArea(ParameterRuns& ofRuns, QString const& name, QWidget* parent)
    : QAbstractScrollArea(parent), runs(ofRuns), document(ofRuns.ofDocument()),
      theme(Theme::ofPalette(palette(), font())), hand(document)
{
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(name);
  viewport()->setMouseTracking(true);
  auto* mouse = new LostMouse(*this, [this] {
    if (pressed) giveUp();
  });
  mouse->watch(*viewport());
  connect(&document, &Document::previewGivenUp, this, [this] {
    if (pressed) giveUp();
  });
  connect(&runs, &ParameterRuns::opened, this, &ParameterArea::reset);
  connect(&runs, &ParameterRuns::orderChanged, this, [this] { relayout(); });
  connect(&runs, &ParameterRuns::changed, this, [this] { refresh(); });
}

void ParameterArea::reset()
{
  hand.cancel();
  pressed.reset();
  chosenParameter.reset();
  relayout();
  horizontalScrollBar()->setValue(0);
  verticalScrollBar()->setValue(0);
}

Theme ParameterArea::themeOf(QWidget const& widget) const
{
  return Theme::ofPalette(widget.palette(), widget.font());
}

QPointF ParameterArea::originOf(std::size_t) const
{
  return {};
}

std::optional<std::size_t> ParameterArea::current() const
{
  if (chosenParameter) return chosenParameter;
  return runs.order().empty() ? std::nullopt : std::optional(runs.order().front());
}

void ParameterArea::setCurrent(std::size_t parameter)
{
  chosenParameter = parameter;
  scrollTo(placeOf(parameter));
  setAccessibleDescription(titleOf(document.scan().parameters[parameter].label) + " " +
                           headline(numbersOf(document, parameter)));
  viewport()->update();
}

std::size_t ParameterArea::placeInOrder(std::size_t parameter) const
{
  auto const& order = runs.order();
  return static_cast<std::size_t>(std::find(order.begin(), order.end(), parameter) - order.begin());
}

void ParameterArea::scrollTo(QRectF const& place)
{
  auto const show = [](QScrollBar& bar, double first, double last, int length) {
    if (first < 0.0)
      bar.setValue(bar.value() + static_cast<int>(std::floor(first)));
    else if (last > length)
      bar.setValue(bar.value() + static_cast<int>(std::ceil(last - length)));
  };
  show(*horizontalScrollBar(), place.left(), place.right(), viewport()->width());
  show(*verticalScrollBar(), place.top(), place.bottom(), viewport()->height());
}

bool ParameterArea::viewportEvent(QEvent* event)
{
  if (event->type() != QEvent::ToolTip || !document.isOpen())
    return QAbstractScrollArea::viewportEvent(event);
  auto* help = static_cast<QHelpEvent*>(event);
  const QString tip = hand.isActive() ? QString() : tipAt(help->pos());
  if (tip.isEmpty())
    hidePlainTip();
  else
    showPlainTip(help->globalPos(), tip, viewport());
  return true;
}

void ParameterArea::mousePressEvent(QMouseEvent* event)
{
  if (event->button() != Qt::LeftButton || !document.isOpen()) return;
  pressed = parameterAt(event->localPos());
  if (!pressed) return;
  std::unique_ptr<GateHold> hold = holdAt(event->localPos(), *pressed, event->modifiers());
  chosenParameter = pressed; // where it is: a chart that scrolls would get away from under the pointer
  viewport()->update();
  hand.take(std::move(hold), event->localPos(), originOf(*pressed));
  if (hand.isMoving()) Q_EMIT told(GateHand::wordsFor(document));
}

void ParameterArea::mouseMoveEvent(QMouseEvent* event)
{
  if (!document.isOpen()) return;
  if (!pressed)
    hoverAt(event->localPos());
  else if (hand.follow(event->localPos()))
    Q_EMIT told(GateHand::wordsFor(document));
}

void ParameterArea::mouseReleaseEvent(QMouseEvent* event)
{
  if (event->button() != Qt::LeftButton || !pressed) return;
  const std::size_t parameter = *pressed;
  pressed.reset();
  const GateHand::End end = hand.finish();
  Q_EMIT told(GateHand::wordsFor(end));
  if (end == GateHand::End::Click && parameterAt(event->localPos()) == parameter) Q_EMIT chosen(parameter);
  hoverAt(event->localPos());
}

void ParameterArea::giveUp()
{
  hand.cancel();
  pressed.reset();
  Q_EMIT told(QString());
}

int ParameterArea::stepOf(int key) const
{
  constexpr int all = 1 << 20;
  return key == Qt::Key_Left    ? -1
         : key == Qt::Key_Right ? 1
         : key == Qt::Key_Home  ? -all
         : key == Qt::Key_End   ? all
                                : 0;
}

void ParameterArea::move(int by)
{
  auto const& order = runs.order();
  if (order.empty()) return;
  const auto last = static_cast<std::ptrdiff_t>(order.size()) - 1;
  const auto here = static_cast<std::ptrdiff_t>(placeInOrder(*current()));
  setCurrent(order[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(here + by, 0, last))]);
}

void ParameterArea::keyPressEvent(QKeyEvent* event)
{
  if (const int step = stepOf(event->key())) return move(step);
  switch (event->key()) {
  case Qt::Key_Return:
  case Qt::Key_Enter:
  case Qt::Key_Space:
    if (current()) Q_EMIT chosen(*current());
    return;
  case Qt::Key_Escape:
    if (!hand.isActive()) return document.selectGate(std::nullopt);
    return giveUp();
  default:
    QAbstractScrollArea::keyPressEvent(event);
  }
}

void ParameterArea::contextMenuEvent(QContextMenuEvent* event)
{
  if (!document.isOpen() || hand.isMoving()) return;
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  const std::optional<std::size_t> parameter = byKey ? current() : parameterAt(event->pos());
  if (!parameter) return;
  setCurrent(*parameter);
  QMenu menu(this);
  connect(&document, &Document::opened, &menu, &QMenu::close); // its parameter is one of the former scan
  connect(menu.addAction("&Open large"), &QAction::triggered, this,
          [this, parameter = *parameter] { Q_EMIT chosen(parameter); });
  fillParameterMenu(menu, runs, *parameter);
  menu.exec(byKey ? viewport()->mapToGlobal(placeOf(*parameter).center().toPoint()) : event->globalPos());
}

void ParameterArea::resizeEvent(QResizeEvent*)
{
  relayout();
}

void ParameterArea::changeEvent(QEvent* event)
{
  QAbstractScrollArea::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  theme = themeOf(*this);
  relayout();
}

} // namespace runsieve::app
