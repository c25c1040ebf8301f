#pragma once

#include <QColor>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <QString>

#include <string>
#include <vector>

namespace runsieve::test {

/// One call of a painting operation, with pen and brush as they were at that moment. Places are those of the
/// device.
struct Painted
{
  enum Kind
  {
    Line,
    Polyline,
    Polygon,
    Ellipse,
    Rectangle,
    Path,
    Image,
    Text
  };

  Kind kind;
  QPolygonF points; ///< of a text its place, of others that are no lines the corners of what they cover
  QPen pen;
  QBrush brush;
  QString text;
  QSize pixels; ///< of an image
};

/// Remembers what a painter paints.
class RecordingEngine : public QPaintEngine
{
public:
  explicit RecordingEngine(std::vector<Painted>& painted) : QPaintEngine(AllFeatures), calls(painted) {}

  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  [[nodiscard]] Type type() const override { return User; }
  void updateState(QPaintEngineState const& now) override
  {
    transform = now.transform();
    pen = now.pen();
    brush = now.brush();
  }
  void drawLines(QLineF const* lines, int count) override
  {
    for (int i = 0; i < count; ++i) add(Painted::Line, QPolygonF() << lines[i].p1() << lines[i].p2());
  }
  void drawPolygon(QPointF const* points, int count, PolygonDrawMode mode) override
  {
    QPolygonF line;
    for (int i = 0; i < count; ++i) line << points[i];
    add(mode == PolylineMode ? Painted::Polyline : Painted::Polygon, line);
  }
  void drawEllipse(QRectF const& place) override { add(Painted::Ellipse, QPolygonF(place)); }
  void drawRects(QRectF const* places, int count) override
  {
    for (int i = 0; i < count; ++i) add(Painted::Rectangle, QPolygonF(places[i]));
  }
  void drawPath(QPainterPath const& path) override { add(Painted::Path, QPolygonF(path.boundingRect())); }
  void drawImage(QRectF const& place, QImage const& image, QRectF const&, Qt::ImageConversionFlags) override
  {
    add(Painted::Image, QPolygonF(place));
    calls.back().pixels = image.size();
  }
  void drawPixmap(QRectF const& place, QPixmap const& image, QRectF const&) override
  {
    add(Painted::Image, QPolygonF(place));
    calls.back().pixels = image.size();
  }
  void drawTextItem(QPointF const& at, QTextItem const& item) override
  {
    const QRectF letters(at.x(), at.y() - item.ascent(), item.width(), item.ascent() + item.descent());
    add(Painted::Text, QPolygonF(letters));
    calls.back().text = item.text();
  }

private:
  void add(Painted::Kind kind, QPolygonF const& points)
  {
    calls.push_back({kind, transform.map(points), pen, brush, {}, {}});
  }

  std::vector<Painted>& calls;
  QTransform transform;
  QPen pen;
  QBrush brush;
};

/// A page on which nothing appears.
class RecordingPage : public QPaintDevice
{
public:
  RecordingPage(QSize const& size, std::vector<Painted>& painted) : room(size), engine(painted) {}

  [[nodiscard]] QPaintEngine* paintEngine() const override { return &engine; }

protected:
  [[nodiscard]] int metric(PaintDeviceMetric what) const override
  {
    constexpr int dpi = 96;
    switch (what) {
    case PdmWidth:
      return room.width();
    case PdmHeight:
      return room.height();
    case PdmDepth:
      return 32;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
      return dpi;
    case PdmDevicePixelRatio:
      return 1;
    case PdmDevicePixelRatioScaled:
      return static_cast<int>(devicePixelRatioFScale());
    default:
      return 0;
    }
  }

private:
  QSize room;
  mutable RecordingEngine engine;
};

/// What was painted.
struct PaintRecord
{
  std::vector<Painted> painted;

  [[nodiscard]] std::vector<Painted> all(Painted::Kind kind) const
  {
    std::vector<Painted> found;
    for (Painted const& one : painted)
      if (one.kind == kind) found.push_back(one);
    return found;
  }
  [[nodiscard]] std::vector<std::string> texts() const
  {
    std::vector<std::string> found;
    for (Painted const& one : all(Painted::Text)) found.push_back(one.text.toStdString());
    return found;
  }
  /// What is painted last with a text; nothing if it is not there.
  [[nodiscard]] QRectF placeOf(QString const& text) const
  {
    QRectF place;
    for (Painted const& one : all(Painted::Text))
      if (one.text == text) place = one.points.boundingRect();
    return place;
  }
};

/// What a function paints with a painter on a page.
template <class Paint> PaintRecord recorded(QSize const& size, Paint const& paint)
{
  PaintRecord record;
  RecordingPage page(size, record.painted);
  QPainter painter(&page);
  paint(painter);
  painter.end();
  return record;
}

} // namespace runsieve::test
