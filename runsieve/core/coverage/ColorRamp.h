#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace runsieve {

/// sRGB, 0 to 255 each.
using Color = std::array<std::uint8_t, 3>;

/// Colours of one hue from light to dark, in even steps of perceived lightness.
///
/// Made in OKLab (B. Ottosson, A perceptual color space for image processing, 2020): lightness falls evenly,
/// the hue is that of the given colour, and chroma is what that colour has, less where sRGB has no such
/// colour. A grey gives greys.
class RUNSIEVE_CORE_EXPORT ColorRamp
{
public:
  static constexpr std::size_t steps = 256;

  /// \param onDark from dark to light, for a dark ground
  explicit ColorRamp(Color const& color, bool onDark = false);

  /// \param position 0, near the ground, to 1, far from it; the nearest for others and NaN.
  [[nodiscard]] Color at(double position) const;

private:
  std::array<Color, steps> colors;
};

} // namespace runsieve
