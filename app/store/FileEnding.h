#pragma once

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>

namespace runsieve::app {

/// The ending of a file name in small letters, with its dot; empty if there is none.
[[nodiscard]] inline std::string fileEnding(std::string const& path)
{
  std::string ending = std::filesystem::path(path).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ending;
}

} // namespace runsieve::app
