#include "app/scan/Header.h"

#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/scan/ScanError.h>

#include <algorithm>
#include <unordered_map>

namespace runsieve::app {

namespace {

ScanError::Place inHeader(std::size_t column = 0)
{
  return {1, column, {}};
}

// The line at the start of the text, without its end. Never looks further than the longest line.
std::string_view firstLine(std::string_view text)
{
  text = text.substr(0, longestLine + 1);
  return text.substr(0, text.find('\n'));
}

std::string_view withoutReturn(std::string_view line)
{
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

std::size_t countFields(std::string_view line, char delimiter)
{
  std::size_t fields = 1;
  bool inQuotes = false;
  for (char c : line) {
    if (c == '"') inQuotes = !inQuotes;
    if (c == delimiter && !inQuotes) ++fields;
  }
  return fields;
}

char findDelimiter(std::string_view header, std::string_view firstRow)
{
  constexpr std::string_view candidates = "\t;,";
  for (char candidate : candidates) {
    std::size_t fields = countFields(header, candidate);
    if (fields > 1 && fields == countFields(firstRow, candidate)) return candidate;
  }
  auto fewer = [&](char a, char b) { return countFields(header, a) < countFields(header, b); };
  return *std::max_element(candidates.rbegin(), candidates.rend(), fewer);
}

// One name and the position after it; quotes inside a quoted name are doubled.
std::string readName(std::string const& file, std::string_view line, char delimiter, std::size_t column,
                     std::size_t& position)
{
  std::size_t start = line.find_first_not_of(' ', position);
  if (start == std::string_view::npos || line[start] != '"') {
    std::size_t end = std::min(line.find(delimiter, position), line.size());
    std::string_view name = trimmed(line.substr(position, end - position));
    position = end;
    return std::string(name);
  }
  std::string name;
  for (position = start + 1; position < line.size(); ++position) {
    if (line[position] != '"') {
      name += line[position];
    } else if (line.substr(position + 1, 1) == "\"") {
      name += line[++position];
    } else {
      position = std::min(line.find_first_not_of(' ', position + 1), line.size());
      if (position < line.size() && line[position] != delimiter)
        throw ScanError(file, inHeader(column), "text after the closing quote of a name");
      return name;
    }
  }
  throw ScanError(file, inHeader(column), "the quotes of a name are not closed");
}

std::vector<std::string> splitNames(std::string const& file, std::string_view line, char delimiter)
{
  std::vector<std::string> names;
  for (std::size_t position = 0; position <= line.size(); ++position) {
    names.push_back(readName(file, line, delimiter, names.size() + 1, position));
    if (position >= line.size()) break;
    if (position + 1 == line.size()) names.emplace_back(); // ends in a delimiter
  }
  return names;
}

void checkText(std::string const& file, std::string_view start, std::string_view line)
{
  if (start.substr(0, 2) == "\xFF\xFE" || start.substr(0, 2) == "\xFE\xFF")
    throw ScanError(file, inHeader(), "the text is in UTF-16; save it as UTF-8");
  if (line.find('\0') != std::string_view::npos)
    throw ScanError(file, inHeader(), "binary data, not delimited text");
  if (line.size() > longestLine)
    throw ScanError(file, inHeader(), "the line is longer than 16 MiB; this is no scan file");
  if (line.find('\r') != std::string_view::npos)
    throw ScanError(file, inHeader(), "a carriage return inside the line; end lines with a line feed");
}

void checkNames(std::string const& file, std::vector<std::string> const& names)
{
  std::unordered_map<std::string_view, std::size_t> seen;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].empty() && i > 0) throw ScanError(file, inHeader(i + 1), "the column has no name");
    auto [former, isNew] = seen.emplace(names[i], i);
    if (!isNew)
      throw ScanError(file, {1, i + 1, names[i]},
                      "the name is that of column " + std::to_string(former->second + 1) + " as well");
  }
}

} // namespace

Header readHeader(std::string const& file, std::string_view text)
{
  if (trimmed(text.substr(0, longestLine)).empty()) throw ScanError(file, "the file is empty");
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  std::string_view start = text;
  if (text.substr(0, 3) == byteOrderMark) text.remove_prefix(3);
  std::string_view const rawLine = firstLine(text);
  std::string_view const line = withoutReturn(rawLine);
  checkText(file, start, line);
  if (trimmed(line).empty()) throw ScanError(file, inHeader(), "an empty line in place of the column names");

  Header header;
  header.dataBegin = text.data() + std::min(rawLine.size() + 1, text.size());
  auto rest = static_cast<std::size_t>(text.data() + text.size() - header.dataBegin);
  header.delimiter = findDelimiter(line, withoutReturn(firstLine({header.dataBegin, rest})));
  header.names = splitNames(file, line, header.delimiter);
  checkNames(file, header.names);
  return header;
}

} // namespace runsieve::app
