#include <runsieve/items/PixelPainter.h>

#include <runsieve/core/coverage/MovedPixels.h>
#include <runsieve/items/ExportedImages.h>

#include <vtkContext2D.h>
#include <vtkImageData.h>
#include <vtkMatrix3x3.h>
#include <vtkNew.h>
#include <vtkOpenGLContextDevice2D.h>
#include <vtkOpenGLGL2PSHelper.h>
#include <vtkOpenGLRenderWindow.h>
#include <vtkOpenGLState.h>
#include <vtkPen.h>
#include <vtkTextureObject.h>
#include <vtkTransform2D.h>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace runsieve {

namespace {

struct Box
{
  int left;
  int bottom;
  int right;
  int top;
};

/// The part of the viewport that is not clipped away, in its own pixels.
Box unclipped(vtkOpenGLState* state, int const viewport[4])
{
  Box box = {0, 0, viewport[2], viewport[3]};
  if (!state->GetEnumState(GL_SCISSOR_TEST)) return box;
  int clip[4];
  state->vtkglGetIntegerv(GL_SCISSOR_BOX, clip);
  const int left = clip[0] - viewport[0];
  const int bottom = clip[1] - viewport[1];
  return {std::max(box.left, left), std::max(box.bottom, bottom), std::min(box.right, left + clip[2]),
          std::min(box.top, bottom + clip[3])};
}

Box scaled(Box const& box, double scale)
{
  auto const pixels = [scale](int place) { return static_cast<int>(std::lround(place * scale)); };
  return {pixels(box.left), pixels(box.bottom), pixels(box.right), pixels(box.top)};
}

bool exports(int state)
{
  vtkOpenGLGL2PSHelper* shapes = vtkOpenGLGL2PSHelper::GetInstance();
  return shapes && shapes->GetActiveState() == state;
}

/// Null unless the painter exports shapes now and images are taken, too.
ExportedImages* exportedImages()
{
  return exportsShapes() ? ExportedImages::present() : nullptr;
}

vtkOpenGLRenderWindow* imageWindow(vtkContext2D* painter)
{
  vtkOpenGLContextDevice2D* device =
      exportedImages() ? vtkOpenGLContextDevice2D::SafeDownCast(painter->GetDevice()) : pixelDevice(painter);
  return device ? device->GetRenderWindow() : nullptr;
}

int largestImage(vtkOpenGLRenderWindow* window)
{
  return exportedImages() ? RunCoverage::largestSize : vtkTextureObject::GetMaximumTextureSize(window);
}

/// Keeps an image for the file, and draws its mark. The painter's coordinates are pixels of the viewport.
void exportImage(vtkContext2D* painter, PixelFrame const& frame, vtkImageData* image, ExportedImages& images)
{
  if (images.images().size() >= ExportedImages::mostImages) return;
  auto const* bytes = static_cast<std::uint8_t const*>(image->GetScalarPointer());
  const auto size = 4 * static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height);
  const std::size_t number = images.take({frame.left / frame.scale,
                                          frame.bottom / frame.scale,
                                          frame.width / frame.scale,
                                          frame.height / frame.scale,
                                          frame.width,
                                          frame.height,
                                          {bytes, bytes + size}});
  const auto [red, green, blue] = ExportedImages::markOf(number);
  painter->GetPen()->SetLineType(vtkPen::SOLID_LINE);
  painter->GetPen()->SetColor(red, green, blue, 255);
  painter->GetPen()->SetWidth(1.0f);
  const auto x = static_cast<float>((frame.left + frame.width / 2) / frame.scale);
  const auto y = static_cast<float>((frame.bottom + frame.height / 2) / frame.scale);
  float mark[] = {x, y, x + 1.0f, y};
  painter->DrawPoly(mark, 2);
}

/// A device maps 0.5 to the left border of its window and size - 0.5 to the right one.
struct DeviceStretch
{
  explicit DeviceStretch(int size) : factor(size > 1 ? size / (size - 1.0) : 1.0) {}

  double factor;
};

} // namespace

vtkOpenGLContextDevice2D* pixelDevice(vtkContext2D* painter)
{
  const bool isExport = exportsShapes() || exports(vtkOpenGLGL2PSHelper::Background);
  if (isExport || painter->GetBufferIdMode()) return nullptr;
  return vtkOpenGLContextDevice2D::SafeDownCast(painter->GetDevice());
}

bool exportsShapes()
{
  return exports(vtkOpenGLGL2PSHelper::Capture);
}

bool takesImage(vtkContext2D* painter, std::size_t lines, bool shaded)
{
  ExportedImages const* images = exportedImages();
  return images ? shaded || lines > images->mostLines() : pixelDevice(painter) != nullptr;
}

