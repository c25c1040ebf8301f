#pragma once

#include <runsieve/core/read/NameList.h>

#include <string>
#include <vector>

namespace runsieve {

/// What lies in a folder and the folders below it. Paths are relative to it, divided by '/', in natural
/// order.
struct FolderFiles
{
  std::vector<std::string> texts;          ///< files whose names may be those of text with a scan
  std::vector<std::string> parameterFiles; ///< files that isParameterFile()
  NameList others;                         ///< what was passed over
};

/// Lists a folder. Links are followed, but no folder and no file is listed twice.
/// \throw ScanError for a folder that cannot be read, or too many files
[[nodiscard]] FolderFiles listFolder(std::string const& folder);

/// Whether a name is that of a table of parameters: "parameters.csv", "params.tsv", "parameters.txt".
[[nodiscard]] bool isParameterFile(std::string const& path);

/// Paths of such files right in a folder, always in one order.
[[nodiscard]] std::vector<std::string> parameterFilesIn(std::string const& folder);

/// The ending of a path with its point, "" if there is none; of a hidden file nothing is an ending.
[[nodiscard]] std::string endingOf(std::string const& path);

/// The last part of a path, and what comes before it without the '/'.
[[nodiscard]] std::string nameIn(std::string const& path);
[[nodiscard]] std::string folderOf(std::string const& path);

} // namespace runsieve
