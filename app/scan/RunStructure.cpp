#include "app/scan/RunStructure.h"

#include <runsieve/core/text/Decimal.h>

#include <cmath>
#include <limits>
#include <utility>

namespace runsieve::app {

namespace {

using Place = RunFault::Place;
constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

std::string countRows(std::size_t rows)
{
  return std::to_string(rows) + (rows == 1 ? " row" : " rows");
}

/// Walks over the rows and stops at the first fault.
class RunWalk
{
public:
  RunWalk(double const* timeColumn, double const* runColumn, std::size_t rowCount)
      : time(timeColumn), run(runColumn), rows(rowCount)
  {}

  RunStructure walk()
  {
    if (rows == 0) return result;
    for (std::size_t row = 0; row < rows; ++row)
      if (!step(row)) return result;
    if (length == none) length = rows;
    if (rows - start != length) {
      fail(rows - 1, Place::Row,
           "the file ends after " + countRows(rows - start) + " of " + name(start) +
               ", but the first run has " + std::to_string(length) + "; it seems to be cut off");
      return result;
    }
    result.runs = rows / length;
    result.times = length;
    return result;
  }

private:
  bool step(std::size_t row)
  {
    if (!std::isfinite(time[row])) return fail(row, Place::Time, "the time must be a finite number");
    if (run != nullptr && !isRunNumber(run[row]))
      return fail(row, Place::Run,
                  "a run number must be a whole number of at most 32 bits, found " + decimal(run[row]));
    if (row == 0) return true;
    bool const rises = time[row] > time[row - 1];
    bool const isNewRun = run != nullptr ? run[row] != run[row - 1] : !rises;
    if (isNewRun && !startRun(row)) return false;
    if (!isNewRun && !rises)
      return fail(row, Place::Time,
                  "time does not rise within " + name(row) + ": " + decimal(time[row]) + " follows " +
                      decimal(time[row - 1]));
    if (length == none) return true;
    if (row - start >= length)
      return fail(row, boundary(),
                  name(row) + " has more than the " + countRows(length) + " of the first run");
    if (time[row] != time[row - start])
      return fail(row, Place::Time,
                  "all runs must have one time grid: " + decimal(time[row]) + " in " + name(row) +
                      " stands where " + decimal(time[row - start]) + " stands in the first run");
    return true;
  }

  bool startRun(std::size_t row)
  {
    if (run != nullptr && run[row] < run[row - 1])
      return fail(row, Place::Run,
                  "run " + decimal(run[row]) + " follows run " + decimal(run[row - 1]) +
                      "; the rows of a run must stand together and run numbers ascend");
    if (length == none)
      length = row;
    else if (row - start != length)
      return fail(row, boundary(),
                  name(start) + " ends after " + countRows(row - start) + ", but the first run has " +
                      std::to_string(length));
    start = row;
    ++runsBefore;
    return true;
  }

  static bool isRunNumber(double value)
  {
    return value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max() &&
           value == std::floor(value);
  }

  // The column that tells where runs begin.
  Place boundary() const { return run != nullptr ? Place::Run : Place::Time; }

  // Of the run that a row belongs to; without a run column runs are counted from 0.
  std::string name(std::size_t row) const
  {
    return "run " + (run != nullptr ? decimal(run[row]) : std::to_string(runsBefore));
  }

  bool fail(std::size_t row, Place place, std::string message)
  {
    result.fault = RunFault{row, place, std::move(message)};
    return false;
  }

  double const* time;
  double const* run;
  std::size_t rows;
  std::size_t start = 0;     ///< first row of the run
  std::size_t length = none; ///< rows of the first run, once it is complete
  std::size_t runsBefore = 0;
  RunStructure result;
};

} // namespace

RunStructure findRuns(double const* time, double const* run, std::size_t rows)
{
  return RunWalk(time, run, rows).walk();
}

std::size_t firstChangeWithinRun(double const* column, std::size_t runs, std::size_t times)
{
  for (std::size_t start = 0; start < runs * times; start += times) {
    double const value = column[start];
    for (std::size_t row = start + 1; row < start + times; ++row)
      if (column[row] != value && !(std::isnan(column[row]) && std::isnan(value))) return row;
  }
  return runs * times;
}

} // namespace runsieve::app
