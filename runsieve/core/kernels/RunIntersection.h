#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <runsieve/core/kernels/RowSpans.h>

#include <unordered_map>
#include <vector>

namespace runsieve {

/// Finds the runs of a stacked table that have a selected row at every time that holds any selected row.
///
/// A run is stride consecutive rows; the last one may be short. Times are compared exactly; a NaN is no time,
/// so a selected row with a NaN time makes no demand and counts as dropped. Linear in the rows; runs that
/// share the first run's time grid bit for bit, the usual case, cost one comparison of memory each.
class RUNSIEVE_CORE_EXPORT RunIntersection
{
public:
  /// Arrays of `rows` values; they must outlive this object. selected holds 0 or 1 per row.
  RunIntersection(unsigned char const* selected, double const* times, long long rows, long long stride);

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
  void readGrid();
  bool onGrid(long long firstRow, long long count) const;
  void countRun(long long run, long long firstRow, long long count);
  int slotFor(double time);
  int knownSlot(double time) const;
  bool survives(long long run) const { return timesHit[static_cast<std::size_t>(run)] == demanded; }

  unsigned char const* selected;
  double const* times;
  long long rows;
  long long stride;
  bool gridUsable = false;
  std::vector<unsigned char> runOnGrid;      ///< whether each run has the times of the first one
  std::vector<int> gridSlot;                 ///< slot of each grid time once it is demanded, else -1
  std::unordered_map<double, int> timeSlots; ///< every demanded time
  std::vector<long long> lastRunInSlot;      ///< the run that last hit a slot
  std::vector<int> timesHit;                 ///< demanded times that each run has hit
  int demanded = 0;
};

} // namespace runsieve
