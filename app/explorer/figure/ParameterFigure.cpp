#include "app/explorer/figure/ParameterFigure.h"

#include "app/cli/RankReport.h"
#include "app/explorer/charts/ClippedLine.h"
#include "app/explorer/charts/CurveBand.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/RunDots.h"

#include <QFontMetricsF>
#include <QLineF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double finest = 0.4 * figureUnitsPerPoint; ///< length of line that is worth a point

/// Shares of the runs.
ChartAxis shareAxis()
{
  return {AxisMap(0.0, 1.0), {}, true, {{0.0, "0"}, {0.5, "0.5"}, {1.0, "1"}}};
}

AxisMap roomy(AxisMap const& axis)
{
  constexpr double room = 0.02;
  return axis.widened(room);
}

/// What stands below the name of a parameter. \param withP whether it tells p
QString differenceOf(FigureContent const& content, std::size_t parameter, bool withP)
{
  ParameterComparison const* numbers = content.numbersOf(parameter);
  if (!numbers || std::isnan(numbers->d)) return {};
  ComparisonMethod const& method = content.comparison->method;
  const double p = withP ? adjustedP(*numbers, method.adjustment) : std::nan("");
  return differenceText(numbers->d, p, method.thresholds.smallestD) + (numbers->significant ? " *" : "");
}

} // namespace

ParameterFigure::ParameterFigure(FigureContent const& ofContent, FigureOptions const& ofOptions,
                                 Theme const& ofTheme, std::size_t shown)
    : content(ofContent), options(ofOptions), theme(ofTheme), parameter(shown)
{
  if (!content.scan->parameters[parameter].isText()) samples = samplesOf(content, parameter);
}

QSizeF ParameterFigure::leastSize(FigureContent const& content, std::vector<std::size_t> const& parameters,
                                  Theme const& theme)
{
  const QFontMetricsF metrics(theme.font);
  double widest = 8.8 * metrics.height();
  for (std::size_t const parameter : parameters)
    widest =
        std::max(widest, metrics.horizontalAdvance(differenceOf(content, parameter, true)) + 2.5 * theme.gap);
  return {widest, 6.2 * metrics.height()};
}

double ParameterFigure::headerHeight() const
{
  return (content.comparison ? 2.1 : 1.1) * QFontMetricsF(theme.font).height();
}

void ParameterFigure::paintHeader(QPainter& painter, QRectF const& outer) const
{
  const QFontMetricsF metrics(theme.font);
  const QString name = titleOf(content.scan->parameters[parameter].label);
  ParameterComparison const* numbers = content.numbersOf(parameter);
  QFont font = theme.font;
  font.setBold(numbers && numbers->significant);
  painter.setFont(font);
  painter.setPen(theme.ink);
  painter.drawText(QPointF(outer.left() + theme.gap, outer.top() + metrics.ascent()),
                   elided(name, font, outer.width() - theme.gap));
  painter.setFont(theme.font);
  // A number that is cut says another one.
  QString line = differenceOf(content, parameter, true);
  const double room = outer.width() - theme.gap;
  if (metrics.horizontalAdvance(line) > room) line = differenceOf(content, parameter, false);
  if (metrics.horizontalAdvance(line) > room) return;
  painter.drawText(QPointF(outer.left() + theme.gap, outer.top() + metrics.height() + metrics.ascent()),
                   line);
}

void ParameterFigure::paint(QPainter& painter, QRectF const& outer, double pixelsPerUnit) const
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  paintHeader(painter, outer);
  const QRectF place = outer.adjusted(0.0, headerHeight(), 0.0, 0.0);
  if (content.scan->parameters[parameter].isText())
    paintTexts(painter, place);
  else if (options.parameterLook == ParameterLook::Scatter && !content.outputs.empty())
    paintScatter(painter, place, pixelsPerUnit);
  else if (options.parameterLook == ParameterLook::Densities)
    paintDensities(painter, place);
  else
    paintCurves(painter, place);
  painter.restore();
}

