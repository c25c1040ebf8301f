#pragma once

#include <runsieve/core/coverage/ColorRamp.h>
#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

class RunCoverage;

/// An image of layers of counts whose lines lie over one another in no order that means something.
///
/// A pixel has the mean of the colours of the lines that cover it, weighted by their opacities, and as much
/// opacity as if all were drawn one over another. For lines of one opacity that is what drawing them in
/// random order gives on average.
class RUNSIEVE_CORE_EXPORT CoverageMix
{
public:
  /// An image of nothing. \param width in pixels, 1 or more, \param height likewise.
  CoverageMix(int width, int height);

  /// Adds lines. \param opacity of one of them, 0 to 1.
  /// \throws std::invalid_argument if the size is not that of the image.
  void add(RunCoverage const& coverage, Color const& color, double opacity);

  /// Red, green, blue, alpha, one byte each, row by row from the bottom; 4 * width * height bytes. Alpha is
  /// straight: colours are not multiplied by it. Pixels without lines are 0.
  void store(std::uint8_t* bytes) const;

private:
  void addRow(std::size_t row, std::vector<float> const& lines, std::vector<float> const& opacities,
              Color const& color, float weight);

  std::size_t width;
  std::size_t height;
  std::vector<float> through; ///< part of the background that shows
  std::vector<float> weights; ///< of the lines that cover a pixel, their sum
  std::vector<float> red;     ///< sums of weighted colours
  std::vector<float> green;
  std::vector<float> blue;
};

} // namespace runsieve
