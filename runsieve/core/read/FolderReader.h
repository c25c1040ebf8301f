#pragma once

#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <string>

namespace runsieve {

/// Reads a folder of text files, one per run or with several runs each, or a tree of such folders, as one
/// scan. Runs are named by what differs between the paths of the files; a list of parameters in the folder of
/// a run ("parameters.txt") gives its parameters. Files that are no part of the scan are told.
/// \throw ScanError for files that are damaged, have nothing in common, or do not exist
[[nodiscard]] ScanFile readFolder(std::string const& folder, ReadOptions const& options);

} // namespace runsieve
