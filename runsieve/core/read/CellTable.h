#pragma once

#include <runsieve/core/read/Dialect.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace runsieve {

/// One column of a table of text.
struct CellColumn
{
  std::string header;              ///< its name in the file; empty: it is no part of the scan
  std::string unit;                ///< empty if the file tells none
  std::shared_ptr<double[]> cells; ///< one per row, as Cell.h has them; null if the column is not wanted
  bool hasText = false;            ///< whether any cell is a text
  bool hasMissing = false;         ///< whether any cell holds no value
  bool isOutput = false;           ///< whether the layout of the file says that it is an output
};

/// Where a cell stands.
struct CellPlace
{
  std::string file;
  std::size_t line = 0;   ///< 1-based
  std::size_t column = 0; ///< 1-based
};

/// A table of text as columns of cells, whatever its rows and columns mean.
struct CellTable
{
  std::string file; ///< for messages
  std::vector<CellColumn> columns;
  std::size_t rows = 0;
  std::vector<std::string> texts;       ///< the different texts of all cells, by number
  std::vector<std::size_t> blockStarts; ///< rows before which a blank line stands, ascending
  std::size_t headerLine = 1;           ///< 1-based; 0 if the file has none
  /// Line of a row in the file, 1-based; it may look through the whole text.
  std::function<std::size_t(std::size_t row)> lineOf;
  /// Where a cell of a table stands whose rows come from several files; such a table has no lineOf. Null:
  /// where file, lineOf and the order of the columns tell.
  std::function<CellPlace(std::size_t row, std::size_t column)> placeOf;

  /// The text of a cell as it stood in the file, for messages.
  [[nodiscard]] std::string written(double cell) const;
  /// \throw ScanError naming file, line and column; \param column from 0
  [[noreturn]] void fail(std::size_t row, std::size_t column, std::string const& message) const;
  [[noreturn]] void failInHeader(std::size_t column, std::string const& message) const;
};

/// Parses the rows of a text in several threads. \param text the whole text; it must outlive the table's
/// lineOf \param release whether pages of the text can be given back to the system as they are read
[[nodiscard]] CellTable readCells(std::string const& file, std::string_view text, Dialect const& dialect,
                                  ReadOptions const& options, bool release, std::vector<Finding>& findings);

} // namespace runsieve
