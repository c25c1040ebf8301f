#include <runsieve/items/LineSetPicture.h>

#include <runsieve/core/coverage/CoverageLanes.h>
#include <runsieve/core/kernels/Xxh64.h>

#include <vtkImageData.h>
#include <vtkPoints2D.h>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace runsieve {

namespace {

float const* floatsOf(vtkPoints2D* points)
{
  return static_cast<float const*>(points->GetVoidPointer(0));
}

RunBlock runsOf(LineSetPicture::Lines const& lines)
{
  const auto points = static_cast<std::size_t>(lines.points->GetNumberOfPoints());
  return {floatsOf(lines.points), lines.stride, points / lines.stride};
}

/// Rows of counts for each row of pixels of a layer of many coats: four, less for pictures so large that its
/// counts would take more than 16 MB.
int subRowsOf(PixelFrame const& frame)
{
  constexpr std::size_t most = 4'000'000;
  const auto pixels = static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height);
  for (int rows : {4, 2})
    if (pixels * static_cast<std::size_t>(rows) <= most) return rows;
  return 1;
}

bool sameLooks(std::vector<CoverageImage::Look> const& a, std::vector<CoverageImage::Look> const& b)
{
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](auto const& one, auto const& other) {
    return std::tie(one.color, one.opacity, one.shades) == std::tie(other.color, other.opacity, other.shades);
  });
}

} // namespace

bool LineSetPicture::Source::operator==(Source const& o) const
{
  return frame == o.frame && content == o.content && stride == o.stride && extra == o.extra &&
         extraCount == o.extraCount && width == o.width;
}

RunCoverage& LineSetPicture::Layer::begin(Source const& wanted, int subRows)
{
  source = wanted;
  const RunCoverage::Frame frame = coverageFrame(wanted.frame, wanted.width, subRows);
  counts.emplace(frame);
  return *counts;
}

LineSetPicture::Coats LineSetPicture::coatsOf(Lines const& lines)
{
  Coats coats;
  coats.opacity = lines.coatsPen.opacity;
  if (!lines.coats) return coats;
  const std::uint8_t most =
      lines.coats->empty() ? 0 : *std::max_element(lines.coats->begin(), lines.coats->end());
  if (most == 0) return coats;
  coats.ofRuns = *lines.coats;
  const bool isEven = std::all_of(coats.ofRuns.begin(), coats.ofRuns.end(),
                                  [most](std::uint8_t own) { return own == 0 || own == most; });
  if (!isEven) return coats;
  for (std::uint8_t& own : coats.ofRuns) own = own == most ? 1 : 0;
  coats.opacity = 1.0 - std::pow(1.0 - coats.opacity, most);
  return coats;
}

std::uint64_t LineSetPicture::contentOf(vtkPoints2D* points)
{
  if (points == hashed && points->GetMTime() == hashedTime) return content;
  const auto bytes = static_cast<std::size_t>(points->GetNumberOfPoints()) * 2 * sizeof(float);
  content = Xxh64::of(floatsOf(points), bytes);
  hashed = points;
  hashedTime = points->GetMTime();
  return content;
}

bool LineSetPicture::countAll(Lines const& lines, PixelFrame const& frame)
{
  if (!lines.all) {
    countsChanged |= allRuns.counts.has_value();
    allRuns.counts.reset();
    return true;
  }
  const Source wanted = {frame,       contentOf(lines.points), lines.stride,
                         lines.extra, lines.extraCount,        lines.allPen.width};
  if (allRuns.isOf(wanted)) return true;
  countsChanged = true;
  RunCoverage& counts = allRuns.begin(wanted, 1);
  const bool isCounted = CoverageLanes::add(counts, runsOf(lines), nullptr, runner) &&
                         counts.add(floatsOf(lines.points) + 2 * lines.extra, lines.extraCount);
  if (!isCounted) allRuns.counts.reset();
  return isCounted;
}

bool LineSetPicture::countCoats(Lines const& lines, Coats const& coats, PixelFrame const& frame)
{
  if (coats.ofRuns.empty()) {
    countsChanged |= highlighted.counts.has_value();
    highlighted.counts.reset();
    return true;
  }
  const RunBlock runs = runsOf(lines);
  const Source wanted = {frame, contentOf(lines.points), lines.stride, 0, 0, lines.coatsPen.width};
  bool isCounted = true;
  if (!highlighted.isOf(wanted)) {
    countsChanged = true;
    RunCoverage& counts = highlighted.begin(wanted, subRowsOf(frame));
    isCounted = CoverageLanes::add(counts, runs, coats.ofRuns.data(), runner);
  } else if (highlighted.coats != coats.ofRuns) {
    countsChanged = true;
    isCounted = CoverageLanes::change(*highlighted.counts, runs, highlighted.coats.data(),
                                      coats.ofRuns.data(), runner);
  }
  if (isCounted)
    highlighted.coats = coats.ofRuns;
  else
    highlighted.counts.reset();
  return isCounted;
}

void LineSetPicture::resolve(Lines const& lines, double opacityOfCoat, PixelFrame const& frame)
{
  std::vector<CoverageImage::Layer> layers;
  auto addLayer = [&](Layer const& layer, Color const& color, double opacity) {
    if (layer.counts) layers.push_back({&*layer.counts, {color, opacity, lines.shades}});
  };
  addLayer(allRuns, lines.allPen.color, lines.allPen.opacity);
  addLayer(highlighted, lines.coatsPen.color, opacityOfCoat);
  std::vector<CoverageImage::Look> wanted;
  for (CoverageImage::Layer const& layer : layers) wanted.push_back(layer.look);
  if (!countsChanged && sameLooks(looks, wanted)) return;
  looks = std::move(wanted);
  countsChanged = false;
  shown = nullptr; // before there are two
  if (layers.empty()) return;
  // A new object: the device keeps the texture of the image that it has drawn last, and may read that again
  // after the next one was made.
  shown = newImage(frame);
  image.resolve(layers, static_cast<unsigned char*>(shown->GetScalarPointer()));
}

bool LineSetPicture::paint(vtkContext2D* painter, Lines const& lines)
{
  const std::optional<PixelFrame> frame = pixelFrame(painter);
  if (!frame || lines.stride < 1) return false;
  try {
    const Coats coats = coatsOf(lines);
    if (!countAll(lines, *frame) || !countCoats(lines, coats, *frame)) return false;
    resolve(lines, coats.opacity, *frame);
  } catch (...) { // counts may be half done
    for (Layer* layer : {&allRuns, &highlighted}) layer->counts.reset();
    throw;
  }
  if (shown) drawPixels(painter, *frame, shown);
  return true;
}

std::vector<DensityBar> LineSetPicture::bars() const
{
  std::vector<DensityBar> all;
  for (std::size_t i = 0; i < looks.size(); ++i) all.push_back({image.scale(i), looks[i].color});
  return all;
}

} // namespace runsieve
