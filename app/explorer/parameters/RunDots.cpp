#include "app/explorer/parameters/RunDots.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace runsieve::app {

namespace {

/// Pixels that a dot covers, from its middle.
std::vector<QPoint> dotOf(double radius)
{
  std::vector<QPoint> dot;
  const int reach = static_cast<int>(std::ceil(radius));
  for (int y = -reach; y <= reach; ++y)
    for (int x = -reach; x <= reach; ++x)
      if (x * x + y * y <= radius * radius) dot.emplace_back(x, y);
  return dot;
}

/// Smaller the more there are, in pixels.
double radiusOf(std::size_t runs)
{
  if (runs <= 400) return 2.0;
  if (runs <= 4000) return 1.5;
  return 1.0;
}

class DotLayer
{
public:
  explicit DotLayer(QSize const& size)
      : width(size.width()), height(size.height()),
        counts(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
  {}

  void add(int x, int y, std::vector<QPoint> const& dot)
  {
    for (QPoint const& part : dot) {
      const int px = x + part.x();
      const int py = y + part.y();
      if (px < 0 || py < 0 || px >= width || py >= height) continue;
      std::uint16_t& count = counts[static_cast<std::size_t>(py) * static_cast<std::size_t>(width) +
                                    static_cast<std::size_t>(px)];
      if (count < UINT16_MAX) ++count;
    }
  }

  [[nodiscard]] std::uint16_t largest() const { return *std::max_element(counts.begin(), counts.end()); }
  [[nodiscard]] std::uint16_t at(std::size_t pixel) const { return counts[pixel]; }

private:
  int width;
  int height;
  std::vector<std::uint16_t> counts;
};

/// Opacity by the number of dots on one another, by its logarithm up to the largest: many runs show where
/// they are dense, and never become a block.
std::vector<float> opacities(std::uint16_t largest)
{
  constexpr double most = 0.95;
  constexpr double faintest = 0.24;
  constexpr double ofSingle = 0.72; // where hardly any lie on one another
  std::vector<float> table = {0.0F};
  const double lowest = std::max(faintest, ofSingle - 0.12 * std::log2(std::max<double>(largest, 1.0)));
  for (int count = 1; count <= largest; ++count) {
    const double share = largest > 1 ? std::log(count) / std::log(largest) : 0.0;
    table.push_back(static_cast<float>(lowest + (most - lowest) * share));
  }
  return table;
}

} // namespace

QImage dotsImage(DotPlaces const& places, std::vector<std::uint8_t> const& passing,
                 std::vector<std::uint8_t> const& eligible, QSize const& size, double ratio,
                 Theme const& theme)
{
  if (size.isEmpty()) return {};
  std::size_t passingRuns = 0;
  std::size_t otherRuns = 0;
  for (std::size_t run = 0; run < eligible.size(); ++run)
    (passing[run] != 0 ? passingRuns : otherRuns) += eligible[run];
  const std::array<double, 2> radius = {ratio * radiusOf(otherRuns), ratio * (radiusOf(passingRuns) + 0.2)};
  const std::array<std::vector<QPoint>, 2> dot = {dotOf(radius[0]), dotOf(radius[1])};
  std::array<DotLayer, 2> layers = {DotLayer(size), DotLayer(size)};
  constexpr double columns = RunColumns::columns;
  const double xScale = (places.acrossTo - places.acrossFrom) * size.width() / columns;
  const double yScale = (places.upTo - places.upFrom) * size.height() / columns;
  for (std::size_t run = 0; run < eligible.size(); ++run) {
    if (eligible[run] == 0 || !places.across.isOn(run) || !places.up.isOn(run)) continue;
    const double x =
        places.acrossFrom * size.width() + (static_cast<double>(places.across.of(run)) + 0.5) * xScale;
    const double y = places.upFrom * size.height() + (static_cast<double>(places.up.of(run)) + 0.5) * yScale;
    const std::size_t layer = passing[run] != 0 ? 1 : 0;
    layers[layer].add(static_cast<int>(x), size.height() - 1 - static_cast<int>(y), dot[layer]);
  }
  const std::vector<float> under = opacities(layers[0].largest());
  const std::vector<float> over = opacities(layers[1].largest());
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < size.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < size.width(); ++x) {
      const std::size_t pixel =
          static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width()) + static_cast<std::size_t>(x);
      const float b = over[layers[1].at(pixel)];
      const float a = (1.0F - b) * under[layers[0].at(pixel)];
      auto const mix = [&](int all, int passed) {
        return static_cast<int>(a * static_cast<float>(all) + b * static_cast<float>(passed));
      };
      line[x] =
          qRgba(mix(theme.all.red(), theme.passing.red()), mix(theme.all.green(), theme.passing.green()),
                mix(theme.all.blue(), theme.passing.blue()), static_cast<int>(255.0F * (a + b)));
    }
  }
  return image;
}

} // namespace runsieve::app
