#include <runsieve/items/LineSetPicture.h>

#include <runsieve/core/kernels/Xxh64.h>
#include <runsieve/items/MovedImages.h>

#include <vtkImageData.h>
#include <vtkPoints2D.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <tuple>

namespace runsieve {

namespace {

/// Sets of fewer points are counted in a millisecond or two, at each step of a hand as well.
constexpr std::size_t quicklyCounted = 20'000;

/// Counted in some ten milliseconds by one thread.
constexpr std::size_t pointsOfSlice = 100'000;

float const* floatsOf(vtkPoints2D* points)
{
  return static_cast<float const*>(points->GetVoidPointer(0));
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

std::size_t bytesOf(PixelFrame const& frame)
{
  return 4 * static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height);
}

unsigned char* pixelsOf(vtkImageData* image)
{
  return static_cast<unsigned char*>(image->GetScalarPointer());
}

/// Of a line, so that a part of all lines is as opaque as all of them would be.
double opacityForAll(double opacity, double part)
{
  return 1.0 - std::pow(1.0 - opacity, 1.0 / part);
}

} // namespace

LineSetPicture::LineSetPicture() = default;
LineSetPicture::~LineSetPicture() = default;

bool LineSetPicture::Target::isOfRuns(Target const& o) const
{
  const bool areSame = content == o.content || (version != 0 && version == o.version);
  return areSame && std::tie(runs, stride, extra, extraCount, all) ==
                        std::tie(o.runs, o.stride, o.extra, o.extraCount, o.all);
}

bool LineSetPicture::Target::looksLike(Target const& o) const
{
  return isOfRuns(o) &&
         std::tie(coats, allPen, coatsPen, shades) == std::tie(o.coats, o.allPen, o.coatsPen, o.shades);
}

bool LineSetPicture::Source::operator==(Source const& o) const
{
  return std::tie(frame, content, stride, extra, extraCount, width) ==
         std::tie(o.frame, o.content, o.stride, o.extra, o.extraCount, o.width);
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

LineSetPicture::Target LineSetPicture::targetOf(Lines const& lines, PixelFrame const& frame)
{
  Target target;
  target.frame = frame;
  target.dataFrame = frame;
  target.dataFrame.xOffset += frame.xScale * lines.xShift;
  target.dataFrame.yOffset += frame.yScale * lines.yShift;
  target.content = contentOf(lines.points);
  target.version = lines.version;
  target.runs = static_cast<std::size_t>(lines.points->GetNumberOfPoints()) / lines.stride;
  target.stride = lines.stride;
  target.extra = lines.all ? lines.extra : 0;
  target.extraCount = lines.all ? lines.extraCount : 0;
  target.all = lines.all;
  target.allPen = lines.allPen;
  target.coatsPen = lines.coatsPen;
  target.shades = lines.shades;
  if (lines.coats) applyCoats(target, *lines.coats);
  return target;
}

void LineSetPicture::applyCoats(Target& target, std::vector<std::uint8_t> const& coats)
{
  const std::uint8_t most = coats.empty() ? 0 : *std::max_element(coats.begin(), coats.end());
  if (most == 0) return;
  target.coats = coats;
  const bool isEven =
      std::all_of(coats.begin(), coats.end(), [most](std::uint8_t own) { return own == 0 || own == most; });
  if (!isEven) return;
  for (std::uint8_t& own : target.coats) own = own == most ? 1 : 0;
  target.coatsPen.opacity = 1.0 - std::pow(1.0 - target.coatsPen.opacity, most);
}

LineSetPicture::Source LineSetPicture::sourceOfAll(Target const& target)
{
  return {target.frame, target.content, target.stride, target.extra, target.extraCount, target.allPen.width};
}

LineSetPicture::Source LineSetPicture::sourceOfHighlights(Target const& target)
{
  return {target.frame, target.content, target.stride, 0, 0, target.coatsPen.width};
}

/// Makes the layers of a target, without any run, unless they are there. \return false if there are too many
/// lines
bool LineSetPicture::begin(Target const& target, float const* points)
{
  onceEach.resize(target.runs, 1);
  const auto renew = [&](Layer& layer, Source const& wanted, int subRows) {
    if (layer.counts && layer.source == wanted) return false;
    layer.source = wanted;
    layer.counts.emplace(coverageFrame(wanted.frame, wanted.width, subRows), target.runs);
    return true;
  };
  if (target.coats.empty())
    highlighted.counts.reset();
  else
    renew(highlighted, sourceOfHighlights(target), subRowsOf(target.frame));
  if (!target.all)
    allRuns.counts.reset();
  else if (renew(allRuns, sourceOfAll(target), 1) &&
           !allRuns.counts->addLine(points + 2 * target.extra, target.extraCount))
    allRuns.counts.reset();
  return !target.all || allRuns.counts;
}

bool LineSetPicture::count(Target const& target, float const* points)
{
  using Progress = SlicedCoverage::Progress;
  const RunBlock runs = {points, target.stride, target.runs};
  const auto finish = [&](Layer& layer, std::vector<std::uint8_t> const& wanted) {
    return !layer.counts || layer.counts->finish(runs, wanted, runner) == Progress::done;
  };
  if (begin(target, points) && finish(allRuns, onceEach) && finish(highlighted, target.coats)) return true;
  dropCounts();
  return false;
}

SlicedCoverage::Progress LineSetPicture::countSlice()
{
  using Progress = SlicedCoverage::Progress;
  Target const& target = moved.target;
  float const* points = floatsOf(pointsOfMoved);
  const RunBlock runs = {points, target.stride, target.runs};
  const std::size_t most = std::max<std::size_t>(1, pointsOfSlice / target.stride);
  const auto advance = [&](Layer& layer, std::vector<std::uint8_t> const& wanted) {
    return layer.counts ? layer.counts->advance(runs, wanted, most, runner) : Progress::done;
  };
  if (!begin(target, points)) return Progress::tooMany;
  dropMovedPixels(); // threads need as much memory
  const Progress all = advance(allRuns, onceEach);
  const Progress highlights = advance(highlighted, target.coats);
  if (all == Progress::tooMany || highlights == Progress::tooMany) {
    dropCounts();
    return Progress::tooMany;
  }
  return all == Progress::done ? highlights : all;
}

/// Of an image that more lines belong into by now. The device goes on holding the image itself.
void LineSetPicture::dropMovedPixels()
{
  if (moved.image) moved.image->Initialize();
  moved.image = nullptr;
}

void LineSetPicture::dropCounts()
{
  for (Layer* layer : {&allRuns, &highlighted}) layer->counts.reset();
}

bool LineSetPicture::isCounted(Target const& target) const
{
  const auto isDone = [](Layer const& layer, Source const& wanted, std::vector<std::uint8_t> const& coats) {
    return layer.counts && layer.source == wanted && layer.counts->coats() == coats;
  };
  return (!target.all || isDone(allRuns, sourceOfAll(target), onceEach)) &&
         (target.coats.empty() || isDone(highlighted, sourceOfHighlights(target), target.coats));
}

/// Those of a target of which something is counted. \param isPart their lines stand for all
std::vector<CoverageImage::Layer> LineSetPicture::layersOf(Target const& target, bool isPart) const
{
  std::vector<CoverageImage::Layer> layers;
  const auto add = [&](Layer const& layer, std::vector<std::uint8_t> const& wanted, Pen const& pen) {
    const double part = isPart ? layer.counts->share(wanted) : 1.0;
    if (part <= 0) return;
    const double opacity = isPart ? opacityForAll(pen.opacity, part) : pen.opacity;
    layers.push_back({&layer.counts->counts(), {pen.color, opacity, target.shades}});
  };
  if (target.all && allRuns.counts && allRuns.source == sourceOfAll(target))
    add(allRuns, onceEach, target.allPen);
  if (!target.coats.empty() && highlighted.counts && highlighted.source == sourceOfHighlights(target))
    add(highlighted, target.coats, target.coatsPen);
  return layers;
}

void LineSetPicture::resolve(Target const& target)
{
  const std::vector<CoverageImage::Layer> layers = layersOf(target, false);
  looks.clear();
  for (CoverageImage::Layer const& layer : layers) looks.push_back(layer.look);
  kept.image = nullptr; // before there are two
  kept.target = target;
  kept.isExact = true;
  if (layers.empty()) return;
  // A new object: the device keeps the texture of the image that it has drawn last, and may read that again
  // after the next one was made.
  kept.image = newImage(target.frame);
  image.resolve(layers, pixelsOf(kept.image));
}

bool LineSetPicture::isKept(Target const& target) const
{
  return kept.isExact && kept.target.isInPlaceOf(target) && kept.target.looksLike(target);
}

bool LineSetPicture::mayMove(Target const& target, bool isCounting) const
{
  if (!kept.image || !target.isOfRuns(kept.target) || target.runs * target.stride < quicklyCounted)
    return false;
  if (kept.isExact && kept.target.isInPlaceOf(target)) return false; // not moved
  if (isCounted(target)) return false;
  // Without counts of its own nothing can show another highlight.
  return isCounting || target.looksLike(kept.target);
}

/// Makes the moved image of a target.
void LineSetPicture::move(Target const& target, vtkPoints2D* points)
{
  pointsOfMoved = points;
  timeOfMoved = points->GetMTime();
  const bool isInPlace = moved.target.isInPlaceOf(target);
  const bool looksTheSame = moved.target.looksLike(target);
  if (moved.image && isInPlace && looksTheSame) return;
  if (!isInPlace && looksTheSame && !layersOf(moved.target, true).empty()) {
    // What was counted before the hand moved on goes along.
    if (!moved.image) compose(moved.target);
    kept = std::move(moved);
    moved = Shown();
  }
  moved.target = target;
  if (!target.looksLike(kept.target) && layersOf(target, true).empty()) countSlice();
  compose(target);
}

void LineSetPicture::compose(Target const& target)
{
  PixelFrame const& frame = target.frame;
  int size[3] = {0, 0, 0};
  if (moved.image) moved.image->GetDimensions(size);
  if (size[0] != frame.width || size[1] != frame.height) moved.image = newImage(frame);
  const std::vector<CoverageImage::Layer> layers = layersOf(target, true);
  if (layers.empty())
    std::memset(pixelsOf(moved.image), 0, bytesOf(frame));
  else
    CoverageImage().resolve(layers, pixelsOf(moved.image));
  if (target.looksLike(kept.target))
    moveImage(kept.image, kept.target.dataFrame, moved.image, target.dataFrame);
  moved.image->Modified();
}

bool LineSetPicture::countOn(Clock::time_point end)
{
  // Other points are painted before they are counted.
  if (!pointsOfMoved || pointsOfMoved->GetMTime() != timeOfMoved) return true;
  try {
    do {
      if (countSlice() != SlicedCoverage::Progress::more) return true;
    } while (Clock::now() < end);
  } catch (...) { // counts may be half done; what is wrong shows when the next frame counts
    dropCounts();
    return true;
  }
  return false;
}

bool LineSetPicture::paint(vtkContext2D* painter, Lines const& lines)
{
  const std::optional<PixelFrame> frame = pixelFrame(painter);
  if (!frame || lines.stride < 1) return false;
  const Target target = targetOf(lines, *frame);
  MovedImages* const hand = MovedImages::of(painter);
  try {
    if (hand && mayMove(target, hand->hand() == MovedImages::Hand::rests)) {
      move(target, lines.points);
      wait(*hand);
      drawPixels(painter, *frame, moved.image);
      return true;
    }
    stopWaiting();
    moved = Shown();
    pointsOfMoved = nullptr;
    if (isKept(target))
      kept.target = target; // a set after a redraw has a version of its own
    else {
      if (!count(target, floatsOf(lines.points))) return false;
      resolve(target);
    }
  } catch (...) { // counts may be half done
    dropCounts();
    throw;
  }
  if (kept.image) drawPixels(painter, *frame, kept.image);
  return true;
}

std::vector<DensityBar> LineSetPicture::bars() const
{
  std::vector<DensityBar> all;
  for (std::size_t i = 0; i < looks.size(); ++i) all.push_back({image.scale(i), looks[i].color});
  return all;
}

} // namespace runsieve
