#pragma once

#include "app/cli/Commands.h"

#include <string>
#include <variant>
#include <vector>

namespace runsieve::app {

/// Something to print instead of doing any work: the help or the version.
struct Information
{
  std::string text;
};

using Command =
    std::variant<Information, SimulateArguments, InfoArguments, RankArguments, PairsArguments, BoxArguments,
                 SelectArguments, RenderArguments, ClusterArguments, ConvertArguments, ExploreArguments>;

/// Understands the words after the program's name. Without a command, or with a file only, it is "explore".
/// \throw UsageError with one line that says what is wrong
[[nodiscard]] Command parseCommandLine(std::vector<std::string> const& words);

} // namespace runsieve::app
