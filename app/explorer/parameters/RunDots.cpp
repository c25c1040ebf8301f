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

double opacityOf(std::size_t runs, double coverage)
{
  // Dots that cover the plot a few times over all together leave its structure visible.
  return std::clamp(runs == 0 ? 1.0 : 0.9 / std::max(coverage, 0.9), 0.06, 0.85);
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

  [[nodiscard]] std::uint16_t at(std::size_t pixel) const { return counts[pixel]; }

private:
  int width;
  int height;
  std::vector<std::uint16_t> counts;
};

/// Alpha of up to 255 dots on one another; more are as these.
std::array<float, 256> opacities(double one)
{
  std::array<float, 256> table{};
  for (std::size_t i = 0; i < table.size(); ++i)
    table[i] = static_cast<float>(1.0 - std::pow(1.0 - one, static_cast<double>(i)));
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
  const double pixels = static_cast<double>(size.width()) * size.height();
  auto const table = [&](std::size_t runs, std::size_t layer) {
    return opacities(opacityOf(runs, static_cast<double>(runs * dot[layer].size()) / pixels * 3.0));
  };
  const std::array<float, 256> under = table(otherRuns, 0);
  const std::array<float, 256> over = table(passingRuns, 1);
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < size.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < size.width(); ++x) {
      const std::size_t pixel =
          static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width()) + static_cast<std::size_t>(x);
      const float b = over[std::min<std::size_t>(layers[1].at(pixel), 255)];
      const float a = (1.0F - b) * under[std::min<std::size_t>(layers[0].at(pixel), 255)];
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
