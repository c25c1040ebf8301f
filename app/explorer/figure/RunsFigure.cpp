#include "app/explorer/figure/RunsFigure.h"

#include "app/explorer/charts/BandsPicture.h"
#include "app/explorer/charts/ClippedLine.h"
#include "app/explorer/charts/DrawnTimes.h"
#include "app/explorer/charts/PinColors.h"
#include "app/explorer/charts/ShadeGradient.h"
#include "app/explorer/figure/FigureGates.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/view/ThreadPool.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double finest = 0.3 * figureUnitsPerPoint; ///< length of line that is worth a point
constexpr std::size_t mostBars = 2;
constexpr double leastBar = 3.0; ///< height, in lines of text

/// Values over time as a line of the chart.
template <class Values> QPolygonF lineOf(Scan const& scan, Values const& values, ChartFrame const& frame)
{
  QPolygonF line;
  const std::vector<double> times = drawnTimes(scan.times, frame.horizontal());
  for (std::size_t i = 0; i < times.size(); ++i)
    line << frame.at(times[i], values[drawnValue(i, scan.times.size())]);
  return line;
}

} // namespace

RunsFigure::RunsFigure(FigureContent const& ofContent, FigureOptions const& ofOptions, Theme const& ofTheme,
                       std::vector<FigureLayer> const& ofLayers, std::size_t shown)
    : content(ofContent), options(ofOptions), theme(ofTheme), layers(ofLayers), output(shown)
{}

double RunsFigure::barWidth(double height) const
{
  const QFontMetricsF metrics(theme.font);
  if (!options.scaleBar || options.runsLook != RunsLook::Density || height < leastBar * metrics.height())
    return 0.0;
  return metrics.horizontalAdvance("00000") + 3.0 * theme.gap;
}

ChartAxis RunsFigure::timeAxis(bool numbers) const
{
  return {content.time, numbers ? titleOf(content.scan->time) : QString(), numbers};
}

ChartAxis RunsFigure::valueAxis() const
{
  return {content.valueAxis(output), titleOf(content.scan->outputs[output].label)};
}

double RunsFigure::neededLeft(QRectF const& outer) const
{
  return ChartFrame(outer, {}, valueAxis(), theme).left();
}

double RunsFigure::timeHeight() const
{
  return ChartFrame::below(timeAxis(true), theme) - ChartFrame::below(timeAxis(false), theme);
}

void RunsFigure::place(QRectF const& outer, double leastLeft, bool numbers)
{
  whole = outer;
  const double height = ChartFrame(outer, timeAxis(numbers), valueAxis(), theme).plot().height();
  const QRectF room = outer.adjusted(0.0, 0.0, -barWidth(height), 0.0);
  frame = ChartFrame(room, timeAxis(numbers), valueAxis(), theme, leastLeft);
}

void RunsFigure::paint(QPainter& painter, double pixelsPerUnit) const
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(theme.font);
  if (const std::optional<BandsKind> kind = bandsKindOf(options.runsLook))
    paintBands(painter, *kind);
  else
    paintImage(painter, pixelsPerUnit);
  frame.paint(painter, theme);
  PlotNames names(frame.plot(), theme);
  if (frame.vertical().isLogarithmic() && reachesZero()) names.paintLackOfZero(painter);
  paintPinned(painter, names);
  if (options.gates) paintFigureGates(painter, content, output, frame, theme, names);
  painter.restore();
}

bool RunsFigure::reachesZero() const
{
  double const* values = content.scan->valuesOf(output, 0);
  return std::any_of(values, values + content.scan->runs.size() * content.scan->times.size(),
                     [](double value) { return value <= 0.0; });
}

