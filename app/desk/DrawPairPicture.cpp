#include "app/desk/DeskCommands.h"

#include "app/cli/PairReport.h"
#include "app/desk/PaintedPicture.h"
#include "app/explorer/parameters/PaintPair.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/ParameterSpread.h"

#include <runsieve/core/text/ShownText.h>

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace runsieve::app {

namespace {

/// Where the runs stand along a parameter.
struct PlacedParameter
{
  AxisMap axis;
  RunColumns columns;
};

PlacedParameter placed(ScanParameter const& parameter)
{
  const ParameterSpread spread = spreadOf(parameter);
  const AxisMap axis = spread.axis(spread.isLogarithmic);
  return {axis, RunColumns(parameter.values, axis)};
}

/// Columns of a grid whose cells are nearest to square.
std::size_t columnsFor(std::size_t charts, QSizeF const& room)
{
  constexpr double bestShape = 1.1; // axes take more room beside a chart than titles above
  std::size_t best = 1;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t columns = 1; columns <= charts; ++columns) {
    const std::size_t rows = (charts + columns - 1) / columns;
    const double shape =
        room.width() / static_cast<double>(columns) * static_cast<double>(rows) / room.height();
    const double distance = std::fabs(std::log(shape / bestShape));
    if (distance >= least) continue;
    least = distance;
    best = columns;
  }
  return best;
}

/// \param isNarrow r and p in a line each
QStringList titleLines(ParameterPair const& pair, bool isNarrow)
{
  const QString title = QString::fromStdString(pairTitle(pair));
  return isNarrow ? title.split(", ") : QStringList(title);
}

/// What is drawn of the runs of a scan.
class PairGrid
{
public:
  PairGrid(Scan const& ofScan, PairPicture const& ofPicture)
      : scan(ofScan), picture(ofPicture), passing(picture.passing.mask())
  {
    for (std::size_t run = 0; run < passing.size(); ++run) passing[run] &= picture.eligible.mask()[run];
    for (ParameterPair const& pair : picture.pairs)
      for (std::size_t const parameter : {pair.firstParameter, pair.secondParameter})
        if (parameters.count(parameter) == 0)
          parameters.emplace(parameter, placed(scan.parameters[parameter]));
  }

  void paint(QPainter& painter, QRectF const& whole, Theme const& theme, double pixelsPerUnit) const
  {
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF room = whole.adjusted(theme.gap, theme.gap, -theme.gap, -theme.gap);
    const QRectF grid = room.adjusted(0.0, paintHead(painter, room, theme), 0.0, 0.0);
    const std::size_t columns = columnsFor(picture.pairs.size(), grid.size());
    const std::size_t rows = (picture.pairs.size() + columns - 1) / columns;
    const QSizeF cell(grid.width() / static_cast<double>(columns), grid.height() / static_cast<double>(rows));
    const QFontMetricsF metrics(theme.font);
    const bool isNarrow =
        std::any_of(picture.pairs.begin(), picture.pairs.end(), [&](ParameterPair const& pair) {
          return metrics.horizontalAdvance(titleLines(pair, false).front()) > cell.width() - 4.0 * theme.gap;
        });
    for (std::size_t i = 0; i < picture.pairs.size(); ++i) {
      ParameterPair const& pair = picture.pairs[i];
      const QPointF corner(static_cast<double>(i % columns) * cell.width(),
                           static_cast<double>(i / columns) * cell.height());
      paintPair(painter, QRectF(grid.topLeft() + corner, cell), titleLines(pair, isNarrow),
                axisOf(pair.firstParameter), axisOf(pair.secondParameter), passing, picture.eligible.mask(),
                theme, pixelsPerUnit);
    }
  }

private:
  [[nodiscard]] PairAxis axisOf(std::size_t parameter) const
  {
    PlacedParameter const& found = parameters.at(parameter);
    return {titleOf(scan.parameters[parameter].label), found.axis, found.columns};
  }

  /// Title and legend. \return their height
  double paintHead(QPainter& painter, QRectF const& room, Theme const& theme) const
  {
    const QFontMetricsF metrics(theme.font);
    const double line = metrics.height();
    painter.setFont(theme.font);
    painter.setPen(theme.ink);
    const QString title = elided(QString::fromStdString(printable(picture.title)), theme.font, room.width());
    auto const width = [&](QString const& text) { return metrics.horizontalAdvance(text); };
    painter.drawText(QPointF(room.center().x() - 0.5 * width(title), room.top() + metrics.ascent()), title);
    const std::size_t passes = picture.passing.count();
    const std::pair<QString, QColor> entries[] = {
        {QString("%1 passing").arg(passes), theme.passing},
        {QString("%1 others").arg(picture.eligible.count() - passes), theme.all}};
    double x = room.center().x() - 0.5 * (width(entries[0].first) + width(entries[1].first) + 4.0 * line);
    for (auto const& [text, color] : entries) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(color);
      painter.drawEllipse(QPointF(x + 0.4 * line, room.top() + 1.7 * line), 0.25 * line, 0.25 * line);
      painter.setPen(theme.ink);
      painter.drawText(QPointF(x + line, room.top() + 1.2 * line + metrics.ascent()), text);
      x += width(text) + 2.5 * line;
    }
    return 2.4 * line;
  }

  Scan const& scan;
  PairPicture const& picture;
  std::vector<std::uint8_t> passing; ///< of those that are eligible
  std::map<std::size_t, PlacedParameter> parameters;
};

} // namespace

void drawPairPicture(PairsArguments const& arguments, Scan const& scan, PairPicture const& picture)
{
  const PairGrid grid(scan, picture);
  writePicture(arguments.picture,
               {arguments.width, arguments.height, QString::fromStdString(printable(picture.title)),
                [&grid](QPainter& painter, QRectF const& whole, Theme const& theme, double pixelsPerUnit) {
                  if (whole.isEmpty()) return;
                  grid.paint(painter, whole, theme, pixelsPerUnit);
                }});
}

} // namespace runsieve::app
