#pragma once

#include <runsieve/core/inference/ComparedParameter.h>
#include <runsieve/core/inference/LaneDistances.h>
#include <runsieve/core/inference/PieceWork.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

struct SizeCurveSettings
{
  std::vector<double> shares = {0.1, 0.25, 0.5, 1.0}; ///< of the runs, each above 0 and at most 1
  std::size_t subsamples = 100;                       ///< for each share
  std::uint64_t seed = 1;
  double level = 0.05;  ///< of the noise floor
  unsigned threads = 0; ///< 0 for as many as the machine has, at most 4
};

/// Distances of one parameter in subsamples of one size.
struct DistanceRange
{
  double low = 0.0; ///< 5 % of subsamples have less
  double median = 0.0;
  double high = 0.0; ///< 5 % of subsamples have more
};

/// What a share of the runs tells.
struct SizePoint
{
  double share = 0.0;
  std::size_t passing = 0; ///< runs of a subsample
  std::size_t others = 0;
  /// Noise floor with so many runs: the largest distance of any parameter when the labels of the runs of a
  /// subsample are shuffled exceeds it in 5 % (the level) of subsamples.
  double floor = 0.0;
  std::vector<DistanceRange> parameters;
};

/// Whether there are enough runs: the two-sample Kolmogorov-Smirnov distances of parameters, and their noise
/// floor, in subsamples of the runs, passing runs and others each drawn in the same share and without
/// replacement. Distances that still fall with more runs, or parameters that rise above the floor only with
/// all runs, ask for more. The ranges become narrow towards all runs for the reason alone that the subsamples
/// then share their runs; how sure the distances of all runs are, Stability tells.
class SizeCurve
{
public:
  /// \param compared parameters of the runs that take part; kept by reference
  /// \param passing 0 or 1 per run
  /// \throw std::invalid_argument if a parameter names a run that there is not, or a share is not in (0, 1]
  SizeCurve(std::vector<ComparedParameter> const& compared, std::vector<unsigned char> const& passing,
            SizeCurveSettings const& settings = {});

  /// Does the next pieces of the work, of LANES subsamples each; 0 for some 50 ms of it. The results depend
  /// neither on the slices nor on the number of threads.
  void advance(std::size_t pieces = 0);
  [[nodiscard]] bool done() const { return work.done(); }

  /// When done: one point for each share. Ranges are 0, and floors infinite, without subsamples.
  [[nodiscard]] std::vector<SizePoint> points() const;

private:
  struct Drawn
  {
    LaneCounts subsamples;
    LaneCounts shuffled; ///< the same runs with shuffled labels
  };

  void subsample(std::size_t piece);
  [[nodiscard]] Drawn drawn(std::size_t share, std::size_t first) const;
  [[nodiscard]] DistanceRange rangeOf(std::size_t share, std::size_t parameter) const;

  std::vector<ComparedParameter> const& compared;
  SizeCurveSettings settings;
  std::size_t runs;
  std::vector<std::uint32_t> passingRuns;
  std::vector<std::uint32_t> otherRuns;
  std::size_t blocks;            ///< pieces of a share
  std::vector<double> given;     ///< zeros, as many as groups of any parameter: nothing to compare with
  std::vector<double> distances; ///< share after share, subsample after subsample, one per parameter
  std::vector<double> maxima;    ///< of all parameters, labels shuffled; share after share
  PieceWork work;
};

} // namespace runsieve
