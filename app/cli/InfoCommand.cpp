#include "app/cli/Commands.h"

#include "app/scan/ColumnName.h"
#include "app/scan/ScanLayout.h"
#include "app/store/StoredPlot.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <sstream>

namespace runsieve::app {

namespace {

/// The finite values of a column.
struct Range
{
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();
  std::size_t notFinite = 0;
};

Range rangeOf(double const* column, std::size_t rows)
{
  Range range;
  for (std::size_t i = 0; i < rows; ++i) {
    if (!std::isfinite(column[i])) {
      ++range.notFinite;
      continue;
    }
    range.low = std::min(range.low, column[i]);
    range.high = std::max(range.high, column[i]);
  }
  return range;
}

// As a person wants it: six digits.
std::string rounded(double value)
{
  std::ostringstream text;
  text << value;
  return text.str();
}

std::string text(Range const& range, std::size_t rows)
{
  std::string line = "no finite value";
  if (range.notFinite < rows) line = rounded(range.low) + ".." + rounded(range.high);
  if (range.notFinite > 0) line += " (" + std::to_string(range.notFinite) + " rows not finite)";
  return line;
}

void printColumns(LinePlotTable const& scan, char const* title, std::vector<std::size_t> const& columns)
{
  std::cout << title << ' ' << columns.size() << '\n';
  std::size_t width = 0;
  for (std::size_t i : columns) width = std::max(width, columnName(scan.columnNames[i]).size());
  for (std::size_t i : columns) {
    std::string name = columnName(scan.columnNames[i]);
    name.resize(width, ' ');
    Range const range = rangeOf(scan.columnData[i], scan.rows());
    bool const isConstantParameter =
        scan.columnNames[i].first == Kestrane::Parameter && range.low == range.high && range.notFinite == 0;
    std::cout << "  " << name << "  " << text(range, scan.rows())
              << (isConstantParameter ? " (constant, not plotted)" : "") << '\n';
  }
}

} // namespace

int runInfo(InfoArguments const& arguments)
{
  auto const scan = readPlotOrScan(arguments.file, arguments.read).scan;
  ScanLayout const layout = scanLayout(*scan);
  double const* time = scan->columnData[layout.time];
  std::cout << "runs       " << scan->trajectoryCount << '\n'
            << "times      " << scan->trajectoryLength << ", " << scan->columnNames[layout.time].second << ' '
            << rounded(time[0]) << ".." << rounded(time[scan->trajectoryLength - 1]) << '\n';
  printColumns(*scan, "outputs   ", layout.outputs);
  printColumns(*scan, "parameters", layout.parameters);
  return 0;
}

} // namespace runsieve::app
