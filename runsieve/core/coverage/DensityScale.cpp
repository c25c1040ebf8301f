#include <runsieve/core/coverage/DensityScale.h>

#include <runsieve/core/coverage/RunCoverage.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace runsieve {

namespace {

/// The upper bits of a float: its exponent and 6 bits of its fraction. A logarithm, straight between powers
/// of two.
constexpr int lowerBits = 17;

/// Those of 1.
constexpr std::uint32_t bitsOfOne = 127U << (23 - lowerBits);

constexpr double unit = RunCoverage::perRun;

} // namespace

std::size_t CountHistogram::binOf(std::uint32_t count)
{
  const float runs = static_cast<float>(std::max(count, RunCoverage::perRun)) / RunCoverage::perRun;
  std::uint32_t bits;
  std::memcpy(&bits, &runs, sizeof bits);
  return std::min<std::size_t>((bits >> lowerBits) - bitsOfOne, bins - 1);
}

double CountHistogram::lowerEdge(std::size_t bin)
{
  return std::ldexp(1 + static_cast<double>(bin % 64) / 64, static_cast<int>(bin / 64));
}

void CountHistogram::add(std::uint32_t const* counts, std::size_t size)
{
  for (std::size_t i = 0; i < size; ++i) {
    most = std::max(most, counts[i]);
    if (counts[i] < RunCoverage::perRun) continue;
    least = std::min(least, counts[i]);
    ++pixels[binOf(counts[i])];
  }
}

double CountHistogram::smallest() const
{
  if (most == 0) return 0;
  return most < RunCoverage::perRun ? 1 : least / unit;
}

double CountHistogram::largest() const
{
  if (most == 0) return 0;
  return std::max(1.0, most / unit);
}

DensityScale::DensityScale(Kind kind, CountHistogram const& histogram)
    : least(histogram.smallest()), most(histogram.largest())
{
  if (kind == Kind::logarithmic) return;
  below.push_back(0);
  for (const std::uint64_t pixels : histogram.pixelsPerBin())
    below.push_back(below.back() + static_cast<double>(pixels));
  const double all = below.back();
  if (all > 0)
    for (double& share : below) share /= all;
}

double DensityScale::position(double runs) const
{
  if (!(runs >= least)) return 0;
  if (runs >= most) return 1;
  if (below.empty()) return std::log(runs / least) / std::log(most / least);
  const std::size_t bin = CountHistogram::binOf(static_cast<std::uint32_t>(runs * unit));
  // The first and the last bin are only in part within the scale.
  const double low = std::max(least, CountHistogram::lowerEdge(bin));
  const double high = std::min(most, CountHistogram::lowerEdge(bin + 1));
  const double part = high > low ? std::clamp((runs - low) / (high - low), 0.0, 1.0) : 1;
  return below[bin] + part * (below[bin + 1] - below[bin]);
}

double DensityScale::shade(double runs) const
{
  constexpr double plain = 0.5;        // of single runs
  constexpr double decadesOfFew = 2.0; // until the ramp begins at its light end
  const double decades = std::log10(std::max(most, 1.0));
  const double begin = plain * std::clamp(1.0 - decades / decadesOfFew, 0.0, 1.0);
  const double end = plain + (1.0 - plain) * std::clamp(decades, 0.0, 1.0);
  return begin + (end - begin) * position(runs);
}

std::vector<DensityScale::Mark> DensityScale::decades() const
{
  std::vector<Mark> marks;
  if (most == 0) return marks;
  for (double runs = 1; runs <= most; runs *= 10)
    if (runs >= least) marks.push_back({runs, position(runs)});
  return marks;
}

} // namespace runsieve
