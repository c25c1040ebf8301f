#include "app/cli/AlignedTable.h"

#include <runsieve/core/text/ShownText.h>

#include <algorithm>
#include <ostream>

namespace runsieve::app {

namespace {

std::vector<std::size_t> widthsOf(std::vector<std::vector<std::string>> const& rows)
{
  std::vector<std::size_t> widths(rows.empty() ? 0 : rows.front().size());
  for (auto const& row : rows)
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], shownWidth(row[i]));
  return widths;
}

} // namespace

void printAligned(std::ostream& out, std::vector<std::vector<std::string>> const& rows, std::size_t left)
{
  std::vector<std::size_t> const widths = widthsOf(rows);
  for (auto const& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      std::string const blanks(widths[i] - shownWidth(row[i]), ' ');
      line += (i > 0 ? "  " : "") + (i < left ? row[i] + blanks : blanks + row[i]);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  }
}

} // namespace runsieve::app
