#pragma once

#include <runsieve/items/ColorRamp.h>
#include <runsieve/items/DensityScale.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

class RunCoverage;

/// An image of one or two layers of counts, the second over the first.
class CoverageImage
{
public:
  /// How counts become colours.
  enum class Shades
  {
    /// The colour, with opacity 1 - (1 - a)^count: as if the lines were drawn one over another.
    opacity,
    /// Opaque colours of the hue, light for few runs and dark for many, on a logarithmic scale from the
    /// smallest to the largest count of the layer. Pixels that less than one run covers are as transparent.
    logarithmic,
    /// Likewise, with each colour for as many pixels.
    equalArea
  };

  struct Look
  {
    Color color{};
    double opacity = 1; ///< of one run, 0 to 1; for Shades::opacity only
    Shades shades = Shades::opacity;
  };

  struct Layer
  {
    RunCoverage const* coverage = nullptr; ///< belongs to the caller
    Look look;
  };

  /// Makes the image anew.
  /// \throws std::invalid_argument if there are not one or two layers, one has no counts, or their sizes
  /// differ.
  void resolve(std::vector<Layer> const& layers);

  [[nodiscard]] int width() const { return columns; }
  [[nodiscard]] int height() const { return rows; }
  /// Red, green, blue, alpha, one byte each, row by row from the bottom. Alpha is straight: colours are not
  /// multiplied by it. Pixels without runs are 0.
  [[nodiscard]] std::vector<std::uint8_t> const& pixels() const { return bytes; }
  /// What a scale bar needs; that of an empty picture for a layer of Shades::opacity or one that is not
  /// there.
  [[nodiscard]] DensityScale scale(std::size_t layer) const;

private:
  int columns = 0;
  int rows = 0;
  std::vector<std::uint8_t> bytes;
  std::vector<DensityScale> scales;
  std::array<std::vector<std::uint32_t>, 2> means; ///< counts of all pixels, of each layer that needs them
};

} // namespace runsieve
