#include "app/explorer/figure/PaintFigure.h"

#include "app/cli/RankReport.h"
#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/figure/ParameterFigure.h"
#include "app/explorer/figure/RunsFigure.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

/// Rows and columns of charts, as near to the best shape of one as they can be.
struct Grid
{
  std::size_t columns = 0;
  std::size_t rows = 0;
};

Grid gridFor(std::size_t charts, QSizeF const& room, QSizeF const& least)
{
  constexpr double bestShape = 1.25; // width to height
  Grid best;
  double bestScore = -1.0;
  const auto mostColumns = static_cast<std::size_t>(std::max(0.0, room.width() / least.width()));
  const auto mostRows = static_cast<std::size_t>(std::max(0.0, room.height() / least.height()));
  for (std::size_t columns = 1; columns <= std::min(mostColumns, charts); ++columns) {
    const std::size_t rows = std::min((charts + columns - 1) / columns, mostRows);
    if (rows == 0) continue;
    const double shape =
        (room.width() / static_cast<double>(columns)) / (room.height() / static_cast<double>(rows));
    const double shown = static_cast<double>(std::min(charts, rows * columns));
    const auto empty = static_cast<double>(rows * columns) - shown;
    const double score = 100.0 * shown - std::fabs(std::log(shape / bestShape)) * shown - empty;
    if (score <= bestScore) continue;
    bestScore = score;
    best = {columns, rows};
  }
  return best;
}

/// The parts of a figure from its top to its bottom.
class FigurePainter
{
public:
  FigurePainter(QPainter& onto, FigureContent const& ofContent, FigureOptions const& ofOptions,
                double pixelsPerUnit)
      : painter(onto), content(ofContent), options(ofOptions), theme(figureTheme(options)),
        metrics(theme.font), scale(pixelsPerUnit), layers(figureLayers(content, theme)),
        outputs(content.shownOutputs(options.outputs)),
        parameters(content.shownParameters(options.parameters, options.strongest))
  {}

  FigureNotes paint(QRectF const& place)
  {
    if (options.ground) painter.fillRect(place, theme.paper);
    painter.setFont(theme.font);
    QRectF room = place.adjusted(theme.gap, theme.gap, -theme.gap, -theme.gap);
    room.setTop(paintTitle(room));
    auto const [charts, small] = divided(room);
    QRectF runs = charts;
    if (options.legend) runs.setBottom(runs.bottom() - legendHeight(charts.width()));
    paintRuns(runs);
    if (options.legend) paintLegend(QRectF(runs.bottomLeft(), charts.bottomRight()));
    FigureNotes notes;
    notes.parametersAsked = parameters.size();
    notes.parametersShown = paintParameters(small);
    return notes;
  }

private:
  double paintTitle(QRectF const& room)
  {
    if (options.title.isEmpty()) return room.top();
    QFont font = theme.font;
    font.setBold(true);
    font.setPixelSize(static_cast<int>(1.15 * font.pixelSize()));
    const QFontMetricsF large(font);
    painter.setFont(font);
    painter.setPen(theme.ink);
    painter.drawText(QPointF(room.left() + theme.gap, room.top() + large.ascent()),
                     elided(options.title, font, room.width() - 2.0 * theme.gap));
    painter.setFont(theme.font);
    return room.top() + large.height() + theme.gap;
  }

  /// Room for the runs and for the parameters.
  [[nodiscard]] std::pair<QRectF, QRectF> divided(QRectF const& room) const
  {
    constexpr double wide = 1.5;
    constexpr double share = 0.56;
    if (parameters.empty()) return {room, {}};
    if (outputs.empty()) return {{}, room};
    QRectF first = room;
    QRectF second = room;
    if (room.width() > wide * room.height()) {
      first.setWidth(share * room.width());
      second.setLeft(first.right() + 2.0 * theme.gap);
    } else {
      first.setHeight(share * room.height());
      second.setTop(first.bottom() + 2.0 * theme.gap);
    }
    return {first, second};
  }

  void paintRuns(QRectF const& room)
  {
    if (outputs.empty()) return;
    const double numbers = theme.tick + 2.0 * theme.gap + 2.0 * metrics.height();
    const auto count = static_cast<double>(outputs.size());
    const double height = std::max(1.0, (room.height() - numbers) / count);
    std::vector<RunsFigure> charts;
    double left = 0.0;
    for (std::size_t const output : outputs) {
      charts.emplace_back(content, options, theme, layers, output);
      left = std::max(left, charts.back().neededLeft(QRectF(0.0, 0.0, room.width(), height)));
    }
    for (std::size_t i = 0; i < charts.size(); ++i) {
      const bool isLast = i + 1 == charts.size();
      charts[i].place(QRectF(room.left(), room.top() + static_cast<double>(i) * height, room.width(),
                             isLast ? room.bottom() - room.top() - static_cast<double>(i) * height : height),
                      left, isLast);
      charts[i].paint(painter, scale);
    }
  }

  /// Places of the entries of the legend, from the left, in lines.
  [[nodiscard]] std::vector<QPointF> legendPlaces(double width) const
  {
    std::vector<QPointF> places;
    double x = theme.gap;
    double y = 0.0;
    for (FigureLayer const& layer : layers) {
      const double needed = entryWidth(layer, width);
      if (x > theme.gap && x + needed > width) {
        x = theme.gap;
        y += 1.2 * metrics.height();
      }
      places.emplace_back(x, y);
      x += needed + 4.0 * theme.gap;
    }
    return places;
  }

  [[nodiscard]] QString entryText(FigureLayer const& layer, double width) const
  {
    return elided(legendText(layer, options), theme.font, width - swatch() - 4.0 * theme.gap);
  }

