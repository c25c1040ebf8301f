#pragma once

#include <string>

namespace runsieve {

/// A text as charts can draw it: UTF-8. Anything else is taken for Latin-1.
std::string chartText(std::string const& text);

} // namespace runsieve
