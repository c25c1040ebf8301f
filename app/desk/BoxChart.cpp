#include "app/desk/BoxChart.h"

#include "app/cli/RankReport.h"

#include <runsieve/core/text/ShownText.h>

#include <vtkBrush.h>
#include <vtkContext2D.h>
#include <vtkContextScene.h>
#include <vtkObjectFactory.h>
#include <vtkPen.h>
#include <vtkStdString.h>
#include <vtkTextProperty.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace runsieve::app {

namespace {

struct Color
{
  unsigned char red, green, blue;
};

constexpr Color ink = {60, 70, 90};
constexpr Color boxColor = {255, 51, 0};
constexpr Color halvesColor = {13, 153, 230};
constexpr Color baseColor = {130, 130, 130};
constexpr Color gridColor = {228, 228, 228};

/// A rectangle in pixels.
struct Area
{
  float left, bottom, right, top;

  [[nodiscard]] bool meets(Area const& other) const
  {
    return left < other.right && other.left < right && bottom < other.top && other.bottom < top;
  }
};

std::string share(double value)
{
  return formatted(value, "%.2f", "-");
}

/// Draws one picture. Lengths are in heights of the letters.
class BoxPainter
{
public:
  BoxPainter(vtkContext2D* painter, BoxOfRuns const& box, float width, float height)
      : painter(painter), box(box), width(width),
        letter(std::clamp(std::min(height / 45.0f, width / 60.0f), 8.0f, 80.0f)), area{5.0f * letter,
                                                                                       4.5f * letter,
                                                                                       width - 2.0f * letter,
                                                                                       height - 9.5f * letter}
  {}

  void paint(std::string const& title)
  {
    paintTitle(title);
    paintLegend();
    paintAxes();
    paintBase();
    paintPath();
    paintHalves();
    paintBox();
    paintNumbers();
  }

private:
  [[nodiscard]] float x(double coverage) const
  {
    return area.left + static_cast<float>(coverage) * (area.right - area.left);
  }
  [[nodiscard]] float y(double density) const
  {
    return area.bottom + static_cast<float>(density) * (area.top - area.bottom);
  }

  void pen(Color color, float lineWidth, int type = vtkPen::SOLID_LINE)
  {
    painter->GetPen()->SetColor(color.red, color.green, color.blue);
    painter->GetPen()->SetWidth(std::max(1.0f, lineWidth * letter));
    painter->GetPen()->SetLineType(type);
  }

  void brush(Color color) { painter->GetBrush()->SetColor(color.red, color.green, color.blue); }

  void text(Color color, float size, int across, int along)
  {
    vtkTextProperty* const property = painter->GetTextProp();
    property->SetColor(color.red / 255.0, color.green / 255.0, color.blue / 255.0);
    property->SetFontSize(std::max(1, static_cast<int>(std::lround(size * letter))));
    property->SetJustification(across);
    property->SetVerticalJustification(along);
    property->SetOrientation(0.0);
    painter->ApplyTextProp(property);
  }

  /// In the text property that is set.
  float widthOf(std::string const& words)
  {
    std::array<float, 4> bounds{};
    painter->ComputeStringBounds(words, bounds.data());
    return bounds[2];
  }

  /// The words, shortened to a width.
  std::string fitted(std::string const& words, float room)
  {
    std::string shown = words;
    for (std::size_t most = shownWidth(words); most > 1 && widthOf(shown) > room; --most)
      shown = shortened(words, most - 1);
    return shown;
  }

  void paintTitle(std::string const& title)
  {
    text(ink, 1.1f, VTK_TEXT_CENTERED, VTK_TEXT_CENTERED);
    painter->DrawString(0.5f * width, area.top + 7.9f * letter,
                        fitted(printable(title), width - 2.0f * letter));
  }

  void circle(float atX, float atY, float radius, float lineWidth)
  {
    constexpr int corners = 36;
    constexpr double turn = 6.283185307179586;
    std::vector<float> points;
    for (int i = 0; i <= corners; ++i) {
      points.push_back(atX + radius * static_cast<float>(std::cos(turn * i / corners)));
      points.push_back(atY + radius * static_cast<float>(std::sin(turn * i / corners)));
    }
    pen(boxColor, lineWidth);
    painter->DrawPoly(points.data(), corners + 1);
  }

