#include "app/explorer/parameters/PaintPair.h"

#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/parameters/RunDots.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace runsieve::app {

namespace {

constexpr double room = 0.04; ///< of an axis beyond the values

/// How large dots are, in units: 1 in a chart of usual size beside letters of usual size on a screen.
double scaleOfDots(QSizeF const& plot, Theme const& theme)
{
  constexpr double usualGap = 4.0;
  constexpr double usualSize = 300.0;
  return std::max(theme.gap / usualGap, std::min(plot.width(), plot.height()) / usualSize);
}

} // namespace

void paintPair(QPainter& painter, QRectF const& area, QStringList const& title, PairAxis const& across,
               PairAxis const& up, std::vector<std::uint8_t> const& passing,
               std::vector<std::uint8_t> const& eligible, Theme const& theme, double pixelsPerUnit)
{
  const double gap = theme.gap;
  const QRectF inner = area.adjusted(2.0 * gap, 1.25 * gap, -2.0 * gap, -1.5 * gap);
  const QFontMetricsF metrics(theme.font);
  painter.setFont(theme.font);
  painter.setPen(theme.ink);
  double top = inner.top();
  for (QString const& line : title) {
    painter.drawText(QPointF(inner.left(), top + metrics.ascent()), elided(line, theme.font, inner.width()));
    top += metrics.height();
  }
  const ChartFrame frame(QRectF(QPointF(inner.left(), top), inner.bottomRight()),
                         {across.map.widened(room), across.title}, {up.map.widened(room), up.title}, theme);
  const DotPlaces places{across.columns,
                         up.columns,
                         frame.horizontal().place(across.map.low()),
                         frame.horizontal().place(across.map.high()),
                         frame.vertical().place(up.map.low()),
                         frame.vertical().place(up.map.high())};
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setRenderHint(QPainter::LosslessImageRendering);
  const QSizeF size = frame.plot().size();
  RunDots dots((size * pixelsPerUnit).toSize(), pixelsPerUnit * scaleOfDots(size, theme));
  painter.drawImage(frame.plot(), dots.image(places, passing, eligible, theme));
  frame.paint(painter, theme);
}

} // namespace runsieve::app
