#pragma once

#include <vtkContext2D.h>
#include <vtkContextDevice2D.h>
#include <vtkNew.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

class vtkUnicodeString;

namespace runsieve::test {

using Color = std::array<int, 4>;
using Point = std::pair<float, float>;

/// One call of a drawing operation, with the pen and the brush as they were at that moment. Positions are
/// those that the item handed over: no transformation is applied.
struct Stroke
{
  enum Kind
  {
    PolyLine,
    Lines,
    Points,
    Markers,
    QuadStrip,
    Polygon,
    Text
  };

  Kind kind;
  std::vector<Point> points;
  float const* source; ///< where the item kept the positions
  Color pen;
  float width;
  Color brush;
  int marker;
  bool highlighted;
  bool ownColors; ///< each position has a colour of its own
  std::string text;
};

/// Draws nothing and remembers what it was asked to draw.
class RecordingDevice : public vtkContextDevice2D
{
public:
  static RecordingDevice* New();

  std::vector<Stroke> strokes;

  void DrawPoly(float* points, int n, unsigned char* colors, int components) override;
  void DrawLines(float* points, int n, unsigned char* colors, int components) override;
  void DrawPoints(float* points, int n, unsigned char* colors, int components) override;
  void DrawPointSprites(vtkImageData* sprite, float* points, int n, unsigned char* colors,
                        int components) override;
  void DrawMarkers(int shape, bool highlight, float* points, int n, unsigned char* colors,
                   int components) override;
  void DrawQuad(float* points, int n) override;
  void DrawQuadStrip(float* points, int n) override;
  void DrawColoredPolygon(float* points, int n, unsigned char* colors, int components) override;
  void DrawEllipseWedge(float, float, float, float, float, float, float, float) override {}
  void DrawEllipticArc(float, float, float, float, float, float) override {}
  void DrawString(float* point, vtkStdString const& string) override;
  void ComputeStringBounds(vtkStdString const& string, float bounds[4]) override;
  void ComputeJustifiedStringBounds(char const* string, float bounds[4]) override;
  void DrawMathTextString(float* point, vtkStdString const& string) override;
  void DrawImage(float[2], float, vtkImageData*) override {}
  void DrawImage(vtkRectf const&, vtkImageData*) override {}
  void SetColor4(unsigned char[4]) override {}
  void SetTexture(vtkImageData*, int) override {}
  void SetPointSize(float) override {}
  void SetLineWidth(float) override {}
  void SetLineType(int) override {}
  void SetMatrix(vtkMatrix3x3*) override {}
  void GetMatrix(vtkMatrix3x3*) override {}
  void MultiplyMatrix(vtkMatrix3x3*) override {}
  void PushMatrix() override {}
  void PopMatrix() override {}
  void SetClipping(int*) override {}
  void EnableClipping(bool) override {}

  // VTK 9.1 demands them, VTK 9.3 does not know them, and no chart calls them.
  virtual void DrawString(float*, vtkUnicodeString const&) {}
  virtual void ComputeStringBounds(vtkUnicodeString const&, float[4]) {}

private:
  Stroke& record(Stroke::Kind kind, float const* points, int n);
};

/// A painter on a recording device. Items are given `painter` where they expect a vtkContext2D.
class RecordingPainter
{
public:
  RecordingPainter();
  ~RecordingPainter();
  RecordingPainter(RecordingPainter const&) = delete;
  RecordingPainter& operator=(RecordingPainter const&) = delete;

  vtkNew<vtkContext2D> painter;

  [[nodiscard]] std::vector<Stroke> const& strokes() const { return device->strokes; }
  [[nodiscard]] std::vector<Stroke> polyLines() const { return ofKind(Stroke::PolyLine); }
  [[nodiscard]] std::vector<Stroke> markers() const { return ofKind(Stroke::Markers); }
  [[nodiscard]] std::vector<Stroke> ofKind(Stroke::Kind kind) const;
  [[nodiscard]] std::vector<std::string> texts() const;
  /// How often the painter refused a call, lines of fewer than two points for example.
  [[nodiscard]] int errors() const { return errorCount; }

private:
  void countError() { ++errorCount; }

  vtkNew<RecordingDevice> device;
  int errorCount = 0;
};

/// Pen of lines and markers that stand for selected runs.
inline const Color selectionColor{255, 50, 0, 150};

} // namespace runsieve::test
