#include "app/view/StabilityChart.h"

#include "app/cli/RankReport.h"
#include "app/cli/StabilityReport.h"

#include <runsieve/core/text/ShownText.h>

#include <vtkBrush.h>
#include <vtkContext2D.h>
#include <vtkContextScene.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkPen.h>
#include <vtkTextProperty.h>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace runsieve::app {

namespace {

using Color = std::array<unsigned char, 3>;

constexpr std::array<Color, mostCurves> colors = {{{255, 51, 0},
                                                   {13, 153, 230},
                                                   {0, 140, 90},
                                                   {150, 60, 180},
                                                   {225, 145, 0},
                                                   {125, 80, 45},
                                                   {220, 70, 150},
                                                   {0, 60, 160}}};
constexpr Color notSignificant = {130, 140, 155};
constexpr Color ink = {40, 40, 40};
constexpr Color grid = {225, 225, 225};
constexpr Color floorLine = {125, 125, 125};
constexpr Color floorArea = {242, 242, 242};
constexpr char floorName[] = "noise floor";

enum class Align
{
  Left,
  Center,
  Right
};

void useText(vtkContext2D* painter, float font, Color const& color, Align align)
{
  vtkNew<vtkTextProperty> text;
  text->SetFontFamilyToArial();
  text->SetFontSize(static_cast<int>(font));
  text->SetColor(color[0] / 255.0, color[1] / 255.0, color[2] / 255.0);
  text->SetVerticalJustificationToCentered();
  if (align == Align::Center)
    text->SetJustificationToCentered();
  else if (align == Align::Right)
    text->SetJustificationToRight();
  else
    text->SetJustificationToLeft();
  painter->ApplyTextProp(text);
}

void usePen(vtkContext2D* painter, Color const& color, float width)
{
  vtkNew<vtkPen> pen;
  pen->SetColor(color[0], color[1], color[2]);
  pen->SetWidth(width);
  painter->ApplyPen(pen);
}

void useBrush(vtkContext2D* painter, Color const& color)
{
  vtkNew<vtkBrush> brush;
  brush->SetColor(color[0], color[1], color[2], 255);
  painter->ApplyBrush(brush);
}

/// Of text as useText() has set it.
float widthOf(vtkContext2D* painter, std::string const& text)
{
  float bounds[4] = {};
  painter->ComputeStringBounds(text.c_str(), bounds);
  return bounds[2];
}

/// As much of a name as fits.
std::string fitting(vtkContext2D* painter, std::string const& name, float width)
{
  std::size_t letters = shownWidth(name);
  std::string text = name;
  while (letters > 2 && widthOf(painter, text) > width) text = shortened(name, --letters);
  return text;
}

std::vector<std::string> wrapped(vtkContext2D* painter, std::string const& text, float width)
{
  std::vector<std::string> lines;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    std::string const longer = lines.empty() ? word : lines.back() + ' ' + word;
    if (lines.empty() || widthOf(painter, longer) > width)
      lines.push_back(word);
    else
      lines.back() = longer;
  }
  return lines;
}

/// Dashes are drawn one by one: printed pictures know no dashed lines.
void drawDashed(vtkContext2D* painter, float x0, float y0, float x1, float y1, float dash)
{
  float const length = std::hypot(x1 - x0, y1 - y0);
  for (float at = 0.0f; at < length; at += 2.0f * dash) {
    float const from = at / length;
    float const to = std::min(length, at + dash) / length;
    painter->DrawLine(x0 + from * (x1 - x0), y0 + from * (y1 - y0), x0 + to * (x1 - x0), y0 + to * (y1 - y0));
  }
}

/// A round number such that a few of them reach `most`.
double tickStep(double most)
{
  double const rough = most / 5.0;
  double const power = std::pow(10.0, std::floor(std::log10(rough)));
  for (double const factor : {1.0, 2.0, 5.0})
    if (factor * power >= rough * 0.999) return factor * power;
  return 10.0 * power;
}

} // namespace

vtkStandardNewMacro(StabilityChart);

void StabilityChart::show(Comparison const& comparison, ComparisonStability const& stability)
{
  verdict = "Enough runs? " + printable(stability.verdictText);
  subtitle = "magnitude of d: median and 5 % .. 95 % of " + std::to_string(stability.method.subsamples) +
             " samples of a part of the runs";
  curves.clear();
  sizes.clear();
  for (ComparisonAtSize const& size : stability.sizes)
    sizes.push_back(
        {size.share, std::to_string(size.passing) + " + " + std::to_string(size.others), size.noiseFloor});
  for (std::size_t i = 0; i < std::min(mostCurves, comparison.parameters.size()); ++i) {
    ParameterComparison const& parameter = comparison.parameters[i];
    if (std::isnan(parameter.d)) continue;
    Curve curve{printable(parameter.name) + (parameter.significant ? "" : " (n.s.)"),
                parameter.significant ? colors[i] : notSignificant,
                parameter.significant,
                {}};
    for (ComparisonAtSize const& size : stability.sizes) curve.points.push_back(size.parameters[i]);
    curves.push_back(std::move(curve));
  }
}

