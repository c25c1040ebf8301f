#include "app/explorer/parameters/RunDots.h"

#include <algorithm>
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

/// Opacity by the number of dots on one another, by its logarithm up to the largest: many runs show where
/// they are dense, and never become a block.
std::vector<float> opacities(std::uint32_t largest)
{
  constexpr double most = 0.95;
  constexpr double faintest = 0.24;
  constexpr double ofSingle = 0.72; // where hardly any lie on one another
  std::vector<float> table = {0.0F};
  const double lowest = std::max(faintest, ofSingle - 0.12 * std::log2(std::max<double>(largest, 1.0)));
  for (std::uint32_t count = 1; count <= largest; ++count) {
    const double share = largest > 1 ? std::log(count) / std::log(largest) : 0.0;
    table.push_back(static_cast<float>(lowest + (most - lowest) * share));
  }
  return table;
}

} // namespace

RunDots::RunDots(QSize const& size, double ofRatio)
    : width(std::max(size.width(), 0)), height(std::max(size.height(), 0)), ratio(ofRatio)
{}

/// Empties the picture if the dots are of another size now, by their number.
void RunDots::begin(std::size_t runs, std::size_t passingRuns, std::size_t otherRuns)
{
  const double radius = ratio * radiusOf(otherRuns);
  const double passingRadius = ratio * (radiusOf(passingRuns) + 0.2);
  if (roles.size() == runs && others.radius == radius && passing.radius == passingRadius) return;
  const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  others = {radius, dotOf(radius), std::vector<std::uint32_t>(pixels)};
  passing = {passingRadius, dotOf(passingRadius), std::vector<std::uint32_t>(pixels)};
  roles.assign(runs, Absent);
}

void RunDots::add(DotPlaces const& places, std::size_t run, Role role, int times)
{
  if (role == Absent || !places.across.isOn(run) || !places.up.isOn(run)) return;
  auto const pixelOf = [](double from, double to, std::size_t column, int length) {
    constexpr double columns = RunColumns::columns;
    return static_cast<int>((from + (to - from) * (static_cast<double>(column) + 0.5) / columns) * length);
  };
  const int x = pixelOf(places.acrossFrom, places.acrossTo, places.across.of(run), width);
  const int y = height - 1 - pixelOf(places.upFrom, places.upTo, places.up.of(run), height);
  Layer& layer = role == Passing ? passing : others;
  for (QPoint const& part : layer.dot) {
    const int px = x + part.x();
    const int py = y + part.y();
    if (px < 0 || py < 0 || px >= width || py >= height) continue;
    layer.counts[static_cast<std::size_t>(py) * static_cast<std::size_t>(width) +
                 static_cast<std::size_t>(px)] += static_cast<std::uint32_t>(times);
  }
}

QImage RunDots::image(DotPlaces const& places, std::vector<std::uint8_t> const& through,
                      std::vector<std::uint8_t> const& eligible, Theme const& theme)
{
  if (width == 0 || height == 0) return {};
  std::size_t passingRuns = 0;
  std::size_t otherRuns = 0;
  for (std::size_t run = 0; run < eligible.size(); ++run)
    (through[run] != 0 ? passingRuns : otherRuns) += eligible[run];
  begin(eligible.size(), passingRuns, otherRuns);
  for (std::size_t run = 0; run < eligible.size(); ++run) {
    const Role role = eligible[run] == 0 ? Absent : through[run] != 0 ? Passing : Other;
    if (role == roles[run]) continue;
    add(places, run, roles[run], -1);
    add(places, run, role, 1);
    roles[run] = role;
  }
  return mixed(theme);
}

QImage RunDots::mixed(Theme const& theme) const
{
  const std::vector<float> under = opacities(*std::max_element(others.counts.begin(), others.counts.end()));
  const std::vector<float> over = opacities(*std::max_element(passing.counts.begin(), passing.counts.end()));
  const QRgb all = theme.all.rgb();
  const QRgb passed = theme.passing.rgb();
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  std::size_t pixel = 0;
  for (int y = 0; y < height; ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < width; ++x, ++pixel) {
      if (passing.counts[pixel] == 0 && others.counts[pixel] == 0) continue;
      const float b = over[passing.counts[pixel]];
      const float a = (1.0F - b) * under[others.counts[pixel]];
      auto const mix = [&](int ofAll, int ofPassing) {
        return static_cast<int>(a * static_cast<float>(ofAll) + b * static_cast<float>(ofPassing));
      };
      line[x] = qRgba(mix(qRed(all), qRed(passed)), mix(qGreen(all), qGreen(passed)),
                      mix(qBlue(all), qBlue(passed)), static_cast<int>(255.0F * (a + b)));
    }
  }
  return image;
}

} // namespace runsieve::app