  void point(float atX, float atY, float radius)
  {
    brush(ink);
    pen(ink, 0.05f);
    painter->DrawEllipse(atX, atY, radius, radius);
  }

  void diamond(float atX, float atY, float radius)
  {
    std::array<float, 8> corners = {atX - radius, atY, atX, atY - radius,
                                    atX + radius, atY, atX, atY + radius};
    brush(boxColor);
    pen({255, 255, 255}, 0.1f);
    painter->DrawPolygon(corners.data(), 4);
  }

  void cross(float fromX, float toX, float fromY, float toY, float atX, float atY)
  {
    pen(halvesColor, 0.15f);
    painter->DrawLine(fromX, atY, toX, atY);
    painter->DrawLine(atX, fromY, atX, toY);
  }

  /// A line of the legend, whose sign is drawn by a function of its middle.
  template <class Sign> void legendLine(float line, std::string const& words, Sign const& sign)
  {
    float const atY = area.top + (6.3f - 1.5f * line) * letter;
    sign(area.left + 0.6f * letter, atY);
    text(ink, 0.95f, VTK_TEXT_LEFT, VTK_TEXT_CENTERED);
    painter->DrawString(area.left + 1.8f * letter, atY, fitted(words, width - area.left - 2.5f * letter));
  }

  void paintLegend()
  {
    legendLine(0, "steps of the path; number of restricted parameters",
               [&](float atX, float atY) { point(atX, atY, 0.3f * letter); });
    legendLine(1,
               "box: coverage " + share(box.quality.coverage) + ", density " + share(box.quality.density) +
                   ", " + std::to_string(box.restricted) +
                   (box.restricted == 1 ? " parameter" : " parameters") + "; ring: step " +
                   std::to_string(box.chosen) + ", of which it was made",
               [&](float atX, float atY) { diamond(atX, atY, 0.55f * letter); });
    legendLine(2, "base density " + share(box.all.density) + ": passing runs among all runs",
               [&](float atX, float atY) {
                 pen(baseColor, 0.12f, vtkPen::DASH_LINE);
                 painter->DrawLine(atX - 0.7f * letter, atY, atX + 0.7f * letter, atY);
               });
    if (!hasHalves()) return;
    legendLine(3,
               "median and 5..95 % of " + std::to_string(box.method.resamples) +
                   " boxes of random halves, on the other half",
               [&](float atX, float atY) {
                 float const arm = 0.55f * letter;
                 cross(atX - arm, atX + arm, atY - arm, atY + arm, atX, atY);
               });
  }

  [[nodiscard]] bool hasHalves() const { return box.coverage.count > 0 && box.density.count > 0; }

  void paintAxes()
  {
    constexpr int steps = 5;
    for (int i = 0; i <= steps; ++i) {
      double const value = static_cast<double>(i) / steps;
      pen(gridColor, 0.06f);
      painter->DrawLine(x(value), area.bottom, x(value), area.top);
      painter->DrawLine(area.left, y(value), area.right, y(value));
      std::string const words = formatted(value, "%.1f", "");
      text(ink, 0.95f, VTK_TEXT_CENTERED, VTK_TEXT_TOP);
      painter->DrawString(x(value), area.bottom - 0.5f * letter, words);
      text(ink, 0.95f, VTK_TEXT_RIGHT, VTK_TEXT_CENTERED);
      painter->DrawString(area.left - 0.5f * letter, y(value), words);
    }
    pen(ink, 0.08f);
    painter->DrawLine(area.left, area.bottom, area.right, area.bottom);
    painter->DrawLine(area.left, area.bottom, area.left, area.top);
    text(ink, 1.05f, VTK_TEXT_CENTERED, VTK_TEXT_CENTERED);
    painter->DrawString(x(0.5), area.bottom - 3.0f * letter,
                        "coverage: passing runs inside / all passing runs");
    painter->GetTextProp()->SetOrientation(90.0);
    painter->ApplyTextProp(painter->GetTextProp());
    painter->DrawString(area.left - 3.7f * letter, y(0.5), "density: passing runs / runs inside");
  }

  void paintBase()
  {
    float const atY = y(box.all.density);
    pen(baseColor, 0.12f, vtkPen::DASH_LINE);
    painter->DrawLine(area.left, atY, area.right, atY);
    taken.push_back({area.left, atY, area.right, atY});
  }

