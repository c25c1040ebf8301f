#include "app/explorer/charts/DensityLegend.h"

#include "app/explorer/charts/ShadeGradient.h"

#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double margin = 6.0;
constexpr double barWidth = 56.0;

bool hasShades(LegendLine const& line)
{
  return line.shades.largest() > 0.0;
}

QString countText(double runs)
{
  return QLocale::c().toString(std::llround(runs));
}

QString countsOf(LegendLine const& line)
{
  if (!hasShades(line)) return {};
  return line.shades.largest() > line.shades.smallest()
             ? QString("%1 - %2").arg(countText(line.shades.smallest()), countText(line.shades.largest()))
             : countText(line.shades.largest());
}

} // namespace

void paintLegend(QPainter& painter, QRectF const& plot, std::vector<LegendLine> const& lines,
                 Theme const& theme)
{
  if (lines.empty()) return;
  const QFontMetricsF metrics(theme.font);
  double texts = 0.0;
  double counts = 0.0;
  for (LegendLine const& line : lines) {
    texts = std::max(texts, metrics.horizontalAdvance(line.text));
    counts = std::max(counts, metrics.horizontalAdvance(countsOf(line)));
  }
  texts = std::min(texts, 0.4 * plot.width());
  const double row = metrics.height() * 1.15;
  const double width =
      margin + barWidth + margin + texts + (counts > 0.0 ? 2.0 * margin + counts : 0.0) + margin;
  const QRectF box(plot.right() - width - 4.0, plot.top() + 4.0, width,
                   row * static_cast<double>(lines.size()) + margin);
  if (box.width() > 0.8 * plot.width() || box.height() > 0.6 * plot.height()) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(theme.font);
  QColor ground = theme.paper;
  ground.setAlphaF(0.82);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ground);
  painter.drawRoundedRect(box, 3.0, 3.0);
  double y = box.top() + 0.5 * margin;
  for (LegendLine const& line : lines) {
    const QRectF bar(box.left() + margin, y + 0.25 * row, barWidth, 0.5 * row);
    painter.setPen(Qt::NoPen);
    if (hasShades(line))
      painter.setBrush(shadeGradient(line.shades, line.color, theme.dark, bar.topLeft(), bar.topRight()));
    else
      painter.setBrush(line.color);
    painter.drawRect(hasShades(line) ? bar
                                     : bar.adjusted(0.0, 0.35 * bar.height(), 0.0, -0.35 * bar.height()));
    const double base = y + 0.5 * (row + metrics.ascent() - metrics.descent());
    painter.setPen(theme.ink);
    painter.drawText(QPointF(bar.right() + margin, base), elided(line.text, theme.font, texts));
    painter.setPen(theme.faint);
    painter.drawText(QPointF(bar.right() + 3.0 * margin + texts, base), countsOf(line));
    y += row;
  }
  painter.restore();
}

} // namespace runsieve::app
