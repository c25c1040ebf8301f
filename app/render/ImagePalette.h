#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace runsieve::app {

/// An image of few colours, so that a byte tells that of a pixel.
struct ImagePalette
{
  static constexpr std::size_t mostColors = 256;

  std::vector<std::array<std::uint8_t, 3>> colors; ///< red, green, blue; at most mostColors
  std::vector<std::uint8_t> pixels;                ///< the number of a colour each, in the order of the image
};

/// Finds few colours for an image.
///
/// All of them if they are few enough. Otherwise the mean ones of boxes of colours, of which the widest is
/// halved again and again (as in median cut, Heckbert, SIGGRAPH 1982, but by width, so that rare colours stay
/// as close as others).
/// \param pixels red, green and blue of each in turn
/// \param mostError by which a channel of a pixel may differ, of 255
/// \return nothing if so few colours would differ by more
std::optional<ImagePalette> paletteOf(std::vector<std::uint8_t> const& pixels, int mostError);

} // namespace runsieve::app
