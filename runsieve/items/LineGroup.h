#pragma once

#include <runsieve/core/coverage/ColorRamp.h>
#include <runsieve/items/PixelPainter.h>

#include <vtkSmartPointer.h>
#include <vtkType.h>

#include <cstddef>
#include <cstdint>
#include <vector>

class vtkContext2D;
class vtkImageData;

namespace runsieve {

class ColumnLine;

/// Thousands of lines of one chart, each a plot of its own, that painters of pixels get as one image, made by
/// counting the lines of each colour in each pixel.
///
/// The first line that a frame paints paints all that look alike: solid polylines of the width that most
/// visible lines have, without marks. Where several colours lie over one another their order tells nothing,
/// and the image has their mean (CoverageMix). Other lines paint themselves, and all of them do if fewer than
/// 50 look alike, or if they have more than 16 colours.
///
/// The image is kept as long as its lines, their pens and the place of the chart stay.
class LineGroup
{
public:
  /// A line that stands in the group's chart; it must leave before it dies.
  void join(ColumnLine& line);
  void leave(ColumnLine& line);

  /// What a line has to call when it is painted. \return false if it has to paint itself
  bool paint(vtkContext2D* painter, ColumnLine& line);

private:
  /// What the image shows of a line.
  struct Part
  {
    ColumnLine* line;
    vtkMTimeType time; ///< of its points
    std::size_t color; ///< number of its pen

    bool operator==(Part const& o) const { return line == o.line && time == o.time && color == o.color; }
  };

  struct Pen
  {
    Color color;
    double opacity;

    bool operator==(Pen const& o) const { return color == o.color && opacity == o.opacity; }
  };

  struct Source
  {
    std::vector<Part> parts;
    std::vector<Pen> pens;
    float width = 0.0F;
    PixelFrame frame{};

    bool operator==(Source const& o) const
    {
      return width == o.width && frame == o.frame && pens == o.pens && parts == o.parts;
    }
  };

  void beginFrame(vtkContext2D* painter, ColumnLine& first);
  [[nodiscard]] Source alike(ColumnLine& first, PixelFrame const& frame) const;
  [[nodiscard]] bool count();

  std::vector<ColumnLine*> lines;
  std::uint64_t frameNumber = 1;
  bool isDrawn = false; ///< in the present frame
  Source source;        ///< of the image
  vtkSmartPointer<vtkImageData> image;
};

} // namespace runsieve
