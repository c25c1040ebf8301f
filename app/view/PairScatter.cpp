#include "app/view/PairScatter.h"

#include "app/cli/PairReport.h"

#include <runsieve/core/text/ShownText.h>

#include <vtkContext2D.h>
#include <vtkContextScene.h>
#include <vtkObjectFactory.h>
#include <vtkPen.h>
#include <vtkStdString.h>
#include <vtkTextProperty.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace runsieve::app {

namespace {

using Color = std::array<unsigned char, 3>;

constexpr Color colorOfOthers = {60, 70, 90};
constexpr Color colorOfPassing = {255, 51, 0};
constexpr Color colorOfFrame = {120, 120, 120};

/// How points are drawn.
struct Ink
{
  Color color;
  float size;     ///< pixels
  double opacity; ///< from 0 to 1
  double tone;    ///< the least opacity that its colour looks like where nothing is translucent
};

/// How many points all over a chart would be as close to each other as these are where most of them stand.
/// \param x, y from 0 to 1
double crowdOf(std::vector<double> const& x, std::vector<double> const& y)
{
  constexpr std::size_t cells = 24;
  std::vector<double> counts(cells * cells);
  auto const cellOf = [](double place) {
    return static_cast<std::size_t>(std::clamp(place, 0.0, 0.999) * static_cast<double>(cells));
  };
  for (std::size_t i = 0; i < x.size(); ++i) counts[cellOf(y[i]) * cells + cellOf(x[i])] += 1.0;
  double squares = 0.0;
  for (double const count : counts) squares += count * count;
  auto const points = static_cast<double>(std::max<std::size_t>(x.size(), 1));
  return std::max(points,
                  squares / points * static_cast<double>(counts.size()) - static_cast<double>(counts.size()));
}

/// So that a crowd of points of a size darkens a chart by so much; single ones stay visible.
double opacityOf(double crowd, double size, double area, double darkness, double least, double most)
{
  double const covered = crowd * size * size / area;
  return std::clamp(darkness / std::max(covered, 1e-9), least, most);
}

/// Larger points where there is room for them.
float sizeOf(std::size_t points, double area)
{
  constexpr float least = 1.5f;
  constexpr float most = 5.0f;
  double const room = area / static_cast<double>(std::max<std::size_t>(points, 1));
  return std::clamp(static_cast<float>(0.3 * std::sqrt(room)), least, most);
}

Color onWhite(Color const& color, double opacity)
{
  Color mixed{};
  for (std::size_t c = 0; c < 3; ++c)
    mixed[c] = static_cast<unsigned char>(std::lround(255.0 + opacity * (color[c] - 255.0)));
  return mixed;
}

/// Columns of a grid whose cells are nearest to square.
std::size_t columnsFor(std::size_t charts, double width, double height)
{
  constexpr double bestAspect = 1.1; // axes take more room beside a chart than titles above
  std::size_t best = 1;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t columns = 1; columns <= charts; ++columns) {
    std::size_t const rows = (charts + columns - 1) / columns;
    double const aspect = width / static_cast<double>(columns) / (height / static_cast<double>(rows));
    double const distance = std::fabs(std::log(aspect / bestAspect));
    if (distance < least) {
      least = distance;
      best = columns;
    }
  }
  return best;
}

std::string countText(std::size_t runs, char const* what)
{
  return std::to_string(runs) + ' ' + what;
}

} // namespace

/// A rectangle in pixels, from its lower left corner.
struct PairScatter::Box
{
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;

  [[nodiscard]] double area() const { return width * height; }
};

/// One painting of all charts.
class PairScatter::Painting
{
public:
  Painting(PairScatter const& scatter, vtkContext2D* painter, double width, double height)
      : scatter(scatter), painter(painter), width(width), height(height)
  {
    columns = columnsFor(scatter.charts.size(), width, height);
    rows = (scatter.charts.size() + columns - 1) / columns;
    double const cell =
        std::min(width / static_cast<double>(columns), 1.3 * height / static_cast<double>(rows));
    font = static_cast<int>(std::clamp(cell / 26.0, 9.0, 16.0));
    blank = textWidth("x x") - textWidth("xx");
    cellWidth = (width - font) / static_cast<double>(columns);
    cellHeight = (height - headHeight()) / static_cast<double>(rows);
  }

