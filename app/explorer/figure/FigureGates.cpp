#include "app/explorer/figure/FigureGates.h"

#include "app/explorer/charts/ClippedLine.h"
#include "app/explorer/charts/GateLook.h"
#include "app/explorer/runs/GateShapes.h"

#include <QPainter>

#include <algorithm>

namespace runsieve::app {

void paintFigureGates(QPainter& painter, FigureContent const& content, std::size_t output,
                      ChartFrame const& frame, Theme const& theme, PlotNames& names)
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
    names.paintAtShape(painter, QString::fromStdString(named.name), theme.gate, *shape, theme.line);
  }
}

} // namespace runsieve::app
