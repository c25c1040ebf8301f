#include "app/explorer/charts/DensityLegend.h"

#include "app/explorer/charts/ShadeGradient.h"

#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

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
  const QString least = countText(line.shades.smallest());
  const QString most = countText(line.shades.largest());
  return least == most ? most : QString::fromUtf8("%1\u2013%2").arg(least, most);
}

/// How much is told of each line.
struct Detail
{
  double bar = 48.0; ///< width
  bool counts = true;
  double mostText = 1e6;
};

class LegendRow
{
public:
  LegendRow(std::vector<LegendLine> const& shown, Theme const& colors, Detail const& wanted)
      : lines(shown), theme(colors), detail(wanted), metrics(colors.font)
  {}

  [[nodiscard]] double width() const
  {
    double sum = lines.empty() ? 0.0 : -between;
    for (LegendLine const& line : lines) sum += widthOf(line) + between;
    return sum;
  }

  void paint(QPainter& painter, QRectF const& room) const
  {
    double x = room.right() - width();
    for (LegendLine const& line : lines) {
      paintLine(painter, line, x, room);
      x += widthOf(line) + between;
    }
  }

private:
  [[nodiscard]] QString textOf(LegendLine const& line) const
  {
    return elided(line.text, theme.font, detail.mostText);
  }
  [[nodiscard]] QString numbersOf(LegendLine const& line) const
  {
    return detail.counts ? countsOf(line) : QString();
  }
  [[nodiscard]] double widthOf(LegendLine const& line) const
  {
    const QString numbers = numbersOf(line);
    return (line.color.isValid() ? detail.bar + theme.gap : 0.0) + metrics.horizontalAdvance(textOf(line)) +
           (numbers.isEmpty() ? 0.0 : 1.5 * theme.gap + metrics.horizontalAdvance(numbers));
  }

  void paintLine(QPainter& painter, LegendLine const& line, double x, QRectF const& room) const
  {
    if (line.color.isValid()) {
      const double high = 0.6 * metrics.height();
      QRectF bar(x, room.center().y() - 0.5 * high, detail.bar, high);
      if (!hasShades(line)) bar.adjust(0.0, 0.35 * high, 0.0, -0.35 * high);
      painter.setOpacity(line.opacity);
      painter.fillRect(bar, hasShades(line) ? QBrush(shadeGradient(line.shades, line.color, theme.dark,
                                                                   bar.topLeft(), bar.topRight()))
                                            : QBrush(line.color));
      painter.setOpacity(1.0);
      x += detail.bar + theme.gap;
    }
    const double base = room.center().y() + 0.5 * (metrics.ascent() - metrics.descent());
    painter.setPen(line.color.isValid() ? theme.ink : theme.faint);
    painter.drawText(QPointF(x, base), textOf(line));
    x += metrics.horizontalAdvance(textOf(line)) + 1.5 * theme.gap;
    painter.setPen(theme.faint);
    painter.drawText(QPointF(x, base), numbersOf(line));
  }

  static constexpr double between = 14.0;

  std::vector<LegendLine> const& lines;
  Theme const& theme;
  Detail detail;
  QFontMetricsF metrics;
};

/// The line that matters least. \param ground text of the line of the ground
void leaveOut(std::vector<LegendLine>& lines, QString const& ground)
{
  auto const note =
      std::find_if(lines.begin(), lines.end(), [](LegendLine const& line) { return !line.color.isValid(); });
  if (note != lines.end())
    lines.erase(note);
  else if (lines.size() > 1 && lines.front().text == ground)
    lines.erase(lines.begin());
  else
    lines.pop_back();
}

} // namespace

QString legendText(LegendLine const& line)
{
  const QString counts = countsOf(line);
  return counts.isEmpty()
             ? line.text
             : QString("%1: %2 %3 at a point").arg(line.text, counts, counts == "1" ? "run" : "runs");
}

void paintLegend(QPainter& painter, QRectF const& room, std::vector<LegendLine> const& all,
                 Theme const& theme)
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(theme.font);
  constexpr double shortBar = 20.0;
  constexpr double shortestBar = 10.0;
  constexpr double cutText = 160.0;
  constexpr double shortText = 60.0;
  const Detail details[] = {{},
                            {shortBar},
                            {shortBar, false},
                            {shortBar, false, cutText},
                            {shortestBar, false, cutText},
                            {shortestBar, false, shortText}};
  std::vector<LegendLine> lines = all;
  Detail detail;
  auto const fits = [&] { return LegendRow(lines, theme, detail).width() <= room.width(); };
  for (Detail const& candidate : details) {
    detail = candidate;
    if (fits()) break;
  }
  while (!lines.empty() && !fits()) leaveOut(lines, all.front().text);
  LegendRow(lines, theme, detail).paint(painter, room);
  painter.restore();
}

} // namespace runsieve::app
