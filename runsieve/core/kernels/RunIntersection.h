#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <runsieve/core/kernels/RowSpans.h>
#include <runsieve/core/kernels/RunGrid.h>

#include <unordered_map>
#include <vector>

namespace runsieve {

/// Finds the runs of a stacked table that have a selected row at every time that holds any selected row.
///
/// A run is stride consecutive rows; the last one may be short. Times are compared exactly; a NaN is no time,
/// so a selected row with a NaN time makes no demand and counts as dropped. Linear in the rows; of runs on
/// the grid, the usual case, no times are read.
class RUNSIEVE_CORE_EXPORT RunIntersection
{
public:
  /// Arrays of `rows` values, and their grid for this stride; they must outlive this object. selected holds 0
  /// or 1 per row.
  RunIntersection(unsigned char const* selected, double const* times, long long rows, long long stride,
                  RunGrid const& grid);

  /// Whether any selected row has a time.
  [[nodiscard]] bool anySelected() const { return demanded > 0; }

  /// Rows by what becomes of them.
  struct Split
  {
    RowSpans remainder;  ///< selected, run survives
    RowSpans reduced;    ///< selected, run dropped
    RowSpans complement; ///< not selected, at a selected time
    RowSpans others;     ///< the last two together, ascending
  };

  [[nodiscard]] Split split() const;

private:
  void countOnGrid();
  void countOffGrid(long long run);
  int slotFor(double time);
  [[nodiscard]] bool isDemanded(double time) const;
  [[nodiscard]] std::vector<RowSpan> demandedOnGrid() const;
  void splitOnGrid(Split& split, RowSpan rows, bool keep) const;
  [[nodiscard]] long long rowsOf(long long run) const;

  unsigned char const* selected;
  double const* times;
  long long rows;
  long long stride;
  RunGrid const& grid;
  bool gridAscends = false;
  std::unordered_map<double, int> timeSlots; ///< every demanded time
  std::vector<long long> lastRunInSlot;      ///< the run that last hit a slot
  std::vector<long long> timesHit;           ///< demanded times that each run has hit
  int demanded = 0;
};

} // namespace runsieve
