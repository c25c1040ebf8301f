#pragma once

#include <runsieve/core/coverage/ColorRamp.h>
#include <runsieve/core/coverage/DensityScale.h>
#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

class RunCoverage;

/// An image of one or two layers of counts, the second over the first.
class RUNSIEVE_CORE_EXPORT CoverageImage
{
public:
  /// How counts become colours.
  enum class Shades
  {
    /// The colour, with opacity 1 - (1 - a)^count: as if the lines were drawn one over another.
    opacity,
    /// Opaque colours of the hue, light for few runs and dark for many (on dark the other way round), on a logarithmic scale from the
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
    bool onDark = false; ///< whether what is behind is dark: then few runs are dark and many are light
  };

  struct Layer
  {
    RunCoverage const* coverage = nullptr; ///< belongs to the caller
    Look look;
  };

  /// Makes the image anew.
  /// \param pixels 4 bytes for each pixel of the layers, written: red, green, blue, alpha, row by row from
  /// the bottom. Alpha is straight: colours are not multiplied by it. Pixels without runs are 0. \throws
  /// std::invalid_argument if there are not one or two layers, one has no counts, or their sizes differ.
  void resolve(std::vector<Layer> const& layers, std::uint8_t* pixels);

  /// What a scale bar needs; that of an empty picture for a layer of Shades::opacity or one that is not
  /// there.
  [[nodiscard]] DensityScale scale(std::size_t layer) const;

private:
  std::vector<DensityScale> scales;
};

} // namespace runsieve
