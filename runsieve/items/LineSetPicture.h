#pragma once

#include <runsieve/core/coverage/CoverageImage.h>
#include <runsieve/core/coverage/SlicedCoverage.h>
#include <runsieve/core/parallel/BlockRunner.h>
#include <runsieve/items/DensityBars.h>
#include <runsieve/items/MovableImage.h>
#include <runsieve/items/PixelPainter.h>

#include <vtkSmartPointer.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

class vtkContext2D;
class vtkImageData;
class vtkPoints2D;

namespace runsieve {

/// The lines of many runs as one image, made by counting the runs in each pixel.
///
/// What was counted is kept: another selection adds and takes away the runs that changed, another colour
/// makes the image anew, and a repaint without change copies it. One line set may hand its picture to the
/// next one, which shows the same runs after a redraw.
///
/// On other axes all is counted anew. A frame that may show moved images (MovedImages) shows the last image
/// where the axes have moved it, and counting goes on between frames, in slices.
class LineSetPicture : public MovableImage
{
public:
  /// Colour, opacity of one coat and width of lines.
  struct Pen
  {
    Color color{};
    double opacity = 1.0;
    double width = 1.0; ///< pixels

    bool operator==(Pen const& o) const
    {
      return color == o.color && opacity == o.opacity && width == o.width;
    }
  };

  /// What to draw. Arrays belong to the caller.
  struct Lines
  {
    vtkPoints2D* points = nullptr; ///< of floats
    std::size_t stride = 1;        ///< points of a run
    std::uint64_t version = 0;     ///< the same for points that differ by their shift only; 0: not known
    double xShift = 0.0;           ///< of the points against their data
    double yShift = 0.0;
    bool all = true;            ///< all runs below, once each
    std::size_t extra = 0;      ///< first point of a line of its own, drawn with all runs
    std::size_t extraCount = 0; ///< its points
    std::vector<std::uint8_t> const* coats = nullptr; ///< on top, of each run; null: none
    Pen allPen;
    Pen coatsPen;
    CoverageImage::Shades shades = CoverageImage::Shades::opacity;
  };

  LineSetPicture();
  ~LineSetPicture() override;

  /// Lends threads to counting; none, the default: in the calling thread. No effect on the picture.
  void setRunner(BlockRunner threads) { runner = std::move(threads); }

  /// Draws lines. False, and nothing is drawn, if the painter makes no pixels or has no place for an image,
  /// or if there are more runs than can be counted.
  bool paint(vtkContext2D* painter, Lines const& lines);

  /// What the density colours of the last image mean, of all runs and of those on top. An image that was
  /// moved has those it was made with.
  [[nodiscard]] std::vector<DensityBar> bars() const;

  bool countOn(Clock::time_point end) override;

private:
  /// What an image shows. Highlights are as they are counted: coats that are the same on all runs are one
  /// coat of their opacity together, which has smoother edges.
  struct Target
  {
    PixelFrame frame{};
    PixelFrame dataFrame{};    ///< for data without their shift
    std::uint64_t content = 0; ///< of the points
    std::uint64_t version = 0;
    std::size_t runs = 0;
    std::size_t stride = 0;
    std::size_t extra = 0;
    std::size_t extraCount = 0;
    bool all = true;
    std::vector<std::uint8_t> coats; ///< none if no run is highlighted
    Pen allPen;
    Pen coatsPen;
    CoverageImage::Shades shades = CoverageImage::Shades::opacity;

    [[nodiscard]] bool isOfRuns(Target const& o) const;  ///< but for a shift
    [[nodiscard]] bool looksLike(Target const& o) const; ///< but for frame and shift
    [[nodiscard]] bool isInPlaceOf(Target const& o) const { return content == o.content && frame == o.frame; }
  };

  /// What the counts of a layer were made from, but for the coats.
  struct Source
  {
    PixelFrame frame{};
    std::uint64_t content = 0;
    std::size_t stride = 0;
    std::size_t extra = 0;
    std::size_t extraCount = 0;
    double width = 0.0;

    bool operator==(Source const& other) const;
  };

  struct Layer
  {
    std::optional<SlicedCoverage> counts; ///< none: not drawn
    Source source;
  };

  /// An image, and what it shows.
  struct Shown
  {
    vtkSmartPointer<vtkImageData> image; ///< null: nothing
    Target target;
    bool isExact = false; ///< counted for its frame
  };

  Target targetOf(Lines const& lines, PixelFrame const& frame);
  static void applyCoats(Target& target, std::vector<std::uint8_t> const& coats);
  static Source sourceOfAll(Target const& target);
  static Source sourceOfHighlights(Target const& target);
  std::uint64_t contentOf(vtkPoints2D* points);

  bool begin(Target const& target, float const* points);
  bool count(Target const& target, float const* points);
  SlicedCoverage::Progress countSlice();
  void dropMovedPixels();
  void dropCounts();
  [[nodiscard]] bool isCounted(Target const& target) const;
  [[nodiscard]] std::vector<CoverageImage::Layer> layersOf(Target const& target, bool isPart) const;
  void resolve(Target const& target);

  [[nodiscard]] bool isKept(Target const& target) const;
  [[nodiscard]] bool mayMove(Target const& target, bool isCounting) const;
  void move(Target const& target, vtkPoints2D* points);
  void compose(Target const& target);

  BlockRunner runner;
  Layer allRuns;
  Layer highlighted;
  std::vector<std::uint8_t> onceEach; ///< coats of all runs

  Shown kept;                             ///< what moved images are made of
  std::vector<CoverageImage::Look> looks; ///< of the layers of the last image that was counted
  CoverageImage image;                    ///< the scales of these layers

  Shown moved;
  vtkSmartPointer<vtkPoints2D> pointsOfMoved; ///< of its lines
  std::uint64_t timeOfMoved = 0;              ///< of these points

  vtkPoints2D const* hashed = nullptr; ///< whose content is known
  std::uint64_t hashedTime = 0;
  std::uint64_t content = 0;
};

} // namespace runsieve
