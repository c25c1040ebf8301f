#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve::bench {

/// A made-up scan as one table that stacks all runs, and two selections of its rows. Columns: 4 outputs, the
/// time, the number of the run, 20 parameters of which 3 act.
struct BenchColumns
{
  static constexpr int species = 4;
  static constexpr int parameters = 20;
  static constexpr int times = 101;
  static constexpr int timeColumn = species;
  static constexpr int runColumn = species + 1;
  static constexpr int firstParameter = species + 2;
  static constexpr int count = firstParameter + parameters;

  std::vector<long long>
      brush; ///< rows in one rectangle over a tenth of the times and the middle half of the values
  std::vector<long long> wide; ///< rows below a threshold, over all times
};

/// Runs of W1, W2 or W3: 1,000, 10,000 or 100,000.
[[nodiscard]] int runsOf(std::string const& name);

/// Fills the columns of W1, W2 or W3. If the environment names a folder in RUNSIEVE_SCANS, they are read from
/// NAME.npy, NAME_sel_brush.npy and NAME_sel_wide.npy there, so that other tools can be timed on the same
/// numbers; otherwise they are made up. \param columns BenchColumns::count, each with room for a value of
/// every run and time
[[nodiscard]] BenchColumns fillColumns(std::string const& name, std::vector<double*> const& columns);

} // namespace runsieve::bench
