#include <runsieve/core/read/RowParser.h>

#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/Lines.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

namespace runsieve {

namespace {

constexpr std::size_t mostBlockRows = 64;
constexpr std::size_t mostBlockCells = std::size_t(1) << 20; ///< but a row at least
constexpr std::ptrdiff_t digitsOfLastExact = 16;
constexpr double lastExactWhole = 9007199254740992.0; ///< 2^53; from here on a double skips some

bool sameText(char const* a, char const* b, std::size_t length)
{
  for (; length >= 8; length -= 8, a += 8, b += 8)
    if (std::memcmp(a, b, 8) != 0) return false; // one comparison of registers
  while (length > 0 && a[length - 1] == b[length - 1]) --length;
  return length == 0;
}

bool isBlank(char c)
{
  return c == ' ' || c == '\t';
}

// Most rows begin with a digit or a sign: they need no further look.
bool mayBeOther(char first, char delimiter)
{
  if (first == delimiter) return true;
  return first <= '/' && first != '-' && first != '+' && first != '.' && first != '"';
}

bool isHeaderAgain(char const* at, char const* end, std::string_view header)
{
  return !header.empty() && *at == header.front() && lineAt(at, end) == header;
}

} // namespace

RowParser::RowParser(RowFormat const& rowFormat, std::uint64_t firstText)
    : format(rowFormat), shortestOdd(format.missingNumbers.empty() ? digitsOfLastExact : 0),
      nextText(firstText), above(format.wanted.size()),
      blockRows(std::clamp<std::size_t>(mostBlockCells / std::max<std::size_t>(format.wanted.size(), 1), 1,
                                        mostBlockRows)),
      block(blockRows * format.wanted.size()), textSeen(format.wanted.size()),
      missingSeen(format.wanted.size()), roundedSeen(format.wanted.size()),
      namelessValues(format.wanted.size())
{}

std::optional<RowFault> RowParser::parse(std::string_view text, std::size_t& row,
                                         std::vector<double*> const& columns)
{
  position = text.data();
  end = position + text.size();
  std::size_t const width = format.wanted.size();
  std::size_t rows = 0; // in the block
  while (position < end) {
    if (!isRow()) continue;
    if (std::exchange(blankBefore, false)) starts.push_back(row + rows);
    if (!parseRow(&block[rows * width])) return faultAt(row + rows);
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
  for (std::size_t row = 0; position < end;) {
    if (!isRow()) continue;
    if (!parseRow(block.data())) return faultAt(row);
    ++row;
  }
  return std::nullopt;
}

std::size_t RowParser::countRows(std::string_view text, RowFormat const& format)
{
  std::size_t count = 0;
  char const delimiter = format.fields.delimiter;
  char const* const end = text.data() + text.size();
  for (char const* at = text.data(); at < end; at = nextLine(at, end)) {
    bool const isOther = (mayBeOther(*at, delimiter) && lineKind(at, end, delimiter) != LineKind::Row) ||
                         isHeaderAgain(at, end, format.header);
    if (!isOther) ++count;
  }
  return count;
}

// Whether a row begins here; any other line is passed over.
bool RowParser::isRow()
{
  bool const again = isHeaderAgain(position, end, format.header);
  LineKind const kind = mayBeOther(*position, format.fields.delimiter)
                            ? lineKind(position, end, format.fields.delimiter)
                            : LineKind::Row;
  if (kind == LineKind::Row && !again) return true;
  if (kind == LineKind::Comment) {
    ++comments;
    if (otherNames == nullptr && isOtherHeader()) otherNames = position;
  } else {
    blankBefore = true;
  }
  position = nextLine(position, end);
  return false;
}

bool RowParser::isOtherHeader() const
{
  std::vector<std::string> const& names = format.commentNames;
  if (names.empty()) return false;
  constexpr std::string_view marks = " \t#%/";
  std::string_view line = lineAt(position, end);
  line.remove_prefix(std::min(line.find_first_not_of(marks), line.size()));
  auto fields = splitFields(line, format.fields.delimiter, names.size() + 1);
  while (!fields.empty() && trimmed(fields.back()).empty()) fields.pop_back();
  std::size_t shared = 0;
  bool same = true;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    std::string const name(trimmed(fieldText(trimmed(fields[i]))));
    shared += std::find(names.begin(), names.end(), name) != names.end() ? 1 : 0;
    same = same && i < names.size() && names[i] == name;
  }
  return !same && shared >= 2 && 2 * shared >= fields.size();
}

bool RowParser::parseRow(double* values)
{
  rowBegin = position;
  return format.fields.delimiter == ' ' ? parseFields<true>(values) : parseFields<false>(values);
}

template <bool atBlanks> void RowParser::skipBlanks()
{
  if constexpr (atBlanks)
    while (position < end && isBlank(*position)) ++position;
}

template <bool atBlanks> bool RowParser::parseFields(double* values)
{
  std::size_t const last = format.wanted.size() - 1;
  skipBlanks<atBlanks>();
  for (std::size_t i = 0; i <= last; ++i) {
    if (!atBlanks && !format.wanted[i]) {
      if (!skipField(i, i < last ? format.fields.delimiter : '\n')) return false;
      continue;
    }
    Field& field = above[i];
    auto const left = static_cast<std::size_t>(end - position);
    char const stop = i < last ? format.fields.delimiter : '\n';
    if (field.length > 0 && left > field.length && position[field.length] == stop &&
        sameText(position, field.text, field.length)) {
      position += field.length + 1;
      if (i < last) skipBlanks<atBlanks>();
    } else if (!parseField<atBlanks>(i, i == last)) {
      return false;
    }
    values[i] = field.value;
  }
  return true;
}

template <bool atBlanks> bool RowParser::parseField(std::size_t index, bool isLast)
{
  Field& field = above[index];
  char const stop = isLast ? '\n' : format.fields.delimiter;
  if (format.fields.decimal == '.') {
    auto [numberEnd, error] = std::from_chars(position, end, field.value);
    if (error == std::errc() && numberEnd < end && *numberEnd == stop) {
      if (numberEnd - position >= shortestOdd)
        field.value = numberCell(field.value, between(position, numberEnd), index);
      finishField(field, numberEnd);
      if (!isLast) skipBlanks<atBlanks>();
      return true;
    }
  }

  // A decimal comma, blanks, a sign, quotes, text, no value, the carriage return of a line end, the end of
  // the file, or a fault.
  char const* fieldEnd = position;
  bool inQuotes = false;
  auto const ends = [&](char c) { return atBlanks ? isBlank(c) : c == format.fields.delimiter; };
  for (; fieldEnd < end && *fieldEnd != '\n' && (inQuotes || !ends(*fieldEnd)); ++fieldEnd)
    if (*fieldEnd == '"') inQuotes = !inQuotes;
  std::string_view text = between(position, fieldEnd);
  if (atBlanks && isLast) { // blanks may stand behind the last field
    while (fieldEnd < end && isBlank(*fieldEnd)) ++fieldEnd;
  }
  bool const complete = isLast ? (fieldEnd == end || *fieldEnd == '\n' || *fieldEnd == '\r')
                               : (fieldEnd < end && ends(*fieldEnd));
  if (isLast && fieldEnd < end && *fieldEnd == '\r') ++fieldEnd;
  if (isLast && fieldEnd < end && *fieldEnd != '\n') return false;
  if (!text.empty() && isLast && text.back() == '\r') text.remove_suffix(1);
  if (atBlanks && text.empty()) return false; // blanks hold no empty field
  bool const tooLong = text.size() > longestLine;
  bool const isBinary = !text.empty() && std::memchr(text.data(), '\0', text.size()) != nullptr;
  if (!complete || inQuotes || tooLong || isBinary) return false;
  field.value = valueOf(text, index);
  finishField(field, fieldEnd);
  if (!isLast) skipBlanks<atBlanks>();
  return true;
}

double RowParser::valueOf(std::string_view text, std::size_t field)
{
  bool const isText = format.quotesAreTexts[field] && trimmed(text).substr(0, 1) == "\"";
  if (!isText)
    if (auto const number = fieldNumber(text, format.fields.decimal)) return numberCell(*number, text, field);
  std::string const plain = fieldText(text);
  std::string_view const word = trimmed(plain);
  if ((isText ? word.empty() : isUsualMissing(word)) ||
      std::find(format.missing.begin(), format.missing.end(), word) != format.missing.end()) {
    missingSeen[field] = true;
    return cell::missing();
  }
  textSeen[field] = true;
  return textCell(trimmed(text));
}

void RowParser::noteRounding(std::string_view text, std::size_t field)
{
  if (roundedSeen[field]) return;
  std::string const plain = fieldText(text);
  std::string_view digits = trimmed(plain);
  if (!digits.empty() && (digits.front() == '-' || digits.front() == '+')) digits.remove_prefix(1);
  std::uint64_t whole = 0;
  auto const [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), whole);
  if (stop != digits.data() + digits.size()) return; // written as a number that is not exact anyway
  constexpr double limit = 18446744073709551616.0;   // 2^64
  auto const number = static_cast<double>(whole);
  roundedSeen[field] = error != std::errc() || number >= limit || static_cast<std::uint64_t>(number) != whole;
}

