#include <runsieve/items/DensityBars.h>

#include <vtkBrush.h>
#include <vtkContext2D.h>
#include <vtkNew.h>
#include <vtkPen.h>
#include <vtkTextProperty.h>
#include <vtkTransform2D.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace runsieve {

namespace {

// Of 72 per inch, multiplied by the scale of the screen.
constexpr float barWidth = 90.0f;
constexpr float barHeight = 7.0f;
constexpr float labelHeight = 13.0f;
constexpr float labelWidth = 62.0f; ///< of "100,000 runs"
constexpr float gap = 5.0f;
constexpr int fontSize = 10;
constexpr int steps = 45; ///< rectangles of a bar

std::string counted(double runs)
{
  std::string text = std::to_string(static_cast<long long>(std::llround(runs)));
  for (auto at = static_cast<std::ptrdiff_t>(text.size()) - 3; at > 0; at -= 3)
    text.insert(static_cast<std::size_t>(at), ",");
  return text;
}

/// The number of runs at a place of the bar, 0 to 1: the inverse of the scale.
double runsAt(DensityScale const& scale, double place)
{
  double low = scale.smallest();
  double high = scale.largest();
  for (int i = 0; i < 40; ++i) {
    const double middle = std::sqrt(low * high);
    (scale.position(middle) < place ? low : high) = middle;
  }
  return high;
}

class BarPainter
{
public:
  BarPainter(vtkContext2D* itsPainter, float itsScale) : painter(itsPainter), scale(itsScale) {}

  void paint(DensityBar const& bar, float left, float bottom)
  {
    paintBackground(left, bottom);
    const ColorRamp ramp(bar.color);
    const float width = barWidth * scale / steps;
    for (int i = 0; i < steps; ++i) {
      const Color color = ramp.at(bar.scale.shade(runsAt(bar.scale, (i + 0.5) / steps)));
      painter->GetBrush()->SetColor(color[0], color[1], color[2], 255);
      // Each reaches below the next one, so that no gap shows between them.
      const float end = left + barWidth * scale;
      const float begin = left + static_cast<float>(i) * width;
      painter->DrawRect(begin, bottom, end - begin, barHeight * scale);
    }
    paintMarks(bar.scale, left, bottom);
    const std::string most = counted(bar.scale.largest()) + (bar.scale.largest() < 1.5 ? " run" : " runs");
    paintLabel(counted(bar.scale.smallest()), left - gap * scale, bottom, VTK_TEXT_RIGHT);
    paintLabel(most, left + (barWidth + gap) * scale, bottom, VTK_TEXT_LEFT);
  }

private:
  void paintBackground(float left, float bottom)
  {
    painter->GetPen()->SetLineType(vtkPen::NO_PEN);
    painter->GetBrush()->SetColor(255, 255, 255, 200);
    const float margin = 0.5f * (labelHeight - barHeight) * scale;
    painter->DrawRect(left - 4.0f * gap * scale, bottom - margin,
                      (barWidth + labelWidth + 5.0f * gap) * scale, labelHeight * scale);
  }

  void paintMarks(DensityScale const& bar, float left, float bottom)
  {
    painter->GetPen()->SetLineType(vtkPen::SOLID_LINE);
    painter->GetPen()->SetColor(255, 255, 255, 255);
    painter->GetPen()->SetWidth(1.0f);
    for (DensityScale::Mark const& mark : bar.decades()) {
      if (mark.position <= 0.0 || mark.position >= 1.0) continue;
      const float x = left + static_cast<float>(mark.position) * barWidth * scale;
      painter->DrawLine(x, bottom, x, bottom + barHeight * scale);
    }
    painter->GetPen()->SetLineType(vtkPen::NO_PEN);
  }

  void paintLabel(std::string const& text, float x, float bottom, int justification)
  {
    vtkNew<vtkTextProperty> font;
    font->SetFontSize(fontSize);
    font->SetColor(0.25, 0.25, 0.25);
    font->SetJustification(justification);
    font->SetVerticalJustificationToCentered();
    painter->ApplyTextProp(font);
    painter->DrawString(x, bottom + 0.5f * barHeight * scale, text.c_str());
  }

  vtkContext2D* painter;
  float scale;
};

} // namespace

void paintDensityBars(vtkContext2D* painter, std::vector<DensityBar> const& bars, BarCorner corner,
                      float scale)
{
  vtkNew<vtkTransform2D> pixels;
  painter->PushMatrix();
  painter->SetTransform(pixels);
  BarPainter bar(painter, scale);
  const float left = corner.isRight ? corner.x - (barWidth + labelWidth + 2.0f * gap) * scale
                                    : corner.x + 6.0f * gap * scale;
  float bottom = corner.top - (barHeight + 2.0f * gap) * scale;
  for (DensityBar const& shown : bars) {
    if (shown.scale.largest() <= 0.0) continue;
    bar.paint(shown, left, bottom);
    bottom -= labelHeight * scale;
  }
  painter->PopMatrix();
}

} // namespace runsieve
