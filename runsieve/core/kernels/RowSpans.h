#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
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
  void append(long long row) { append({row, 1}); }
  void append(RowSpan rows)
  {
    if (!list.empty() && list.back().first + list.back().count == rows.first)
      list.back().count += rows.count;
    else
      list.push_back(rows);
    total += rows.count;
  }

  [[nodiscard]] std::vector<RowSpan> const& spans() const { return list; }
  [[nodiscard]] long long rowCount() const { return total; }

  /// Writes all row numbers; out holds rowCount() values.
  void expand(long long* out) const;

private:
  std::vector<RowSpan> list;
  long long total = 0;
};

/// Copies rows of an array.
/// \param rowBytes size of a row
/// \param out holds rows.rowCount() rows
RUNSIEVE_CORE_EXPORT void gatherRows(RowSpans const& rows, void const* array, std::size_t rowBytes,
                                     void* out);

/// Copies rows of an array of flags without reading it.
/// \param ones rows whose flag is 1; all others are 0. Ascending as the rows are
/// \param out holds rows.rowCount() flags
RUNSIEVE_CORE_EXPORT void gatherFlags(RowSpans const& rows, RowSpans const& ones, long long* out);

} // namespace runsieve
