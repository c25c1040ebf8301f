#pragma once

#include "app/explorer/charts/AxisMap.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve::app {

/// The column of an axis, cut into many equal ones, in which each run stands. Runs are placed once; then any
/// of them are counted within a fraction of a millisecond.
class RunColumns
{
public:
  /// Columns of an axis: more than a small chart has pixels.
  static constexpr std::size_t columns = 1024;

  RunColumns() = default;
  /// \param values one per run
  RunColumns(std::vector<double> const& values, AxisMap const& axis);

  [[nodiscard]] std::size_t runs() const { return places.size(); }
  /// Whether the run stands on the axis.
  [[nodiscard]] bool isOn(std::size_t run) const { return places[run] < columns; }
  /// 0 to columns - 1 from the low end, of a run on the axis.
  [[nodiscard]] std::size_t of(std::size_t run) const { return places[run]; }

private:
  friend class ColumnCounts;

  static constexpr std::uint16_t below = columns; ///< smaller than the low end, or not on this axis
  static constexpr std::uint16_t above = columns + 1;
  static constexpr std::uint16_t missing = columns + 2;

  std::vector<std::uint16_t> places;
};

/// How many runs stand in each column.
class ColumnCounts
{
public:
  ColumnCounts() : counts(RunColumns::columns + 3) {}
  /// \param mask 1 per run that counts, else 0
  ColumnCounts(RunColumns const& runs, std::vector<std::uint8_t> const& mask);

  [[nodiscard]] std::uint32_t at(std::size_t column) const { return counts[column]; }
  /// Smaller than all that the axis shows.
  [[nodiscard]] std::uint32_t below() const { return counts[RunColumns::below]; }
  /// Runs with a value.
  [[nodiscard]] std::size_t total() const;
  /// Runs on the axis.
  [[nodiscard]] std::size_t onAxis() const;
  /// Of the runs with a value, the share at or below the end of each column, after the share that is below
  /// all columns: columns + 1 numbers. All 0 without runs.
  [[nodiscard]] std::vector<double> cumulated() const;

  /// Takes runs away that are counted in this one.
  ColumnCounts& operator-=(ColumnCounts const& part);

private:
  std::vector<std::uint32_t> counts;
};

} // namespace runsieve::app
