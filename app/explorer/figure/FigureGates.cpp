#include "app/explorer/figure/FigureGates.h"

#include "app/explorer/charts/ClippedLine.h"
#include "app/explorer/charts/GateLook.h"
#include "app/explorer/runs/GateShapes.h"

#include <runsieve/core/gate/GateText.h>

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

QStringList unseenGates(FigureContent const& content, std::vector<std::size_t> const& outputs)
{
  constexpr int most = 4;
  QStringList texts;
  for (NamedGate const& named : content.gates) {
    const bool isSeen = hasShape(named.gate) && std::any_of(outputs.begin(), outputs.end(), [&](auto output) {
                          return isOnOutput(named.gate, *content.scan, output);
                        });
    if (!isSeen)
      texts << QString::fromStdString(named.name) + ": " + QString::fromStdString(formatGate(named.gate));
  }
  if (texts.size() <= most) return texts;
  const int more = texts.size() - most + 1;
  return texts.mid(0, most - 1) << QString("and %1 more gates").arg(more);
}

} // namespace runsieve::app
