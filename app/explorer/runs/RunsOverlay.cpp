#include "app/explorer/runs/RunsOverlay.h"

#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/charts/DrawnTimes.h"
#include "app/explorer/charts/GateLook.h"
#include "app/explorer/charts/PinColors.h"
#include "app/explorer/charts/PlotNames.h"
#include "app/explorer/runs/GateShapes.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace runsieve::app {

namespace {

constexpr std::size_t mostParameters = 12; ///< told of a run
constexpr double handle = 7.0;             ///< side of a square

Gate const* gateAt(Document const& document, std::size_t index)
{
  std::size_t moving = 0;
  Gate const* previewed = document.previewedGate(&moving);
  if (previewed && moving == index) return previewed;
  auto const& gates = document.state().gates;
  return index < gates.size() ? &gates[index].gate : nullptr;
}

/// A single time is seen as well.
QRectF seenShape(QRectF const& shape)
{
  constexpr double narrow = 3.0;
  return shape.width() < narrow ? shape.adjusted(-0.5 * narrow, 0.0, 0.5 * narrow, 0.0) : shape;
}

QString parameterText(ScanParameter const& parameter, std::size_t run)
{
  const double value = parameter.values[run];
  if (!parameter.isText()) return numberText(value);
  return std::isnan(value) ? QString("-")
                           : QString::fromStdString(parameter.texts[static_cast<std::size_t>(value)]);
}

} // namespace

std::optional<QRectF> gateShape(Document const& document, std::size_t index, std::size_t output,
                                ChartFrame const& frame)
{
  Gate const* gate = gateAt(document, index);
  if (!gate || !isOnOutput(*gate, document.scan(), output)) return std::nullopt;
  return shapeOf(*gate, frame);
}

QStringList runLines(Document const& document, std::size_t output, FoundRun const& found)
{
  Scan const& scan = document.scan();
  ScanRun const& run = scan.runs[found.run];
  QStringList lines;
  QString first = "Run " + QString::fromStdString(run.key);
  if (run.status != RunStatus::Complete) first += QString(" (%1)").arg(statusName(run.status));
  lines << first;
  lines << QString("%1 at %2 = %3")
               .arg(QString::fromStdString(scan.outputs[output].label.name), numberText(found.time),
                    numberText(found.value));
  std::size_t told = 0;
  for (std::size_t const p : document.parameterOrder()) {
    if (told++ == mostParameters) {
      lines << QString("and %L1 more parameters").arg(scan.parameters.size() - mostParameters);
      break;
    }
    lines << QString("%1 = %2").arg(QString::fromStdString(scan.parameters[p].label.name),
                                    parameterText(scan.parameters[p], found.run));
  }
  return lines;
}

void RunsOverlay::paintGate(QPainter& painter, std::size_t index, QRectF const& shape, bool handles,
                            PlotNames& names) const
{
  Gate const& gate = *gateAt(document, index);
  auto const& gates = document.state().gates;
  const bool isOff = index < gates.size() && !gates[index].on;
  const bool isChosen = document.selectedGate() == index;
  const QColor color = isOff ? theme.faint : theme.gate;
  QColor inside = color;
  inside.setAlphaF(isChosen ? 0.14 : 0.07);
  QPen pen(color, isChosen ? 2.0 : 1.4, excludesInside(gate) || isOff ? Qt::DashLine : Qt::SolidLine);
  painter.setPen(pen);
  painter.setBrush(inside);
  painter.drawRect(shape);
  names.paintAtShape(painter,
                     index < gates.size() ? QString::fromStdString(gates[index].name) : QString("new gate"),
                     color, shape, handles && isChosen ? 0.5 * handle + 1.0 : pen.widthF());
  if (!handles || !isChosen) return;
  painter.setPen(QPen(theme.paper, 1.0));
  painter.setBrush(color);
  const QPointF middle = shape.center();
  std::vector<QPointF> places;
  // Handles of a narrow gate would lie over one another.
  const bool isWide = shape.width() > 2.5 * handle;
  const bool isHigh = shape.height() > 2.5 * handle;
  if (isWide && isHigh) places = {shape.topLeft(), shape.topRight(), shape.bottomLeft(), shape.bottomRight()};
  if (isHigh || !isWide) {
    places.emplace_back(shape.left(), middle.y());
    places.emplace_back(shape.right(), middle.y());
  }
  if (isWide || isHigh) {
    places.emplace_back(middle.x(), shape.top());
    places.emplace_back(middle.x(), shape.bottom());
  }
  for (QPointF const& corner : places)
    painter.drawRect(QRectF(corner.x() - 0.5 * handle, corner.y() - 0.5 * handle, handle, handle));
}

