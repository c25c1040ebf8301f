#include "app/cli/FigureDataFiles.h"

#include <filesystem>

namespace runsieve::app {

std::vector<std::string> figureDataFiles(std::string const& figure, FigureDataParts parts)
{
  std::filesystem::path const path(figure);
  std::vector<std::string> files;
  auto const add = [&](char const* ending) {
    files.push_back((path.parent_path() / path.stem()).string() + ending);
  };
  add("_runs.csv");
  add("_curves.csv");
  if (parts.parameters) add("_parameters.csv");
  if (parts.bands) add("_bands.csv");
  return files;
}

} // namespace runsieve::app
