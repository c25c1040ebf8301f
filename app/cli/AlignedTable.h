#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace runsieve::app {

/// Rows of equally many cells as columns with two blanks between them; a line has no blanks at its end.
/// \param left columns that begin at their left end, the first ones; numbers end at their right
void printAligned(std::ostream& out, std::vector<std::vector<std::string>> const& rows, std::size_t left = 0);

} // namespace runsieve::app
