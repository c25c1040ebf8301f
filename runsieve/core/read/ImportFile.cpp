#include <runsieve/core/read/ImportFile.h>

#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/BoundedJson.h>
#include <runsieve/core/text/FieldText.h>

#include <filesystem>
#include <functional>
#include <map>

namespace runsieve {

namespace {

constexpr char ending[] = ".import.json";

std::vector<std::string> texts(ReadJson const& value)
{
  if (value.is_string()) return {value.get<std::string>()};
  return value.get<std::vector<std::string>>();
}

// Numbers may stand for what a field reads as.
std::vector<std::string> textsOrNumbers(ReadJson const& value)
{
  if (value.is_number()) return {value.dump()};
  if (!value.is_array()) return texts(value);
  std::vector<std::string> found;
  for (ReadJson const& item : value)
    found.push_back(item.is_number() ? item.dump() : item.get<std::string>());
  return found;
}

char character(ReadJson const& value)
{
  auto const text = value.get<std::string>();
  if (text == "tab") return '\t';
  if (text == "blank") return ' ';
  if (text.size() != 1) throw std::invalid_argument("a single character, \"tab\" or \"blank\" is expected");
  return text.front();
}

void fill(std::vector<std::string>& target, ReadJson const& value)
{
  if (target.empty()) target = texts(value);
}

void fill(std::string& target, ReadJson const& value)
{
  if (target.empty()) target = value.get<std::string>();
}

void fill(char& target, ReadJson const& value)
{
  if (target == 0) target = character(value);
}

void fillParameters(ReadOptions& options, ReadJson const& value)
{
  if (!options.parameters) options.parameters = texts(value);
}

// Members are called as the options of the program are, or as sieve files call them: there "parameters" is a
// list.
void fill(ReadOptions& options, std::string const& name, ReadJson const& value)
{
  std::map<std::string, std::function<void()>> const members = {
      {"time", [&] { fill(options.time, value); }},
      {"run", [&] { fill(options.run, value); }},
      {"parameter", [&] { fillParameters(options, value); }},
      {"output", [&] { fill(options.outputs, value); }},
      {"ignore", [&] { fill(options.ignore, value); }},
      {"missing",
       [&] {
         if (options.missing.empty()) options.missing = textsOrNumbers(value);
       }},
      {"names", [&] { fill(options.names, value); }},
      {"decimal", [&] { fill(options.decimal, value); }},
      {"delimiter", [&] { fill(options.delimiter, value); }},
      {"dataset", [&] { fill(options.dataset, value); }},
      {"parameters",
       [&] {
         if (value.is_array())
           fillParameters(options, value);
         else
           fill(options.parametersFile, value);
       }},
      {"outputs", [&] { fill(options.outputs, value); }},
      {"parameters_file", [&] { fill(options.parametersFile, value); }},
      {"exact_times", [&] { options.exactTimes = options.exactTimes || value.get<bool>(); }}};
  auto const member = members.find(name);
  if (member == members.end()) {
    std::string known;
    for (auto const& entry : members) known += (known.empty() ? "" : ", ") + entry.first;
    throw std::invalid_argument("there is no such option; there are " + known);
  }
  member->second();
}

ReadJson parsed(std::string const& file, std::string_view text)
{
  try {
    ReadJson document = parseJson(text);
    if (document.is_object()) return document;
  } catch (ReadJson::exception const&) {
  } catch (std::length_error const&) {
  }
  throw ScanError(file, "expected a JSON object of reading options");
}

} // namespace

std::string importFileOf(std::string const& scan)
{
  std::string plain = scan;
  while (plain.size() > 1 && plain.back() == '/') plain.pop_back(); // of a folder
  std::filesystem::path shorter(plain);
  shorter.replace_extension();
  for (std::string const& candidate : {plain + ending, shorter.string() + ending}) {
    std::error_code failure;
    if (candidate != ending && std::filesystem::is_regular_file(candidate, failure)) return candidate;
  }
  return {};
}

ReadOptions withImportFile(std::string const& importFile, ReadOptions options)
{
  MappedFile const map(importFile);
  ReadJson const document =
      parsed(importFile, {map.begin(), static_cast<std::size_t>(map.end() - map.begin())});
  for (auto const& [name, value] : document.items()) try {
      fill(options, name, value);
    } catch (ReadJson::exception const&) {
      throw ScanError(importFile,
                      "option " + runsieve::quoted(name) + ": a value of another type is expected");
    } catch (std::invalid_argument const& error) {
      throw ScanError(importFile, "option " + runsieve::quoted(name) + ": " + error.what());
    }
  return options;
}

} // namespace runsieve
