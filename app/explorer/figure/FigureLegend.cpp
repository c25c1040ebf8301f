#include "app/explorer/figure/FigureLegend.h"

#include <QPainter>

namespace runsieve::app {

namespace {

QString lookText(FigureOptions const& options)
{
  if (options.runsLook == RunsLook::WholeBands)
    return "line: deepest run; bands: the deeper half, all but outlying runs (dashed)";
  if (options.runsLook == RunsLook::Bands)
    return QString::fromUtf8("line: median; bands: 25\u201375 % and 5\u201395 % of the runs");
  return options.runsLook == RunsLook::Density && options.scaleBar ? QString("shades: runs at a point")
                                                                   : QString();
}

} // namespace

FigureLegend::FigureLegend(std::vector<FigureLayer> const& ofLayers, FigureOptions const& options,
                           QStringList const& more, Theme const& ofTheme, double ofWidth)
    : layers(ofLayers), theme(ofTheme), metrics(theme.font), width(ofWidth)
{
  double x = theme.gap;
  double y = 0.0;
  auto const place = [&](double needed) {
    if (x > theme.gap && x + needed > width) {
      x = theme.gap;
      y += lineHeight();
    }
    const QPointF found(x, y);
    x += needed + 4.0 * theme.gap;
    return found;
  };
  for (FigureLayer const& layer : layers) {
    texts.push_back(elided(legendText(layer, options), theme.font, width - swatch() - 4.0 * theme.gap));
    places.push_back(place(swatch() + theme.gap + metrics.horizontalAdvance(texts.back())));
  }
  for (QString const& text : QStringList(lookText(options)) + more) {
    if (text.isEmpty()) continue;
    notes.push_back(elided(text, theme.font, width - 2.0 * theme.gap));
    notePlaces.push_back(place(metrics.horizontalAdvance(notes.back())));
  }
  last = y;
}

double FigureLegend::height() const
{
  return last + metrics.height() + theme.gap;
}

void FigureLegend::paint(QPainter& painter, QPointF const& corner) const
{
  const QPointF begin = corner + QPointF(0.0, theme.gap);
  for (std::size_t i = 0; i < layers.size(); ++i) {
    const QPointF at = begin + places[i];
    QColor color = layers[i].color;
    color.setAlphaF(layers[i].opacity);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRect(QRectF(at.x(), at.y() + 0.3 * metrics.height(), swatch(), 0.4 * metrics.height()));
    painter.setPen(theme.ink);
    painter.drawText(at + QPointF(swatch() + theme.gap, metrics.ascent()), texts[i]);
  }
  painter.setPen(theme.faint);
  for (std::size_t i = 0; i < notes.size(); ++i)
    painter.drawText(begin + notePlaces[i] + QPointF(0.0, metrics.ascent()), notes[i]);
}

} // namespace runsieve::app