  [[nodiscard]] double entryWidth(FigureLayer const& layer, double width) const
  {
    return swatch() + theme.gap + metrics.horizontalAdvance(entryText(layer, width));
  }

  [[nodiscard]] double swatch() const { return 1.6 * metrics.height(); }

  /// What bands or shades mean; empty for lines.
  [[nodiscard]] QString lookText() const
  {
    if (options.runsLook == RunsLook::Bands)
      return QString::fromUtf8("line: median; bands: 25\u201375 % and 5\u201395 % of the runs");
    if (options.runsLook == RunsLook::WholeBands)
      return "line: deepest run; bands: the deeper half, all but outlying runs (dashed)";
    return options.runsLook == RunsLook::Density && options.scaleBar ? QString("shades: runs at a point")
                                                                     : QString();
  }

  /// Where the text on shades stands: behind the last entry, or in a line of its own.
  [[nodiscard]] QPointF lookPlace(std::vector<QPointF> const& places, double width) const
  {
    if (places.empty()) return {theme.gap, 0.0};
    const double behind = places.back().x() + entryWidth(layers.back(), width) + 4.0 * theme.gap;
    const bool fits = behind + metrics.horizontalAdvance(lookText()) <= width;
    return fits ? QPointF(behind, places.back().y())
                : QPointF(theme.gap, places.back().y() + 1.2 * metrics.height());
  }

  [[nodiscard]] double legendHeight(double width) const
  {
    const std::vector<QPointF> places = legendPlaces(width);
    const double last = !lookText().isEmpty() ? lookPlace(places, width).y()
                        : places.empty()      ? 0.0
                                              : places.back().y();
    return last + 1.2 * metrics.height() + theme.gap;
  }

  void paintLegend(QRectF const& room)
  {
    const std::vector<QPointF> places = legendPlaces(room.width());
    const QPointF corner = room.topLeft() + QPointF(0.0, theme.gap);
    for (std::size_t i = 0; i < layers.size(); ++i) {
      const QPointF at = corner + places[i];
      QColor color = layers[i].color;
      color.setAlphaF(layers[i].opacity);
      painter.setPen(Qt::NoPen);
      painter.setBrush(color);
      painter.drawRect(QRectF(at.x(), at.y() + 0.3 * metrics.height(), swatch(), 0.4 * metrics.height()));
      painter.setPen(theme.ink);
      painter.drawText(at + QPointF(swatch() + theme.gap, metrics.ascent()),
                       entryText(layers[i], room.width()));
    }
    if (lookText().isEmpty()) return;
    painter.setPen(theme.faint);
    painter.drawText(corner + lookPlace(places, room.width()) + QPointF(0.0, metrics.ascent()),
                     elided(lookText(), theme.font, room.width() - 2.0 * theme.gap));
  }

  /// What stars and grey areas mean, in lines.
  [[nodiscard]] QStringList thresholdLines(double width) const
  {
    if (!options.thresholds || !content.comparison) return {};
    ComparisonMethod const& method = content.comparison->method;
    QStringList lines = {QString::fromUtf8("* adjusted p \u2264 %1 (%2), |d| \u2265 %3")
                             .arg(numberText(method.thresholds.largestP),
                                  QString(adjustmentName(method.adjustment)),
                                  numberText(method.thresholds.smallestD))};
    if (options.parameterLook == ParameterLook::Curves && std::isfinite(content.comparison->noiseFloor))
      lines << QString("grey: noise floor %1").arg(numberText(content.comparison->noiseFloor, 0.01));
    const QString one = lines.join("; ");
    return metrics.horizontalAdvance(one) <= width ? QStringList(one) : lines;
  }

  std::size_t paintParameters(QRectF room)
  {
    if (parameters.empty() || room.isEmpty()) return 0;
    const QStringList lines = thresholdLines(room.width() - theme.gap);
    painter.setFont(theme.font);
    painter.setPen(theme.faint);
    for (int i = lines.size(); i-- > 0;) {
      painter.drawText(QPointF(room.left() + theme.gap, room.bottom() - metrics.descent()),
                       elided(lines[i], theme.font, room.width() - theme.gap));
      room.setBottom(room.bottom() - 1.15 * metrics.height());
    }
    const Grid grid = gridFor(parameters.size(), room.size(), ParameterFigure::leastSize(theme));
    const std::size_t shown = std::min(parameters.size(), grid.columns * grid.rows);
    for (std::size_t i = 0; i < shown; ++i) {
      const QSizeF cell(room.width() / static_cast<double>(grid.columns),
                        room.height() / static_cast<double>(grid.rows));
      const QPointF corner(room.left() + static_cast<double>(i % grid.columns) * cell.width(),
                           room.top() + static_cast<double>(i / grid.columns) * cell.height());
      const double margin = theme.gap;
      ParameterFigure(content, options, theme, parameters[i])
          .paint(painter, QRectF(corner, cell).adjusted(0.0, 0.0, -margin, -margin), scale);
    }
    return shown;
  }

  QPainter& painter;
  FigureContent const& content;
  FigureOptions const& options;
  Theme theme;
  QFontMetricsF metrics;
  double scale;
  std::vector<FigureLayer> layers;
  std::vector<std::size_t> outputs;
  std::vector<std::size_t> parameters;
};

} // namespace

FigureNotes paintFigure(QPainter& painter, QRectF const& place, FigureContent const& content,
                        FigureOptions const& options, double pixelsPerUnit)
{
  if (!content.scan) return {};
  const FigureOptions limited = withinLimits(options);
  painter.save();
  const FigureNotes notes = FigurePainter(painter, content, limited, pixelsPerUnit).paint(place);
  painter.restore();
  return notes;
}

} // namespace runsieve::app