void RunsOverlay::paintGates(QPainter& painter, bool handles) const
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(theme.font);
  painter.setClipRect(frame.plot().adjusted(-1.0, -1.0, 1.0, 1.0), Qt::IntersectClip);
  std::vector<std::pair<std::size_t, QRectF>> shown;
  std::vector<QRectF> shapes;
  const std::size_t last = document.state().gates.size(); // a new one that is being drawn
  for (std::size_t i = 0; i <= last; ++i)
    if (auto const shape = gateShape(document, i, output, frame)) {
      shown.emplace_back(i, seenShape(*shape));
      shapes.push_back(shown.back().second);
    }
  PlotNames names(frame.plot(), theme);
  names.expect(std::move(shapes));
  for (auto const& [i, shape] : shown) paintGate(painter, i, shape, handles, names);
  painter.restore();
}

void RunsOverlay::paintRun(QPainter& painter, std::size_t run, QColor const& color, double width) const
{
  Scan const& scan = document.scan();
  double const* values = scan.valuesOf(output, run);
  QPainterPath path;
  bool isDown = false;
  const std::vector<double> times = drawnTimes(scan.times, frame.horizontal());
  for (std::size_t i = 0; i < times.size(); ++i) {
    const QPointF point = frame.at(times[i], values[drawnValue(i, scan.times.size())]);
    const bool isThere = std::isfinite(point.y());
    if (isThere && isDown) path.lineTo(point);
    if (isThere && !isDown) path.moveTo(point);
    isDown = isThere;
  }
  QColor halo = theme.paper;
  halo.setAlphaF(0.8);
  painter.strokePath(path, QPen(halo, width + 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.strokePath(path, QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void RunsOverlay::paintRuns(QPainter& painter) const
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setClipRect(frame.plot(), Qt::IntersectClip);
  painter.setFont(theme.font);
  const PinColors colors(document.state().sets, document.pins(), theme);
  std::vector<EndName> ends;
  Scan const& scan = document.scan();
  for (std::size_t const run : document.pins().inOrder()) {
    const QColor color = colors.of(run);
    paintRun(painter, run, color, theme.curve);
    // The label stands where the line leaves the chart to the right.
    double const* values = scan.valuesOf(output, run);
    for (std::size_t i = scan.times.size(); i-- > 0;) {
      const QPointF end = frame.at(scan.times[i], values[i]);
      if (!frame.plot().contains(end)) continue;
      ends.push_back({QString::fromStdString(scan.runs[run].key), color, end});
      break;
    }
  }
  PlotNames(frame.plot(), theme).paintAtEnds(painter, std::move(ends));
  if (auto const run = document.hoveredRun()) paintRun(painter, *run, theme.hover, theme.curve);
  painter.restore();
}

void RunsOverlay::paintHover(QPainter& painter, FoundRun const& found) const
{
  QStringList lines = runLines(document, output, found);
  const QFontMetricsF metrics(theme.font);
  constexpr double margin = 6.0;
  constexpr double mostWidth = 320.0;
  const QRectF plot = frame.plot();
  // A small chart has room for some lines only.
  const int most = std::max(3, static_cast<int>((plot.bottom() - 2.0 * margin) / metrics.height()));
  if (lines.size() > most) {
    lines = lines.mid(0, most - 1);
    lines << QString::fromUtf8("\u2026");
  }
  double width = 0.0;
  for (QString const& line : lines) width = std::max(width, metrics.horizontalAdvance(line));
  width = std::min(width, mostWidth);
  const QSizeF size(width + 2.0 * margin, metrics.height() * lines.size() + 2.0 * margin);
  const QPointF at = frame.at(found.time, found.value);
  if (!std::isfinite(at.x()) || !std::isfinite(at.y())) return;
  QPointF corner(at.x() + 14.0, at.y() + 14.0);
  if (corner.x() + size.width() > plot.right()) corner.setX(at.x() - 14.0 - size.width());
  corner.setX(std::max(corner.x(), 2.0));
  corner.setY(std::clamp(corner.y(), 2.0, std::max(2.0, plot.bottom() - size.height())));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(theme.font);
  painter.setPen(QPen(theme.hover, 1.5));
  painter.setBrush(theme.paper);
  painter.drawEllipse(at, 3.5, 3.5);
  QColor ground = theme.paper;
  ground.setAlphaF(0.94);
  painter.setBrush(ground);
  painter.setPen(QPen(theme.faint, 1.0));
  painter.drawRoundedRect(QRectF(corner, size), 4.0, 4.0);
  painter.setPen(theme.ink);
  for (int i = 0; i < lines.size(); ++i)
    painter.drawText(
        QPointF(corner.x() + margin, corner.y() + margin + metrics.ascent() + i * metrics.height()),
        elided(lines[i], theme.font, width));
  painter.restore();
}

} // namespace runsieve::app
