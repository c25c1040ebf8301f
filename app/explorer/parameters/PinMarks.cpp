#include "app/explorer/parameters/PinMarks.h"

#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/charts/PinColors.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double markHeight = 0.12; ///< of the plot
constexpr double mostOfPlot = 0.35; ///< width of a name
constexpr double between = 5.0;     ///< names on a line
constexpr int mostLines = 2;
constexpr std::size_t mostTold = 10; ///< in a tooltip

QString nameOf(Document const& document, std::size_t run)
{
  return QString::fromStdString(document.scan().runs[run].key);
}

std::vector<std::size_t> pinsOf(Document const& document)
{
  return {document.pinnedRuns().begin(), document.pinnedRuns().end()};
}

void paintMark(QPainter& painter, ChartFrame const& frame, double x, QColor const& color)
{
  const QRectF plot = frame.plot();
  painter.setPen(QPen(color, 2.0));
  painter.drawLine(QPointF(x, plot.bottom() - markHeight * plot.height()), QPointF(x, plot.bottom()));
}

void paintLabel(QPainter& painter, PinLabel const& label, double x, QRectF const& plot, QColor const& color,
                Theme const& theme)
{
  const QFontMetricsF metrics(theme.font);
  const double marks = plot.bottom() - markHeight * plot.height() - 1.0;
  const double below = marks - label.line * metrics.height();
  const QRectF place(label.left, below - metrics.height(), label.width, metrics.height());
  QColor ground = theme.paper;
  ground.setAlphaF(0.8);
  painter.fillRect(place.adjusted(-1.5, 0.0, 1.5, 0.0), ground);
  painter.setPen(QPen(color, 1.0));
  if (label.line > 0) painter.drawLine(QPointF(x, below), QPointF(x, marks));
  painter.drawText(QPointF(place.left(), place.top() + metrics.ascent()), label.text);
}

/// The pins that are on the axis, from its left end.
std::vector<std::size_t> fromTheLeft(std::vector<double> const& places)
{
  std::vector<std::size_t> order;
  for (std::size_t pin = 0; pin < places.size(); ++pin)
    if (std::isfinite(places[pin])) order.push_back(pin);
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return places[a] < places[b]; });
  return order;
}

QString valueText(ScanParameter const& parameter, std::size_t run)
{
  const double value = parameter.values[run];
  if (std::isnan(value)) return "no value";
  return parameter.isText() ? QString::fromStdString(parameter.texts[static_cast<std::size_t>(value)])
                            : numberText(value);
}

} // namespace

std::vector<PinLabel> pinLabels(std::vector<double> const& places, QStringList const& names,
                                QRectF const& plot, Theme const& theme)
{
  const QFontMetricsF metrics(theme.font);
  const int lines =
      std::clamp(static_cast<int>(0.5 * (1.0 - markHeight) * plot.height() / metrics.height()), 0, mostLines);
  std::vector<PinLabel> labels;
  auto const crosses = [&](PinLabel const& upper, PinLabel const& lower) { // on the way down to its mark
    const double x = places[upper.pin];
    return x > lower.left - between && x < lower.left + lower.width + between;
  };
  auto const isClear = [&](PinLabel const& a) {
    return std::none_of(labels.begin(), labels.end(), [&](PinLabel const& b) {
      if (a.line == b.line) return a.left < b.left + b.width + between && b.left < a.left + a.width + between;
      return a.line > b.line ? crosses(a, b) : crosses(b, a);
    });
  };
  for (std::size_t const pin : fromTheLeft(places)) {
    PinLabel label{pin, elided(names[static_cast<int>(pin)], theme.font, mostOfPlot * plot.width()), 0.0, 0.0,
                   0};
    label.width = metrics.horizontalAdvance(label.text);
    if (label.width > plot.width()) continue;
    label.left = std::clamp(places[pin] - 0.5 * label.width, plot.left(), plot.right() - label.width);
    while (label.line < lines && !isClear(label)) ++label.line;
    if (label.line < lines) labels.push_back(label);
  }
  return labels;
}

void paintPins(QPainter& painter, Document const& document, std::size_t parameter, ChartFrame const& frame,
               Theme const& theme)
{
  std::vector<double> const& values = document.scan().parameters[parameter].values;
  const PinColors colors(document.state().sets, document.pins(), theme);
  std::vector<double> places;
  QStringList names;
  const std::vector<std::size_t> pins = pinsOf(document);
  for (std::size_t const run : pins) {
    places.push_back(frame.xAt(values[run]));
    names << nameOf(document, run);
    if (std::isfinite(places.back())) paintMark(painter, frame, places.back(), colors.of(run));
  }
  painter.setFont(theme.font);
  for (PinLabel const& label : pinLabels(places, names, frame.plot(), theme))
    paintLabel(painter, label, places[label.pin], frame.plot(), colors.of(pins[label.pin]), theme);
  if (auto const run = document.hoveredRun()) {
    const double x = frame.xAt(values[*run]);
    if (std::isfinite(x)) paintMark(painter, frame, x, theme.hover);
  }
}

double roomForPins(Document const& document, double width, Theme const& theme)
{
  const QFontMetricsF metrics(theme.font);
  double widest = 0.0;
  for (std::size_t const run : document.pinnedRuns())
    widest = std::max(widest, metrics.horizontalAdvance(nameOf(document, run)));
  return widest > 0.0 ? std::min(widest + metrics.horizontalAdvance(" +99"), 0.28 * width) : 0.0;
}

void paintPinsOnRows(QPainter& painter, Document const& document, std::size_t parameter,
                     TextBarRows const& rows, double width, Theme const& theme)
{
  const QFontMetricsF metrics(theme.font);
  std::vector<double> const& values = document.scan().parameters[parameter].values;
  std::vector<std::vector<std::size_t>> onRow(rows.size());
  const std::vector<std::size_t> pins = pinsOf(document);
  const PinColors colors(document.state().sets, document.pins(), theme);
  for (std::size_t pin = 0; pin < pins.size(); ++pin)
    if (std::isfinite(values[pins[pin]]))
      onRow[rows.rowOf(static_cast<std::size_t>(values[pins[pin]]))].push_back(pin);
  painter.setFont(theme.font);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    if (onRow[row].empty()) continue;
    const std::size_t pin = onRow[row].front();
    const QRectF place = rows.place(row);
    const double base = place.center().y() + 0.5 * (metrics.ascent() - metrics.descent());
    const QString more = onRow[row].size() > 1 ? QString(" +%1").arg(onRow[row].size() - 1) : QString();
    const double rest = metrics.horizontalAdvance(more);
    painter.setPen(theme.faint);
    painter.drawText(QPointF(place.right() - rest, base), more);
    const QString name = elided(nameOf(document, pins[pin]), theme.font, width - rest);
    painter.setPen(colors.of(pins[pin]));
    painter.drawText(QPointF(place.right() - rest - metrics.horizontalAdvance(name), base), name);
  }
}

QStringList pinLines(Document const& document, std::size_t parameter)
{
  ScanParameter const& values = document.scan().parameters[parameter];
  QStringList lines;
  const std::vector<std::size_t> pins = pinsOf(document);
  for (std::size_t pin = 0; pin < std::min(pins.size(), mostTold); ++pin)
    lines << QString("run %1: %2").arg(nameOf(document, pins[pin]), valueText(values, pins[pin]));
  if (pins.size() > mostTold) lines << QString("and %L1 more pinned runs").arg(pins.size() - mostTold);
  return lines;
}

} // namespace runsieve::app