  void paint()
  {
    paintHead();
    for (Chart const& chart : scatter.charts) fit(chart);
    for (std::size_t i = 0; i < scatter.charts.size(); ++i) paintChart(scatter.charts[i], plotOf(i));
  }

private:
  [[nodiscard]] double line() const { return 1.4 * font; }
  [[nodiscard]] double headHeight() const { return 2.0 * line() + 0.6 * font; }
  [[nodiscard]] double below() const { return 2.0 * line() + 0.5 * font; }
  [[nodiscard]] double right() const { return 0.8 * font; }

  [[nodiscard]] double textWidth(std::string const& text)
  {
    setText(0.0);
    float bounds[4] = {};
    painter->ComputeStringBounds(text, bounds);
    return bounds[2];
  }

  void setText(double angle)
  {
    vtkTextProperty* text = painter->GetTextProp();
    text->SetFontFamilyToArial();
    text->SetFontSize(font);
    text->SetBold(0);
    text->SetItalic(0);
    text->SetColor(0.0, 0.0, 0.0);
    text->SetOpacity(1.0);
    text->SetJustificationToLeft();
    text->SetVerticalJustificationToCentered();
    text->SetOrientation(angle);
  }

  /// Texts are pictures, which are sharp at whole pixels only. What stands at one end of them is seen at the
  /// other as well, so that both are left empty.
  void draw(double x, double y, std::string const& text, double angle = 0.0)
  {
    if (text.empty()) return;
    (angle == 0.0 ? x : y) -= blank;
    setText(angle);
    painter->DrawString(static_cast<float>(std::round(x)), static_cast<float>(std::round(y)),
                        ' ' + text + ' ');
  }

  void drawCentered(double x, double y, std::string const& text) { draw(x - textWidth(text) / 2.0, y, text); }

  /// Without its middle, as far as it takes to be no wider.
  std::string fitted(std::string const& text, double most)
  {
    constexpr std::size_t longest = 200;
    std::string shown = shortened(text, longest);
    for (std::size_t size = shownWidth(shown); size > 1 && textWidth(shown) > most; --size)
      shown = shortened(text, size - 1);
    return shown;
  }

  void paintHead()
  {
    drawCentered(width / 2.0, height - 0.3 * font - line() / 2.0, fitted(scatter.title, width - 2.0 * font));
    std::string const passing = countText(scatter.passingRuns, "passing");
    std::string const others = countText(scatter.otherRuns, "others");
    double const mark = 1.2 * font;
    double const gap = 2.0 * font;
    double x = (width - textWidth(passing) - textWidth(others) - 2.0 * mark - gap) / 2.0;
    double const y = height - 0.3 * font - 1.5 * line();
    auto const paintEntry = [&](std::string const& text, Color const& color) {
      std::vector<float> place = {static_cast<float>(x + mark / 3.0), static_cast<float>(y)};
      paintMarkers(place, {color, 0.6f * static_cast<float>(font), 1.0, 1.0});
      draw(x + mark, y, text);
      x += mark + textWidth(text) + gap;
    };
    paintEntry(passing, colorOfPassing);
    paintEntry(others, colorOfOthers);
  }

  [[nodiscard]] std::size_t mostTicksBeside() const
  {
    double const plot = cellHeight - below() - titleLines * line();
    return static_cast<std::size_t>(std::clamp(plot / (2.5 * font), 2.0, 6.0));
  }

  /// Room for titles and numbers that is the same for all charts, so that they stand in lines.
  void fit(Chart const& chart)
  {
    if (textWidth(chart.title) > cellWidth - font) titleLines = 2;
    for (AxisTick const& tick : chart.y.ticks(mostTicksBeside()))
      numbers = std::max(numbers, textWidth(tick.label));
  }

  [[nodiscard]] double left() const { return line() + 0.9 * font + numbers; }

