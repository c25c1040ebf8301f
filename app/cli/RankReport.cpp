#include "app/cli/RankReport.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iomanip>
#include <ostream>

namespace runsieve::app {

std::string formatted(double value, char const* format, char const* missing)
{
  if (std::isnan(value)) return missing;
  char text[32];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

void printRankTable(std::ostream& out, std::vector<ParameterComparison> const& ranked)
{
  std::size_t width = 9;
  for (ParameterComparison const& r : ranked) width = std::max(width, r.name.size());
  auto row = [&](std::string const& name, std::string const& p, std::string const& d,
                 std::string const& passing, std::string const& others, std::string const& mark) {
    out << std::left << std::setw(static_cast<int>(width)) << name << std::right << "  " << std::setw(10) << p
        << "  " << std::setw(7) << d << "  " << std::setw(14) << passing << "  " << std::setw(13) << others
        << "  " << mark << '\n';
  };
  auto rounded = [](double value) { return formatted(value, "%.4g", "-"); };
  row("parameter", "p", "d", "median passing", "median others", "");
  for (ParameterComparison const& r : ranked)
    row(r.name, formatted(r.p, "%.3g", "-"), formatted(r.d, "%.3f", "-"), rounded(r.medianPassing),
        rounded(r.medianOthers), r.significant ? "*" : "");
}

} // namespace runsieve::app
