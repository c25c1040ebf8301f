#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/charts/PinColors.h"
#include "app/explorer/parameters/GateMarks.h"
#include "app/explorer/parameters/ParallelRuns.h"
#include "app/explorer/parameters/ParallelView.h"
#include "app/explorer/parameters/ParameterNumbers.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPaintEvent>

#include <cmath>

namespace runsieve::app {

namespace {

constexpr double halfBand = 7.0; ///< width of the gates on an axis

} // namespace

void ParallelView::paintRun(QPainter& painter, std::size_t run, QColor const& color) const
{
  QPainterPath path;
  bool isDown = false;
  const QRectF area = band();
  for (std::size_t place = firstShown; place <= lastShown && place < runs.order().size(); ++place) {
    const double share = parallelPlace(runs, runs.order()[place], run);
    const QPointF at(xOf(place), area.bottom() - share * area.height());
    const bool isThere = std::isfinite(at.y());
    if (isThere && isDown) path.lineTo(at);
    if (isThere && !isDown) path.moveTo(at);
    isDown = isThere;
  }
  QColor halo = theme.paper;
  halo.setAlphaF(0.8);
  painter.strokePath(path, QPen(halo, theme.curve + 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.strokePath(path, QPen(color, theme.curve, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void ParallelView::paintAxis(QPainter& painter, std::size_t place) const
{
  const std::size_t parameter = runs.order()[place];
  ScanParameter const& values = document.scan().parameters[parameter];
  const QRectF area = band();
  const double x = std::floor(xOf(place)) + 0.5;
  const QFontMetricsF metrics(theme.font);
  const double most = step - 8.0;
  auto const centred = [&](QString const& text, double base, QFont const& font) {
    const QString shown = elided(text, font, most);
    painter.setFont(font);
    painter.drawText(QPointF(x - 0.5 * QFontMetricsF(font).horizontalAdvance(shown), base), shown);
  };
  const ParameterNumbers numbers = numbersOf(document, parameter);
  QFont bold = theme.font;
  bold.setBold(numbers.significant && numbers.isCurrent);
  const bool isCurrent = hasFocus() && current() == parameter;
  painter.setPen(isCurrent ? theme.gate : theme.ink);
  centred(titleOf(values.label), metrics.ascent() + 3.0, bold);
  painter.setPen(numbers.significant && numbers.isCurrent ? theme.passing : theme.faint);
  if (!std::isnan(numbers.d))
    centred(QString::asprintf("d %+.2f", numbers.d) +
                (numbers.significant && numbers.isCurrent ? QString::fromUtf8(" \u2605") : QString()),
            metrics.ascent() + metrics.height() + 3.0, theme.font);
  painter.setPen(QPen(isCurrent ? theme.gate : theme.ink, isCurrent ? 2.0 : theme.line));
  painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
  painter.setPen(theme.faint);
  auto const here = spans.find(parameter);
  if (values.isText()) {
    centred(QString("%L1 texts").arg(values.texts.size()), area.bottom() + metrics.ascent() + 4.0,
            theme.font);
    paintTextsOf(painter, parameter);
    if (here != spans.end()) paintTextGates(painter, here->second, textRowsOf(parameter), theme);
    return;
  }
  const AxisMap axis = runs.axis(parameter);
  centred(shortNumber(axis.high()), area.top() - 5.0, theme.font);
  centred(shortNumber(axis.low()), area.bottom() + metrics.ascent() + 4.0, theme.font);
  for (Tick const& tick : ticksOf(axis, 4)) {
    const double y = area.bottom() - axis.place(tick.value) * area.height();
    const double length = tick.label.isEmpty() ? 2.0 : 4.0;
    painter.drawLine(QPointF(x - length, y), QPointF(x + length, y));
  }
  if (here != spans.end())
    paintSpans(painter, here->second, spanAxis(parameter),
               QRectF(x - halfBand, area.top(), 2.0 * halfBand, area.height()), false, theme);
}

void ParallelView::paintTextsOf(QPainter& painter, std::size_t parameter) const
{
  const QFontMetricsF metrics(theme.font);
  const TextBarRows rows = textRowsOf(parameter);
  if (rows.place(0).height() < metrics.height()) return;
  QColor ground = theme.paper;
  ground.setAlphaF(0.8);
  const double left = std::floor(xOf(placeInOrder(parameter))) + 4.5;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const QString text = elided(rows.at(i).text, theme.font, step - 18.0);
    const double middle = rows.place(i).center().y();
    const QRectF place(left, middle - 0.5 * metrics.height(), metrics.horizontalAdvance(text) + 4.0,
                       metrics.height());
    painter.fillRect(place, ground);
    painter.setPen(theme.ink);
    painter.drawText(QPointF(place.left() + 2.0, place.top() + metrics.ascent()), text);
  }
}

void ParallelView::paintEvent(QPaintEvent* event)
{
  QPainter painter(viewport());
  painter.fillRect(event->rect(), theme.paper);
  if (!document.isOpen()) return;
  if (runs.order().size() < 2) {
    painter.setPen(theme.faint);
    painter.setFont(theme.font);
    painter.drawText(QRectF(viewport()->rect()).adjusted(12, 12, -12, -12),
                     Qt::AlignCenter | Qt::TextWordWrap, "Parallel coordinates need two parameters or more.");
    return;
  }
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF area = band();
  const QRectF plot(xOf(firstShown), area.top(), xOf(lastShown) - xOf(firstShown), area.height());
  const bool faded = document.sieves() && document.state().view.focus == Focus::Faded;
  constexpr double pale = 0.25;
  picture.paint(painter, plot, AxisMap(0.0, static_cast<double>(lastShown - firstShown)), AxisMap(0.0, 1.0),
                {faded ? pale : 1.0});
  const PinColors colors(document.state().sets, document.pins(), theme);
  for (std::size_t const run : document.pins().inOrder()) paintRun(painter, run, colors.of(run));
  if (auto const run = document.hoveredRun()) paintRun(painter, *run, theme.hover);
  for (std::size_t place = firstShown; place <= lastShown && place < runs.order().size(); ++place)
    paintAxis(painter, place);
}

} // namespace runsieve::app
