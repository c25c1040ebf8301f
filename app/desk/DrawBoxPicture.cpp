#include "app/desk/DeskCommands.h"

#include "app/cli/RankReport.h"
#include "app/desk/PaintedPicture.h"
#include "app/explorer/parameters/BoxPathPicture.h"

#include <runsieve/core/text/ShownText.h>

#include <QFontMetricsF>
#include <QPainter>

#include <functional>
#include <vector>

namespace runsieve::app {

namespace {

using Sign = std::function<void(QPointF const& at)>;

/// A sign of the chart and what it means.
struct LegendLine
{
  QString text;
  Sign sign;
};

QString share(double value)
{
  return QString::fromStdString(formatted(value, "%.2f", "-"));
}

/// \param letter height of the letters
std::vector<LegendLine> legendOf(BoxOfRuns const& box, bool hasHalves, QPainter& painter, Theme const& theme,
                                 double letter)
{
  std::vector<LegendLine> lines;
  lines.push_back(
      {"steps of the path; number of restricted parameters", [&painter, &theme, letter](QPointF const& at) {
         BoxPathPicture::paintStep(painter, at, theme, 0.27 * letter);
       }});
  lines.push_back(
      {QString("box: coverage %1, density %2, %3; ring: step %4, of which it was made")
           .arg(share(box.quality.coverage), share(box.quality.density),
                QString(box.restricted == 1 ? "%1 parameter" : "%1 parameters").arg(box.restricted))
           .arg(box.chosen),
       [&painter, &theme](QPointF const& at) { BoxPathPicture::paintDiamond(painter, at, theme); }});
  lines.push_back({QString("base density %1: passing runs among all runs").arg(share(box.all.density)),
                   [&painter, &theme, letter](QPointF const& at) {
                     const QPointF half(0.7 * letter, 0.0);
                     BoxPathPicture::paintBase(painter, {at - half, at + half}, theme);
                   }});
  if (hasHalves)
    lines.push_back({QString("median and 5..95 % of %1 boxes of random halves, on the other half")
                         .arg(box.method.resamples),
                     [&painter, &theme, letter](QPointF const& at) {
                       const QPointF half(0.5 * letter, 0.5 * letter);
                       BoxPathPicture::paintCross(painter, at, QRectF(at - half, at + half), theme);
                     }});
  return lines;
}

} // namespace

void drawBoxPicture(BoxArguments const& arguments, BoxOfRuns const& box, std::string const& title)
{
  const QString heading = QString::fromStdString(printable(title));
  auto const paint = [&](QPainter& painter, QRectF const& whole, Theme const& theme, double) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(theme.font);
    const QFontMetricsF metrics(theme.font);
    const double line = metrics.height();
    const QRectF room = whole.adjusted(2.0 * theme.gap, 2.0 * theme.gap, -2.0 * theme.gap, -2.0 * theme.gap);
    const bool hasHalves = box.coverage.count > 0 && box.density.count > 0;
    const auto legend = legendOf(box, hasHalves, painter, theme, metrics.ascent());
    const double top = room.top() + 1.4 * line + 1.25 * line * static_cast<double>(legend.size()) + theme.gap;
    const BoxPathPicture picture(box, QRectF(QPointF(room.left(), top), room.bottomRight()), theme);
    picture.paint(painter);
    painter.setPen(theme.ink);
    const QString shown = elided(heading, theme.font, room.width());
    painter.drawText(
        QPointF(room.center().x() - 0.5 * metrics.horizontalAdvance(shown), room.top() + metrics.ascent()),
        shown);
    const double left = picture.frame().plot().left();
    double y = room.top() + 1.4 * line;
    for (LegendLine const& entry : legend) {
      entry.sign({left + 0.7 * line, y + 0.5 * line});
      painter.setPen(theme.ink);
      painter.drawText(QPointF(left + 1.8 * line, y + metrics.ascent()),
                       elided(entry.text, theme.font, room.right() - left - 1.8 * line));
      y += 1.25 * line;
    }
  };
  writePicture(arguments.picture, {arguments.width, arguments.height, heading, paint});
}

} // namespace runsieve::app
