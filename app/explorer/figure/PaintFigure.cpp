#include "app/explorer/figure/PaintFigure.h"

#include "app/cli/RankReport.h"
#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/figure/FigureGates.h"
#include "app/explorer/figure/FigureLegend.h"
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

  [[nodiscard]] std::size_t cells() const { return columns * rows; }
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
        metrics(theme.font), scale(pixelsPerUnit), layers(figureLayers(content, options, theme)),
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
    FigureNotes notes;
    // In the smallest figures the runs matter more than what their colours mean.
    constexpr double leastLines = 2.0; // of text, that a plot is high
    notes.legendShown =
        options.legend && (outputs.empty() || plotHeight(charts.size()) >= leastLines * metrics.height());
    if (notes.legendShown) {
      const FigureLegend legend(layers, options, legendNotes(!small.isEmpty()), theme, charts.width());
      runs.setBottom(runs.bottom() - legend.height());
      legend.paint(painter, runs.bottomLeft());
    }
    paintRuns(runs);
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
    constexpr double mostLines = 3.0;
    QRectF place = room.adjusted(theme.gap, 0.0, -theme.gap, 0.0);
    const QRectF wrapped = large.boundingRect(place, Qt::TextWordWrap, options.title);
    const bool fits = wrapped.width() <= place.width() && wrapped.height() <= mostLines * large.lineSpacing();
    place.setHeight(fits ? wrapped.height() : large.height());
    painter.drawText(place, Qt::TextWordWrap,
                     fits ? options.title : elided(options.title, font, place.width()));
    painter.setFont(theme.font);
    return place.bottom() + theme.gap;
  }

  [[nodiscard]] QStringList legendNotes(bool hasParameters) const
  {
    QStringList notes;
    if (hasParameters && !parameters.empty()) notes << othersText(content, options);
    if (options.gates) notes << unseenGates(content, outputs);
    return notes;
  }

  /// Height of a plot of the runs in a room.
  [[nodiscard]] double plotHeight(QSizeF const& room) const
  {
    const double legend =
        options.legend ? FigureLegend(layers, options, legendNotes(true), theme, room.width()).height() : 0.0;
    const RunsFigure lowest(content, options, theme, layers, outputs.back());
    const double each = (room.height() - legend - lowest.timeHeight()) / static_cast<double>(outputs.size());
    return each - theme.tick - 0.6 * metrics.height();
  }

  /// Room for the runs and for the parameters: as much for the runs as leaves room for the most parameters,
  /// but no less than runs can be seen in.
  [[nodiscard]] std::pair<QRectF, QRectF> divided(QRectF const& room) const
  {
    constexpr double wide = 1.5;
    constexpr double leastShare = 0.38;
    constexpr double leastLines = 4.0; // of text, that a plot is high
    if (parameters.empty()) return {room, {}};
    if (outputs.empty()) return {{}, room};
    const bool beside = room.width() > wide * room.height();
    const double first = beside ? 0.56 : std::min(0.72, 0.53 + 0.03 * static_cast<double>(outputs.size()));
    std::pair<QRectF, QRectF> best = {room, {}};
    std::size_t most = 0;
    for (double share = first; share >= leastShare; share -= 0.04) {
      QRectF runs = room;
      QRectF small = room;
      if (beside) {
        runs.setWidth(share * room.width());
        small.setLeft(runs.right() + 2.0 * theme.gap);
      } else {
        runs.setHeight(share * room.height());
        small.setTop(runs.bottom() + 2.0 * theme.gap);
      }
      if (share < first && plotHeight(runs.size()) < leastLines * metrics.height()) break;
      const std::size_t shown = shownIn(small).cells();
      if (std::min(shown, parameters.size()) <= most) continue;
      most = std::min(shown, parameters.size());
      best = {runs, small};
    }
    return best;
  }

  void paintRuns(QRectF const& room)
  {
    if (outputs.empty()) return;
    std::vector<RunsFigure> charts;
    for (std::size_t const output : outputs) charts.emplace_back(content, options, theme, layers, output);
    // The plots are of one height; the lowest chart has the numbers of all of them besides.
    const double numbers = charts.back().timeHeight();
    const double height =
        std::max(1.0, std::floor((room.height() - numbers) / static_cast<double>(outputs.size())));
    double left = 0.0;
    for (RunsFigure const& chart : charts)
      left = std::max(left, chart.neededLeft(QRectF(0.0, 0.0, room.width(), height)));
    for (std::size_t i = 0; i < charts.size(); ++i) {
      const bool isLast = i + 1 == charts.size();
      charts[i].place(QRectF(room.left(), room.top() + static_cast<double>(i) * height, room.width(),
                             height + (isLast ? numbers : 0.0)),
                      left, isLast);
      charts[i].paint(painter, scale);
    }
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

  /// Room of the charts of the parameters, above the lines on thresholds.
  [[nodiscard]] QRectF chartsIn(QRectF const& room) const
  {
    const int lines = thresholdLines(room.width() - theme.gap).size();
    return room.adjusted(0.0, 0.0, 0.0, -1.15 * metrics.height() * lines);
  }

  [[nodiscard]] Grid shownIn(QRectF const& room) const
  {
    return gridFor(parameters.size(), chartsIn(room).size(),
                   ParameterFigure::leastSize(content, parameters, theme) + QSizeF(0.0, between()));
  }

  /// Room between rows of charts.
  [[nodiscard]] double between() const { return 0.5 * metrics.height(); }

  std::size_t paintParameters(QRectF const& room)
  {
    const Grid grid = shownIn(room);
    if (grid.cells() == 0) return 0;
    const QStringList lines = thresholdLines(room.width() - theme.gap);
    painter.setFont(theme.font);
    painter.setPen(theme.faint);
    for (int i = 0; i < lines.size(); ++i)
      painter.drawText(QPointF(room.left() + theme.gap, room.bottom() - metrics.descent() -
                                                            1.15 * metrics.height() * (lines.size() - 1 - i)),
                       elided(lines[i], theme.font, room.width() - theme.gap));
    const QRectF charts = chartsIn(room);
    const QSizeF cell(charts.width() / static_cast<double>(grid.columns),
                      charts.height() / static_cast<double>(grid.rows));
    const std::size_t shown = std::min(parameters.size(), grid.cells());
    for (std::size_t i = 0; i < shown; ++i) {
      const QPointF corner =
          charts.topLeft() + QPointF(static_cast<double>(i % grid.columns) * cell.width(),
                                     static_cast<double>(i / grid.columns) * cell.height());
      ParameterFigure(content, options, theme, parameters[i])
          .paint(painter, QRectF(corner, cell).adjusted(0.0, 0.0, -theme.gap, -between()), scale);
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
