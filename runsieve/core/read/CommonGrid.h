#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve {

/// The times of many runs, one after the other, those of each run rising strictly.
struct RunTimes
{
  double const* times = nullptr;
  std::vector<std::size_t> starts; ///< first position of each run, and the number of all times at the end

  [[nodiscard]] std::size_t runs() const { return starts.size() - 1; }
  [[nodiscard]] std::size_t length(std::size_t run) const { return starts[run + 1] - starts[run]; }
  [[nodiscard]] double const* of(std::size_t run) const { return times + starts[run]; }
};

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
  /// put on the grid that at least half of them share, or else on even steps over the whole span, as many as
  /// a run of middle length has. \param exact instead all times of all runs are the grid
  explicit CommonGrid(RunTimes const& runTimes, bool exact);

  [[nodiscard]] Kind kind() const { return gridKind; }
  [[nodiscard]] std::vector<double> const& times() const { return grid; }
  /// Whether times that differed by rounding were made one.
  [[nodiscard]] bool rounded() const { return hasRounded; }
  /// Runs whose times are not those of the grid.
  [[nodiscard]] std::size_t resampledRuns() const { return resampled; }

  /// Runs that lack times of the grid before their last one.
  [[nodiscard]] std::size_t gaps() const { return runsWithGaps; }

  /// Puts the samples of a run of one output on the grid. \param target times().size() values; NaN where the
  /// run has none
  void place(std::size_t run, double const* samples, double* target) const;

private:
  void takeLongest();
  [[nodiscard]] bool allWithin();
  [[nodiscard]] bool isWithin(std::size_t run);
  void takeUnion();
  void takeCommon();
  [[nodiscard]] std::size_t mostShared() const;
  void placeExactly(std::size_t run, double const* samples, double* target) const;
  void interpolate(std::size_t run, double const* samples, double* target) const;

  RunTimes runs;
  std::vector<double> grid;
  Kind gridKind = Kind::Same;
  bool hasRounded = false;
  std::size_t resampled = 0;
  std::size_t runsWithGaps = 0;
};

} // namespace runsieve
