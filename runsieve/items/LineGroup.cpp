#include <runsieve/items/LineGroup.h>

#include <runsieve/core/coverage/CoverageMix.h>
#include <runsieve/core/coverage/RunCoverage.h>
#include <runsieve/items/ColumnLine.h>
#include <runsieve/items/MovedImages.h>

#include <vtkImageData.h>
#include <vtkPen.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace runsieve {

namespace {

/// Fewer are quickly drawn, and exact at their ends.
constexpr std::size_t fewLines = 50;

constexpr std::size_t mostColors = 16;

/// Fewer are counted in a millisecond or two, at each step of a hand as well.
constexpr std::size_t quicklyCounted = 200;

/// Between two looks at the clock.
constexpr std::size_t linesOfSlice = 64;

/// Of those of a list: a majority, if there is one (R. S. Boyer and J S. Moore, MJRTY, 1981).
class MajorityWidth
{
public:
  void add(float width)
  {
    if (votes == 0) candidate = width;
    votes += width == candidate ? 1 : -1;
  }
  [[nodiscard]] float width() const { return candidate; }

private:
  float candidate = 0.0F;
  long votes = 0;
};

} // namespace

/// An image that is being counted.
struct LineGroup::Counting
{
  explicit Counting(Source const& itsSource)
      : source(itsSource), mix(source.frame.width, source.frame.height),
        counts(coverageFrame(source.frame, source.width, 1))
  {}

  Source source;
  CoverageMix mix;
  RunCoverage counts;
  std::size_t pen = 0;
  std::size_t part = 0;
};

LineGroup::LineGroup() = default;
LineGroup::~LineGroup() = default;

void LineGroup::join(ColumnLine& line)
{
  line.place = lines.size();
  lines.push_back(&line);
}

void LineGroup::leave(ColumnLine& line)
{
  lines[line.place] = lines.back();
  lines[line.place]->place = line.place;
  lines.pop_back();
  moved = Source();
  counting = nullptr;
}

bool LineGroup::paint(vtkContext2D* painter, ColumnLine& line)
{
  if (!takesImage(painter, lines.size())) return false;
  if (line.frames.toCome != frameNumber) beginFrame(painter, line);
  line.frames.toCome = 0;
  if (line.frames.shown != frameNumber) return false;
  if (!isDrawn) drawPixels(painter, shownFrame, shown);
  isDrawn = true;
  return true;
}

/// A frame paints each visible line once, so that one that isn't to come begins the next.
void LineGroup::beginFrame(vtkContext2D* painter, ColumnLine& first)
{
  ++frameNumber;
  isDrawn = false;
  for (ColumnLine* line : lines)
    if (line->GetVisible()) line->frames.toCome = frameNumber;
  shown = nullptr;
  const std::optional<PixelFrame> frame = pixelFrame(painter);
  Source wanted = frame ? alike(first, *frame) : Source();
  const bool isImage = wanted.parts.size() >= fewLines && wanted.pens.size() <= mostColors;
  MovedImages* const hand = MovedImages::of(painter);
  if (isImage && hand && mayMove(wanted)) {
    move(wanted);
    wait(*hand);
    moved = std::move(wanted);
  } else {
    stopWaiting();
    moved = Source();
    showCounted(isImage ? std::move(wanted) : Source());
  }
  if (!shown) return;
  shownFrame = *frame;
  for (Part const& part : (moved.parts.empty() ? source : moved).parts) part.line->frames.shown = frameNumber;
}

bool LineGroup::mayMove(Source const& wanted) const
{
  return image && wanted.parts.size() >= quicklyCounted && !(wanted.frame == source.frame) &&
         wanted.looksLike(source);
}

void LineGroup::move(Source const& wanted)
{
  shown = newImage(wanted.frame);
  const std::size_t bytes =
      4 * static_cast<std::size_t>(wanted.frame.width) * static_cast<std::size_t>(wanted.frame.height);
  std::memset(shown->GetScalarPointer(), 0, bytes);
  moveImage(image, source.frame, shown, wanted.frame);
}

/// Shows the image of a source, counted now unless it is there. None if there are no lines or too many.
void LineGroup::showCounted(Source wanted)
{
  if (!(wanted == source)) image = nullptr;
  if (!image && !wanted.parts.empty()) {
    begin(wanted);
    static_cast<void>(goOn(Clock::time_point::max()));
  }
  counting = nullptr;
  source = std::move(wanted);
  shown = image;
}

void LineGroup::begin(Source const& wanted)
{
  if (!counting || !(counting->source == wanted)) counting = std::make_unique<Counting>(wanted);
}

/// Counts until some time, and makes the image when all lines are in.
LineGroup::Progress LineGroup::goOn(Clock::time_point end)
{
  Counting& now = *counting;
  std::vector<float> points;
  std::size_t counted = 0;
  for (; now.pen < now.source.pens.size(); ++now.pen, now.part = 0) {
    if (now.part == 0) now.counts.clear();
    while (now.part < now.source.parts.size()) {
      Part const& part = now.source.parts[now.part++];
      if (part.color != now.pen) continue;
      if (!part.line->isPlain() || part.line->pointsTime() != part.time) return Progress::failed;
      points.clear();
      part.line->appendPoints(points);
      if (!now.counts.add(points.data(), points.size() / 2)) return Progress::failed;
      if (++counted % linesOfSlice == 0 && Clock::now() >= end) return Progress::more;
    }
    Pen const& pen = now.source.pens[now.pen];
    now.mix.add(now.counts, pen.color, pen.opacity);
  }
  image = newImage(now.source.frame);
  now.mix.store(static_cast<unsigned char*>(image->GetScalarPointer()));
  source = now.source;
  return Progress::done;
}

bool LineGroup::countOn(Clock::time_point end)
{
  if (moved.parts.empty() || moved == source) return true;
  try {
    begin(moved);
    if (goOn(end) == Progress::more) return false;
  } catch (...) { // what is wrong shows when the next frame counts
  }
  counting = nullptr;
  return true;
}

LineGroup::Source LineGroup::alike(ColumnLine& first, PixelFrame const& frame) const
{
  std::vector<ColumnLine*> plain;
  MajorityWidth widths;
  for (ColumnLine* line : lines) {
    // A plot without this parent is in another corner of the chart, or in none any more.
    if (line->GetParent() != first.GetParent() || !line->isPlain()) continue;
    plain.push_back(line);
    widths.add(line->GetPen()->GetWidth());
  }
  Source result;
  result.frame = frame;
  result.width = widths.width();
  for (ColumnLine* line : plain) {
    vtkPen* own = line->GetPen();
    if (own->GetWidth() != result.width) continue;
    const vtkColor4ub color = own->GetColorObject();
    const Pen pen = {{color.GetRed(), color.GetGreen(), color.GetBlue()}, own->GetOpacity() / 255.0};
    auto const found = std::find(result.pens.begin(), result.pens.end(), pen);
    result.parts.push_back({line, line->pointsTime(), static_cast<std::size_t>(found - result.pens.begin())});
    if (found != result.pens.end()) continue;
    result.pens.push_back(pen);
    if (result.pens.size() > mostColors) break;
  }
  return result;
}

} // namespace runsieve
