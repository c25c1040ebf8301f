#pragma once

#include <runsieve/core/read/RunTimes.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// One time grid for all runs of a scan, and how the samples of each run come onto it.
class CommonGrid
{
public:
  enum class Kind
  {
    Same,         ///< every run has all times
    Gaps,         ///< some run lacks times that others have
    Interpolated, ///< runs are interpolated linearly between their samples
  };

  /// Times that differ by a relative 1e-9 or less are one. If the runs then have different times they are
  /// put on the grid that at least half of them share, or else on even steps over their common span, as many
  /// as a run of middle length has. Such grids begin where all runs have begun but those that are clearly
  /// late. \param exact instead all times of all runs are the grid
  explicit CommonGrid(RunTimes const& runTimes, bool exact);

  [[nodiscard]] Kind kind() const { return gridKind; }
  [[nodiscard]] std::vector<double> const& times() const { return grid; }
  /// Whether times that differed by rounding were made one.
  [[nodiscard]] bool rounded() const { return hasRounded; }
  /// Runs whose times are not those of the grid.
  [[nodiscard]] std::size_t resampledRuns() const { return resampled; }

  /// Runs that lack times of the grid before their last one.
  [[nodiscard]] std::size_t gaps() const { return runsWithGaps; }

  /// Runs that begin after the grid, so that they lack its first times.
  [[nodiscard]] std::size_t lateRuns() const { return runsBeginningLate; }

  /// Samples that are not on the grid because they lie before it, or behind it.
  struct Cut
  {
    std::size_t runs = 0;
    std::size_t samples = 0;
    double farthest = 0.0; ///< the time that is farthest from the grid
  };
  [[nodiscard]] Cut const& cutBefore() const { return before; }
  [[nodiscard]] Cut const& cutBehind() const { return behind; }

  /// Puts the samples of a run of one output on the grid. \param target times().size() values; NaN where the
  /// run has none
  void place(std::size_t run, double const* samples, double* target) const;

private:
  void takeLongest();
  [[nodiscard]] bool allWithin();
  [[nodiscard]] bool isWithin(std::size_t run);
  void takeUnion();
  void takeCommon();
  void takeShared(std::size_t shared);
  void takeEvenSteps();
  void countCut();
  [[nodiscard]] std::size_t mostShared() const;
  void placeExactly(std::size_t run, double const* samples, double* target) const;
  void interpolate(std::size_t run, double const* samples, double* target) const;

  RunTimes runs;
  std::vector<double> grid;
  Kind gridKind = Kind::Same;
  bool hasRounded = false;
  std::size_t resampled = 0;
  std::size_t runsWithGaps = 0;
  std::size_t runsBeginningLate = 0;
  Cut before;
  Cut behind;
};

} // namespace runsieve
