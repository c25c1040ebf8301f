#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <vector>

namespace runsieve {

/// Consecutive rows of a table.
struct RowSpan
{
  long long first;
  long long count;
};

/// Ascending rows of a table, as spans. Selected rows of a run stand together, so this is short where a list
/// of rows would be long.
class RUNSIEVE_CORE_EXPORT RowSpans
{
public:
  void append(long long row)
  {
    if (!list.empty() && list.back().first + list.back().count == row)
      ++list.back().count;
    else
      list.push_back({row, 1});
    ++total;
  }
  void clear();

  [[nodiscard]] std::vector<RowSpan> const& spans() const { return list; }
  [[nodiscard]] long long rowCount() const { return total; }

  /// Writes all row numbers; out holds rowCount() values.
  void expand(long long* out) const;

private:
  std::vector<RowSpan> list;
  long long total = 0;
};

/// Copies the rows of one column; out holds rows.rowCount() values.
RUNSIEVE_CORE_EXPORT void gatherRows(RowSpans const& rows, double const* column, double* out);
RUNSIEVE_CORE_EXPORT void gatherRows(RowSpans const& rows, long long const* column, long long* out);

} // namespace runsieve
