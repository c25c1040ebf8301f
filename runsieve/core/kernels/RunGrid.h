#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <runsieve/core/kernels/RunParts.h>

#include <vector>

namespace runsieve {

/// Which runs of a stacked table have the times of the first one, bit for bit.
class RUNSIEVE_CORE_EXPORT RunGrid
{
public:
  RunGrid() = default;
  /// \param times rows values; a last, short run has the first times of the grid. \param stride rows per run,
  /// at least 1
  RunGrid(double const* times, long long rows, long long stride);

  /// The times of the first run. Without one that is NaN: no run is on such a grid, not even the first.
  [[nodiscard]] std::vector<double> const& times() const { return grid; }
  [[nodiscard]] bool holds(long long run) const { return runOnGrid[static_cast<std::size_t>(run)] != 0; }
  [[nodiscard]] bool holdsAll() const { return all; }

  /// Writes the times of rows without reading them, if all runs are on the grid; out holds as many values as
  /// the parts have rows.
  void gather(std::vector<RunPart> const& parts, double* out) const;

private:
  std::vector<double> grid;
  std::vector<unsigned char> runOnGrid;
  bool all = false;
};

} // namespace runsieve