  [[nodiscard]] Box plotOf(std::size_t i) const
  {
    double const column = static_cast<double>(i % columns);
    double const row = static_cast<double>(i / columns);
    Box plot;
    plot.x = font / 2.0 + column * cellWidth + left();
    plot.y = (static_cast<double>(rows) - 1.0 - row) * cellHeight + below();
    plot.width = std::max(1.0, cellWidth - left() - right());
    plot.height = std::max(1.0, cellHeight - below() - (titleLines + 0.3) * line());
    return plot;
  }

  void paintChart(Chart const& chart, Box const& plot)
  {
    float const size = sizeOf(chart.others.x.size() + chart.passing.x.size(), plot.area());
    Ink others = {colorOfOthers, size, 0.0, 0.35};
    Ink passing = {colorOfPassing, size + 0.5f, 0.0, 0.8};
    others.opacity = opacityOf(chart.crowdOfOthers, others.size, plot.area(), 0.4, 0.05, 0.6);
    passing.opacity = opacityOf(chart.crowdOfPassing, passing.size, plot.area(), 0.6, 0.08, 0.9);
    paintPoints(chart.others, plot, others);
    paintPoints(chart.passing, plot, passing);
    paintFrame(plot);
    paintTitle(chart, plot);
    paintAxes(chart, plot);
  }

  void paintPoints(Points const& points, Box const& plot, Ink const& ink)
  {
    std::vector<float> places;
    for (std::size_t i = 0; i < points.x.size(); ++i) {
      if (!isDrawn(i, points.x.size())) continue;
      places.push_back(static_cast<float>(plot.x + points.x[i] * plot.width));
      places.push_back(static_cast<float>(plot.y + points.y[i] * plot.height));
    }
    paintMarkers(places, ink);
  }

  /// Documents hold each point, so that they get a part of many: steps of the golden ratio are even, and meet
  /// no pattern in the order of the runs.
  [[nodiscard]] bool isDrawn(std::size_t i, std::size_t count) const
  {
    constexpr double most = 10000.0;
    constexpr double golden = 0.61803398874989485;
    double const step = golden * static_cast<double>(i);
    return !scatter.isOpaque || (step - std::floor(step)) * static_cast<double>(count) < most;
  }

  void paintMarkers(std::vector<float>& places, Ink const& ink)
  {
    if (places.empty()) return;
    Color const color = scatter.isOpaque ? onWhite(ink.color, std::max(ink.opacity, ink.tone)) : ink.color;
    auto const opacity =
        static_cast<unsigned char>(std::lround(scatter.isOpaque ? 255.0 : 255.0 * ink.opacity));
    painter->GetPen()->SetLineType(vtkPen::SOLID_LINE);
    painter->GetPen()->SetColor(color[0], color[1], color[2], opacity);
    painter->GetPen()->SetWidth(ink.size);
    painter->DrawPoints(places.data(), static_cast<int>(places.size() / 2));
  }

