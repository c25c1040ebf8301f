#include "app/explorer/parameters/GateMarks.h"

#include <QPainter>

#include <cmath>

namespace runsieve::app {

namespace {

QColor colorOf(ParameterSpan const& span, Theme const& theme)
{
  return span.isOn ? theme.gate : theme.faint;
}

QColor insideOf(ParameterSpan const& span, Theme const& theme)
{
  QColor inside = colorOf(span, theme);
  inside.setAlphaF(span.isChosen ? 0.20 : 0.11);
  return inside;
}

QPen penOf(ParameterSpan const& span, Theme const& theme)
{
  return {colorOf(span, theme), span.isChosen ? 2.0 : 1.4,
          span.negated || !span.isOn ? Qt::DashLine : Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
}

} // namespace

void paintSpans(QPainter& painter, std::vector<ParameterSpan> const& spans, SpanAxis const& axis,
                QRectF const& plot, bool across, Theme const& theme)
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  for (ParameterSpan const& span : spans) {
    const double low = axis.lowPixel(span);
    const double high = axis.highPixel(span);
    const QRectF band = (across ? QRectF(QPointF(low, plot.top()), QPointF(high, plot.bottom()))
                                : QRectF(QPointF(plot.left(), high), QPointF(plot.right(), low)))
                            .normalized();
    painter.fillRect(band.intersected(plot.adjusted(-1.0, -1.0, 1.0, 1.0)), insideOf(span, theme));
    painter.setPen(penOf(span, theme));
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

void paintTextGates(QPainter& painter, std::vector<ParameterSpan> const& spans, TextBarRows const& rows,
                    Theme const& theme)
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  for (ParameterSpan const& span : spans) {
    auto const shareAt = [&](std::size_t row) {
      return row < rows.size() ? rows.at(row).shareIn(span.texts) : TextRow::Share::None;
    };
    painter.setBrush(insideOf(span, theme));
    for (std::size_t row = 0; row < rows.size(); ++row) {
      const TextRow::Share share = shareAt(row);
      if (share == TextRow::Share::None) continue;
      QRectF frame = rows.place(row);
      while (shareAt(row + 1) == share)
        frame = frame.united(rows.place(++row)); // one frame around neighbours
      QPen pen = penOf(span, theme);
      if (share == TextRow::Share::Some) pen.setStyle(Qt::DotLine);
      painter.setPen(pen);
      const double inset = frame.height() > 4.0 ? 1.0 : 0.0; // rows of many texts are low
      painter.drawRect(frame.adjusted(-4.0, inset, 4.0, -inset));
    }
  }
  painter.restore();
}

} // namespace runsieve::app
