#pragma once

#include "app/cli/Commands.h"

#include <string>
#include <vector>

namespace runsieve::app {

/// Whether the name of a picture ends in .png or .pdf.
[[nodiscard]] bool isPictureName(std::string const& path);

/// One file must not be written over one that the same command reads, or writes as well. Empty names and "-"
/// are no files. \param outputs the files that the command writes, the sieve file aside \throw UsageError
void checkOutputs(char const* command, SieveArguments const& arguments, std::vector<std::string> outputs);

} // namespace runsieve::app
