#include "app/cli/OutputFiles.h"

#include "app/store/FileEnding.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace runsieve::app {

namespace {

bool isSameFile(std::string const& a, std::string const& b)
{
  std::error_code failure; // such as that there is no such file
  return a == b || std::filesystem::equivalent(a, b, failure);
}

bool isNoFile(std::string const& path)
{
  return path.empty() || path == "-";
}

} // namespace

bool isPictureName(std::string const& path)
{
  std::string const ending = fileEnding(path);
  return ending == ".png" || ending == ".pdf";
}

void checkOutputs(char const* command, SieveArguments const& arguments, std::vector<std::string> outputs)
{
  outputs.push_back(arguments.saveSieve);
  outputs.erase(std::remove_if(outputs.begin(), outputs.end(), isNoFile), outputs.end());
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    for (std::string const& input : {arguments.file, arguments.read.parametersFile})
      if (!isNoFile(input) && isSameFile(outputs[i], input))
        throw UsageError(std::string(command) + ": " + outputs[i] + " is the file that is read");
    for (std::size_t k = 0; k < i; ++k)
      if (isSameFile(outputs[i], outputs[k]))
        throw UsageError(std::string(command) + ": " + outputs[i] + " would be written twice");
  }
}

} // namespace runsieve::app
