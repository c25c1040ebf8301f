#include "app/scan/ScanWriter.h"

#include "app/scan/ColumnName.h"
#include <runsieve/core/files/SafeFile.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/Decimal.h>

#include <cstdint>
#include <cstring>
#include <ostream>
#include <string_view>
#include <vector>

namespace runsieve::app {

namespace {

constexpr std::size_t bufferSize = std::size_t(1) << 20;

std::string headerLine(LinePlotTable const& scan)
{
  std::string line;
  for (auto const& name : scan.columnNames) {
    if (!line.empty()) line += ',';
    line += '"';
    for (char c : columnName(name)) line.append(c == '"' ? 2 : 1, c);
    line += '"';
  }
  return line + '\n';
}

std::uint64_t bitsOf(double value)
{
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

/// Numbers as text. Most values of a stacked scan are those of the row above (parameters, the run index), so
/// the text of each column's last value is kept.
class RowFormatter
{
public:
  explicit RowFormatter(std::vector<double*> const& scanColumns)
      : columns(scanColumns), above(scanColumns.size())
  {}

  [[nodiscard]] std::size_t longestRow() const { return columns.size() * (longestDecimal + 1); }

  char* format(char* to, std::size_t row)
  {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      Text& text = above[i];
      double const value = columns[i][row];
      // By bits: -0 is not written as 0.
      if (std::uint64_t const bits = bitsOf(value); text.length == 0 || bits != text.bits) {
        text.bits = bits;
        text.length = static_cast<std::size_t>(writeDecimal(text.digits, value) - text.digits);
      }
      std::memcpy(to, text.digits, longestDecimal);
      to += text.length;
      *to++ = i + 1 < columns.size() ? ',' : '\n';
    }
    return to;
  }

private:
  struct Text
  {
    std::uint64_t bits = 0;
    std::size_t length = 0;
    char digits[longestDecimal] = {};
  };
  std::vector<double*> const& columns;
  std::vector<Text> above;
};

template <class Write> void writeText(LinePlotTable const& scan, Write const& write)
{
  write(headerLine(scan));
  RowFormatter formatter(scan.columnData);
  std::vector<char> buffer(bufferSize + formatter.longestRow());
  char* const begin = buffer.data();
  char* to = begin;
  for (std::size_t row = 0; row < scan.rows(); ++row) {
    to = formatter.format(to, row);
    if (to < begin + bufferSize && row + 1 < scan.rows()) continue;
    write(std::string_view(begin, static_cast<std::size_t>(to - begin)));
    to = begin;
  }
}

} // namespace

void writeScan(LinePlotTable const& scan, std::string const& path)
{
  SafeFile file(path);
  writeText(scan, [&](std::string_view text) { file.write(text); });
  file.commit();
}

void writeScan(LinePlotTable const& scan, std::ostream& stream)
{
  writeText(scan, [&](std::string_view text) {
    if (!stream.write(text.data(), static_cast<std::streamsize>(text.size())))
      throw ScanError("output stream", "cannot be written");
  });
  if (!stream.flush()) throw ScanError("output stream", "cannot be written");
}

} // namespace runsieve::app
