#include <runsieve/items/RunCoverage.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace runsieve {

namespace {

/// Columns of a strip: one cache line of each row.
constexpr int strip = 16;

/// Steps of a row of counts; each is one part of RunCoverage::perRun.
constexpr int perRow = 256;

RunCoverage::Frame checked(RunCoverage::Frame frame)
{
  const auto isSize = [](int size) { return size >= 1 && size <= RunCoverage::largestSize; };
  if (!isSize(frame.width) || !isSize(frame.height))
    throw std::invalid_argument("coverage: a size out of range");
  if (frame.subRows != 1 && frame.subRows != 2 && frame.subRows != 4)
    throw std::invalid_argument("coverage: sub-rows are 1, 2 or 4");
  PixelMap const& map = frame.map;
  for (const double value : {frame.halfWidth, map.xScale, map.xOffset, map.yScale, map.yOffset})
    if (!std::isfinite(value)) throw std::invalid_argument("coverage: a number that is not finite");
  frame.halfWidth = std::clamp(frame.halfWidth, 0.5, static_cast<double>(RunCoverage::largestSize));
  return frame;
}

int clamped(float value, float limit)
{
  const float positive = value > 0 ? value : 0;
  return static_cast<int>(positive < limit ? positive : limit);
}

/// Adds an edge to a column: from it upwards all counts grow. `share` is what is left of a row's perRow after
/// the shift; all numbers are multiples of the coats.
void addEdge(std::uint32_t* column, int edge, int shift, int coats)
{
  const std::size_t row = static_cast<std::size_t>(edge / perRow) * strip;
  const int over = (edge % perRow) >> shift;
  column[row] += static_cast<std::uint32_t>(coats * ((perRow >> shift) - over));
  column[row + strip] += static_cast<std::uint32_t>(coats * over);
}

} // namespace

RunCoverage::RunCoverage(Frame const& frame)
    : shape(checked(frame)), cutter(shape.map), outline(shape.width, static_cast<float>(shape.halfWidth)),
      // An edge at the very top lies in the row above, and reaches into one more.
      stripSize(static_cast<std::size_t>(rows() + 2) * strip)
{
  const auto width = static_cast<std::size_t>(shape.width);
  buffer.resize((width + strip - 1) / strip * stripSize);
  for (auto* numbers : {&lowEdge, &highEdge, &fineness}) numbers->resize(width);
}

bool RunCoverage::add(float const* points, std::size_t count, std::uint8_t coats)
{
  if (!fits(count, coats)) return false;
  draw(points, count, coats);
  return true;
}

void RunCoverage::remove(float const* points, std::size_t count, std::uint8_t coats)
{
  draw(points, count, -coats);
}

bool RunCoverage::add(RunBlock const& runs, std::uint8_t const* coats)
{
  for (std::size_t i = 0; i < runs.count; ++i) {
    if (add(runs.points + 2 * runs.stride * i, runs.stride, coats ? coats[i] : 1)) continue;
    remove({runs.points, runs.stride, i}, coats);
    return false;
  }
  return true;
}

void RunCoverage::remove(RunBlock const& runs, std::uint8_t const* coats)
{
  for (std::size_t i = 0; i < runs.count; ++i)
    remove(runs.points + 2 * runs.stride * i, runs.stride, coats ? coats[i] : 1);
}

bool RunCoverage::change(RunBlock const& runs, std::uint8_t const* oldCoats, std::uint8_t const* newCoats)
{
  for (std::size_t i = 0; i < runs.count; ++i) {
    const int more = newCoats[i] - oldCoats[i];
    if (fits(runs.stride, more)) {
      draw(runs.points + 2 * runs.stride * i, runs.stride, more);
      continue;
    }
    for (std::size_t done = 0; done < i; ++done)
      draw(runs.points + 2 * runs.stride * done, runs.stride, oldCoats[done] - newCoats[done]);
    return false;
  }
  return true;
}

bool RunCoverage::merge(RunCoverage const& other)
{
  if (other.shape.width != shape.width || other.shape.height != shape.height ||
      other.shape.subRows != shape.subRows)
    throw std::invalid_argument("coverage: sizes differ");
  if (load + other.load > mostCoats) return false;
  load += other.load;
  std::uint32_t* const sum = buffer.data();
  std::uint32_t const* const more = other.buffer.data();
  const std::size_t size = buffer.size();
  for (std::size_t i = 0; i < size; ++i) sum[i] += more[i];
  return true;
}

void RunCoverage::clear()
{
  std::fill(buffer.begin(), buffer.end(), 0);
  load = 0;
}

