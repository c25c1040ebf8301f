#pragma once

#include "DocumentScene.h"
#include "PaintRecorder.h"

#include "app/explorer/figure/PaintFigure.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace runsieve::test {

/// A text of a figure.
struct FigureText
{
  QString text;
  QFont font;
  QColor color;
  QPointF begin; ///< of its base line
  QRectF ink;    ///< what its letters cover
  bool upright = false;
};

/// A line or an area of a figure.
struct FigureShape
{
  using Kind = Drawn::Kind;
  Kind kind;
  QPolygonF points;
  QPen pen;
  QBrush brush;

  [[nodiscard]] QRectF box() const { return points.boundingRect(); }
  [[nodiscard]] bool isFilled() const { return brush.style() != Qt::NoBrush; }
  [[nodiscard]] bool isStroked() const { return pen.style() != Qt::NoPen; }
};

/// An image in a figure.
struct FigureImage
{
  QRectF place;
  QImage image;
};

/// What was drawn of a figure.
struct DrawnFigure
{
  std::vector<FigureText> texts;
  std::vector<FigureShape> shapes;
  std::vector<FigureImage> images;

  void add(Drawn const& drawn)
  {
    if (drawn.kind == Drawn::Kind::Image) {
      images.push_back({drawn.box(), drawn.image});
    } else if (drawn.kind != Drawn::Kind::Text) {
      shapes.push_back({drawn.kind, drawn.points, drawn.pen, drawn.brush});
    } else if ((drawn.points.first() - lastEnd).manhattanLength() < 1.0 &&
               texts.back().color == drawn.pen.color()) { // a text in letters of several fonts comes in parts
      texts.back().text += drawn.text;
      texts.back().ink |= drawn.ink;
    } else {
      const QPointF along = drawn.points.last() - drawn.points.first();
      texts.push_back({drawn.text, drawn.font, drawn.pen.color(), drawn.points.first(), drawn.ink,
                       std::fabs(along.y()) > std::fabs(along.x())});
    }
    lastEnd = drawn.kind == Drawn::Kind::Text ? drawn.points.last() : QPointF(-1e9, -1e9);
  }

private:
  QPointF lastEnd = {-1e9, -1e9};
};

/// A document and what is noted of a figure of it.
struct FigureScene : DocumentScene
{
  app::FigureOptions options;
  DrawnFigure drawing;
  app::FigureNotes notes;

  [[nodiscard]] app::FigureContent content() const
  {
    Scan const& scan = document.scan();
    return app::figureContentOf(document, {scan.times.front(), scan.times.back()}, {});
  }
  [[nodiscard]] app::Theme theme() const { return app::figureTheme(options); }
  [[nodiscard]] QRectF paper() const { return {QPointF(), app::figureSize(options)}; }

  /// The figure of the document, or of a content.
  DrawnFigure const& draw() { return draw(content()); }
  DrawnFigure const& draw(app::FigureContent const& drawn)
  {
    constexpr double pixelsPerUnit = 0.2;
    PaintRecorder page((paper().size() + QSizeF(1.0, 1.0)).toSize());
    QPainter painter(&page);
    notes = app::paintFigure(painter, paper(), drawn, options, pixelsPerUnit);
    EXPECT_TRUE(isAsNew(painter));
    painter.end();
    drawing = {};
    for (Drawn const& each : page.painting().all) drawing.add(each);
    return drawing;
  }

  void showOutputs(std::vector<std::size_t> const& outputs)
  {
    document.change("Show outputs", [&](app::State& state) { state.view.outputs = outputs; });
  }

  /// The texts that say something, in the order in which they are drawn.
  [[nodiscard]] std::vector<FigureText> found(QString const& text) const
  {
    std::vector<FigureText> all;
    for (FigureText const& each : drawing.texts)
      if (each.text == text) all.push_back(each);
    return all;
  }
  [[nodiscard]] FigureText textOf(QString const& text) const
  {
    const auto all = found(text);
    if (all.size() == 1) return all.front();
    ADD_FAILURE() << text.toStdString() << " stands " << all.size() << " times in the figure";
    return {};
  }
  [[nodiscard]] bool says(QString const& text) const { return !found(text).empty(); }

