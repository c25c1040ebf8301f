#include "app/explorer/parameters/ParameterChart.h"

#include "app/explorer/parameters/ChartLooks.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/RunDots.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double room = 0.025; ///< of the axis beyond the values, at each end
constexpr double margin = 8.0;

ChartAxis verticalAxis(ChartScene const& scene, ParameterLook look)
{
  switch (look) {
  case ParameterLook::Curves:
    return {AxisMap(0.0, 1.0), scene.isLarge ? "share of the runs" : QString()};
  case ParameterLook::Densities:
    return {AxisMap(0.0, 1.08), scene.isLarge ? "density" : QString(), false, {{0.0, {}}}};
  case ParameterLook::Scatter:
    return {scene.feature.axis(), scene.isLarge ? scene.feature.title() : QString()};
  }
  return {};
}

} // namespace

void paintSpans(QPainter& painter, std::vector<ParameterSpan> const& spans, SpanAxis const& axis,
                QRectF const& plot, bool across, Theme const& theme)
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  for (ParameterSpan const& span : spans) {
    const QColor color = span.isOn ? theme.gate : theme.faint;
    QColor inside = color;
    inside.setAlphaF(span.isChosen ? 0.20 : 0.11);
    const double low = axis.lowPixel(span);
    const double high = axis.highPixel(span);
    const QRectF band = (across ? QRectF(QPointF(low, plot.top()), QPointF(high, plot.bottom()))
                                : QRectF(QPointF(plot.left(), high), QPointF(plot.right(), low)))
                            .normalized();
    painter.fillRect(band.intersected(plot.adjusted(-1.0, -1.0, 1.0, 1.0)), inside);
    painter.setPen(QPen(color, span.isChosen ? 2.0 : 1.4,
                        span.negated || !span.isOn ? Qt::DashLine : Qt::SolidLine, Qt::FlatCap));
    for (auto const& [value, pixel] : {std::pair(span.range.low, low), std::pair(span.range.high, high)}) {
      if (!std::isfinite(value)) continue;
      const QLineF end = across ? QLineF(pixel, plot.top(), pixel, plot.bottom())
                                : QLineF(plot.left(), pixel, plot.right(), pixel);
      if (across ? pixel >= plot.left() - 1.0 && pixel <= plot.right() + 1.0
                 : pixel >= plot.top() - 1.0 && pixel <= plot.bottom() + 1.0)
        painter.drawLine(end);
    }
  }
  painter.restore();
}

ParameterChart::ParameterChart(ChartScene const& ofScene, std::size_t ofParameter, QRectF const& inArea)
    : scene(ofScene), document(ofScene.runs.ofDocument()), parameter(ofParameter),
      area(inArea.adjusted(margin, 0.6 * margin, -margin, -0.3 * margin)),
      isText(document.scan().parameters[parameter].isText())
{
  const double texts = 2.0 * QFontMetricsF(scene.theme.font).height() + 2.0;
  const QRectF below = area.adjusted(0.0, texts, 0.0, 0.0);
  if (isText) {
    inner = below.adjusted(0.0, scene.theme.gap, 0.0, -scene.theme.gap);
    return;
  }
  values = scene.runs.axis(parameter);
  ChartAxis horizontal{values.widened(room),
                       scene.isLarge ? titleOf(document.scan().parameters[parameter].label) : QString()};
  frame = ChartFrame(below, std::move(horizontal), verticalAxis(scene, look()), scene.theme);
  inner = frame.plot();
}

ParameterLook ParameterChart::look() const
{
  return document.state().view.parameterLook;
}

SpanAxis ParameterChart::axis() const
{
  return {parameter, frame.horizontal(), inner.left(), inner.right()};
}

void ParameterChart::paintTexts(QPainter& painter, std::size_t passing, std::size_t others) const
{
  Theme const& theme = scene.theme;
  const QFontMetricsF metrics(theme.font);
  const ParameterNumbers numbers = numbersOf(document, parameter);
  QFont bold = theme.font;
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(theme.ink);
  painter.drawText(QPointF(area.left(), area.top() + metrics.ascent()),
                   elided(titleOf(document.scan().parameters[parameter].label), bold, area.width()));
  painter.setFont(theme.font);
  const double line = area.top() + metrics.height() + metrics.ascent();
  const QString othersText = QString("%L1").arg(others) + (document.sieves() ? "" : " runs");
  const QString passingText = document.sieves() ? QString("%L1").arg(passing) : QString();
  const double othersWidth = metrics.horizontalAdvance(othersText);
  const double between = passingText.isEmpty() ? 0.0 : metrics.horizontalAdvance(" : ");
  const double countsLeft = area.right() - othersWidth - between - metrics.horizontalAdvance(passingText);
  const QString difference = headline(numbers);
  painter.setPen(numbers.isCurrent && numbers.leftOut.isEmpty() ? theme.ink : theme.faint);
  const double differenceWidth = metrics.horizontalAdvance(difference);
  painter.drawText(QPointF(area.left(), line), elided(difference, theme.font, area.width()));
  if (numbers.significant && numbers.isCurrent) { // the star once more, in the colour of what it tells of
    const QString star = QString::fromUtf8("\u2605");
    painter.setPen(theme.passing);
    painter.drawText(QPointF(area.left() + differenceWidth - metrics.horizontalAdvance(star), line), star);
  }
  // Where both don't fit the difference is what matters; the counts stand in the tooltip too.
  if (area.left() + differenceWidth + 2.0 * theme.gap > countsLeft) return;
  painter.setPen(theme.passing);
  painter.drawText(QPointF(countsLeft, line), passingText);
  painter.setPen(theme.faint);
  if (between > 0.0) painter.drawText(QPointF(area.right() - othersWidth - between, line), " : ");
  painter.setPen(theme.all);
  painter.drawText(QPointF(area.right() - othersWidth, line), othersText);
}