void RunCoverage::step(int row, std::uint32_t* counts) const
{
  std::uint32_t const* from = buffer.data() + static_cast<std::size_t>(row) * strip;
  int k = 0;
  for (; k + strip <= shape.width; k += strip, from += stripSize)
    for (int i = 0; i < strip; ++i) counts[k + i] += from[i];
  for (int i = 0; k + i < shape.width; ++i) counts[k + i] += from[i];
}

std::vector<std::uint32_t> RunCoverage::counts() const
{
  const auto width = static_cast<std::size_t>(shape.width);
  std::vector<std::uint32_t> all(width * static_cast<std::size_t>(rows()));
  for (int row = 0; row < rows(); ++row) {
    std::uint32_t* const here = all.data() + width * static_cast<std::size_t>(row);
    if (row > 0) std::copy_n(here - width, width, here);
    step(row, here);
  }
  return all;
}

bool RunCoverage::fits(std::size_t points, int coats) const
{
  // Every segment is a piece at worst.
  return coats <= 0 || static_cast<std::int64_t>(points) <= (mostCoats - load) / coats;
}

void RunCoverage::draw(float const* points, std::size_t count, int coats)
{
  if (coats == 0) return;
  for (LinePieces::Piece const& piece : cutter.cut(points, count)) drawPiece(piece, coats);
}

void RunCoverage::drawPiece(LinePieces::Piece const& piece, int coats)
{
  if (isOutside(piece)) return;
  const LineEnvelope::Columns columns = outline.trace(piece.x, piece.y, piece.count);
  if (columns.first == columns.last) return;
  quantize(columns);
  scatter(columns, coats);
  load += coats;
}

bool RunCoverage::isOutside(LinePieces::Piece const& piece) const
{
  const auto r = static_cast<float>(shape.halfWidth);
  const float ceiling = static_cast<float>(shape.height) + r;
  int above = 0;
  int below = 0;
  const auto count = static_cast<int>(piece.count);
  for (int i = 0; i < count; ++i) {
    above += piece.y[i] >= ceiling;
    below += piece.y[i] <= -r;
  }
  return above == count || below == count;
}

void RunCoverage::quantize(LineEnvelope::Columns columns)
{
  float const* const upper = outline.upper();
  float const* const lower = outline.lower();
  int* const low = lowEdge.data();
  int* const high = highEdge.data();
  int* const fine = fineness.data();
  const auto limit = static_cast<float>(rows() * perRow);
  const auto half = static_cast<float>(shape.subRows * perRow) / 2; // the mean of both sides of a column
  for (int k = columns.first; k < columns.last; ++k) {
    const int bottom = clamped((lower[k] + lower[k + 1]) * half, limit);
    const int top = clamped((upper[k] + upper[k + 1]) * half, limit);
    low[k] = bottom < top ? bottom : top;
    high[k] = top;
    const float upperStep = std::abs(upper[k + 1] - upper[k]);
    const float lowerStep = std::abs(lower[k + 1] - lower[k]);
    const float step = upperStep > lowerStep ? upperStep : lowerStep;
    fine[k] = (step > 1) + (step > 2) + (step > 4);
  }
}

void RunCoverage::scatter(LineEnvelope::Columns columns, int coats)
{
  for (int k = columns.first; k < columns.last;) {
    const int end = std::min((k / strip + 1) * strip, columns.last);
    std::uint32_t* column = buffer.data() + static_cast<std::size_t>(k / strip) * stripSize + k % strip;
    for (; k < end; ++k, ++column) {
      if (fineness[static_cast<std::size_t>(k)] > 0) {
        scatterSteep(column, k, coats);
        continue;
      }
      addEdge(column, lowEdge[static_cast<std::size_t>(k)], 0, coats);
      addEdge(column, highEdge[static_cast<std::size_t>(k)], 0, -coats);
    }
  }
}

/// Several edges along a steep one, each with its part of the weight: counts change smoothly in x, too. Both
/// sides get as many, so that no count becomes negative where they meet.
void RunCoverage::scatterSteep(std::uint32_t* column, int k, int coats)
{
  const auto limit = static_cast<float>(rows() * perRow);
  const auto scale = static_cast<float>(shape.subRows * perRow);
  const int shift = fineness[static_cast<std::size_t>(k)];
  const int edges = 1 << shift;
  const float part = 1 / static_cast<float>(edges);
  float const* const upper = outline.upper() + k;
  float const* const lower = outline.lower() + k;
  const float rising = (upper[1] - upper[0]) * part;
  const float risingBelow = (lower[1] - lower[0]) * part;
  for (int i = 0; i < edges; ++i) {
    const float at = static_cast<float>(i) + 0.5F;
    const int top = clamped((upper[0] + at * rising) * scale, limit);
    const int bottom = std::min(clamped((lower[0] + at * risingBelow) * scale, limit), top);
    addEdge(column, bottom, shift, coats);
    addEdge(column, top, shift, -coats);
  }
}

} // namespace runsieve
