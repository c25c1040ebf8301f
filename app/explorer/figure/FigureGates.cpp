#include "app/explorer/figure/FigureGates.h"

#include "app/explorer/charts/ClippedLine.h"
#include "app/explorer/charts/GateLook.h"
#include "app/explorer/runs/GateShapes.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <vector>

namespace runsieve::app {

namespace {

/// Tops of the places of a name, clear of the sides of a gate: above it, within a high one, below it, at the
/// ends of the plot.
std::vector<double> topsFor(QRectF const& shape, QRectF const& plot, Theme const& theme)
{
  const double height = QFontMetricsF(theme.font).height();
  std::vector<double> tops = {shape.top() - theme.line - height};
  if (shape.height() > 1.5 * height) tops.push_back(shape.top() + theme.line);
  tops.insert(tops.end(), {shape.bottom() + theme.line, plot.top(), plot.bottom() - height});
  return tops;
}

} // namespace

void paintFigureGates(QPainter& painter, FigureContent const& content, std::size_t output,
                      ChartFrame const& frame, Theme const& theme, FigureNames& names)
{
  constexpr double translucency = 0.12;
  const QRectF plot = frame.plot();
  for (NamedGate const& named : content.gates) {
    Gate const& gate = named.gate;
    if (!isOnOutput(gate, *content.scan, output)) continue;
    std::optional<QRectF> shape = shapeOf(gate, frame);
    if (!shape) continue;
    // A single time or value is seen as well.
    const double thin = std::max(0.0, theme.line - shape->width());
    shape->adjust(-0.5 * thin, 0.0, 0.5 * thin, 0.0);
    const QRectF inside = shape->intersected(plot);
    if (inside.isEmpty()) continue;
    QColor fill = theme.gate;
    fill.setAlphaF(translucency);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRect(inside);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(theme.gate, 1.4 * theme.line, excludesInside(gate) ? Qt::DashLine : Qt::SolidLine,
                        Qt::FlatCap, Qt::MiterJoin));
    for (QPolygonF const& part : clippedLine(QPolygonF(*shape), plot)) painter.drawPolyline(part);
    names.paint(painter, elided(QString::fromStdString(named.name), theme.font, 0.6 * plot.width()),
                theme.gate, inside.left() + 0.6 * theme.gap, topsFor(inside, plot, theme));
  }
}

} // namespace runsieve::app