void ParameterChart::paintBars(QPainter& painter) const
{
  const TextGroups groups = scene.runs.textGroups(parameter);
  paintTexts(painter, groups.allPassing, groups.allOthers);
  const double slot = 1.25 * QFontMetricsF(scene.theme.font).height();
  const auto most = static_cast<std::size_t>(std::max(2.0, inner.height() / slot));
  const ParameterNumbers numbers = numbersOf(document, parameter);
  const QString marked = numbers.compared && numbers.isCurrent && !document.previewedGate()
                             ? QString::fromStdString(numbers.compared->text)
                             : QString();
  paintTextBars(painter, inner, textRows(document.scan().parameters[parameter], groups, most),
                document.sieves(), marked, scene.theme);
}

void ParameterChart::paintScatter(QPainter& painter) const
{
  const RunColumns& columns = scene.runs.columns(parameter);
  AxisMap const& shown = frame.horizontal();
  const DotPlaces places{columns, scene.feature.rows(), shown.place(values.low()),
                         shown.place(values.high())};
  const QSize size = (inner.size() * scene.ratio).toSize();
  RunDots dots(size, scene.ratio);
  painter.drawImage(inner, dots.image(places, scene.runs.passing(), scene.runs.eligible(), scene.theme));
}

void ParameterChart::paintMarks(QPainter& painter) const
{
  auto const mark = [&](std::size_t run, QColor const& color, double width) {
    const double x = frame.xAt(document.scan().parameters[parameter].values[run]);
    if (!std::isfinite(x)) return;
    painter.setPen(QPen(color, width));
    painter.drawLine(QPointF(x, inner.bottom() - 0.12 * inner.height()), QPointF(x, inner.bottom()));
  };
  std::size_t number = 0;
  for (std::size_t const run : document.pinnedRuns())
    mark(run, scene.theme.sets[number++ % scene.theme.sets.size()], 2.0);
  if (auto const run = document.hoveredRun()) mark(*run, scene.theme.hover, 2.0);
}

void ParameterChart::paintMedians(QPainter& painter) const
{
  const ParameterNumbers numbers = numbersOf(document, parameter);
  if (!scene.isLarge || !numbers.compared || !numbers.isCurrent || document.previewedGate()) return;
  for (auto const& [value, color] : {std::pair(numbers.compared->medianOthers, scene.theme.all),
                                     std::pair(numbers.compared->medianPassing, scene.theme.passing)}) {
    const double x = frame.xAt(value);
    if (!std::isfinite(x)) continue;
    painter.setPen(QPen(color, 1.3, Qt::DashLine, Qt::FlatCap));
    painter.drawLine(QPointF(x, inner.top()), QPointF(x, inner.bottom()));
  }
}

void ParameterChart::paintNumbers(QPainter& painter) const
{
  const ParameterGroups groups = scene.runs.groups(parameter);
  paintTexts(painter, groups.passing.total(), groups.others.total());
  auto const spans = scene.spans.find(parameter);
  if (spans != scene.spans.end()) paintSpans(painter, spans->second, axis(), inner, true, scene.theme);
  const ParameterNumbers numbers = numbersOf(document, parameter);
  const bool isTold = numbers.compared && numbers.isCurrent && !document.previewedGate();
  const double none = std::numeric_limits<double>::quiet_NaN();
  switch (look()) {
  case ParameterLook::Curves: {
    // The floor of the former comparison is near enough while a gate moves.
    const double floor = document.comparison() && numbers.compared ? document.comparison()->noiseFloor : none;
    ChartLooks::paintCurves(painter, frame, values, groups, floor, isTold ? numbers.compared->value : none,
                            scene.theme);
    break;
  }
  case ParameterLook::Densities: {
    ChartLooks::Densities densities = ChartLooks::densitiesOf(groups);
    if (densities.largest > 0.0)
      for (std::vector<double>* density : {&densities.passing, &densities.others})
        for (double& value : *density) value /= densities.largest;
    ChartLooks::paintDensities(painter, frame, values, groups, densities, scene.theme);
    break;
  }
  case ParameterLook::Scatter:
    paintScatter(painter);
    break;
  }
  paintMedians(painter);
  paintMarks(painter);
  frame.paint(painter, scene.theme);
}

void ParameterChart::paint(QPainter& painter) const
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (isText)
    paintBars(painter);
  else
    paintNumbers(painter);
  painter.restore();
}

} // namespace runsieve::app
