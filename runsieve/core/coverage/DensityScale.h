#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// Counts of pixels by how many runs cover them, in bins of even ratio: 64 for each doubling.
///
/// Counts are in units of 1 / RunCoverage::perRun. Pixels that less than one run covers are the smooth edges
/// of lines and do not enter.
class RUNSIEVE_CORE_EXPORT CountHistogram
{
public:
  static constexpr std::size_t bins = 24 * 64; ///< of 1 to 2^24 runs

  CountHistogram() : pixels(bins) {}

  void add(std::uint32_t const* counts, std::size_t size);

  /// The bin of a count; less than one run counts as one.
  [[nodiscard]] static std::size_t binOf(std::uint32_t count);
  /// The smallest number of runs of a bin; that of the one behind the last is 2^24.
  [[nodiscard]] static double lowerEdge(std::size_t bin);

  /// Pixels of each bin.
  [[nodiscard]] std::vector<std::uint64_t> const& pixelsPerBin() const { return pixels; }
  /// The smallest count in runs, 1 if no pixel has as many, 0 if no pixel is covered.
  [[nodiscard]] double smallest() const;
  /// The largest count in runs; likewise.
  [[nodiscard]] double largest() const;

private:
  std::vector<std::uint64_t> pixels;
  std::uint32_t least = UINT32_MAX; ///< of those that enter
  std::uint32_t most = 0;           ///< of all
};

/// Where on a ramp of colours, from 0 to 1, a number of runs lies: the smallest of a picture at 0, its
/// largest at 1. If they are the same, it lies at 1.
class RUNSIEVE_CORE_EXPORT DensityScale
{
public:
  enum class Kind
  {
    logarithmic,
    equalArea ///< each part of the ramp for as many pixels: the histogram is equalised
  };

  /// A place on a scale bar.
  struct Mark
  {
    double runs;
    double position;
  };

  /// The scale of an empty picture.
  DensityScale() = default;
  DensityScale(Kind kind, CountHistogram const& histogram);

  /// In runs; 0 if no pixel is covered.
  [[nodiscard]] double smallest() const { return least; }
  [[nodiscard]] double largest() const { return most; }
  /// 0 to 1, not decreasing; the nearest for numbers out of range.
  [[nodiscard]] double position(double runs) const;
  /// The same for the eye: where most is less than 100 runs the ramp begins darker than at its light end,
  /// since few runs must not be pale, and where it is less than 10 it ends before its dark end; single runs
  /// have the colour in the middle.
  [[nodiscard]] double shade(double runs) const;
  /// 1, 10, 100 and so on, those from the smallest to the largest.
  [[nodiscard]] std::vector<Mark> decades() const;

private:
  double least = 0;
  double most = 0;
  /// Share of the pixels below each bin, and behind the last; empty if the scale is logarithmic.
  std::vector<double> below;
};

} // namespace runsieve