float StabilityChart::across(Layout const& layout, double share) const
{
  double const first = std::log(sizes.front().share);
  double const last = std::log(sizes.back().share);
  double const place = last > first ? (std::log(share) - first) / (last - first) : 0.5;
  float const pad = 0.5f * layout.step * static_cast<float>(curves.size()) + layout.font;
  return layout.left + pad + static_cast<float>(place) * (layout.right - layout.left - 2.0f * pad);
}

float StabilityChart::across(Layout const& layout, std::size_t size, std::size_t curve) const
{
  float const fromMiddle = static_cast<float>(curve) - 0.5f * static_cast<float>(curves.size() - 1);
  return across(layout, sizes[size].share) + fromMiddle * layout.step;
}

float StabilityChart::up(Layout const& layout, double d)
{
  return layout.bottom + static_cast<float>(d / layout.most) * (layout.top - layout.bottom);
}

std::vector<std::string> StabilityChart::headerLines(vtkContext2D* painter, Layout const& layout) const
{
  constexpr std::size_t most = 4;
  useText(painter, layout.font, ink, Align::Left);
  std::vector<std::string> lines = wrapped(painter, verdict, layout.toTheRight - 2.0f * layout.font);
  if (lines.size() > most) lines.resize(most);
  for (std::string const& line : wrapped(painter, subtitle, layout.toTheRight - 2.0f * layout.font))
    lines.push_back(line);
  return lines;
}

StabilityChart::Layout StabilityChart::layoutFor(vtkContext2D* painter)
{
  constexpr float leastFont = 11.0f;
  constexpr float mostOfWidth = 0.28f; // for names
  Layout layout;
  auto const width = static_cast<float>(this->GetScene()->GetSceneWidth());
  auto const height = static_cast<float>(this->GetScene()->GetSceneHeight());
  layout.font = std::max(leastFont, std::floor(std::min(width, height) / 60.0f));
  layout.above = height;
  layout.toTheRight = width;
  layout.left = 4.0f * layout.font;
  layout.bottom = 5.0f * layout.font;
  layout.top = height - (1.5f * static_cast<float>(headerLines(painter, layout).size()) + 2.0f) * layout.font;
  useText(painter, layout.font, ink, Align::Left);
  float names = widthOf(painter, floorName);
  for (Curve const& curve : curves) names = std::max(names, widthOf(painter, curve.name));
  layout.right = width - std::min(mostOfWidth * width, names) - 3.0f * layout.font;
  layout.step = 0.5f * layout.font;
  double most = 0.0;
  for (Curve const& curve : curves)
    for (DistanceAtSize const& point : curve.points) most = std::max(most, point.high);
  for (Size const& size : sizes)
    if (!std::isnan(size.floor)) most = std::max(most, size.floor);
  if (most > 0.0) layout.most = std::min(1.0, tickStep(most) * std::ceil(most / tickStep(most) - 1e-9));
  return layout;
}

void StabilityChart::paintHeader(vtkContext2D* painter, Layout const& layout) const
{
  float y = layout.above - 1.25f * layout.font;
  std::vector<std::string> const lines = headerLines(painter, layout);
  for (std::string const& line : lines) {
    painter->DrawString(layout.font, y, line.c_str());
    y -= 1.5f * layout.font;
  }
}

void StabilityChart::paintFloor(vtkContext2D* painter, Layout const& layout) const
{
  for (std::size_t i = 0; i + 1 < sizes.size(); ++i) {
    if (std::isnan(sizes[i].floor) || std::isnan(sizes[i + 1].floor)) continue;
    float const x0 = i == 0 ? layout.left : across(layout, sizes[i].share);
    float const x1 = i + 2 == sizes.size() ? layout.right : across(layout, sizes[i + 1].share);
    // Level beyond the first and the last size.
    float const from = across(layout, sizes[i].share);
    float const to = across(layout, sizes[i + 1].share);
    float const y0 = up(layout, std::min(layout.most, sizes[i].floor));
    float const y1 = up(layout, std::min(layout.most, sizes[i + 1].floor));
    float const corners[] = {x0, layout.bottom, x0, y0, from, y0, to, y1, x1, y1, x1, layout.bottom};
    usePen(painter, floorArea, 0.0f);
    painter->GetPen()->SetLineType(vtkPen::NO_PEN);
    useBrush(painter, floorArea);
    painter->DrawPolygon(const_cast<float*>(corners), 6);
    usePen(painter, floorLine, layout.font / 10.0f);
    painter->DrawLine(x0, y0, from, y0);
    drawDashed(painter, from, y0, to, y1, 0.4f * layout.font);
    painter->DrawLine(to, y1, x1, y1);
  }
}

