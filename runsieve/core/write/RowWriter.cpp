#include <runsieve/core/write/RowWriter.h>

#include <runsieve/core/text/Decimal.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace runsieve {

namespace {

constexpr std::size_t bufferSize = std::size_t(1) << 20;

std::uint64_t bitsOf(double value)
{
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

/// Cells as text. Most values of a stacked scan are those of the row above (parameters, the run), so the text
/// of each column's last value is kept.
class RowFormatter
{
public:
  RowFormatter(std::vector<WrittenColumn> const& tableColumns, std::size_t timesOfRun)
      : columns(tableColumns), times(timesOfRun), above(columns.size())
  {}

  void append(std::string& to, std::size_t run, std::size_t time)
  {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      appendCell(to, i, run, time);
      to += i + 1 < columns.size() ? ',' : '\n';
    }
  }

private:
  void appendCell(std::string& to, std::size_t i, std::size_t run, std::size_t time)
  {
    WrittenColumn const& column = columns[i];
    if (!column.texts.empty()) {
      to += quotedField(column.texts[run]);
      return;
    }
    Text& text = above[i];
    double const value = column.numbers[position(column.each, run, time)];
    // By bits: -0 is not written as 0.
    if (std::uint64_t const bits = bitsOf(value); text.length == 0 || bits != text.bits) {
      text.bits = bits;
      text.length = static_cast<std::size_t>(writeDecimal(text.digits, value) - text.digits);
    }
    to.append(text.digits, text.length);
  }

  [[nodiscard]] std::size_t position(WrittenColumn::Each each, std::size_t run, std::size_t time) const
  {
    if (each == WrittenColumn::Each::Row) return run * times + time;
    return each == WrittenColumn::Each::Run ? run : time;
  }

  struct Text
  {
    std::uint64_t bits = 0;
    std::size_t length = 0;
    char digits[longestDecimal] = {};
  };
  std::vector<WrittenColumn> const& columns;
  std::size_t times;
  std::vector<Text> above;
};

} // namespace

std::string quotedField(std::string_view text)
{
  std::string field = "\"";
  for (char const c : text) field.append(c == '"' ? 2 : 1, c);
  return field + '"';
}

void writeRows(std::vector<WrittenColumn> const& columns, std::size_t runs, std::size_t times,
               TextSink const& sink)
{
  std::string text;
  for (WrittenColumn const& column : columns) text += (text.empty() ? "" : ",") + quotedField(column.name);
  text += '\n';
  RowFormatter formatter(columns, times);
  for (std::size_t run = 0; run < runs; ++run)
    for (std::size_t time = 0; time < times; ++time) {
      formatter.append(text, run, time);
      if (text.size() < bufferSize) continue;
      sink(text);
      text.clear();
    }
  sink(text);
}

} // namespace runsieve
