#include <runsieve/core/read/Dialect.h>

#include <runsieve/core/read/Lines.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace runsieve {

namespace {

constexpr std::size_t sampleLines = 200;
constexpr std::size_t sampleBytes = std::size_t(4) << 20; ///< but the first lines whatever their length
constexpr std::size_t surelySampled = 4;
constexpr std::size_t judgedFields = 2000; ///< of a line; tables are alike from there on
constexpr std::size_t mostProse = 10000;   ///< lines before a table

/// A line of the beginning of a text.
struct SampleLine
{
  char const* begin = nullptr;
  std::string_view text;
  std::size_t number = 0; ///< 1-based
};

struct Sample
{
  std::vector<SampleLine> rows;     ///< neither blank nor comment
  std::vector<SampleLine> comments; ///< in the order of the file
  bool complete = false;            ///< whether the text ends with it
};

bool isNumber(std::string_view field)
{
  return fieldNumber(field, '.').has_value() || fieldNumber(field, ',').has_value();
}

bool isEmpty(std::string_view field)
{
  return isUsualMissing(trimmed(fieldText(field)));
}

bool hasDecimalComma(std::string_view field)
{
  return field.find(',') != std::string_view::npos && fieldNumber(field, ',').has_value();
}

bool hasDecimalPoint(std::string_view field)
{
  return field.find('.') != std::string_view::npos && fieldNumber(field, '.').has_value();
}

// "1.000", "12.345": in some countries a thousand or more.
bool hasThousands(std::string_view field)
{
  std::string_view const number = trimmed(field);
  std::size_t const point = number.find('.');
  auto const isDigit = [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; };
  return point >= 1 && point <= 3 && number.size() == point + 4 && number.front() != '0' &&
         std::all_of(number.begin() + static_cast<std::ptrdiff_t>(point) + 1, number.end(), isDigit);
}

std::string_view withoutMark(std::string_view comment)
{
  comment.remove_prefix(std::min(comment.find_first_not_of(" \t"), comment.size()));
  while (!comment.empty() && (comment.front() == '#' || comment.front() == '%' || comment.front() == '/'))
    comment.remove_prefix(1);
  return comment;
}

/// The rows of a sample under one delimiter.
class Division
{
public:
  Division(Sample const& linesOfText, char fieldDelimiter) : sample(linesOfText), delimiter(fieldDelimiter)
  {
    for (SampleLine const& line : sample.rows) counts.push_back(countFields(line.text, delimiter));
    findTable();
  }

  [[nodiscard]] bool found() const { return alike > 0; }
  [[nodiscard]] std::size_t firstLine() const { return first; }
  [[nodiscard]] std::size_t fields() const { return width; }
  /// How well the delimiter fits: rows of one width, weighted by how much of them is numbers.
  [[nodiscard]] double score() const { return static_cast<double>(alike) * (0.05 + numbers); }

  [[nodiscard]] std::vector<std::string_view> split(std::size_t row) const
  {
    return splitFields(sample.rows[row].text, delimiter, judgedFields);
  }

  /// Fields of a row that are numbers, by their position.
  [[nodiscard]] std::vector<bool> numbersOf(std::size_t row) const
  {
    std::vector<bool> marks;
    for (std::string_view const field : split(row)) marks.push_back(isNumber(field));
    return marks;
  }

  [[nodiscard]] std::size_t count(std::size_t row) const { return counts[row]; }

  /// Takes the first line for the names, whatever stands below it.
  void takeFirstLine()
  {
    first = 0;
    width = counts[0];
    alike = 1;
  }

private:
  void findTable()
  {
    for (std::size_t i = 0; i < counts.size() && i < mostProse; ++i) {
      if (!beginsTable(i) || (found() && hasNumber(i))) continue;
      std::size_t const body = std::min(i + 1, counts.size() - 1);
      std::size_t end = body;
      while (end < counts.size() && counts[end] == counts[body]) ++end;
      if (end - body > alike) takeTable(i, body, end);
      if (end == counts.size()) return;
      i = end - 1; // a larger table may stand below a small one of settings, if it has names of its own
    }
  }

