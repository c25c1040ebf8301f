#pragma once

#include <runsieve/records/TypedConcentrationName.h>
#include <runsieve/runsieve_export.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// The time courses of many runs, one flat array per column, runs stacked one below the other.
///
/// Column order: species, time, "Run Index" (both of type Unnamed), parameters. Plots borrow the arrays and
/// never copy them, so the record is not copyable and must outlive the tables made from it.
/// Arrays made by addColumn() belong to the record, those of borrowColumn() are shared with it; a host may
/// instead push pointers to memory that it keeps alive as long as the record.
struct RUNSIEVE_EXPORT LinePlotTable
{
  LinePlotTable() = default;
  LinePlotTable(LinePlotTable const&) = delete;
  LinePlotTable& operator=(LinePlotTable const&) = delete;

  std::vector<Kestrane::TypedConcentrationName> columnNames; ///< one per column
  std::vector<double*> columnData;                           ///< rows() values each
  std::uint64_t trajectoryCount = 0;                         ///< runs
  std::uint64_t trajectoryLength = 0;                        ///< rows of one run: the stride of the plot
  /// Lower and upper bound of each column of type Parameter, in column order; empty when not known.
  /// Columns whose bounds are equal never become a column of the plot.
  std::vector<std::pair<double, double>> parameterBounds;

  std::size_t rows() const { return static_cast<std::size_t>(trajectoryCount * trajectoryLength); }

  /// Appends a column of rows() values that the record owns; the values are not initialised.
  double* addColumn(Kestrane::DataType type, std::string name);
  /// Appends a column of rows() values that the record keeps alive. Plots write to no borrowed column.
  void borrowColumn(Kestrane::DataType type, std::string name, std::shared_ptr<double[]> values);

private:
  std::vector<std::shared_ptr<double[]>> storage;
};