double RowParser::numberCell(double number, std::string_view text, std::size_t field)
{
  if (std::fabs(number) >= lastExactWhole) noteRounding(text, field);
  std::vector<double> const& none = format.missingNumbers;
  if (std::find(none.begin(), none.end(), number) == none.end()) return number;
  missingSeen[field] = true;
  return cell::missing();
}

double RowParser::textCell(std::string_view text)
{
  auto const [place, isNew] = textNumbers.emplace(text, nextText);
  if (isNew) {
    foundTexts.push_back(text);
    ++nextText;
  }
  return cell::text(place->second);
}

void RowParser::finishField(Field& field, char const* fieldEnd)
{
  field.text = position;
  field.length = static_cast<std::size_t>(fieldEnd - position);
  position = fieldEnd < end ? fieldEnd + 1 : end;
}

bool RowParser::skipField(std::size_t index, char stop)
{
  bool inQuotes = false;
  char const* fieldEnd = position;
  for (; fieldEnd < end && *fieldEnd != '\n' && (inQuotes || *fieldEnd != format.fields.delimiter);
       ++fieldEnd)
    if (*fieldEnd == '"') inQuotes = !inQuotes;
  bool const isEnd = fieldEnd == end || *fieldEnd == '\n';
  if (isEnd != (stop == '\n')) return false;
  if (format.nameless[index] && fieldEnd != position && namelessValues[index].empty()) {
    std::string_view text = between(position, fieldEnd);
    if (text.back() == '\r') text.remove_suffix(1);
    if (!isUsualMissing(trimmed(fieldText(text)))) namelessValues[index] = trimmed(text);
  }
  position = fieldEnd < end ? fieldEnd + 1 : end;
  return true;
}

void RowParser::flush(std::vector<double*> const& columns, std::size_t firstRow, std::size_t rows) const
{
  for (std::size_t i = 0; i < format.wanted.size(); ++i) {
    if (!format.wanted[i]) continue;
    double* target = columns[i] + firstRow;
    for (std::size_t row = 0; row < rows; ++row) target[row] = block[row * format.wanted.size() + i];
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
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  if (line.find('\0') != std::string_view::npos) return {row, 0, "binary data, not text"};

  std::vector<std::string_view> const fields = splitFields(line, format.fields.delimiter);
  std::size_t const wanted = format.wanted.size();
  if (fields.size() == wanted) return {row, 0, "the quotes of a field are not closed"};
  std::string message = std::to_string(fields.size()) + (fields.size() == 1 ? " field" : " fields") +
                        ", but the header has " + std::to_string(wanted);
  if (isLast && fields.size() < wanted) message += "; the file seems to be cut off";
  if (format.fields.delimiter == ',' && fields.size() > wanted) message += " (write decimals with a point)";
  return {row, 0, message};
}

} // namespace runsieve