  void takeTable(std::size_t names, std::size_t body, std::size_t end)
  {
    first = names;
    width = counts[body];
    alike = end - body;
    constexpr std::size_t mostJudged = 20;
    std::size_t const judged = std::min(alike, mostJudged);
    double share = 0.0;
    for (std::size_t row = body; row < body + judged; ++row) share += numberShare(row);
    numbers = share / static_cast<double>(judged);
  }

  [[nodiscard]] bool beginsTable(std::size_t row) const
  {
    if (counts[row] < 2) return false;
    bool const isLast = row + 1 == counts.size();
    if (isLast) return sample.rows.size() == 1; // a header and nothing else
    std::size_t const next = counts[row + 1];
    bool const fits = next == counts[row] || next == counts[row] + 1 || next + 1 == counts[row];
    if (!fits || next < 2) return false;
    if (hasNumber(row + 1)) return true;
    // A row of units, or of nothing, may stand between.
    return row + 2 < counts.size() && counts[row + 2] == counts[row] && next == counts[row] &&
           hasNumber(row + 2);
  }

  [[nodiscard]] bool hasNumber(std::size_t row) const
  {
    auto const fields = split(row);
    return std::any_of(fields.begin(), fields.end(), isNumber);
  }

  // Numbers, and fields without a value.

  [[nodiscard]] double numberShare(std::size_t row) const
  {
    std::size_t known = 0;
    auto const fields = split(row);
    for (std::string_view const field : fields)
      if (isNumber(field) || isEmpty(field)) ++known;
    return fields.empty() ? 0.0 : static_cast<double>(known) / static_cast<double>(fields.size());
  }

  Sample const& sample;
  char delimiter;
  std::vector<std::size_t> counts;
  std::size_t first = 0;
  std::size_t width = 0;
  std::size_t alike = 0;
  double numbers = 0.0;
};

/// Finds out one dialect.
class DialectSearch
{
public:
  DialectSearch(std::string const& nameOfFile, std::string_view wholeText, ReadOptions const& readOptions,
                std::vector<Finding>& told, bool beginsWithNames)
      : file(nameOfFile), text(wholeText), options(readOptions), findings(told), hasNames(beginsWithNames),
        sample(takeSample())
  {}

  Dialect find()
  {
    if (sample.rows.empty() && !sample.complete)
      fail(1, "no table begins behind the first " + std::to_string(sample.comments.size()) + " comments");
    if (sample.rows.empty()) fail(1, "there is no table: the file holds blank lines and comments only");
    chooseDelimiter();
    dialect.fields.decimal = options.decimal != 0 ? options.decimal : findDecimal();
    findHeader();
    completeNames();
    named = dialect.names.size();
    dropEmptyColumns();
    checkNames();
    dialect.hasBareNumbers = hasBareNumbers();
    return dialect;
  }

private:
  [[noreturn]] void fail(std::size_t line, std::string const& message, std::size_t column = 0) const
  {
    throw ScanError(file, {line, column, {}}, message);
  }

  Sample takeSample() const
  {
    Sample found;
    char const* const end = text.data() + text.size();
    std::size_t number = 0;
    char const* at = text.data();
    for (; at < end; at = nextLine(at, end)) {
      auto const size = static_cast<std::size_t>(at - text.data());
      if (found.rows.size() >= sampleLines || (size > sampleBytes && found.rows.size() >= surelySampled))
        break;
      std::string_view const line =
          lineAt(at, between(at, end).size() > longestLine ? at + longestLine + 1 : end);
      ++number;
      checkLine(line, number);
      LineKind const kind = lineKind(at, end);
      if (kind == LineKind::Row) found.rows.push_back({at, line, number});
      if (kind == LineKind::Comment) found.comments.push_back({at, line, number});
      if (found.comments.size() > mostProse) break;
    }
    found.complete = at >= end;
    return found;
  }

  void checkLine(std::string_view line, std::size_t number) const
  {
    if (line.find('\0') != std::string_view::npos) fail(number, "binary data, not delimited text");
    if (line.size() > longestLine) fail(number, "the line is longer than 16 MiB; this is no scan file");
    if (line.find('\r') != std::string_view::npos)
      fail(number, "a carriage return inside the line; end lines with a line feed");
  }

