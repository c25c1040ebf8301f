#pragma once

#include <runsieve/core/coverage/CoverageImage.h>
#include <runsieve/core/coverage/RunCoverage.h>
#include <runsieve/core/parallel/BlockRunner.h>
#include <runsieve/items/DensityBars.h>
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
class LineSetPicture
{
public:
  /// Colour, opacity of one coat and width of lines.
  struct Pen
  {
    Color color{};
    double opacity = 1.0;
    double width = 1.0; ///< pixels
  };

  /// What to draw. Arrays belong to the caller.
  struct Lines
  {
    vtkPoints2D* points = nullptr; ///< of floats
    std::size_t stride = 1;        ///< points of a run
    bool all = true;               ///< all runs below, once each
    std::size_t extra = 0;         ///< first point of a line of its own, drawn with all runs
    std::size_t extraCount = 0;    ///< its points
    std::vector<std::uint8_t> const* coats = nullptr; ///< on top, of each run; null: none
    Pen allPen;
    Pen coatsPen;
    CoverageImage::Shades shades = CoverageImage::Shades::opacity;
  };

  /// Lends threads to counting; none, the default: in the calling thread. No effect on the picture.
  void setRunner(BlockRunner threads) { runner = std::move(threads); }

  /// Draws lines. False, and nothing is drawn, if the painter makes no pixels or has no place for an image,
  /// or if there are more runs than can be counted.
  bool paint(vtkContext2D* painter, Lines const& lines);

  /// What the density colours of the last image mean, of all runs and of those on top.
  [[nodiscard]] std::vector<DensityBar> bars() const;

private:
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
    std::optional<RunCoverage> counts; ///< none: not drawn
    Source source;
    std::vector<std::uint8_t> coats; ///< of the upper layer

    [[nodiscard]] bool isOf(Source const& wanted) const { return counts && source == wanted; }
    RunCoverage& begin(Source const& wanted, int subRows);
  };

  /// Highlights as they are counted. Coats that are the same on all runs are one coat of their opacity
  /// together, which has smoother edges.
  struct Coats
  {
    std::vector<std::uint8_t> ofRuns; ///< none if no run is highlighted
    double opacity = 1.0;             ///< of one coat
  };

  static Coats coatsOf(Lines const& lines);
  std::uint64_t contentOf(vtkPoints2D* points);
  bool countAll(Lines const& lines, PixelFrame const& frame);
  bool countCoats(Lines const& lines, Coats const& coats, PixelFrame const& frame);
  void resolve(Lines const& lines, double opacityOfCoat, PixelFrame const& frame);

  BlockRunner runner;
  Layer allRuns;
  Layer highlighted;
  bool countsChanged = false;             ///< since the image was made
  std::vector<CoverageImage::Look> looks; ///< of the layers of the image
  CoverageImage image;
  vtkSmartPointer<vtkImageData> shown; ///< the bytes of the image, as VTK draws them

  vtkPoints2D const* hashed = nullptr; ///< whose content is known
  std::uint64_t hashedTime = 0;
  std::uint64_t content = 0;
};

} // namespace runsieve
