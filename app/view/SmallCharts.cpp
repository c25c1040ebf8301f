#include "app/view/SmallCharts.h"

#include <vtkAxis.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkStringArray.h>

#include <algorithm>
#include <string>

namespace runsieve::app {

namespace {

constexpr std::size_t mostTexts = 6; ///< at one axis
constexpr double pixelsOfCharacter = 8.0;
constexpr double shareOfAxes = 0.75; ///< of the width of a view, for all axes of a row
constexpr double fewestCharacters = 3.0;

/// The beginning of a text, not cut inside a character of UTF-8.
std::string cut(std::string const& text, std::size_t characters)
{
  std::size_t end = 0;
  std::size_t count = 0;
  for (; end < text.size(); ++end)
    if ((static_cast<unsigned char>(text[end]) & 0xc0) != 0x80 && count++ == characters) break;
  return end == text.size() ? text : text.substr(0, end) + "..";
}

void nameTexts(vtkAxis* axis, std::vector<std::string> const& texts, double width)
{
  const std::size_t step = (texts.size() + mostTexts - 1) / mostTexts;
  const std::size_t written = (texts.size() + step - 1) / step;
  const double room = std::max(fewestCharacters, width / pixelsOfCharacter / static_cast<double>(written));
  vtkNew<vtkDoubleArray> places;
  vtkNew<vtkStringArray> labels;
  for (std::size_t i = 0; i < texts.size(); i += step) {
    places->InsertNextValue(static_cast<double>(i));
    labels->InsertNextValue(cut(texts[i], static_cast<std::size_t>(room)));
  }
  axis->SetCustomTickPositions(places, labels);
}

} // namespace

std::vector<std::size_t> positionsInScan(PlotContainer const& plot)
{
  std::vector<std::size_t> positions;
  for (int const column : plot.metaData->parameterColumns) {
    std::size_t before = 0;
    for (int c = 0; c < column; ++c)
      before += plot.typedColumnNames[static_cast<std::size_t>(c)].first == Kestrane::Parameter ? 1 : 0;
    positions.push_back(before);
  }
  return positions;
}

void nameTexts(PlotContainer& plot, Scan const& scan, int width)
{
  if (!plot.chartMatrix) return;
  const double widthOfAxis = shareOfAxes * width / std::max(plot.chartMatrix->GetSize().GetX(), 1);
  eachSmallChart(plot, [&](vtkChart* chart, std::size_t position) {
    if (position < scan.parameters.size() && scan.parameters[position].isText())
      nameTexts(chart->GetAxis(vtkAxis::BOTTOM), scan.parameters[position].texts, widthOfAxis);
  });
}

} // namespace runsieve::app