  void chooseDelimiter()
  {
    constexpr std::array<char, 5> candidates = {'\t', ';', ',', '|', ' '};
    for (char const candidate : candidates) {
      if (options.delimiter != 0 && candidate != options.delimiter) continue;
      consider(candidate);
    }
    if (options.delimiter != 0 && !division) consider(options.delimiter);
    if (!division) takeFirstLine();
    tellProse();
  }

  void consider(char candidate)
  {
    Division const tried(sample, candidate);
    if (!tried.found() || (division && tried.score() <= division->score() * 1.0001)) return;
    division.emplace(tried);
    dialect.fields.delimiter = candidate;
  }

  // No row fits the names above it: the rows will say what is wrong with them.
  void takeFirstLine()
  {
    SampleLine const& line = sample.rows.front();
    std::size_t most = 1;
    for (char const candidate : {'\t', ';', ',', '|'}) {
      if (options.delimiter != 0 && candidate != options.delimiter) continue;
      Division tried(sample, candidate);
      if (sample.rows.size() < 2 || tried.count(0) <= most || tried.count(1) < 2) continue;
      most = tried.count(0);
      tried.takeFirstLine();
      division.emplace(tried);
      dialect.fields.delimiter = candidate;
    }
    if (division) return;
    if (std::count(line.text.begin(), line.text.end(), '"') % 2 != 0)
      fail(line.number, "the quotes of a name are not closed");
    fail(line.number,
         "no table was found: expected a line of column names and below it rows of as many fields, "
         "divided by tab, semicolon, comma, '|' or blanks; found " +
             quoted(line.text) + " (name another divider with --delimiter)");
  }

  void tellProse()
  {
    std::size_t const skipped = division->firstLine();
    if (skipped > 0)
      findings.push_back(
          {"skipped " + std::to_string(skipped) + (skipped == 1 ? " line" : " lines") +
               " of text before the table",
           "the first rows of one width begin in line " + std::to_string(sample.rows[skipped].number),
           false});
  }

  char findDecimal()
  {
    if (dialect.fields.delimiter == ',') return '.';
    std::string_view comma; // the first field that has one
    std::string_view point;
    bool likeThousands = true;
    for (std::size_t row = division->firstLine() + 1; row < sample.rows.size(); ++row)
      for (std::string_view const field : division->split(row)) {
        if (comma.empty() && hasDecimalComma(field)) comma = field;
        if (!hasDecimalPoint(field)) continue;
        if (point.empty()) point = field;
        likeThousands = likeThousands && hasThousands(field);
      }
    if (point.empty() && !comma.empty()) {
      findings.push_back({"numbers have a decimal comma", "no number has a point", true});
      return ',';
    }
    if (!point.empty() && !comma.empty())
      findings.push_back({"numbers have a decimal point, and " + quoted(trimmed(comma)) + " is a text",
                          "other numbers have a point, such as " + quoted(trimmed(point)), true});
    else if (!point.empty() && likeThousands && dialect.fields.delimiter == ';')
      findings.push_back({"the point of " + quoted(trimmed(point)) + " is a decimal sign",
                          "points that divide thousands are not read, though all numbers with one have three "
                          "digits behind it",
                          true});
    return '.';
  }

  void findHeader()
  {
    std::size_t const row = division->firstLine();
    std::vector<bool> const here = division->numbersOf(row);
    bool const anyNumber = std::find(here.begin(), here.end(), true) != here.end();
    bool const onlyNumbers = std::find(here.begin(), here.end(), false) == here.end();
    bool const likeNext = row + 1 < sample.rows.size() && here == division->numbersOf(row + 1);
    bool const isData = anyNumber && (onlyNumbers || (likeNext && !hasNames));
    if (!options.names.empty())
      takeGivenNames(row, isData);
    else if (isData)
      takeCommentNames(row);
    else
      takeNames(row);
  }

  void takeGivenNames(std::size_t row, bool isData)
  {
    dialect.names = options.names;
    if (isData)
      beginDataAt(row);
    else
      beginDataBehind(row);
    if (!isData)
      findings.push_back({"the line of column names was passed over", "other names were given", false});
    if (dialect.names.size() != division->fields())
      fail(sample.rows[row].number, std::to_string(dialect.names.size()) + " names were given for " +
                                        std::to_string(division->fields()) + " columns");
  }

