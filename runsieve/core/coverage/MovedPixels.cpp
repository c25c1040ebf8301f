#include <runsieve/core/coverage/MovedPixels.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

namespace runsieve {

namespace {

constexpr std::size_t pixelBytes = 4;

/// In which pixel of the source, in one direction, the centre of each of the target lies; -1 for none.
std::vector<int> sourcesOf(int targetSize, int sourceSize, double scale, double offset)
{
  std::vector<int> sources(static_cast<std::size_t>(targetSize), -1);
  for (int i = 0; i < targetSize; ++i) {
    const double place = std::floor((i + 0.5) * scale + offset);
    if (place >= 0 && place < sourceSize) sources[static_cast<std::size_t>(i)] = static_cast<int>(place);
  }
  return sources;
}

/// Those that have a source lie side by side.
struct Span
{
  std::size_t first = 0;
  std::size_t count = 0;
};

Span coveredOf(std::vector<int> const& sources)
{
  Span span;
  while (span.first < sources.size() && sources[span.first] < 0) ++span.first;
  while (span.first + span.count < sources.size() && sources[span.first + span.count] >= 0) ++span.count;
  return span;
}

} // namespace

void movePixels(std::uint8_t const* source, int sourceWidth, int sourceHeight, std::uint8_t* target,
                int targetWidth, int targetHeight, PixelMove const& move)
{
  const std::vector<int> columns = sourcesOf(targetWidth, sourceWidth, move.xScale, move.xOffset);
  const std::vector<int> rows = sourcesOf(targetHeight, sourceHeight, move.yScale, move.yOffset);
  const Span span = coveredOf(columns);
  if (span.count == 0) return;
  int const* const covered = columns.data() + span.first;
  const bool isShift = covered[span.count - 1] - covered[0] == static_cast<int>(span.count) - 1;
  std::uint8_t const* former = nullptr; // row of the target, and
  int formerRow = -1;                   // the row that it is of
  for (std::size_t j = 0; j < rows.size(); ++j) {
    if (rows[j] < 0) continue;
    std::uint8_t* const to = target + pixelBytes * (j * static_cast<std::size_t>(targetWidth) + span.first);
    std::uint8_t const* const from =
        source + pixelBytes * static_cast<std::size_t>(rows[j]) * static_cast<std::size_t>(sourceWidth);
    if (rows[j] == formerRow)
      std::memcpy(to, former, pixelBytes * span.count);
    else if (isShift && covered[span.count - 1] > covered[0])
      std::memcpy(to, from + pixelBytes * static_cast<std::size_t>(covered[0]), pixelBytes * span.count);
    else
      for (std::size_t i = 0; i < span.count; ++i)
        std::memcpy(to + pixelBytes * i, from + pixelBytes * static_cast<std::size_t>(covered[i]),
                    pixelBytes);
    former = to;
    formerRow = rows[j];
  }
}

} // namespace runsieve
