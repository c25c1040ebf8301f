#include "app/explorer/figure/FigureGates.h"

#include "app/explorer/charts/ClippedLine.h"
#include "app/explorer/charts/GateLook.h"
#include "app/explorer/runs/GateShapes.h"

#include <QPainter>

#include <algorithm>
#include <utility>
#include <vector>

namespace runsieve::app {

void paintFigureGates(QPainter& painter, FigureContent const& content, std::size_t output,
                      ChartFrame const& frame, Theme const& theme, PlotNames& names)
{
  constexpr double translucency = 0.12;
  const QRectF plot = frame.plot();
  std::vector<std::pair<NamedGate const*, QRectF>> shown;
  std::vector<QRectF> shapes;
  for (NamedGate const& named : content.gates) {
    if (!isOnOutput(named.gate, *content.scan, output)) continue;
    std::optional<QRectF> shape = shapeOf(named.gate, frame);
    if (!shape) continue;
    // A single time or value is seen as well.
    const double thin = std::max(0.0, theme.line - shape->width());
    shape->adjust(-0.5 * thin, 0.0, 0.5 * thin, 0.0);
    if (shape->intersected(plot).isEmpty()) continue;
    shown.emplace_back(&named, *shape);
    shapes.push_back(*shape);
  }
  names.expect(std::move(shapes));
  for (auto const& [named, shape] : shown) {
    const QRectF inside = shape.intersected(plot);
    QColor fill = theme.gate;
    fill.setAlphaF(translucency);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRect(inside);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(theme.gate, 1.4 * theme.line,
                        excludesInside(named->gate) ? Qt::DashLine : Qt::SolidLine, Qt::FlatCap,
                        Qt::MiterJoin));
    for (QPolygonF const& part : clippedLine(QPolygonF(shape), plot)) painter.drawPolyline(part);
    names.paintAtShape(painter, QString::fromStdString(named->name), theme.gate, shape, theme.line);
  }
}

} // namespace runsieve::app
