#include <runsieve/items/PixelPainter.h>

#include <vtkContext2D.h>
#include <vtkImageData.h>
#include <vtkMatrix3x3.h>
#include <vtkNew.h>
#include <vtkOpenGLContextDevice2D.h>
#include <vtkOpenGLGL2PSHelper.h>
#include <vtkOpenGLRenderWindow.h>
#include <vtkOpenGLState.h>
#include <vtkTextureObject.h>
#include <vtkTransform2D.h>

#include <GL/gl.h>

#include <algorithm>

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

/// A device maps 0.5 to the left border of its window and size - 0.5 to the right one.
struct DeviceStretch
{
  explicit DeviceStretch(int size) : factor(size > 1 ? size / (size - 1.0) : 1.0) {}

  double factor;
};

} // namespace

vtkOpenGLContextDevice2D* pixelDevice(vtkContext2D* painter)
{
  vtkOpenGLGL2PSHelper* shapes = vtkOpenGLGL2PSHelper::GetInstance();
  const bool exportsShapes = shapes && shapes->GetActiveState() != vtkOpenGLGL2PSHelper::Inactive;
  if (exportsShapes || painter->GetBufferIdMode()) return nullptr;
  return vtkOpenGLContextDevice2D::SafeDownCast(painter->GetDevice());
}

std::optional<ColumnScale> quarterPixelColumns(vtkContext2D* painter)
{
  if (!pixelDevice(painter)) return std::nullopt;
  vtkMatrix3x3* matrix = painter->GetTransform()->GetMatrix();
  if (matrix->GetElement(0, 1) != 0.0) return std::nullopt;
  return ColumnScale{4.0 * matrix->GetElement(0, 0), 4.0 * matrix->GetElement(0, 2)};
}

bool PixelFrame::operator==(PixelFrame const& o) const
{
  return xScale == o.xScale && xOffset == o.xOffset && yScale == o.yScale && yOffset == o.yOffset &&
         left == o.left && bottom == o.bottom && width == o.width && height == o.height;
}

std::optional<PixelFrame> pixelFrame(vtkContext2D* painter)
{
  vtkOpenGLContextDevice2D* device = pixelDevice(painter);
  vtkOpenGLRenderWindow* window = device ? device->GetRenderWindow() : nullptr;
  if (!window) return std::nullopt;
  vtkMatrix3x3* matrix = painter->GetTransform()->GetMatrix();
  if (matrix->GetElement(0, 1) != 0.0 || matrix->GetElement(1, 0) != 0.0) return std::nullopt;

  int viewport[4];
  window->GetState()->vtkglGetIntegerv(GL_VIEWPORT, viewport);
  const Box box = unclipped(window->GetState(), viewport);
  const int width = box.right - box.left;
  const int height = box.top - box.bottom;
  const bool fits = std::max(width, height) <= vtkTextureObject::GetMaximumTextureSize(window);
  if (width < 1 || height < 1 || !fits) return std::nullopt;

  const double x = DeviceStretch(viewport[2]).factor;
  const double y = DeviceStretch(viewport[3]).factor;
  return PixelFrame{matrix->GetElement(0, 0) * x,
                    (matrix->GetElement(0, 2) - 0.5) * x,
                    matrix->GetElement(1, 1) * y,
                    (matrix->GetElement(1, 2) - 0.5) * y,
                    box.left,
                    box.bottom,
                    width,
                    height};
}

RunCoverage::Frame coverageFrame(PixelFrame const& frame, double width, int subRows)
{
  RunCoverage::Frame result;
  result.width = frame.width;
  result.height = frame.height;
  result.subRows = subRows;
  result.halfWidth = 0.5 * width;
  result.map = {frame.xScale, frame.xOffset - frame.left, frame.yScale, frame.yOffset - frame.bottom};
  return result;
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
  vtkOpenGLContextDevice2D* device = pixelDevice(painter);
  vtkOpenGLRenderWindow* window = device ? device->GetRenderWindow() : nullptr;
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
  painter->DrawImage(static_cast<float>(frame.left), static_cast<float>(frame.bottom), image);
  painter->PopMatrix();
}

} // namespace runsieve
