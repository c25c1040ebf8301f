#include "app/explorer/parameters/ChartTexts.h"

#include <QFontMetricsF>
#include <QPainter>

namespace runsieve::app {

double heightOfChartTexts(Theme const& theme)
{
  return 2.0 * QFontMetricsF(theme.font).height() + 2.0;
}

void paintChartName(QPainter& painter, QRectF const& area, QString const& name, Theme const& theme)
{
  QFont bold = theme.font;
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(theme.ink);
  painter.drawText(QPointF(area.left(), area.top() + QFontMetricsF(theme.font).ascent()),
                   elided(name, bold, area.width()));
}

void paintChartNumbers(QPainter& painter, QRectF const& area, ParameterNumbers const& numbers, bool sieves,
                       std::size_t passing, std::size_t others, Theme const& theme)
{
  const QFontMetricsF metrics(theme.font);
  painter.setFont(theme.font);
  const double line = area.top() + metrics.height() + metrics.ascent();
  const QString othersText = QString("%L1").arg(others) + (sieves ? "" : " runs");
  const QString passingText = sieves ? QString("%L1").arg(passing) : QString();
  const double othersWidth = metrics.horizontalAdvance(othersText);
  const double between = passingText.isEmpty() ? 0.0 : metrics.horizontalAdvance(" : ");
  const double countsLeft = area.right() - othersWidth - between - metrics.horizontalAdvance(passingText);
  const QString difference = headline(numbers);
  painter.setPen(numbers.isCurrent && numbers.leftOut.isEmpty() ? theme.ink : theme.faint);
  const double differenceWidth = metrics.horizontalAdvance(difference);
  painter.drawText(QPointF(area.left(), line),
                   QFontMetricsF(theme.font).elidedText(difference, Qt::ElideRight, area.width()));
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

} // namespace runsieve::app
