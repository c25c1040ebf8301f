#include "app/render/ImagePalette.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <queue>
#include <unordered_map>

namespace runsieve::app {

namespace {

using Color = std::array<std::uint8_t, 3>;

/// A colour of the image.
struct Found
{
  Color color;
  std::size_t pixels = 0;
  std::uint8_t number = 0; ///< in the palette
};

/// All colours in the order in which they come, and which one each pixel has.
struct ImageColors
{
  std::vector<Found> found;
  std::vector<std::uint32_t> places; ///< of each pixel, in `found`
};

ImageColors colorsOf(std::vector<std::uint8_t> const& pixels)
{
  ImageColors colors;
  colors.places.reserve(pixels.size() / 3);
  std::unordered_map<std::uint32_t, std::uint32_t> places;
  std::uint32_t lastCode = UINT32_MAX; // of no colour
  std::uint32_t place = 0;
  for (std::size_t i = 0; i + 2 < pixels.size(); i += 3) {
    const Color color = {pixels[i], pixels[i + 1], pixels[i + 2]};
    const std::uint32_t code = color[0] * 65536U + color[1] * 256U + color[2];
    if (code != lastCode) { // neighbours are often the same
      const auto entry = places.emplace(code, static_cast<std::uint32_t>(colors.found.size()));
      if (entry.second) colors.found.push_back({color});
      place = entry.first->second;
      lastCode = code;
    }
    ++colors.found[place].pixels;
    colors.places.push_back(place);
  }
  return colors;
}

using Colors = std::vector<Found*>;

/// Colours `first` to `end` - 1 of a list, and where they differ most.
struct Box
{
  Box(Colors const& colors, std::size_t itsFirst, std::size_t itsEnd) : first(itsFirst), end(itsEnd)
  {
    for (std::size_t candidate = 0; candidate < 3; ++candidate) {
      int low = 255;
      int high = 0;
      for (std::size_t i = first; i < end; ++i) {
        low = std::min<int>(low, colors[i]->color[candidate]);
        high = std::max<int>(high, colors[i]->color[candidate]);
      }
      if (high - low <= width && candidate > 0) continue;
      width = high - low;
      middle = (low + high) / 2;
      channel = candidate;
    }
  }

  std::size_t first;
  std::size_t end;
  std::size_t channel = 0; ///< the widest
  int width = 0;
  int middle = 0;

  friend bool operator<(Box const& a, Box const& b)
  {
    return a.width != b.width ? a.width < b.width : a.first > b.first;
  }
};

std::vector<Box> boxesOf(Colors& colors)
{
  std::priority_queue<Box> queue;
  queue.push(Box(colors, 0, colors.size()));
  while (queue.size() < ImagePalette::mostColors && queue.top().width > 0) {
    const Box box = queue.top();
    queue.pop();
    const auto isLow = [&](Found const* f) { return f->color[box.channel] <= box.middle; };
    const auto begin = colors.begin();
    const auto cut = std::partition(begin + static_cast<std::ptrdiff_t>(box.first),
                                    begin + static_cast<std::ptrdiff_t>(box.end), isLow);
    const auto middle = static_cast<std::size_t>(cut - begin);
    queue.push(Box(colors, box.first, middle));
    queue.push(Box(colors, middle, box.end));
  }
  std::vector<Box> boxes;
  for (; !queue.empty(); queue.pop()) boxes.push_back(queue.top());
  return boxes;
}

Color meanOf(Colors const& colors, Box const& box)
{
  Color mean = {};
  for (std::size_t channel = 0; channel < mean.size(); ++channel) {
    std::size_t sum = 0;
    std::size_t pixels = 0;
    for (std::size_t i = box.first; i < box.end; ++i) {
      sum += colors[i]->color[channel] * colors[i]->pixels;
      pixels += colors[i]->pixels;
    }
    mean[channel] = static_cast<std::uint8_t>((sum + pixels / 2) / pixels);
  }
  return mean;
}

int difference(Color const& a, Color const& b)
{
  int largest = 0;
  for (std::size_t i = 0; i < a.size(); ++i) largest = std::max(largest, std::abs(a[i] - b[i]));
  return largest;
}

} // namespace

std::optional<ImagePalette> paletteOf(std::vector<std::uint8_t> const& pixels, int mostError)
{
  ImagePalette palette;
  ImageColors image = colorsOf(pixels);
  if (image.found.empty()) return palette;
  Colors colors;
  for (Found& found : image.found) colors.push_back(&found);
  for (Box const& box : boxesOf(colors)) {
    const Color mean = meanOf(colors, box);
    for (std::size_t i = box.first; i < box.end; ++i) {
      if (difference(mean, colors[i]->color) > mostError) return std::nullopt;
      colors[i]->number = static_cast<std::uint8_t>(palette.colors.size());
    }
    palette.colors.push_back(mean);
  }
  palette.pixels.reserve(image.places.size());
  for (const std::uint32_t place : image.places) palette.pixels.push_back(image.found[place].number);
  return palette;
}

} // namespace runsieve::app