void StabilityChart::paintAxes(vtkContext2D* painter, Layout const& layout) const
{
  double const step = tickStep(layout.most);
  for (int i = 0; i * step <= layout.most * 1.0001; ++i) {
    float const y = up(layout, i * step);
    usePen(painter, i == 0 ? ink : grid, layout.font / 12.0f);
    painter->DrawLine(layout.left, y, layout.right, y);
    useText(painter, layout.font, ink, Align::Right);
    painter->DrawString(layout.left - 0.5f * layout.font, y, formatted(i * step, "%.3g", "").c_str());
  }
  usePen(painter, ink, layout.font / 12.0f);
  painter->DrawLine(layout.left, layout.bottom, layout.left, layout.top);
  useText(painter, layout.font, ink, Align::Center);
  for (Size const& size : sizes) {
    float const x = across(layout, size.share);
    painter->DrawLine(x, layout.bottom, x, layout.bottom - 0.35f * layout.font);
    painter->DrawString(x, layout.bottom - 1.1f * layout.font,
                        (formatted(100.0 * size.share, "%.3g", "") + " %").c_str());
    painter->DrawString(x, layout.bottom - 2.5f * layout.font, size.text.c_str());
  }
  painter->DrawString(0.5f * (layout.left + layout.right), layout.bottom - 4.0f * layout.font,
                      "share of the runs, passing + others");
}

void StabilityChart::paintCurve(vtkContext2D* painter, Layout const& layout, std::size_t index) const
{
  Curve const& curve = curves[index];
  float const width = layout.font / (curve.significant ? 7.0f : 12.0f);
  float const radius = 0.22f * layout.font;
  usePen(painter, curve.color, width);
  for (std::size_t i = 0; i < curve.points.size(); ++i) {
    float const x = across(layout, i, index);
    DistanceAtSize const& point = curve.points[i];
    if (i > 0)
      painter->DrawLine(across(layout, i - 1, index), up(layout, curve.points[i - 1].median), x,
                        up(layout, point.median));
    if (point.high > point.low) painter->DrawLine(x, up(layout, point.low), x, up(layout, point.high));
  }
  useBrush(painter, curve.significant ? curve.color : Color{255, 255, 255});
  for (std::size_t i = 0; i < curve.points.size(); ++i)
    painter->DrawEllipse(across(layout, i, index), up(layout, curve.points[i].median), radius, radius);
}

/// Names as near as possible to the ends of their lines, none on another.
std::vector<StabilityChart::Label> StabilityChart::labels(Layout const& layout) const
{
  std::vector<Label> labels;
  for (Curve const& curve : curves)
    labels.push_back({curve.name, curve.color, up(layout, curve.points.back().median), 0.0f,
                      across(layout, sizes.size() - 1, labels.size())});
  if (!std::isnan(sizes.back().floor))
    labels.push_back(
        {floorName, floorLine, up(layout, std::min(layout.most, sizes.back().floor)), 0.0f, layout.right});
  std::stable_sort(labels.begin(), labels.end(),
                   [](Label const& a, Label const& b) { return a.end < b.end; });
  float const apart = 1.3f * layout.font;
  float least = layout.bottom;
  for (Label& label : labels) {
    label.y = std::max(label.end, least);
    least = label.y + apart;
  }
  float most = layout.top;
  for (auto label = labels.rbegin(); label != labels.rend(); ++label) {
    label->y = std::min(label->y, most);
    most = label->y - apart;
  }
  return labels;
}

void StabilityChart::paintLabels(vtkContext2D* painter, Layout const& layout) const
{
  float const to = layout.right + 1.5f * layout.font;
  for (Label const& label : labels(layout)) {
    usePen(painter, label.color, layout.font / 14.0f);
    painter->DrawLine(label.from, label.end, layout.right, label.end);
    painter->DrawLine(layout.right, label.end, to, label.y);
    useText(painter, layout.font, label.color, Align::Left);
    float const room = layout.toTheRight - to - layout.font;
    painter->DrawString(to + 0.3f * layout.font, label.y, fitting(painter, label.text, room).c_str());
  }
}

bool StabilityChart::Paint(vtkContext2D* painter)
{
  Layout const layout = layoutFor(painter);
  paintHeader(painter, layout);
  if (sizes.empty()) return true;
  paintFloor(painter, layout);
  paintAxes(painter, layout);
  for (std::size_t i = curves.size(); i-- > 0;) paintCurve(painter, layout, i); // the first one on top
  paintLabels(painter, layout);
  return true;
}

} // namespace runsieve::app
