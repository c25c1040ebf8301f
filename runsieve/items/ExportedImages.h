#pragma once

#include <runsieve/runsieve_export.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// While an object of this class lives, an export of shapes (vtkGL2PSExporter) gets images in place of many
/// lines of runs: of 100,000 runs their shapes would take hundreds of megabytes, and nobody could tell the
/// lines apart.
///
/// The file is meant to have opaque lines: what a highlight covers is left out.
///
/// Where an image belongs among the shapes the export finds a mark: a short line in a colour that nothing
/// else has. Who writes the file puts the images in place of the marks. In the GUI thread, one object at a
/// time.
class RUNSIEVE_EXPORT ExportedImages
{
public:
  struct Image
  {
    double left; ///< units of the page, from its lower left corner, as the others
    double bottom;
    double width;
    double height;
    int columns; ///< pixels
    int rows;
    /// Red, green, blue, alpha, one byte each, row by row from the bottom. Alpha is straight.
    std::vector<std::uint8_t> pixels;
  };

  /// \param scale pixels of images for one unit of the page, which is a pixel of the window; above 0
  /// \param mostLines of a set that stay shapes; sets in density colours never do, since shapes have no shades
  ExportedImages(double scale, std::size_t mostLines);
  ~ExportedImages();
  ExportedImages(ExportedImages const&) = delete;
  ExportedImages& operator=(ExportedImages const&) = delete;

  /// The object that lives; null without one.
  static ExportedImages* present();

  [[nodiscard]] double scale() const { return pixelsPerUnit; }
  [[nodiscard]] std::size_t mostLines() const { return most; }

  /// In the order in which they are drawn.
  [[nodiscard]] std::vector<Image> const& images() const { return taken; }
  /// The colour of the mark of an image: red, green, blue. \param image below mostImages
  [[nodiscard]] static std::array<std::uint8_t, 3> markOf(std::size_t image);
  static constexpr std::size_t mostImages = 100;

  /// Takes an image, for which the caller draws the mark. \return its number
  std::size_t take(Image image);

private:
  double pixelsPerUnit;
  std::size_t most;
  std::vector<Image> taken;
};

} // namespace runsieve