void ParameterFigure::paintLine(QPainter& painter, std::vector<QPointF> const& curve, ChartFrame const& frame,
                                QColor const& color) const
{
  QPolygonF line;
  for (QPointF const& point : curve) line << frame.at(point.x(), point.y());
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(color, theme.curve, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
  const double beyond = 0.5 * theme.curve; // a curve along an axis is seen in its full width
  for (QPolygonF const& part :
       clippedLine(line, frame.plot().adjusted(-beyond, -beyond, beyond, beyond), finest))
    painter.drawPolyline(part);
}

void ParameterFigure::paintFloor(QPainter& painter, std::vector<QPointF> const& others,
                                 ChartFrame const& frame) const
{
  const double floor = content.comparison ? content.comparison->noiseFloor : std::nan("");
  if (!options.thresholds || !std::isfinite(floor) || others.empty()) return;
  QPolygonF curve;
  for (QPointF const& point : others) {
    const QPointF at = frame.at(point.x(), point.y());
    const bool isEnd = &point == &others.front() || &point == &others.back();
    if (isEnd || QLineF(curve.last(), at).length() >= finest) curve << at;
  }
  QColor pale = theme.faint;
  pale.setAlphaF(0.3);
  painter.setPen(Qt::NoPen);
  painter.setBrush(pale);
  painter.drawPolygon(bandAround(curve, frame.plot(), floor * frame.plot().height()));
}

void ParameterFigure::paintCurves(QPainter& painter, QRectF const& place) const
{
  const ChartFrame frame(place, {roomy(samples.axis), {}}, shareAxis(), theme);
  const std::vector<QPointF> others = cumulativeCurve(samples.others, frame.horizontal());
  if (content.sieves) paintFloor(painter, others, frame);
  frame.paint(painter, theme);
  paintLine(painter, others, frame, theme.all);
  if (content.sieves)
    paintLine(painter, cumulativeCurve(samples.passing, frame.horizontal()), frame, theme.passing);
}

void ParameterFigure::paintDensities(QPainter& painter, QRectF const& place) const
{
  const std::vector<QPointF> others = densityCurve(samples.others, samples.axis);
  const std::vector<QPointF> passing = densityCurve(samples.passing, samples.axis);
  double highest = 0.0;
  for (auto const* curve : {&others, &passing})
    for (QPointF const& point : *curve) highest = std::max(highest, point.y());
  const AxisMap height(0.0, highest > 0.0 ? 1.05 * highest : 1.0);
  const ChartFrame frame(place, {samples.axis, {}}, {height, {}, false, {{0.0, {}}}}, theme);
  frame.paint(painter, theme);
  auto const paintOne = [&](std::vector<QPointF> curve, std::vector<double> const& values,
                            QColor const& color) {
    for (QPointF& point : curve) point.setX(samples.axis.value(point.x()));
    paintLine(painter, curve, frame, color);
    if (!curve.empty()) return;
    painter.setPen(QPen(color, theme.curve, Qt::SolidLine, Qt::FlatCap));
    for (double const value : values)
      painter.drawLine(QPointF(frame.xAt(value), frame.plot().bottom()),
                       QPointF(frame.xAt(value), frame.plot().bottom() - 0.2 * frame.plot().height()));
  };
  paintOne(others, samples.others, theme.all);
  if (content.sieves) paintOne(passing, samples.passing, theme.passing);
}

void ParameterFigure::paintScatter(QPainter& painter, QRectF const& place, double pixelsPerUnit) const
{
  Scan const& scan = *content.scan;
  const std::size_t output = content.outputs.front();
  const ChartFrame frame(place, {roomy(samples.axis), {}}, {content.valueAxis(output), {}}, theme);
  std::vector<double> last;
  for (std::size_t run = 0; run < scan.runs.size(); ++run)
    last.push_back(scan.valuesOf(output, run)[scan.times.size() - 1]);
  const RunColumns across(scan.parameters[parameter].values, samples.axis);
  const RunColumns up(last, frame.vertical());
  const DotPlaces places{across, up, frame.horizontal().place(samples.axis.low()),
                         frame.horizontal().place(samples.axis.high())};
  const QSize size = (frame.plot().size() * pixelsPerUnit).toSize().expandedTo(QSize(1, 1));
  // Dots consist of whole pixels: in finer ones they are round.
  constexpr double dot = 0.65;  // of the width of a line, for a pixel of a screen
  constexpr double least = 3.0; // pixels for one of a screen
  const double ratio = dot * theme.line * pixelsPerUnit;
  const int finer = std::max(1, static_cast<int>(std::ceil(least / ratio)));
  const QImage dots = RunDots(size * finer, ratio * finer)
                          .image(places, content.selected().mask(), content.eligible.mask(), theme);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setRenderHint(QPainter::LosslessImageRendering);
  painter.drawImage(frame.plot(), dots.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  frame.paint(painter, theme);
}

void ParameterFigure::paintTexts(QPainter& painter, QRectF const& place) const
{
  const QRectF area = place.adjusted(theme.gap, theme.gap, 0.0, -theme.gap);
  ParameterComparison const* numbers = content.numbersOf(parameter);
  const TextBarRows rows(area, content.scan->parameters[parameter], textGroupsOf(content, parameter), theme);
  paintTextBars(painter, rows, content.sieves, numbers ? QString::fromStdString(numbers->text) : QString(),
                0.0, theme);
}

} // namespace runsieve::app
