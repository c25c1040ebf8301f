#include "app/cli/OutputFiles.h"

#include "app/store/FileEnding.h"

#include <runsieve/core/files/SafeFile.h>
#include <runsieve/core/read/ParametersFile.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/sieve/SieveFile.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <system_error>

namespace runsieve::app {

namespace {

constexpr char isRead[] = "is the file that is read";

bool isSameFile(std::string const& a, std::string const& b)
{
  std::error_code failure; // such as that there is no such file
  return a == b || std::filesystem::equivalent(a, b, failure);
}

/// Files that none may be written over, the sieve file aside.
std::vector<std::string> inputsOf(SieveArguments const& arguments)
{
  std::vector<std::string> inputs = {arguments.file, givenParametersFile(arguments.file, arguments.read)};
  if (!arguments.sieve.empty())
    inputs.push_back(foundOptions(arguments.file, loadSieve(arguments.sieve).read).parametersFile);
  inputs.erase(std::remove_if(inputs.begin(), inputs.end(), isStandardOutput), inputs.end());
  return inputs;
}

void requireOther(char const* command, std::string const& output, std::string const& input)
{
  if (isSameFile(output, input)) throw UsageError(std::string(command) + ": " + output + ' ' + isRead);
}

} // namespace

bool isPictureName(std::string const& path)
{
  std::string const ending = fileEnding(path);
  return ending == ".png" || ending == ".pdf";
}

void checkPictureName(char const* command, std::string const& picture)
{
  if (!picture.empty() && !isPictureName(picture))
    throw UsageError(std::string(command) + ": the name of the picture must end in .png or .pdf");
}

void checkPaintedName(char const* command, std::string const& picture)
{
  if (!picture.empty() && !isPictureName(picture) && fileEnding(picture) != ".svg")
    throw UsageError(std::string(command) + ": the name of the picture must end in .png, .svg or .pdf");
}

void checkFigureName(char const* command, std::string const& picture)
{
  if (!isPictureName(picture) && fileEnding(picture) != ".svg")
    throw UsageError(std::string(command) + ": the name of the figure must end in .png, .svg or .pdf");
}

bool isStandardOutput(std::string const& path)
{
  return path.empty() || path == "-";
}

void writeText(std::string const& path, std::string const& text)
{
  if (isStandardOutput(path)) {
    std::cout << text;
    return;
  }
  SafeFile file(path);
  file.write(text);
  file.commit();
}

void requireNotRead(std::string const& output, std::vector<std::string> const& inputs)
{
  for (std::string const& input : inputs)
    if (isSameFile(output, input))
      throw ScanError(output, std::string("this ") + isRead + "; choose another name");
}

void checkOutputs(char const* command, SieveArguments const& arguments, std::vector<std::string> outputs)
{
  if (!arguments.sieve.empty())
    for (std::string const& output : outputs)
      if (!isStandardOutput(output)) requireOther(command, output, arguments.sieve);
  outputs.push_back(arguments.saveSieve);
  outputs.erase(std::remove_if(outputs.begin(), outputs.end(), isStandardOutput), outputs.end());
  std::vector<std::string> const inputs = inputsOf(arguments);
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    for (std::string const& input : inputs) requireOther(command, outputs[i], input);
    for (std::size_t k = 0; k < i; ++k)
      if (isSameFile(outputs[i], outputs[k]))
        throw UsageError(std::string(command) + ": " + outputs[i] + " would be written twice");
  }
}

} // namespace runsieve::app
