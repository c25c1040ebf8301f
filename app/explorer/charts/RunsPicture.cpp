#include "app/explorer/charts/RunsPicture.h"

#include "app/view/ThreadPool.h"

#include <QPainter>
#include <QRectF>

#include <cmath>
#include <utility>

namespace runsieve::app {

namespace {

bool same(RunsRequest const& a, RunsRequest const& b)
{
  return a.scan == b.scan && a.output == b.output && a.time == b.time && a.value == b.value &&
         a.size == b.size && a.width == b.width && a.dark == b.dark && a.layers == b.layers;
}

/// Where an image of a size is drawn pixel by pixel, next to a place.
QRectF onDevicePixels(QPainter const& painter, QRectF const& place, QSize const& size)
{
  const double ratio = painter.device()->devicePixelRatioF();
  if (std::fabs(place.width() * ratio - size.width()) > 1.0) return place;
  const QPointF corner(std::round(place.left() * ratio) / ratio, std::round(place.top() * ratio) / ratio);
  return {corner, QSizeF(size) / ratio};
}

} // namespace

RunsPicture::RunsPicture(QObject* parent)
    : QObject(parent), renderer(std::make_shared<RunsRenderer>(sharedThreads()))
{
  connect(&work, &Background::busyChanged, this, &RunsPicture::changed);
}

void RunsPicture::request(RunsRequest request)
{
  if (same(request, wanted)) return;
  if (request.scan != made.scan || request.output != made.output) shown.clear(); // of other data
  wanted = std::move(request);
  work.start([this, renderer = renderer,
              request = wanted](Background::Cancelled const& cancelled) -> std::function<void()> {
    std::optional<RunsRenderer::Images> images = renderer->render(request, cancelled);
    if (!images) return {};
    return [this, made = request, images = std::move(*images)]() mutable {
      if (made.scan != wanted.scan || made.output != wanted.output) return;
      this->made = made;
      this->made.layers.clear();
      shown = images;
      Q_EMIT changed();
    };
  });
}

void RunsPicture::paint(QPainter& painter, QRectF const& plot, AxisMap const& time, AxisMap const& value,
                        std::vector<double> const& opacity) const
{
  if (shown.empty() || made.time.isLogarithmic() != time.isLogarithmic() ||
      made.value.isLogarithmic() != value.isLogarithmic())
    return;
  const double left = time.place(made.time.low());
  const double right = time.place(made.time.high());
  const double bottom = value.place(made.value.low());
  const double top = value.place(made.value.high());
  const QRectF place(QPointF(plot.left() + left * plot.width(), plot.bottom() - top * plot.height()),
                     QPointF(plot.left() + right * plot.width(), plot.bottom() - bottom * plot.height()));
  painter.save();
  painter.setClipRect(plot, Qt::IntersectClip);
  const bool moved = made.time != time || made.value != value;
  painter.setRenderHint(QPainter::SmoothPixmapTransform, moved);
  const QRectF target = moved ? place : onDevicePixels(painter, place, made.size);
  for (std::size_t i = 0; i < shown.size(); ++i) {
    if (shown[i].image.isNull()) continue;
    painter.setOpacity(i < opacity.size() ? opacity[i] : 1.0);
    painter.drawImage(target, shown[i].image);
  }
  painter.restore();
}

} // namespace runsieve::app
