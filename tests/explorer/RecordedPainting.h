#pragma once

#include <QFontMetricsF>
#include <QImage>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <cmath>
#include <vector>

namespace runsieve::test {

/// A text that was drawn, where it stands on the device.
struct RecordedText
{
  QString text;
  QFont font;
  QColor color;
  QPointF begin; ///< of its base line
  QRectF ink;    ///< what its letters cover
  bool upright = false;
};

/// A shape that was drawn, in coordinates of the device.
struct RecordedShape
{
  enum class Kind
  {
    Line,
    Polyline,
    Polygon,
    Rectangle
  };
  Kind kind;
  QPolygonF points; ///< corners of a rectangle: upper left and lower right
  QPen pen;
  QBrush brush;

  [[nodiscard]] QRectF box() const { return points.boundingRect(); }
  [[nodiscard]] bool isFilled() const { return brush.style() != Qt::NoBrush; }
  [[nodiscard]] bool isStroked() const { return pen.style() != Qt::NoPen; }
};

/// An image that was drawn.
struct RecordedImage
{
  QRectF place;
  QImage image;
};

/// Keeps what a painter draws with which pen, brush and font.
class RecordingEngine : public QPaintEngine
{
public:
  RecordingEngine() : QPaintEngine(AllFeatures) {}

  std::vector<RecordedText> texts;
  std::vector<RecordedShape> shapes;
  std::vector<RecordedImage> images;

  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  [[nodiscard]] Type type() const override { return User; }
  void updateState(QPaintEngineState const&) override {}

  void drawLines(QLineF const* lines, int count) override
  {
    for (int i = 0; i < count; ++i)
      add(RecordedShape::Kind::Line, QVector<QPointF>{lines[i].p1(), lines[i].p2()});
  }
  void drawRects(QRectF const* rects, int count) override
  {
    for (int i = 0; i < count; ++i)
      add(RecordedShape::Kind::Rectangle, QVector<QPointF>{rects[i].topLeft(), rects[i].bottomRight()});
  }
  void drawPolygon(QPointF const* points, int count, PolygonDrawMode mode) override
  {
    QPolygonF polygon;
    for (int i = 0; i < count; ++i) polygon << points[i];
    add(mode == PolylineMode ? RecordedShape::Kind::Polyline : RecordedShape::Kind::Polygon, polygon);
  }
  void drawPath(QPainterPath const& path) override
  {
    for (QPolygonF const& part : path.toSubpathPolygons())
      add(painter()->brush().style() == Qt::NoBrush ? RecordedShape::Kind::Polyline
                                                    : RecordedShape::Kind::Polygon,
          part);
  }
  void drawImage(QRectF const& place, QImage const& image, QRectF const&, Qt::ImageConversionFlags) override
  {
    images.push_back({transform().mapRect(place), image});
  }
  void drawPixmap(QRectF const& place, QPixmap const& pixmap, QRectF const&) override
  {
    images.push_back({transform().mapRect(place), pixmap.toImage()});
  }
  void drawTextItem(QPointF const& at, QTextItem const& item) override
  {
    RecordedText text{item.text(), item.font(), painter()->pen().color(), transform().map(at), {}, false};
    text.ink = transform().mapRect(QFontMetricsF(item.font()).tightBoundingRect(item.text()).translated(at));
    text.upright = std::fabs(transform().m12()) > 0.5;
    // A text in letters of several fonts comes in parts.
    const QPointF former = texts.empty() ? QPointF(-1e9, -1e9) : lastEnd;
    lastEnd = transform().map(at + QPointF(item.width(), 0.0));
    if ((former - text.begin).manhattanLength() < 1.0 && texts.back().color == text.color) {
      texts.back().text += text.text;
      texts.back().ink |= text.ink;
      return;
    }
    texts.push_back(std::move(text));
  }

private:
  [[nodiscard]] QTransform transform() const { return painter()->combinedTransform(); }
  void add(RecordedShape::Kind kind, QPolygonF const& points)
  {
    shapes.push_back({kind, transform().map(points), painter()->pen(), painter()->brush()});
  }

  QPointF lastEnd; ///< of the text before
};

/// A page on which nothing is drawn but noted.
class RecordingPage : public QPaintDevice
{
public:
  explicit RecordingPage(QSizeF const& size) : size(size) {}

  [[nodiscard]] QPaintEngine* paintEngine() const override { return &engine; }
  [[nodiscard]] RecordingEngine const& recorded() const { return engine; }

protected:
  [[nodiscard]] int metric(PaintDeviceMetric metric) const override
  {
    constexpr int dpi = 96;
    switch (metric) {
    case PdmWidth:
      return static_cast<int>(std::ceil(size.width()));
    case PdmHeight:
      return static_cast<int>(std::ceil(size.height()));
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
      return dpi;
    case PdmDevicePixelRatio:
      return 1;
    case PdmDevicePixelRatioScaled:
      return static_cast<int>(devicePixelRatioFScale());
    case PdmDepth:
      return 32;
    default:
      return QPaintDevice::metric(metric);
    }
  }

private:
  QSizeF size;
  mutable RecordingEngine engine;
};

} // namespace runsieve::test