  [[nodiscard]] float radiusOf(std::size_t restricted) const
  {
    std::size_t const most = std::max<std::size_t>(1, box.path.back().restricted);
    return letter * (0.16f + 0.22f * static_cast<float>(restricted) / static_cast<float>(most));
  }

  /// Points that would cover the one before them are left out.
  void paintPath()
  {
    std::vector<float> line;
    for (BoxPathStep const& step : box.path) {
      line.push_back(x(step.quality.coverage));
      line.push_back(y(step.quality.density));
    }
    pen(ink, 0.1f);
    if (box.path.size() > 1) painter->DrawPoly(line.data(), static_cast<int>(box.path.size()));
    float lastX = -width;
    float lastY = -width;
    for (std::size_t step = 0; step < box.path.size(); ++step) {
      float const radius = radiusOf(box.path[step].restricted);
      float const away = std::hypot(line[2 * step] - lastX, line[2 * step + 1] - lastY);
      if (away < 2.4f * radius && !isChange(step) && step + 1 < box.path.size()) continue;
      point(line[2 * step], line[2 * step + 1], radius);
      lastX = line[2 * step];
      lastY = line[2 * step + 1];
    }
  }

  [[nodiscard]] bool isChange(std::size_t step) const
  {
    return step == 0 || box.path[step].restricted != box.path[step - 1].restricted;
  }

  void paintHalves()
  {
    if (!hasHalves()) return;
    Area const spread = {x(box.coverage.low), y(box.density.low), x(box.coverage.high), y(box.density.high)};
    float const middleX = x(box.coverage.median);
    float const middleY = y(box.density.median);
    cross(spread.left, spread.right, spread.bottom, spread.top, middleX, middleY);
    taken.push_back({spread.left, middleY, spread.right, middleY});
    taken.push_back({middleX, spread.bottom, middleX, spread.top});
  }

  void paintBox()
  {
    BoxQuality const& chosen = box.path[box.chosen].quality;
    float const ring = 0.75f * letter;
    circle(x(chosen.coverage), y(chosen.density), ring, 0.16f);
    diamond(x(box.quality.coverage), y(box.quality.density), 0.6f * letter);
    take(x(chosen.coverage), y(chosen.density), ring);
    take(x(box.quality.coverage), y(box.quality.density), 0.6f * letter);
  }

  void take(float atX, float atY, float radius)
  {
    taken.push_back({atX - radius, atY - radius, atX + radius, atY + radius});
  }

  /// The number of restricted parameters where it changes, as long as there is room. The path climbs to the
  /// left, so that above it to the right and below it to the left is.
  void paintNumbers()
  {
    text(ink, 0.9f, VTK_TEXT_LEFT, VTK_TEXT_BOTTOM);
    for (std::size_t step = 0; step < box.path.size(); ++step) {
      if (!isChange(step)) continue;
      float const atX = x(box.path[step].quality.coverage);
      float const atY = y(box.path[step].quality.density);
      std::string const number = std::to_string(box.path[step].restricted);
      float const room = widthOf(number);
      float const away = radiusOf(box.path[step].restricted) + 0.2f * letter;
      if (!paintNumber(number, room, atX + away, atY + 0.2f * letter))
        paintNumber(number, room, atX - away - room, atY - 1.2f * letter);
    }
  }

  bool paintNumber(std::string const& number, float room, float left, float bottom)
  {
    Area const place = {left, bottom, left + room, bottom + letter};
    if (place.bottom < area.bottom || place.left < area.left) return false;
    if (std::any_of(taken.begin(), taken.end(), [&](Area const& other) { return place.meets(other); }))
      return false;
    painter->DrawString(left, bottom, number);
    taken.push_back(place);
    return true;
  }

  vtkContext2D* painter;
  BoxOfRuns const& box;
  float width;
  float letter;            ///< height of the letters
  Area area;               ///< between the axes
  std::vector<Area> taken; ///< where no number has room
};

} // namespace

vtkStandardNewMacro(BoxChart);

void BoxChart::show(BoxOfRuns const& box, std::string const& title)
{
  shown = box;
  heading = title;
}

bool BoxChart::Paint(vtkContext2D* painter)
{
  BoxPainter(painter, shown, static_cast<float>(this->GetScene()->GetSceneWidth()),
             static_cast<float>(this->GetScene()->GetSceneHeight()))
      .paint(heading);
  return true;
}

} // namespace runsieve::app
