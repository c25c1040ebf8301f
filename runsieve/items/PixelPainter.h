#pragma once

#include <runsieve/core/coverage/RunCoverage.h>
#include <runsieve/items/ThinnedPolyline.h>

#include <vtkSmartPointer.h>

#include <cstddef>
#include <optional>

class vtkContext2D;
class vtkImageData;
class vtkOpenGLContextDevice2D;

namespace runsieve {

/// The device of a painter that makes pixels on a screen or in an image, by OpenGL; null for devices that
/// record calls, for export of shapes (PDF) and while items are looked up by their number under the mouse.
[[nodiscard]] vtkOpenGLContextDevice2D* pixelDevice(vtkContext2D* painter);

/// Whether a painter takes an image in place of so many lines: one that makes pixels does, and one that
/// exports shapes if ExportedImages says so. \param shaded by how many there are, which shapes cannot be
[[nodiscard]] bool takesImage(vtkContext2D* painter, std::size_t lines, bool shaded = false);

/// Whether a painter exports shapes (PDF) now.
[[nodiscard]] bool exportsShapes();

/// Where x lies in columns to which curves may be thinned: quarters of a pixel, as lines are smoothed over
/// less than one, and halves of a unit of an export with ExportedImages. Nothing if the painter makes
/// neither, or turns what it draws.
[[nodiscard]] std::optional<ColumnScale> fineColumns(vtkContext2D* painter);

/// Where the coordinates of a painter and its clip lie in the pixels of the viewport, or of images for an
/// export. Pixel k reaches from k to k + 1; row 0 is the lowest.
struct PixelFrame
{
  double xScale; ///< pixel = scale * coordinate + offset
  double xOffset;
  double yScale;
  double yOffset;
  int left; ///< of the part that is not clipped away, as the others
  int bottom;
  int width;
  int height;
  double scale; ///< pixels for one of the viewport: 1 but for an export

  bool operator==(PixelFrame const& other) const;
};

/// Nothing if the painter takes no images, turns what it draws, or clips everything away, or if the card
/// holds no image of that size.
[[nodiscard]] std::optional<PixelFrame> pixelFrame(vtkContext2D* painter);

/// For the lines of a painter, of some width in pixels of the viewport, in the pixels of its frame.
[[nodiscard]] RunCoverage::Frame coverageFrame(PixelFrame const& frame, double width, int subRows);

/// Copies what an image shows to where it lies after its axes have moved; the rest of the target stays as it
/// is. \param from the frame of the image \param to that of the target
void moveImage(vtkImageData* image, PixelFrame const& from, vtkImageData* target, PixelFrame const& to);

/// An image of RGBA of the size of a frame; what it shows is undefined.
[[nodiscard]] vtkSmartPointer<vtkImageData> newImage(PixelFrame const& frame);

/// Draws an image of RGBA (straight alpha, row 0 lowest) pixel by pixel over the unclipped part of a frame,
/// or keeps it for the export. Changes the painter's pen.
void drawPixels(vtkContext2D* painter, PixelFrame const& frame, vtkImageData* image);

} // namespace runsieve
