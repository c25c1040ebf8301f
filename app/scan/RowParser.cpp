#include "app/scan/RowParser.h"

#include <runsieve/core/text/FieldText.h>
#include "app/scan/Header.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <utility>

namespace runsieve::app {

namespace {

constexpr std::size_t blockRows = 64;

bool sameText(char const* a, char const* b, std::size_t length)
{
  for (; length >= 8; length -= 8, a += 8, b += 8)
    if (std::memcmp(a, b, 8) != 0) return false; // one comparison of registers
  while (length > 0 && a[length - 1] == b[length - 1]) --length;
  return length == 0;
}

} // namespace

RowParser::RowParser(char delimiterOfFile, std::vector<bool> wantedFields)
    : delimiter(delimiterOfFile), wanted(std::move(wantedFields)), above(wanted.size()),
      block(blockRows * wanted.size())
{}

std::optional<RowFault> RowParser::parse(std::string_view text, std::size_t& row,
                                         std::vector<double*> const& columns)
{
  position = text.data();
  end = position + text.size();
  std::size_t rows = 0; // in the block
  while (position < end) {
    if (!parseRow(&block[rows * wanted.size()])) return faultAt(row + rows);
    if (++rows < blockRows) continue;
    flush(columns, row, rows);
    row += std::exchange(rows, 0);
  }
  flush(columns, row, rows);
  row += rows;
  return std::nullopt;
}

std::optional<RowFault> RowParser::check(std::string_view text)
{
  position = text.data();
  end = position + text.size();
  for (std::size_t row = 0; position < end; ++row)
    if (!parseRow(block.data())) return faultAt(row);
  return std::nullopt;
}

bool RowParser::parseRow(double* values)
{
  rowBegin = position;
  std::size_t const last = wanted.size() - 1;
  for (std::size_t i = 0; i <= last; ++i) {
    char const stop = i < last ? delimiter : '\n';
    failedField = i;
    if (!wanted[i]) {
      if (!skipField(stop)) return false;
      continue;
    }
    Field& field = above[i];
    auto const left = static_cast<std::size_t>(end - position);
    if (field.length > 0 && left > field.length && position[field.length] == stop &&
        sameText(position, field.text, field.length))
      position += field.length + 1;
    else if (!parseField(field, stop))
      return false;
    values[i] = field.value;
  }
  return true;
}

bool RowParser::parseField(Field& field, char stop)
{
  auto [numberEnd, error] = std::from_chars(position, end, field.value);
  if (error == std::errc() && numberEnd < end && *numberEnd == stop) {
    finishField(field, numberEnd);
    return true;
  }

  // Blanks, a sign, quotes, the carriage return of a line end, the end of the file, or a fault.
  char const* fieldEnd = position;
  while (fieldEnd < end && *fieldEnd != stop && *fieldEnd != '\n') ++fieldEnd;
  bool const complete = stop == '\n' || (fieldEnd < end && *fieldEnd == stop);
  std::string_view text(position, static_cast<std::size_t>(fieldEnd - position));
  if (stop == '\n' && !text.empty() && text.back() == '\r') text.remove_suffix(1);
  auto number = complete && text.size() <= longestLine ? parseNumber(text) : std::nullopt;
  if (!number) return false;
  field.value = *number;
  finishField(field, fieldEnd);
  return true;
}

void RowParser::finishField(Field& field, char const* fieldEnd)
{
  field.text = position;
  field.length = static_cast<std::size_t>(fieldEnd - position);
  position = fieldEnd < end ? fieldEnd + 1 : end;
}

bool RowParser::skipField(char stop)
{
  bool inQuotes = false;
  char const* fieldEnd = position;
  for (; fieldEnd < end && *fieldEnd != '\n' && (inQuotes || *fieldEnd != stop); ++fieldEnd)
    if (*fieldEnd == '"') inQuotes = !inQuotes;
  if (stop != '\n' && (fieldEnd == end || *fieldEnd != stop)) return false;
  position = fieldEnd < end ? fieldEnd + 1 : end;
  return true;
}

void RowParser::flush(std::vector<double*> const& columns, std::size_t firstRow, std::size_t rows) const
{
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (!wanted[i]) continue;
    double* target = columns[i] + firstRow;
    for (std::size_t row = 0; row < rows; ++row) target[row] = block[row * wanted.size() + i];
  }
}

// The row again, slowly, to say in words what is wrong with it.
RowFault RowParser::faultAt(std::size_t row) const
{
  auto const left = static_cast<std::size_t>(end - rowBegin);
  std::string_view line(rowBegin, std::min(left, longestLine));
  std::size_t const lineEnd = line.find('\n');
  bool const isLast = lineEnd == std::string_view::npos && left <= longestLine;
  line = line.substr(0, lineEnd);
  if (lineEnd == std::string_view::npos && !isLast)
    return {row, 0, "the line is longer than 16 MiB; this is no scan file"};
  if (trimmed(line).empty() || line == "\r") return {row, 0, "an empty line between rows"};

  std::vector<std::string_view> fields;
  bool inQuotes = false;
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= line.size(); ++i) {
    if (i < line.size() && line[i] == '"') inQuotes = !inQuotes;
    if (i < line.size() && (inQuotes || line[i] != delimiter)) continue;
    fields.push_back(line.substr(begin, i - begin));
    begin = i + 1;
  }
  if (fields.size() != wanted.size()) {
    std::string message =
        std::to_string(fields.size()) + " fields, but the header has " + std::to_string(wanted.size());
    if (isLast && fields.size() < wanted.size()) message += "; the file seems to be cut off";
    if (delimiter == ',' && fields.size() > wanted.size()) message += " (write decimals with a point)";
    return {row, 0, message};
  }
  std::string_view text = fields[failedField];
  if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
  return {row, failedField + 1, numberFault(text)};
}

} // namespace runsieve::app
