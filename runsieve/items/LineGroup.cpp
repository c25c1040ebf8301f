#include <runsieve/items/LineGroup.h>

#include <runsieve/core/coverage/CoverageMix.h>
#include <runsieve/core/coverage/RunCoverage.h>
#include <runsieve/items/ColumnLine.h>

#include <vtkImageData.h>
#include <vtkPen.h>

#include <algorithm>
#include <utility>

namespace runsieve {

namespace {

/// Fewer are quickly drawn, and exact at their ends.
constexpr std::size_t fewLines = 50;

constexpr std::size_t mostColors = 16;

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
}

bool LineGroup::paint(vtkContext2D* painter, ColumnLine& line)
{
  if (!takesImage(painter, lines.size())) return false;
  if (line.frames.toCome != frameNumber) beginFrame(painter, line);
  line.frames.toCome = 0;
  if (line.frames.shown != frameNumber) return false;
  if (!isDrawn) drawPixels(painter, source.frame, image);
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
  const std::optional<PixelFrame> frame = pixelFrame(painter);
  Source wanted = frame ? alike(first, *frame) : Source();
  const bool isImage = wanted.parts.size() >= fewLines && wanted.pens.size() <= mostColors;
  if (!isImage || !(wanted == source)) {
    source = std::move(wanted);
    image = nullptr;
  }
  if (!isImage || (!image && !count())) return;
  for (Part const& part : source.parts) part.line->frames.shown = frameNumber;
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

bool LineGroup::count()
{
  CoverageMix mix(source.frame.width, source.frame.height);
  RunCoverage counts(coverageFrame(source.frame, source.width, 1));
  std::vector<float> points;
  for (std::size_t i = 0; i < source.pens.size(); ++i) {
    counts.clear();
    for (Part const& part : source.parts) {
      if (part.color != i) continue;
      points.clear();
      part.line->appendPoints(points);
      if (!counts.add(points.data(), points.size() / 2)) return false;
    }
    mix.add(counts, source.pens[i].color, source.pens[i].opacity);
  }
  image = newImage(source.frame);
  mix.store(static_cast<unsigned char*>(image->GetScalarPointer()));
  return true;
}

} // namespace runsieve
