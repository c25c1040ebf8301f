#include "RecordingDevice.h"

#include <vtkBrush.h>
#include <vtkCommand.h>
#include <vtkObjectFactory.h>
#include <vtkPen.h>
#include <vtkStdString.h>

namespace runsieve::test {

namespace {

// The size of a letter is of no interest; it must only be plausible, so that a layout comes out.
constexpr float letterWidth = 7.0f;
constexpr float letterHeight = 12.0f;

void plausibleBounds(std::size_t letters, float bounds[4])
{
  bounds[0] = bounds[1] = 0.0f;
  bounds[2] = letterWidth * static_cast<float>(letters);
  bounds[3] = letterHeight;
}

Color colorOf(unsigned char const* rgba)
{
  return {rgba[0], rgba[1], rgba[2], rgba[3]};
}

} // namespace

vtkStandardNewMacro(RecordingDevice);

Stroke& RecordingDevice::record(Stroke::Kind kind, float const* points, int n)
{
  Stroke stroke{};
  stroke.kind = kind;
  stroke.source = points;
  for (int i = 0; i < n; ++i) stroke.points.emplace_back(points[2 * i], points[2 * i + 1]);
  stroke.pen = colorOf(this->Pen->GetColorObject().GetData());
  stroke.width = this->Pen->GetWidth();
  stroke.brush = colorOf(this->Brush->GetColorObject().GetData());
  strokes.push_back(stroke);
  return strokes.back();
}

void RecordingDevice::DrawPoly(float* points, int n, unsigned char* colors, int)
{
  record(Stroke::PolyLine, points, n).ownColors = colors != nullptr;
}

void RecordingDevice::DrawLines(float* points, int n, unsigned char* colors, int)
{
  record(Stroke::Lines, points, n).ownColors = colors != nullptr;
}

void RecordingDevice::DrawPoints(float* points, int n, unsigned char* colors, int)
{
  record(Stroke::Points, points, n).ownColors = colors != nullptr;
}

void RecordingDevice::DrawPointSprites(vtkImageData*, float* points, int n, unsigned char* colors, int)
{
  record(Stroke::Points, points, n).ownColors = colors != nullptr;
}

void RecordingDevice::DrawMarkers(int shape, bool highlight, float* points, int n, unsigned char* colors, int)
{
  Stroke& stroke = record(Stroke::Markers, points, n);
  stroke.marker = shape;
  stroke.highlighted = highlight;
  stroke.ownColors = colors != nullptr;
}

void RecordingDevice::DrawQuad(float* points, int n)
{
  record(Stroke::Polygon, points, n);
}

void RecordingDevice::DrawQuadStrip(float* points, int n)
{
  record(Stroke::QuadStrip, points, n);
}

void RecordingDevice::DrawColoredPolygon(float* points, int n, unsigned char* colors, int)
{
  record(Stroke::Polygon, points, n).ownColors = colors != nullptr;
}

void RecordingDevice::DrawString(float* point, vtkStdString const& string)
{
  record(Stroke::Text, point, 1).text = string;
}

void RecordingDevice::ComputeStringBounds(vtkStdString const& string, float bounds[4])
{
  plausibleBounds(string.size(), bounds);
}

void RecordingDevice::ComputeJustifiedStringBounds(char const* string, float bounds[4])
{
  plausibleBounds(std::string(string).size(), bounds);
}

void RecordingDevice::DrawMathTextString(float* point, vtkStdString const& string)
{
  DrawString(point, string);
}

RecordingPainter::RecordingPainter()
{
  painter->AddObserver(vtkCommand::ErrorEvent, this, &RecordingPainter::countError);
  painter->Begin(device);
}

RecordingPainter::~RecordingPainter()
{
  painter->End();
  painter->RemoveAllObservers();
}

std::vector<Stroke> RecordingPainter::ofKind(Stroke::Kind kind) const
{
  std::vector<Stroke> found;
  for (Stroke const& stroke : strokes())
    if (stroke.kind == kind) found.push_back(stroke);
  return found;
}

std::vector<std::string> RecordingPainter::texts() const
{
  std::vector<std::string> found;
  for (Stroke const& stroke : ofKind(Stroke::Text)) found.push_back(stroke.text);
  return found;
}

} // namespace runsieve::test
