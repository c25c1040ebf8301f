#pragma once

#include <runsieve/core/read/ReadReport.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace runsieve {

/// One parameter of a run, as a file with a line for each has it.
struct ListedParameter
{
  std::string name;
  std::string value;
  std::size_t line = 0; ///< 1-based
};

/// Parameters of one run.
struct ParameterList
{
  std::string file;
  std::vector<ListedParameter> entries;
};

/// Reads a file of lines "NAME VALUE", "NAME=VALUE", "NAME: VALUE", or divided by tab, comma or semicolon.
/// Blank lines and comments (#, %, //) are passed over. Nothing if a line is of no such form, as in a table.
/// \throw ScanError for a file that cannot be read, or has a name twice
[[nodiscard]] std::optional<ParameterList> readParameterList(std::string const& file);

/// Adds parameters that each run has in a file of its own. \param lists the list of each run, by its
/// position; null for a run without one \throw ScanError if a value contradicts one that the scan has
void joinParameterLists(ScanFile& target, std::vector<ParameterList const*> const& lists);

} // namespace runsieve
