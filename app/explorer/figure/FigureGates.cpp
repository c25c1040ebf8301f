#include "app/explorer/figure/FigureGates.h"

#include "app/explorer/charts/ClippedLine.h"
#include "app/explorer/runs/GateShapes.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace runsieve::app {

namespace {

bool isOn(Gate const& gate, Scan const& scan, std::size_t output)
{
  try {
    return scan.findOutput(gate.column) == output;
  } catch (std::invalid_argument const&) {
    return false; // several have the name
  }
}

/// Where a name stands: above the gate, at its top, below it; the first place that no other name has.
QRectF placeOf(QString const& text, QRectF const& shape, ChartFrame const& frame, Theme const& theme,
               std::vector<QRectF> const& taken)
{
  const QFontMetricsF metrics(theme.font);
  const QRectF plot = frame.plot();
  const QSizeF size(metrics.horizontalAdvance(text), metrics.height());
  const double x = std::clamp(shape.left() + 0.6 * theme.gap, plot.left() + theme.gap,
                              std::max(plot.left() + theme.gap, plot.right() - size.width() - theme.gap));
  QRectF first;
  for (double const y : {shape.top() - size.height(), shape.top() + 0.3 * theme.gap, shape.bottom(),
                         plot.top(), plot.bottom() - size.height()}) {
    const QRectF place(QPointF(x, y), size);
    if (place.top() < plot.top() || place.bottom() > plot.bottom()) continue;
    if (first.isNull()) first = place;
    if (std::none_of(taken.begin(), taken.end(),
                     [&](QRectF const& other) { return other.intersects(place); }))
      return place;
  }
  return first.isNull() ? QRectF(QPointF(x, plot.top()), size) : first;
}

} // namespace

void paintFigureGates(QPainter& painter, FigureContent const& content, std::size_t output,
                      ChartFrame const& frame, Theme const& theme)
{
  constexpr double translucency = 0.12;
  const QRectF plot = frame.plot();
  const QFontMetricsF metrics(theme.font);
  std::vector<QRectF> taken;
  for (NamedGate const& named : content.gates) {
    Gate const& gate = named.gate;
    if (!isOn(gate, *content.scan, output)) continue;
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
    const bool excludes = gate.negated != (gate.kind == GateKind::Never);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(theme.gate, 1.4 * theme.line, excludes ? Qt::DashLine : Qt::SolidLine, Qt::FlatCap,
                        Qt::MiterJoin));
    for (QPolygonF const& part : clippedLine(QPolygonF(*shape), plot)) painter.drawPolyline(part);
    const QString text = elided(QString::fromStdString(named.name), theme.font, 0.6 * plot.width());
    if (text.isEmpty()) continue;
    taken.push_back(placeOf(text, inside, frame, theme, taken));
    painter.setPen(theme.gate);
    painter.drawText(QPointF(taken.back().left(), taken.back().top() + metrics.ascent()), text);
  }
}

} // namespace runsieve::app
