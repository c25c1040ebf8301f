#include "app/explorer/window/Icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

#include <map>
#include <string>
#include <utility>

namespace runsieve::app {

namespace {

/// Draws on a square from (0, 0) to (24, 24); the pen is set.
using Drawing = void (*)(QPainter&);

constexpr double side = 24.0;

void drawOpen(QPainter& p)
{
  p.drawPolyline(QPolygonF({{3, 19}, {3, 5}, {9, 5}, {11, 8}, {19, 8}, {19, 11}}));
  p.drawPolygon(QPolygonF({{3, 19}, {6.5, 11}, {22, 11}, {18.5, 19}}));
}

void drawSave(QPainter& p)
{
  p.drawPolygon(QPolygonF({{4, 4}, {17, 4}, {20, 7}, {20, 20}, {4, 20}}));
  p.drawRect(QRectF(8, 13, 8, 7));
  p.drawRect(QRectF(8, 4, 7, 4));
}

void drawFigure(QPainter& p)
{
  p.drawPolyline(QPolygonF({{4, 4}, {4, 20}, {20, 20}}));
  QPainterPath path(QPointF(5, 17));
  path.cubicTo({10, 16}, {10, 7}, {13, 7});
  path.cubicTo({16, 7}, {15, 13}, {20, 12});
  p.drawPath(path);
}

void drawUndo(QPainter& p)
{
  QPainterPath path(QPointF(5, 9));
  path.lineTo(14, 9);
  path.arcTo(QRectF(8, 9, 11, 10), 90, -180);
  path.lineTo(9, 19);
  p.drawPath(path);
  p.drawPolyline(QPolygonF({{9, 5}, {5, 9}, {9, 13}}));
}

void drawRedo(QPainter& p)
{
  p.translate(side, 0);
  p.scale(-1, 1);
  drawUndo(p);
}

void drawGate(QPainter& p)
{
  p.drawRect(QRectF(6, 6, 12, 12));
  p.setBrush(p.pen().color());
  for (QPointF const& corner : {QPointF(6, 6), QPointF(18, 6), QPointF(6, 18), QPointF(18, 18)})
    p.drawRect(QRectF(corner - QPointF(1.3, 1.3), QSizeF(2.6, 2.6)));
}

void drawPan(QPainter& p)
{
  p.drawLine(QPointF(12, 3), QPointF(12, 21));
  p.drawLine(QPointF(3, 12), QPointF(21, 12));
  for (int turn = 0; turn < 4; ++turn) {
    p.drawPolyline(QPolygonF({{9, 6}, {12, 3}, {15, 6}}));
    p.translate(12, 12);
    p.rotate(90);
    p.translate(-12, -12);
  }
}

void drawZoom(QPainter& p)
{
  p.drawEllipse(QPointF(10, 10), 6.0, 6.0);
  p.drawLine(QPointF(14.5, 14.5), QPointF(20, 20));
}

void drawEverything(QPainter& p)
{
  for (int turn = 0; turn < 4; ++turn) {
    p.drawPolyline(QPolygonF({{4, 9}, {4, 4}, {9, 4}}));
    p.translate(12, 12);
    p.rotate(90);
    p.translate(-12, -12);
  }
  p.drawRect(QRectF(8.5, 8.5, 7, 7));
}

void drawAdd(QPainter& p)
{
  p.drawPolyline(QPolygonF({{4, 4}, {4, 11}, {15, 11}}));
  p.drawPolyline(QPolygonF({{4, 14}, {4, 21}, {12, 21}}));
  p.drawLine(QPointF(18, 14), QPointF(18, 21));
  p.drawLine(QPointF(14.5, 17.5), QPointF(21.5, 17.5));
}

std::map<std::string, Drawing> const& drawings()
{
  static const std::map<std::string, Drawing> all = {
      {"file.open", drawOpen},    {"file.save", drawSave}, {"file.figure", drawFigure},
      {"edit.undo", drawUndo},    {"edit.redo", drawRedo}, {"tool.gate", drawGate},
      {"tool.pan", drawPan},      {"tool.zoom", drawZoom}, {"zoom.reset", drawEverything},
      {"view.addoutput", drawAdd}};
  return all;
}

/// Draws anew at each size, in the colours of the palette at that time.
class DrawnIcon : public QIconEngine
{
public:
  explicit DrawnIcon(Drawing drawing) : drawing(drawing) {}

  void paint(QPainter* painter, QRect const& rect, QIcon::Mode mode, QIcon::State) override
  {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / side, rect.height() / side);
    const QColor color = QGuiApplication::palette().color(
        mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active, QPalette::WindowText);
    painter->setPen(QPen(color, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    drawing(*painter);
    painter->restore();
  }

  QPixmap pixmap(QSize const& size, QIcon::Mode mode, QIcon::State state) override
  {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new DrawnIcon(*this); }

private:
  Drawing drawing;
};

void drawProgram(QPainter& p)
{
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(38, 52, 74));
  p.drawRoundedRect(QRectF(1, 1, 22, 22), 4, 4);
  p.setBrush(Qt::NoBrush);
  const std::pair<double, QColor> runs[] = {
      {5.0, QColor(120, 134, 158)}, {19.0, QColor(120, 134, 158)}, {11.0, QColor(255, 122, 66)}};
  for (auto const& [end, color] : runs) {
    QPainterPath path(QPointF(3, 16));
    path.cubicTo({9, 16}, {11, end}, {21, end});
    p.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap));
    p.drawPath(path);
  }
  p.setPen(QPen(Qt::white, 1.2));
  p.drawRect(QRectF(14.5, 8.5, 4.5, 5.0));
}

} // namespace

QIcon iconOf(char const* action)
{
  auto const drawing = drawings().find(action);
  return drawing == drawings().end() ? QIcon() : QIcon(new DrawnIcon(drawing->second));
}

QIcon programIcon()
{
  return QIcon(new DrawnIcon(drawProgram));
}

} // namespace runsieve::app
