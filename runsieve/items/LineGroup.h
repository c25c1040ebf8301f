#pragma once

#include <runsieve/core/coverage/ColorRamp.h>
#include <runsieve/items/MovableImage.h>
#include <runsieve/items/PixelPainter.h>

#include <vtkSmartPointer.h>
#include <vtkType.h>

#include <cstddef>
#include <cstdint>
#include <memory>
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
/// The image is kept as long as its lines, their pens and the place of the chart stay. Frames that may show
/// moved images (MovedImages) show it where the axes have moved it.
class LineGroup : public MovableImage
{
public:
  LineGroup();
  ~LineGroup() override;

  /// A line that stands in the group's chart; it must leave before it dies.
  void join(ColumnLine& line);
  void leave(ColumnLine& line);

  /// What a line has to call when it is painted. \return false if it has to paint itself
  bool paint(vtkContext2D* painter, ColumnLine& line);

  bool countOn(Clock::time_point end) override;

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

    [[nodiscard]] bool looksLike(Source const& o) const ///< but for the frame
    {
      return width == o.width && pens == o.pens && parts == o.parts;
    }
    bool operator==(Source const& o) const { return frame == o.frame && looksLike(o); }
  };

  enum class Progress
  {
    more,
    done,
    failed ///< too many lines, or one that has changed
  };

  struct Counting;

  void beginFrame(vtkContext2D* painter, ColumnLine& first);
  [[nodiscard]] Source alike(ColumnLine& first, PixelFrame const& frame) const;
  [[nodiscard]] bool mayMove(Source const& wanted) const;
  void move(Source const& wanted);
  void showCounted(Source wanted);
  void begin(Source const& wanted);
  [[nodiscard]] Progress goOn(Clock::time_point end);

  std::vector<ColumnLine*> lines;
  std::uint64_t frameNumber = 1;
  bool isDrawn = false; ///< in the present frame
  Source source;        ///< of the image
  vtkSmartPointer<vtkImageData> image;
  vtkSmartPointer<vtkImageData> shown; ///< in the present frame, the image or a moved one
  PixelFrame shownFrame{};
  Source moved; ///< what the moved one stands for
  std::unique_ptr<Counting> counting;
};

} // namespace runsieve