std::optional<ColumnScale> fineColumns(vtkContext2D* painter)
{
  if (!imageWindow(painter)) return std::nullopt;
  vtkMatrix3x3* matrix = painter->GetTransform()->GetMatrix();
  if (matrix->GetElement(0, 1) != 0.0) return std::nullopt;
  const double perPixel = exportedImages() ? 2.0 : 4.0; // files get no larger than they need to be
  return ColumnScale{perPixel * matrix->GetElement(0, 0), perPixel * matrix->GetElement(0, 2)};
}

bool PixelFrame::operator==(PixelFrame const& o) const
{
  return xScale == o.xScale && xOffset == o.xOffset && yScale == o.yScale && yOffset == o.yOffset &&
         left == o.left && bottom == o.bottom && width == o.width && height == o.height && scale == o.scale;
}

std::optional<PixelFrame> pixelFrame(vtkContext2D* painter)
{
  vtkOpenGLRenderWindow* window = imageWindow(painter);
  if (!window) return std::nullopt;
  vtkMatrix3x3* matrix = painter->GetTransform()->GetMatrix();
  if (matrix->GetElement(0, 1) != 0.0 || matrix->GetElement(1, 0) != 0.0) return std::nullopt;

  int viewport[4];
  window->GetState()->vtkglGetIntegerv(GL_VIEWPORT, viewport);
  const double scale = exportedImages() ? exportedImages()->scale() : 1.0;
  const Box box = scaled(unclipped(window->GetState(), viewport), scale);
  const int width = box.right - box.left;
  const int height = box.top - box.bottom;
  if (width < 1 || height < 1 || std::max(width, height) > largestImage(window)) return std::nullopt;

  const double x = DeviceStretch(viewport[2]).factor * scale;
  const double y = DeviceStretch(viewport[3]).factor * scale;
  return PixelFrame{matrix->GetElement(0, 0) * x,
                    (matrix->GetElement(0, 2) - 0.5) * x,
                    matrix->GetElement(1, 1) * y,
                    (matrix->GetElement(1, 2) - 0.5) * y,
                    box.left,
                    box.bottom,
                    width,
                    height,
                    scale};
}

RunCoverage::Frame coverageFrame(PixelFrame const& frame, double width, int subRows)
{
  RunCoverage::Frame result;
  result.width = frame.width;
  result.height = frame.height;
  result.subRows = subRows;
  result.halfWidth = 0.5 * width * frame.scale;
  result.map = {frame.xScale, frame.xOffset - frame.left, frame.yScale, frame.yOffset - frame.bottom};
  return result;
}

void moveImage(vtkImageData* image, PixelFrame const& from, vtkImageData* target, PixelFrame const& to)
{
  PixelMove move;
  move.xScale = from.xScale / to.xScale;
  move.xOffset = from.xOffset - from.left + (to.left - to.xOffset) * move.xScale;
  move.yScale = from.yScale / to.yScale;
  move.yOffset = from.yOffset - from.bottom + (to.bottom - to.yOffset) * move.yScale;
  movePixels(static_cast<std::uint8_t const*>(image->GetScalarPointer()), from.width, from.height,
             static_cast<std::uint8_t*>(target->GetScalarPointer()), to.width, to.height, move);
}

vtkSmartPointer<vtkImageData> newImage(PixelFrame const& frame)
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(frame.width, frame.height, 1);
  image->AllocateScalars(VTK_UNSIGNED_CHAR, 4);
  return image;
}

void drawPixels(vtkContext2D* painter, PixelFrame const& frame, vtkImageData* image)
{
  vtkOpenGLRenderWindow* window = imageWindow(painter);
  if (!window) return;
  int viewport[4];
  window->GetState()->vtkglGetIntegerv(GL_VIEWPORT, viewport);
  const double x = 1.0 / DeviceStretch(viewport[2]).factor;
  const double y = 1.0 / DeviceStretch(viewport[3]).factor;
  vtkNew<vtkTransform2D> pixels;
  pixels->GetMatrix()->SetElement(0, 0, x);
  pixels->GetMatrix()->SetElement(0, 2, 0.5);
  pixels->GetMatrix()->SetElement(1, 1, y);
  pixels->GetMatrix()->SetElement(1, 2, 0.5);
  painter->PushMatrix();
  painter->SetTransform(pixels);
  if (ExportedImages* images = exportedImages())
    exportImage(painter, frame, image, *images);
  else
    painter->DrawImage(static_cast<float>(frame.left), static_cast<float>(frame.bottom), image);
  painter->PopMatrix();
}

} // namespace runsieve
