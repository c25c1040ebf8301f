#pragma once

#include <string>

namespace runsieve {

/// Something that makes numbers mean less than they seem to, and what to do about it.
struct ComparisonWarning
{
  std::string kind;   ///< a word for programs: "small group"
  std::string text;   ///< "only 7 runs pass"
  std::string advice; ///< "widen the gates or simulate more runs"
};

} // namespace runsieve