void RunsFigure::paintImage(QPainter& painter, double pixelsPerUnit) const
{
  const QSize size = (frame.plot().size() * pixelsPerUnit)
                         .toSize()
                         .expandedTo(QSize(1, 1))
                         .boundedTo(QSize(RunCoverage::largestSize, RunCoverage::largestSize));
  RunsRequest request;
  request.scan = content.scan;
  request.output = output;
  request.time = frame.horizontal();
  request.value = frame.vertical();
  request.size = size;
  request.width = std::max(1.0, theme.line * pixelsPerUnit);
  for (FigureLayer const& layer : layers)
    request.layers.push_back({layer.runs.mask(), layer.color, options.runsLook == RunsLook::Density,
                              lineOpacity(layer.runs.count())});
  RunsRenderer renderer(sharedThreads());
  auto const images = renderer.render(request, [] { return false; });
  if (!images) return;
  QImage picture(size, options.ground ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
  picture.fill(options.ground ? theme.paper : QColor(Qt::transparent));
  QPainter onto(&picture);
  for (std::size_t i = 0; i < images->size(); ++i) {
    if ((*images)[i].image.isNull()) continue;
    onto.setOpacity(layers[i].opacity);
    onto.drawImage(0, 0, (*images)[i].image);
  }
  onto.end();
  // On whole pixels, so that a picture of pixels keeps those that were counted.
  const QTransform device = painter.deviceTransform();
  const QPointF corner = device.map(frame.plot().topLeft());
  const QRectF pixels(QPointF(std::round(corner.x()), std::round(corner.y())), QSizeF(size));
  const bool samePixels = std::fabs(device.m11() - pixelsPerUnit) < 1e-9;
  painter.setRenderHint(QPainter::SmoothPixmapTransform, !samePixels);
  painter.setRenderHint(QPainter::LosslessImageRendering);
  painter.drawImage(samePixels ? device.inverted().mapRect(pixels) : frame.plot(), picture);
  paintBars(painter, *images);
}

void RunsFigure::paintBars(QPainter& painter, RunsRenderer::Images const& images) const
{
  if (barWidth(frame.plot().height()) <= 0.0) return;
  const QRectF room(frame.plot().right() + 2.0 * theme.gap, frame.plot().top(),
                    whole.right() - frame.plot().right() - 2.0 * theme.gap, frame.plot().height());
  std::vector<std::size_t> bars;
  for (std::size_t i = 0; i < images.size(); ++i)
    if (images[i].scale.largest() > 0.0) bars.push_back(i);
  // All runs, and the uppermost layer: the passing runs if there are some.
  while (bars.size() > mostBars) bars.erase(bars.begin() + 1);
  // Where two have no room the upper layer has one.
  const double least = leastBar * QFontMetricsF(theme.font).height();
  while (bars.size() > 1 && room.height() < least * static_cast<double>(bars.size()))
    bars.erase(bars.begin());
  const double height = room.height() / static_cast<double>(std::max<std::size_t>(bars.size(), 1));
  for (std::size_t i = 0; i < bars.size(); ++i) {
    const std::size_t layer = bars[bars.size() - 1 - i];
    paintBar(painter, images[layer].scale, layers[layer],
             QRectF(room.left(), room.top() + static_cast<double>(i) * height, room.width(), height));
  }
}

void RunsFigure::paintBar(QPainter& painter, DensityScale const& scale, FigureLayer const& layer,
                          QRectF const& place) const
{
  const QFontMetricsF metrics(theme.font);
  const QRectF bar(place.left(), place.top() + 0.6 * metrics.height(), metrics.averageCharWidth(),
                   std::max(1.0, place.height() - 1.2 * metrics.height()));
  painter.setPen(Qt::NoPen);
  painter.setBrush(shadeGradient(scale, layer.color, theme.dark, bar.bottomLeft(), bar.topLeft()));
  painter.setOpacity(layer.opacity);
  painter.drawRect(bar);
  painter.setOpacity(1.0);
  painter.setPen(theme.ink);
  auto const write = [&](QString const& runs, double middle) {
    painter.drawText(QPointF(bar.right() + theme.gap, middle + 0.5 * (metrics.ascent() - metrics.descent())),
                     runs);
  };
  const QString most = QString::number(std::lround(scale.largest()));
  const QString least = QString::number(std::lround(scale.smallest()));
  write(most, bar.top() + 0.5 * metrics.ascent() - 0.1 * metrics.height());
  if (least != most) write(least, bar.bottom() - 0.5 * metrics.ascent() + 0.1 * metrics.height());
  if (bar.height() < 5.0 * metrics.height()) return;
  const QString unit = elided("runs", theme.font, place.width());
  painter.drawText(QPointF(bar.right() + theme.gap, bar.center().y() + 0.3 * metrics.ascent()), unit);
}

void RunsFigure::paintBands(QPainter& painter, BandsKind kind) const
{
  QStringList notes;
  for (FigureLayer const& layer : layers) {
    if (layer.runs.count() == 0) continue;
    const RunBands bands = *bandsOf(*content.scan, output, layer.runs.mask(), kind, [] { return false; });
    app::paintBands(painter, bands, content.scan->times, frame, layer.color,
                    {theme.curve, layer.opacity, finest});
    if (bands.outlying.size() > bands.outlyingValues.size())
      notes << QString("%1: %L2 of %L3 outlying runs are drawn")
                   .arg(layer.name)
                   .arg(bands.outlyingValues.size())
                   .arg(bands.outlying.size());
  }
  const QFontMetricsF metrics(theme.font);
  painter.setPen(theme.faint);
  for (int i = 0; i < notes.size(); ++i)
    painter.drawText(frame.plot().topLeft() + QPointF(theme.gap, metrics.ascent() + i * metrics.height()),
                     elided(notes[i], theme.font, frame.plot().width() - 2.0 * theme.gap));
}

void RunsFigure::paintPinned(QPainter& painter, PlotNames& names) const
{
  const QRectF plot = frame.plot();
  const PinColors colors(content.sets, content.pinned, theme);
  std::vector<EndName> ends;
  for (std::size_t const run : content.pinned.inOrder()) {
    if (run >= content.scan->runs.size()) continue;
    const QColor color = colors.of(run);
    const auto parts =
        clippedLine(lineOf(*content.scan, content.scan->valuesOf(output, run), frame), plot, finest);
    if (parts.empty()) continue;
    painter.setBrush(Qt::NoBrush);
    for (QPolygonF const& part : parts) {
      painter.setPen(QPen(theme.paper, 1.7 * theme.curve, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
      painter.drawPolyline(part);
      painter.setPen(QPen(color, theme.curve, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
      painter.drawPolyline(part);
    }
    ends.push_back({QString::fromStdString(content.scan->runs[run].key), color, parts.back().last()});
  }
  names.paintAtEnds(painter, std::move(ends));
}

} // namespace runsieve::app
