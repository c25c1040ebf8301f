#include <runsieve/core/coverage/RunCoverage.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace runsieve {

namespace {

/// Columns of a strip: one cache line of each row.
constexpr int strip = 16;

/// Steps of a row of counts; each is one part of RunCoverage::perRun.
constexpr unsigned perRow = 256;

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

/// Adds an edge to a column: from it upwards all counts grow by `coats` times perRow >> shift. All numbers
/// are multiples of the coats, so that what a line adds is proportional to them.
void addEdge(std::uint32_t* column, unsigned edge, int shift, std::uint32_t coats)
{
  std::uint32_t* const row = column + edge / perRow * strip;
  const std::uint32_t over = (edge % perRow >> shift) * coats;
  row[0] += (perRow >> shift) * coats - over;
  row[strip] += over;
}

/// One side of the outline in a column.
struct Side
{
  float left; ///< y at the left edge, in steps of a row
  float rise; ///< to the right edge
};

/// Adds what is between pairs of edges, each with its part of the weight.
/// \param lowerAt which part of the rise the lower side has behind it in a part of the column, upperAt
/// likewise.
template <int shift, class LowerAt, class UpperAt>
void addBands(std::uint32_t* column, Side lower, Side upper, float limit, std::uint32_t coats,
              LowerAt lowerAt, UpperAt upperAt)
{
  constexpr int bands = 1 << shift;
  unsigned low[bands];
  unsigned high[bands];
  for (int i = 0; i < bands; ++i) {
    const float at = (static_cast<float>(i) + 0.5F) / bands;
    const int top = clamped(upper.left + upperAt(at) * upper.rise, limit);
    const int bottom = clamped(lower.left + lowerAt(at) * lower.rise, limit);
    low[i] = static_cast<unsigned>(bottom < top ? bottom : top);
    high[i] = static_cast<unsigned>(top);
  }
  for (int i = 0; i < bands; ++i) {
    addEdge(column, low[i], shift, coats);
    addEdge(column, high[i], shift, 0U - coats);
  }
}

/// Fineness of a column with a jump.
constexpr int jump = 4;

} // namespace

RunCoverage::RunCoverage(Frame const& frame)
    : shape(checked(frame)), cutter(shape.map), outline(shape.width, static_cast<float>(shape.halfWidth)),
      // An edge at the very top lies in the row above, and reaches into one more.
      stripSize(static_cast<std::size_t>(rows() + 2) * strip)
{
  const auto width = static_cast<std::size_t>(shape.width);
  buffer.resize((width + strip - 1) / strip * stripSize);
  for (auto* numbers : {&lowEdge, &highEdge, &fineness}) numbers->resize(width);
  highRamp.resize(width);
  lowRamp.resize(width);
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
  markJumps();
  scatter(columns, coats);
  forgetJumps();
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
  const auto limit = static_cast<float>(rows() * static_cast<int>(perRow));
  const auto half =
      static_cast<float>(shape.subRows * static_cast<int>(perRow)) / 2; // the mean of both sides of a column
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

void RunCoverage::markJumps()
{
  for (LineEnvelope::Jump const& step : outline.jumps()) {
    const auto k = static_cast<std::size_t>(step.column);
    Ramp& ramp = (step.isAbove ? highRamp : lowRamp)[k];
    const bool isFirst = ramp.from == 0 && ramp.to == 1;
    ramp.from = isFirst ? step.from : std::min(ramp.from, step.from);
    ramp.to = isFirst ? step.to : std::max(ramp.to, step.to);
    fineness[k] = jump;
  }
}

void RunCoverage::forgetJumps()
{
  for (LineEnvelope::Jump const& step : outline.jumps())
    (step.isAbove ? highRamp : lowRamp)[static_cast<std::size_t>(step.column)] = Ramp();
}

void RunCoverage::scatter(LineEnvelope::Columns columns, int coats)
{
  const auto weight = static_cast<std::uint32_t>(coats);
  int const* const low = lowEdge.data();
  int const* const high = highEdge.data();
  int const* const fine = fineness.data();
  for (int k = columns.first; k < columns.last;) {
    const int end = std::min((k / strip + 1) * strip, columns.last);
    std::uint32_t* column = buffer.data() + static_cast<std::size_t>(k / strip) * stripSize + k % strip;
    for (; k < end; ++k, ++column) {
      if (fine[k] > 0) {
        scatterSteep(column, k, weight);
        continue;
      }
      addEdge(column, static_cast<unsigned>(low[k]), 0, weight);
      addEdge(column, static_cast<unsigned>(high[k]), 0, 0U - weight);
    }
  }
}

/// Several edges along a steep one: counts change smoothly in x, too. Both sides get as many, so that no
/// count becomes negative where they meet.
void RunCoverage::scatterSteep(std::uint32_t* column, int k, std::uint32_t coats)
{
  const auto scale = static_cast<float>(shape.subRows * static_cast<int>(perRow));
  const auto limit = static_cast<float>(shape.height) * scale;
  const auto sideOf = [&](float const* edges) {
    return Side{edges[k] * scale, (edges[k + 1] - edges[k]) * scale};
  };
  const Side lower = sideOf(outline.lower());
  const Side upper = sideOf(outline.upper());
  const auto evenly = [](float at) { return at; };
  const auto along = [](Ramp const& ramp) {
    return [=](float at) {
      if (at <= ramp.from) return 0.0F;
      return at < ramp.to ? (at - ramp.from) / (ramp.to - ramp.from) : 1.0F;
    };
  };
  const auto place = static_cast<std::size_t>(k);
  switch (fineness[place]) {
  case 1:
    return addBands<1>(column, lower, upper, limit, coats, evenly, evenly);
  case 2:
    return addBands<2>(column, lower, upper, limit, coats, evenly, evenly);
  case 3:
    return addBands<3>(column, lower, upper, limit, coats, evenly, evenly);
  default:
    return addBands<3>(column, lower, upper, limit, coats, along(lowRamp[place]), along(highRamp[place]));
  }
}

} // namespace runsieve
