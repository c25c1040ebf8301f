#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace runsieve::app {

/// Why rows are no scan.
struct RunFault
{
  enum class Place
  {
    Row,
    Time,
    Run
  };                   ///< the row as a whole, or one of the two columns
  std::size_t row = 0; ///< counted from 0
  Place place = Place::Row;
  std::string message;
};

/// The runs that the rows of a scan form.
struct RunStructure
{
  std::size_t runs = 0;
  std::size_t times = 0;         ///< rows of each run
  std::optional<RunFault> fault; ///< set if the rows are no scan; the numbers are then 0
};

/// Finds the runs and checks that they have one length and one rising time grid, and that run numbers are
/// whole and ascend. \param run null: a run starts where time does not rise
[[nodiscard]] RunStructure findRuns(double const* time, double const* run, std::size_t rows);

/// The first row whose value differs from that of the first row of its run; `runs * times` if there is none.
/// NaN equals NaN.
[[nodiscard]] std::size_t firstChangeWithinRun(double const* column, std::size_t runs, std::size_t times);

} // namespace runsieve::app