  void takeCommentNames(std::size_t row)
  {
    SampleLine const* above = nullptr;
    for (SampleLine const& comment : sample.comments)
      if (comment.number < sample.rows[row].number) above = &comment;
    std::string_view const line = above != nullptr ? withoutMark(above->text) : std::string_view();
    auto fields = splitFields(line, dialect.fields.delimiter);
    if (fields.size() < 2) fields = splitFields(line, ' ');
    if (above == nullptr || fields.size() < 2 || fields.size() + 1 < division->fields() ||
        fields.size() > division->fields() + 1)
      fail(sample.rows[row].number, "there is no line of column names above these numbers; give them with "
                                    "--names or write them into the file");
    dialect.commentHeader = true;
    dialect.headerLine = above->number;
    setNames(fields);
    beginDataAt(row);
  }

  void takeNames(std::size_t row)
  {
    dialect.headerLine = sample.rows[row].number;
    dialect.header = sample.rows[row].text;
    setNames(splitFields(dialect.header, dialect.fields.delimiter));
    if (hasUnits(row + 1))
      takeUnits(row + 1);
    else
      beginDataBehind(row);
  }

  void setNames(std::vector<std::string_view> const& fields)
  {
    bool latin = false;
    for (std::string_view const field : fields) {
      checkQuotes(field, dialect.names.size() + 1);
      dialect.names.emplace_back(trimmed(toUtf8(fieldText(trimmed(field)), latin)));
    }
    if (latin) findings.push_back({"names were converted from Latin-1", "they are no UTF-8", true});
  }

  void checkQuotes(std::string_view field, std::size_t column) const
  {
    field = trimmed(field);
    if (field.substr(0, 1) != "\"") return;
    if (field.size() < 2 || field.back() != '"')
      fail(dialect.headerLine,
           std::count(field.begin(), field.end(), '"') % 2 != 0 ? "the quotes of a name are not closed"
                                                                : "text after the closing quote of a name",
           column);
  }

  // A row without a number, below names and above numbers.
  [[nodiscard]] bool hasUnits(std::size_t row) const
  {
    if (row + 1 >= sample.rows.size() || division->count(row) != division->count(row + 1)) return false;
    auto const fields = splitFields(sample.rows[row].text, dialect.fields.delimiter);
    auto const below = splitFields(sample.rows[row + 1].text, dialect.fields.delimiter);
    std::size_t texts = 0;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      if (isNumber(fields[i])) return false;
      if (isEmpty(fields[i])) continue;
      if (!isNumber(below[i])) return false;
      ++texts;
    }
    return texts > 0;
  }

  void takeUnits(std::size_t row)
  {
    bool latin = false;
    for (std::string_view const field : splitFields(sample.rows[row].text, dialect.fields.delimiter)) {
      std::string unit(trimmed(toUtf8(fieldText(trimmed(field)), latin)));
      if (unit.size() > 2 &&
          ((unit.front() == '[' && unit.back() == ']') || (unit.front() == '(' && unit.back() == ')')))
        unit = unit.substr(1, unit.size() - 2);
      dialect.units.push_back(std::move(unit));
    }
    findings.push_back({"line " + std::to_string(sample.rows[row].number) + " holds the units",
                        "it stands below the names and has no number", true});
    beginDataBehind(row);
  }

  void beginDataAt(std::size_t row)
  {
    dialect.dataBegin = sample.rows[row].begin;
    dialect.firstLine = sample.rows[row].number;
  }

  void beginDataBehind(std::size_t row)
  {
    char const* const end = text.data() + text.size();
    dialect.dataBegin = nextLine(sample.rows[row].begin, end);
    dialect.firstLine = sample.rows[row].number + 1;
  }

