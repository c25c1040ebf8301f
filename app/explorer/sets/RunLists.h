#pragma once

#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace runsieve::app {

/// The runs of a list as gates on runs are written: "3,5,10-15". \throw GateError
[[nodiscard]] RunSet typedRuns(std::string const& list, Scan const& scan);

/// What a text that lists runs says.
struct ListedRuns
{
  RunSet runs;
  std::vector<std::string> unknown; ///< keys that the scan does not have, in their order
};

/// The runs of a text that has a key in each line, as it is or in double quotes, or in the first field of
/// comma-separated text. Empty lines, and a first line "run", are left out. \param bytes in UTF-8, UTF-16
/// with its mark, or Latin-1
[[nodiscard]] ListedRuns listedRuns(std::string_view bytes, Scan const& scan);

/// A gate that exactly the runs of a set pass, with spans for runs whose numbers follow one another. Nothing
/// for a set without runs, or if it took more than mostListed keys and spans.
[[nodiscard]] std::optional<Gate> gateOnRuns(RunSet const& runs, Scan const& scan);

inline constexpr std::size_t mostListed = 2000;

} // namespace runsieve::app
