#pragma once

#include <QFontMetricsF>
#include <QImage>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace runsieve::test {

/// Something that was drawn, in the coordinates of the device, with the state of the painter at that moment.
struct Drawn
{
  enum class Kind
  {
    Text,
    Line,
    Polyline,
    Polygon,
    Rectangle,
    Ellipse,
    Path,
    Image
  };

  Kind kind;
  QPolygonF points; ///< of a text its base line
  QString text;
  QPen pen;
  QBrush brush;
  double opacity;
  QRectF clip; ///< empty if nothing is cut off
  QFont font;  ///< of a text
  QRectF ink;  ///< what its letters cover
  QImage image;

  [[nodiscard]] QRectF box() const { return points.boundingRect(); }
  [[nodiscard]] bool isWithin(QRectF const& place) const
  {
    return std::all_of(points.begin(), points.end(),
                       [&](QPointF const& point) { return place.contains(point); });
  }
};

/// What was drawn, in its order.
struct Painting
{
  std::vector<Drawn> all;

  [[nodiscard]] std::vector<Drawn> of(Drawn::Kind kind) const
  {
    std::vector<Drawn> found;
    std::copy_if(all.begin(), all.end(), std::back_inserter(found),
                 [&](Drawn const& each) { return each.kind == kind; });
    return found;
  }
  [[nodiscard]] QStringList texts() const
  {
    QStringList texts;
    for (Drawn const& each : of(Drawn::Kind::Text)) texts << each.text;
    return texts;
  }
  /// The text that was drawn; null if it was not.
  [[nodiscard]] Drawn const* text(QString const& wanted) const
  {
    auto const found =
        std::find_if(all.begin(), all.end(), [&](Drawn const& each) { return each.text == wanted; });
    return found == all.end() ? nullptr : &*found;
  }
};

/// A paper that remembers what is drawn on it.
class PaintRecorder : public QPaintDevice
{
public:
  explicit PaintRecorder(QSize const& size = {1000, 1000}) : size(size) {}

  [[nodiscard]] QPaintEngine* paintEngine() const override { return &engine; }
  [[nodiscard]] Painting const& painting() const { return engine.painting; }

protected:
  [[nodiscard]] int metric(PaintDeviceMetric asked) const override
  {
    constexpr int dotsPerInch = 96;
    switch (asked) {
    case PdmWidth:
      return size.width();
    case PdmHeight:
      return size.height();
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
      return dotsPerInch;
    case PdmDepth:
      return 32;
    case PdmDevicePixelRatioScaled:
      return static_cast<int>(devicePixelRatioFScale());
    default:
      return 1;
    }
  }

private:
  class Engine : public QPaintEngine
  {
  public:
    Engine() : QPaintEngine(QPaintEngine::AllFeatures) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(QPaintEngineState const&) override {}
    [[nodiscard]] Type type() const override { return QPaintEngine::User; }

    void drawLines(QLineF const* lines, int count) override
    {
      for (int i = 0; i < count; ++i) note(Drawn::Kind::Line, QPolygonF() << lines[i].p1() << lines[i].p2());
    }
    void drawRects(QRectF const* rects, int count) override
    {
      for (int i = 0; i < count; ++i) note(Drawn::Kind::Rectangle, QPolygonF(rects[i]));
    }
    void drawEllipse(QRectF const& box) override { note(Drawn::Kind::Ellipse, QPolygonF(box)); }
    void drawPath(QPainterPath const& path) override
    {
      QPolygonF points;
      for (int i = 0; i < path.elementCount(); ++i) points << QPointF(path.elementAt(i));
      note(Drawn::Kind::Path, points);
    }
    void drawPolygon(QPointF const* points, int count, PolygonDrawMode mode) override
    {
      QPolygonF polygon;
      for (int i = 0; i < count; ++i) polygon << points[i];
      note(mode == PolylineMode ? Drawn::Kind::Polyline : Drawn::Kind::Polygon, polygon);
    }
    void drawPixmap(QRectF const& place, QPixmap const& pixmap, QRectF const&) override
    {
      note(Drawn::Kind::Image, QPolygonF(place)).image = pixmap.toImage();
    }
    void drawImage(QRectF const& place, QImage const& image, QRectF const&, Qt::ImageConversionFlags) override
    {
      note(Drawn::Kind::Image, QPolygonF(place)).image = image;
    }
    void drawTextItem(QPointF const& at, QTextItem const& item) override
    {
      Drawn& drawn =
          note(Drawn::Kind::Text, QPolygonF() << at << at + QPointF(item.width(), 0.0), item.text());
      drawn.font = item.font();
      drawn.ink = painter()->combinedTransform().mapRect(
          QFontMetricsF(item.font()).tightBoundingRect(item.text()).translated(at));
    }

    Painting painting;

  private:
    Drawn& note(Drawn::Kind kind, QPolygonF const& points, QString const& text = {})
    {
      QPainter const& by = *painter();
      const QRectF clip = by.hasClipping() ? by.combinedTransform().mapRect(by.clipBoundingRect()) : QRectF();
      painting.all.push_back({kind,
                              by.combinedTransform().map(points),
                              text,
                              by.pen(),
                              by.brush(),
                              by.opacity(),
                              clip,
                              {},
                              {},
                              {}});
      return painting.all.back();
    }
  };

  QSize size;
  mutable Engine engine;
};

/// What a function paints with a painter on a paper of a size.
template <class Paint> Painting painting(QSize const& size, Paint const& paint)
{
  PaintRecorder paper(size);
  QPainter painter(&paper);
  paint(painter);
  painter.end();
  return paper.painting();
}

/// The texts that were drawn, for matchers.
inline std::vector<std::string> wordsOf(Painting const& painting)
{
  std::vector<std::string> words;
  for (QString const& text : painting.texts()) words.push_back(text.toStdString());
  return words;
}

/// The base line of the last text of these words; empty if there is none.
inline QRectF placeOf(Painting const& painting, QString const& text)
{
  QRectF place;
  for (Drawn const& each : painting.of(Drawn::Kind::Text))
    if (each.text == text) place = each.box();
  return place;
}

/// Whether a painter is as a new one: what is drawn next does not depend on what was drawn before.
inline bool isAsNew(QPainter const& painter)
{
  return painter.opacity() == 1.0 && !painter.hasClipping() && painter.transform().isIdentity() &&
         painter.pen() == QPen() && painter.brush() == QBrush() &&
         !painter.testRenderHint(QPainter::Antialiasing);
}

} // namespace runsieve::test
