#include "app/explorer/figure/FigurePreview.h"

#include "app/explorer/figure/WriteFigure.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace runsieve::app {

namespace {

constexpr int margin = 12;

} // namespace

FigurePreview::FigurePreview(FigureContent ofContent, QWidget* parent)
    : QWidget(parent), content(std::move(ofContent))
{
  setAccessibleName("Preview of the figure");
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

FigurePreview::~FigurePreview()
{
  work->disconnect(this);
  work->cancel();
  letEnd(std::move(work));
}

void FigurePreview::show(FigureOptions const& wanted)
{
  options = withinLimits(wanted);
  request();
}

void FigurePreview::request()
{
  const QSizeF size = figureSize(options);
  const double ratio = devicePixelRatioF();
  const double scale =
      ratio * std::min((width() - 2.0 * margin) / size.width(), (height() - 2.0 * margin) / size.height());
  if (!(scale > 0.0)) return;
  work->start([this, content = content, options = options, scale,
               ratio](Background::Cancelled const&) -> std::function<void()> {
    FigureNotes notes;
    QImage image = figureImage(content, options, scale, &notes);
    image.setDevicePixelRatio(ratio);
    return [this, image, notes] {
      shown = image;
      update();
      Q_EMIT changed(notes);
    };
  });
}

void FigurePreview::paintEvent(QPaintEvent*)
{
  QPainter painter(this);
  if (shown.isNull()) return;
  const QSizeF size = QSizeF(shown.size()) / shown.devicePixelRatio();
  const QRectF place(
      QPointF(std::round(0.5 * (width() - size.width())), std::round(0.5 * (height() - size.height()))),
      size);
  // A figure without a ground stands on squares.
  if (shown.hasAlphaChannel()) {
    painter.fillRect(place, Qt::white);
    painter.fillRect(place, QBrush(QColor(215, 215, 215), Qt::Dense6Pattern));
  }
  painter.drawImage(place, shown);
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(place.adjusted(-0.5, -0.5, 0.5, 0.5));
}

void FigurePreview::resizeEvent(QResizeEvent*)
{
  request();
}

} // namespace runsieve::app
