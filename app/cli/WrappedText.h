#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace runsieve::app {

/// Sentences, each from a new line on, broken at blanks so that no line is wider than `width` columns; the
/// first line begins with `label`, the others with as many blanks. A word that is too wide stays whole.
void printWrapped(std::ostream& out, std::string const& label, std::vector<std::string> const& sentences,
                  std::size_t width);

} // namespace runsieve::app