  // Rows may have a field more than the header: row names before it, or a delimiter at their end.
  void completeNames()
  {
    std::size_t const width = division->fields();
    std::size_t const rows = sample.rows.size();
    std::size_t const body = std::min(division->firstLine() + 1, rows - 1);
    if (dialect.names.size() == width + 1 && dialect.names.back().empty() && body > division->firstLine())
      dialect.names.pop_back();
    if (dialect.names.size() == width + 1 && dialect.commentHeader && dialect.names.front().empty())
      dialect.names.erase(dialect.names.begin());
    if (dialect.names.size() + 1 != width || body == division->firstLine() || division->count(body) != width)
      return;
    auto const fields = splitFields(sample.rows[body].text, dialect.fields.delimiter);
    if (isEmpty(fields.back())) {
      dialect.names.emplace_back();
    } else if (!beginsDifferently(body)) {
      fail(sample.rows[body].number, std::to_string(width) + " fields, but the header has " +
                                         std::to_string(width - 1) +
                                         "; write the name of every column (the first fields are no names of "
                                         "rows, as they are not all different)");
    } else {
      dialect.names.insert(dialect.names.begin(), "");
      findings.push_back({"the first field of each row is a row name and is left out",
                          "rows have a field more than the header", true});
    }
    if (!dialect.units.empty()) dialect.units.resize(width);
  }

  // Whether the first fields of all rows from `row` on are different, as names of rows are.
  [[nodiscard]] bool beginsDifferently(std::size_t row) const
  {
    std::unordered_set<std::string_view> seen;
    for (; row < sample.rows.size(); ++row) {
      auto const first = splitFields(sample.rows[row].text, dialect.fields.delimiter, 1);
      if (sample.rows[row].text != dialect.header && !seen.insert(trimmed(first.front())).second)
        return false;
    }
    return true;
  }

  // Columns without a name at the end, as spreadsheets leave them, are none if they are empty.
  void dropEmptyColumns()
  {
    while (named > 0 && dialect.names[named - 1].empty()) --named;
    std::size_t const empty = dialect.names.size() - named;
    if (empty < 2) return;
    for (std::size_t row = division->firstLine() + 1; row < sample.rows.size(); ++row) {
      auto const fields = division->split(row);
      for (std::size_t i = named; i < fields.size(); ++i)
        if (!isEmpty(fields[i])) fail(dialect.headerLine, "the column has no name", i + 1);
    }
    findings.push_back({std::to_string(empty) + " columns at the end were left out",
                        "they have no name and are empty", false});
  }

  // Whether some number of the first row has no quotes.
  [[nodiscard]] bool hasBareNumbers() const
  {
    auto const first = std::find_if(sample.rows.begin(), sample.rows.end(),
                                    [&](SampleLine const& line) { return line.begin >= dialect.dataBegin; });
    if (first == sample.rows.end()) return false;
    auto const fields = division->split(static_cast<std::size_t>(first - sample.rows.begin()));
    return std::any_of(fields.begin(), fields.end(), [](std::string_view field) {
      return trimmed(field).substr(0, 1) != "\"" && isNumber(field);
    });
  }

  void checkNames() const
  {
    std::unordered_map<std::string_view, std::size_t> seen;
    for (std::size_t i = 0; i < dialect.names.size(); ++i) {
      std::string const& name = dialect.names[i];
      bool const isEdge = i == 0 || i + 1 == dialect.names.size();
      if (name.empty() && !isEdge && i < named) fail(dialect.headerLine, "the column has no name", i + 1);
      auto const [former, isNew] = seen.emplace(name, i);
      if (!isNew && !name.empty())
        throw ScanError(file, {dialect.headerLine, i + 1, name},
                        "the name is that of column " + std::to_string(former->second + 1) + " as well");
    }
  }

  std::string const& file;
  std::string_view text;
  ReadOptions const& options;
  std::vector<Finding>& findings;
  bool hasNames;
  Sample sample;
  std::optional<Division> division;
  std::size_t named = 0; ///< columns up to the last that has a name
  Dialect dialect;
};

} // namespace

Dialect findDialect(std::string const& file, std::string_view text, ReadOptions const& options,
                    std::vector<Finding>& findings, bool hasNames)
{
  return DialectSearch(file, text, options, findings, hasNames).find();
}

std::string delimiterName(char delimiter)
{
  switch (delimiter) {
  case '\t':
    return "tab";
  case ',':
    return "comma";
  case ';':
    return "semicolon";
  case ' ':
    return "blank";
  default:
    return std::string("'") + delimiter + '\'';
  }
}

} // namespace runsieve
