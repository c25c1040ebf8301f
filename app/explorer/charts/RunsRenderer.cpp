#include "app/explorer/charts/RunsRenderer.h"

#include "app/explorer/charts/DrawnTimes.h"

#include <runsieve/core/coverage/CoverageLanes.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace runsieve::app {

namespace {

constexpr std::size_t runsAtOnce = 4096; ///< some MB of points, and some ms between questions to cancel

Color plain(QColor const& color)
{
  return {static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
          static_cast<std::uint8_t>(color.blue())};
}

/// The bytes of an image of counts, from the bottom row, as Qt draws them fastest.
QImage imageOf(std::vector<std::uint8_t> const& pixels, QSize const& size)
{
  QImage straight(size, QImage::Format_RGBA8888);
  const std::size_t row = 4 * static_cast<std::size_t>(size.width());
  for (int y = 0; y < size.height(); ++y)
    std::memcpy(straight.scanLine(y), pixels.data() + row * static_cast<std::size_t>(size.height() - 1 - y),
                row);
  return straight.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// The runs of a mask that another one lacks. \param without may be empty: none
std::vector<std::uint32_t> runsIn(std::vector<std::uint8_t> const& mask,
                                  std::vector<std::uint8_t> const& without)
{
  std::vector<std::uint32_t> runs;
  for (std::size_t run = 0; run < mask.size(); ++run)
    if (mask[run] != 0 && (without.empty() || without[run] == 0))
      runs.push_back(static_cast<std::uint32_t>(run));
  return runs;
}

} // namespace

double lineOpacity(std::size_t runs)
{
  constexpr double ofHundred = 0.55;
  return std::clamp(10.0 * ofHundred / std::sqrt(static_cast<double>(std::max<std::size_t>(runs, 1))), 0.055,
                    0.67);
}

bool RunsRenderer::sameFrame(RunsRequest const& request) const
{
  return frame.scan == request.scan && frame.output == request.output && frame.time == request.time &&
         frame.value == request.value && frame.size == request.size && frame.width == request.width &&
         frame.dark == request.dark;
}

void RunsRenderer::begin(RunsRequest const& request)
{
  frame = request;
  frame.layers.clear();
  layers.clear();
  columns.clear();
  for (double const time : drawnTimes(request.scan->times, request.time))
    columns.push_back(static_cast<float>(request.time.place(time) * request.size.width()));
}

void RunsRenderer::fillPoints(std::vector<std::uint32_t> const& runs, std::size_t first, std::size_t end)
{
  const std::size_t count = columns.size();
  const std::size_t times = frame.scan->times.size();
  points.resize(2 * count * (end - first));
  float* point = points.data();
  const double height = frame.size.height();
  const double scale = height / (frame.value.high() - frame.value.low());
  const double low = frame.value.low();
  for (std::size_t run = first; run < end; ++run) {
    double const* values = frame.scan->valuesOf(frame.output, runs[run]);
    for (std::size_t i = 0; i < count; ++i) {
      const double value = values[drawnValue(i, times)];
      *point++ = columns[i];
      const double y =
          frame.value.isLogarithmic() ? frame.value.place(value) * height : (value - low) * scale;
      *point++ = static_cast<float>(y);
    }
  }
}

bool RunsRenderer::draw(RunCoverage& counts, std::vector<std::uint32_t> const& runs, bool add,
                        std::function<bool()> const& cancelled)
{
  for (std::size_t first = 0; first < runs.size(); first += runsAtOnce) {
    if (cancelled()) return false;
    const std::size_t end = std::min(first + runsAtOnce, runs.size());
    fillPoints(runs, first, end);
    const RunBlock block{points.data(), columns.size(), end - first};
    if (!add)
      counts.remove(block);
    else
      CoverageLanes::add(counts, block, nullptr, runner);
  }
  return true;
}

bool RunsRenderer::bring(Layer& layer, std::vector<std::uint8_t> const& mask,
                         std::function<bool()> const& cancelled)
{
  const std::vector<std::uint32_t> come = runsIn(mask, layer.mask);
  const std::vector<std::uint32_t> gone =
      layer.mask.empty() ? std::vector<std::uint32_t>() : runsIn(layer.mask, mask);
  if (layer.counts && come.empty() && gone.empty()) return true;
  layer.shown.reset();
  const auto members = static_cast<std::size_t>(std::count(mask.begin(), mask.end(), 1));
  const bool anew = !layer.counts || come.size() + gone.size() > members;
  if (anew) {
    RunCoverage::Frame shape;
    shape.width = frame.size.width();
    shape.height = frame.size.height();
    shape.halfWidth = 0.5 * frame.width;
    layer.counts.emplace(shape);
  }
  layer.mask.clear(); // until all is drawn, so that a cancelled layer begins anew
  const bool done =
      anew ? draw(*layer.counts, runsIn(mask, {}), true, cancelled)
           : draw(*layer.counts, come, true, cancelled) && draw(*layer.counts, gone, false, cancelled);
  if (!done) {
    layer.counts.reset();
    return false;
  }
  layer.mask = mask;
  return true;
}

void RunsRenderer::paint(Layer& layer, RunsLayer const& wanted) const
{
  if (layer.shown && layer.shown->color == wanted.color && layer.shown->shades == wanted.shades &&
      layer.shown->opacity == wanted.opacity)
    return;
  layer.shown = wanted;
  layer.shown->mask.clear();
  if (std::none_of(layer.mask.begin(), layer.mask.end(), [](std::uint8_t in) { return in != 0; })) {
    layer.picture = {};
    return;
  }
  CoverageImage image;
  CoverageImage::Look look;
  look.color = plain(wanted.color);
  look.opacity = wanted.opacity;
  look.shades = wanted.shades ? CoverageImage::Shades::logarithmic : CoverageImage::Shades::opacity;
  look.onDark = frame.dark;
  std::vector<std::uint8_t> pixels(4 * static_cast<std::size_t>(frame.size.width()) *
                                   static_cast<std::size_t>(frame.size.height()));
  image.resolve({{&*layer.counts, look}}, pixels.data());
  layer.picture = {imageOf(pixels, frame.size), image.scale(0)};
}

std::optional<RunsRenderer::Images> RunsRenderer::render(RunsRequest const& request,
                                                         std::function<bool()> const& cancelled)
{
  if (!request.scan || request.size.isEmpty() || request.output >= request.scan->outputs.size())
    return Images(request.layers.size());
  if (!sameFrame(request)) begin(request);
  layers.resize(request.layers.size());
  Images images;
  for (std::size_t i = 0; i < layers.size(); ++i) {
    RunsLayer const& wanted = request.layers[i];
    const std::vector<std::uint8_t> all(wanted.mask.empty() ? request.scan->runs.size() : 0, 1);
    if (!bring(layers[i], wanted.mask.empty() ? all : wanted.mask, cancelled)) return std::nullopt;
    paint(layers[i], wanted);
    images.push_back(layers[i].picture);
  }
  return images;
}

} // namespace runsieve::app