  void paintLine(double x1, double y1, double x2, double y2)
  {
    painter->GetPen()->SetLineType(vtkPen::SOLID_LINE);
    painter->GetPen()->SetColor(colorOfFrame[0], colorOfFrame[1], colorOfFrame[2], 255);
    painter->GetPen()->SetWidth(1.0f);
    painter->DrawLine(static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2),
                      static_cast<float>(y2));
  }

  void paintFrame(Box const& plot)
  {
    double const x2 = plot.x + plot.width;
    double const y2 = plot.y + plot.height;
    paintLine(plot.x, plot.y, x2, plot.y);
    paintLine(plot.x, y2, x2, y2);
    paintLine(plot.x, plot.y, plot.x, y2);
    paintLine(x2, plot.y, x2, y2);
  }

  /// In the middle of the chart, or as near as there is room.
  void paintTitleLine(std::string const& text, Box const& plot, double y)
  {
    double const room = cellWidth - font;
    std::string const shown = fitted(text, room);
    double const least = plot.x - left();
    double const textLength = textWidth(shown);
    double const x = plot.x + (plot.width - textLength) / 2.0;
    draw(std::clamp(x, least, std::max(least, least + room - textLength)), y, shown);
  }

  void paintTitle(Chart const& chart, Box const& plot)
  {
    double const y = plot.y + plot.height + 0.65 * line();
    std::size_t const comma = titleLines > 1 ? chart.title.find(", ") : std::string::npos;
    if (comma == std::string::npos) {
      paintTitleLine(chart.title, plot, y);
      return;
    }
    paintTitleLine(chart.title.substr(0, comma), plot, y + line());
    paintTitleLine(chart.title.substr(comma + 2), plot, y);
  }

  /// As many numbers as stand beside each other without touching.
  std::vector<AxisTick> ticksBelow(AxisScale const& scale, double length)
  {
    for (std::size_t most = 6; most > 2; --most) {
      std::vector<AxisTick> ticks = scale.ticks(most);
      bool isFree = true;
      for (std::size_t i = 1; i < ticks.size(); ++i) {
        double const room = (ticks[i].place - ticks[i - 1].place) * length;
        isFree &= room > (textWidth(ticks[i].label) + textWidth(ticks[i - 1].label)) / 2.0 + 0.7 * font;
      }
      if (isFree) return ticks;
    }
    return scale.ticks(2);
  }

  void paintAxes(Chart const& chart, Box const& plot)
  {
    double const tickSize = 0.3 * font;
    for (AxisTick const& tick : ticksBelow(chart.x, plot.width)) {
      double const x = plot.x + tick.place * plot.width;
      paintLine(x, plot.y, x, plot.y - tickSize);
      double const half = textWidth(tick.label) / 2.0; // what is cut off at the edges of the picture
      drawCentered(std::clamp(x, half + 1.0, width - half - 1.0), plot.y - tickSize - line() / 2.0,
                   tick.label);
    }
    for (AxisTick const& tick : chart.y.ticks(mostTicksBeside())) {
      double const y = plot.y + tick.place * plot.height;
      paintLine(plot.x, y, plot.x - tickSize, y);
      draw(plot.x - tickSize - 0.25 * font - textWidth(tick.label), y, tick.label);
    }
    drawCentered(plot.x + plot.width / 2.0, plot.y - tickSize - 1.5 * line(),
                 fitted(chart.xName, plot.width));
    std::string const yName = fitted(chart.yName, plot.height);
    draw(plot.x - left() + line() / 2.0, plot.y + (plot.height - textWidth(yName)) / 2.0, yName, 90.0);
  }

  PairScatter const& scatter;
  vtkContext2D* painter;
  double width;
  double height;
  std::size_t columns = 1;
  std::size_t rows = 1;
  int font = 12;      ///< pixels
  double blank = 0.0; ///< width of a blank
  double cellWidth = 0.0;
  double cellHeight = 0.0;
  double titleLines = 1.0;
  double numbers = 0.0; ///< widest number beside a chart
};

vtkStandardNewMacro(PairScatter);

void PairScatter::show(Scan const& scan, std::vector<ParameterPair> const& pairs, RunSet const& passing,
                       RunSet const& eligible)
{
  charts.clear();
  passingRuns = passing.count();
  otherRuns = eligible.count() - passingRuns;
  std::vector<std::size_t> const runs = eligible.members();
  auto const valuesOf = [&](std::size_t parameter) {
    std::vector<double> values;
    for (std::size_t const run : runs) values.push_back(scan.parameters[parameter].values[run]);
    return values;
  };
  for (ParameterPair const& pair : pairs) {
    std::vector<double> const x = valuesOf(pair.firstParameter);
    std::vector<double> const y = valuesOf(pair.secondParameter);
    Chart chart{
        pairTitle(pair), printable(pair.first), printable(pair.second), AxisScale(x), AxisScale(y), {}, {}};
    for (std::size_t i = 0; i < runs.size(); ++i) {
      if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;
      Points& points = passing.contains(runs[i]) ? chart.passing : chart.others;
      points.x.push_back(chart.x.place(x[i]));
      points.y.push_back(chart.y.place(y[i]));
    }
    chart.crowdOfOthers = crowdOf(chart.others.x, chart.others.y);
    chart.crowdOfPassing = crowdOf(chart.passing.x, chart.passing.y);
    charts.push_back(std::move(chart));
  }
  Modified();
}

bool PairScatter::Paint(vtkContext2D* painter)
{
  if (charts.empty()) return true;
  Painting(*this, painter, GetScene()->GetSceneWidth(), GetScene()->GetSceneHeight()).paint();
  return true;
}

} // namespace runsieve::app
