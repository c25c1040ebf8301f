#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstdint>

namespace runsieve {

/// Where the pixels of one image lie in another, in each direction: other = pixel * scale + offset. Pixel k
/// reaches from k to k + 1 in both.
struct PixelMove
{
  double xScale = 1;
  double xOffset = 0;
  double yScale = 1;
  double yOffset = 0;
};

/// Copies an image into another one, moved and stretched: each pixel is the one of the source in which its
/// centre lies. Pixels whose centre lies outside of the source stay as they are.
/// \param source sourceWidth * sourceHeight pixels of 4 bytes, row by row
/// \param target likewise, written; not the source
/// \param move from pixels of the target to those of the source. Nothing is copied if one of its numbers is
/// not finite.
RUNSIEVE_CORE_EXPORT void movePixels(std::uint8_t const* source, int sourceWidth, int sourceHeight,
                                     std::uint8_t* target, int targetWidth, int targetHeight,
                                     PixelMove const& move);

} // namespace runsieve