  /// Shapes of a kind that a condition holds for.
  template <class Condition>
  [[nodiscard]] std::vector<FigureShape> shapes(FigureShape::Kind kind, Condition&& holds) const
  {
    std::vector<FigureShape> all;
    for (FigureShape const& shape : drawing.shapes)
      if (shape.kind == kind && holds(shape)) all.push_back(shape);
    return all;
  }
  [[nodiscard]] std::vector<FigureShape> lines(QColor const& color) const
  {
    return shapes(FigureShape::Kind::Polyline,
                  [&](FigureShape const& shape) { return shape.isStroked() && shape.pen.color() == color; });
  }
  [[nodiscard]] std::vector<FigureShape> fills(FigureShape::Kind kind, QColor const& color) const
  {
    return shapes(kind,
                  [&](FigureShape const& shape) { return shape.isFilled() && shape.brush.color() == color; });
  }

  /// The plot of an output, whose runs are an image.
  [[nodiscard]] QRectF plot(std::size_t place = 0) const { return drawing.images.at(place).place; }

  /// The plot of a small chart from the lines of its axes: those nearest below its name.
  [[nodiscard]] QRectF plotBelow(QString const& name) const
  {
    const QPointF from = textOf(name).begin;
    QRectF best;
    for (FigureShape const& shape : shapes(FigureShape::Kind::Line, [](auto const&) { return true; })) {
      const QRectF box = shape.box();
      const bool isBase = box.width() > 10.0 * theme().line && box.height() < 1.0;
      if (!isBase || box.top() < from.y() || from.x() > box.right() || from.x() < box.left() - 400.0)
        continue;
      if (best.isNull() || box.top() < best.bottom())
        best = QRectF(QPointF(box.left(), from.y()), box.bottomRight());
    }
    for (FigureShape const& shape : shapes(FigureShape::Kind::Line, [](auto const&) { return true; })) {
      const QRectF box = shape.box();
      const bool isSide = box.height() > 10.0 * theme().line && box.width() < 1.0;
      if (isSide && std::fabs(box.bottom() - best.bottom()) < 1.0 &&
          std::fabs(box.left() - best.left()) < 2.0)
        best.setTop(box.top());
    }
    return best;
  }
};

/// The scan of lines with more outputs, long names and parameters of texts before the others.
inline std::shared_ptr<Scan const> wordyScan(std::size_t outputs, std::size_t parameters)
{
  const std::shared_ptr<Scan const> lines = lineScan(60, parameters);
  auto scan = std::make_shared<Scan>();
  scan->time = lines->time;
  scan->times = lines->times;
  scan->runs = lines->runs;
  scan->parameters = lines->parameters;
  for (std::size_t output = 0; output < lines->outputs.size(); ++output) {
    double* values = scan->addOutput(lines->outputs[output].label);
    for (std::size_t run = 0; run < scan->runs.size(); ++run)
      values = std::copy_n(lines->valuesOf(output, run), scan->times.size(), values);
  }
  for (std::size_t output = scan->outputs.size(); output < outputs; ++output) {
    const std::string name = output % 2 == 0 ? "D" + std::to_string(output)
                                             : "a rather long name of the output species number " +
                                                   std::to_string(output) + " in the cytoplasm";
    double* value = scan->addOutput({name, "nM", "", ""});
    for (std::size_t run = 0; run < scan->runs.size(); ++run)
      for (std::size_t t = 0; t < scan->times.size(); ++t) *value++ = 1e4 * scattered(output, run);
  }
  std::vector<std::string> many;
  for (int i = 0; i < 9; ++i) many.push_back("M9 glycerol at " + std::to_string(20 + i) + " degrees");
  const std::vector<std::pair<std::string, std::vector<std::string>>> texts = {
      {"strain", {"WT", "mutant", "dcI"}}, {"growth medium and temperature during the experiment", many}};
  for (auto const& [name, values] : texts) {
    ScanParameter parameter;
    parameter.label.name = name;
    parameter.texts = values;
    for (std::size_t run = 0; run < scan->runs.size(); ++run)
      parameter.values.push_back(std::floor(scattered(1, run) * static_cast<double>(values.size())));
    scan->parameters.insert(scan->parameters.begin(), parameter);
  }
  scan->check();
  return scan;
}

} // namespace runsieve::test
