#include <runsieve/core/read/CellTable.h>

#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/kernels/HugePages.h>
#include <runsieve/core/parallel/Parallel.h>
#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/ColumnNames.h>
#include <runsieve/core/read/Lines.h>
#include <runsieve/core/read/NameList.h>
#include <runsieve/core/read/RowParser.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <atomic>
#include <new>
#include <optional>
#include <thread>
#include <unordered_map>

namespace runsieve {

namespace {

constexpr std::ptrdiff_t pieceSize = std::ptrdiff_t(4) << 20; ///< bytes between two releases of pages

/// Texts of one parser have numbers of their own; a table has fewer than 2^16 parsers.
constexpr unsigned parserShift = 32;

/// Whole lines, that one thread parses.
struct Chunk
{
  char const* begin;
  char const* end;
  std::size_t firstRow = 0;
  std::size_t rows = 0;
  std::optional<RowFault> fault;
  std::vector<std::string_view> texts;
  std::vector<std::size_t> blockStarts;
  std::vector<bool> hasText;
  std::vector<bool> hasMissing;
  std::vector<bool> hasRounded;
  std::vector<std::string_view> namelessValues;
  char const* otherHeader = nullptr;
  bool endsInBlank = false;
  std::size_t comments = 0;
};

std::size_t lineOfRow(std::string_view text, Dialect const& dialect, std::size_t row)
{
  char const* const end = text.data() + text.size();
  std::size_t line = dialect.firstLine;
  std::size_t rows = 0;
  for (char const* at = dialect.dataBegin; at < end; at = nextLine(at, end), ++line) {
    bool const isRow = lineKind(at, end, dialect.fields.delimiter) == LineKind::Row &&
                       (dialect.header.empty() || lineAt(at, end) != dialect.header);
    if (isRow && rows++ == row) return line;
  }
  return line;
}

/// Whether a column is one of those where Runsieve writes texts in quotes and numbers without: it need not be
/// guessed what looks like a number.
bool quotesTexts(std::string const& header)
{
  return header == ": Run Index" || describeColumn(header).kind == NamedKind::Parameter;
}

/// One parsing of one text.
class CellReading
{
public:
  CellReading(std::string const& file, std::string_view wholeText, Dialect const& dialectOfText,
              ReadOptions const& readOptions, bool releasePages, std::vector<Finding>& told)
      : text(wholeText), dialect(dialectOfText), options(readOptions), release(releasePages), findings(told)
  {
    table.file = file;
    table.headerLine = dialect.headerLine;
    table.lineOf = [wholeText, dialectOfText](std::size_t row) {
      return lineOfRow(wholeText, dialectOfText, row);
    };
    format.fields = dialect.fields;
    format.header = dialect.header;
    if (dialect.commentHeader) format.commentNames = dialect.names;
    format.missing = options.missing;
    format.missingNumbers = missingNumbers(options.missing, dialect.fields.decimal);
    for (std::size_t i = 0; i < dialect.names.size(); ++i) {
      std::string const& name = dialect.names[i];
      bool const dropped = name.empty() || std::find(options.ignore.begin(), options.ignore.end(), name) !=
                                               options.ignore.end();
      format.wanted.push_back(!dropped);
      format.nameless.push_back(name.empty() && i > 0); // a first one holds names of rows
      format.quotesAreTexts.push_back(dialect.hasBareNumbers && quotesTexts(name));
      table.columns.push_back(
          {name, i < dialect.units.size() ? dialect.units[i] : "", nullptr, false, false, false});
    }
  }

  CellTable read()
  {
    begin = dialect.dataBegin;
    end = text.data() + text.size();
    threads = end - begin > pieceSize ? threadCount(options.threads) : 1;
    checkFirstRow();
    countRows();
    if (table.rows == 0) throw ScanError(table.file, "the file has a header and no rows");
    addColumns();
    parseRows();
    joinTexts();
    tellRounding();
    tellNameless();
    joinBlocks();
    tellCutEnd();
    return std::move(table);
  }

private:
  [[noreturn]] void fail(RowFault const& fault) const
  {
    if (fault.field == 0) throw ScanError(table.file, {table.lineOf(fault.row), 0, {}}, fault.message);
    table.fail(fault.row, fault.field - 1, fault.message);
  }

  // A file of another kind should not cost a pass over gigabytes.
  void checkFirstRow() const
  {
    auto const limit = std::min<std::ptrdiff_t>(end - begin, longestLine + 1);
    check(begin, nextLine(begin, begin + limit));
  }

  void check(char const* first, char const* last) const
  {
    if (auto const fault = RowParser(format, 0).check(between(first, last))) fail(*fault);
  }

  void releaseUpTo(char const* stop, Chunk const& chunk) const
  {
    // Two pieces: a page fault at the start of a piece maps some pages before it again.
    if (release) MappedFile::release(stop - std::min(2 * pieceSize, stop - chunk.begin), stop);
  }

  void countRows()
  {
    char const* at = begin;
    for (unsigned i = 0; i < threads && at < end; ++i) {
      char const* const stop =
          i + 1 == threads ? end : nextLine(std::max(at, begin + (end - begin) / threads * (i + 1)), end);
      chunks.push_back({});
      chunks.back().begin = at;
      chunks.back().end = stop;
      at = stop;
    }
    inParallel(threads, chunks.size(), [&](std::size_t i) { countRows(chunks[i]); });
    for (Chunk& chunk : chunks) {
      chunk.firstRow = table.rows;
      table.rows += chunk.rows;
    }
  }

  void countRows(Chunk& chunk)
  {
    for (char const* at = chunk.begin; at < chunk.end && !stopped;) {
      char const* const stop = nextLine(at + std::min(pieceSize, chunk.end - at) - 1, chunk.end);
      chunk.rows += RowParser::countRows(between(at, stop), format);
      releaseUpTo(stop, chunk);
      tellProgress(stop - at, 0.1);
      at = stop;
    }
  }

  // Only the thread that reads may call back.
  void tellProgress(std::ptrdiff_t bytes, double weight)
  {
    if (!options.progress) return;
    double const share = weight * static_cast<double>(bytes) / static_cast<double>(end - begin);
    double before = done.load();
    while (!done.compare_exchange_weak(before, before + share)) {
    }
    if (std::this_thread::get_id() == reader && !options.progress(std::min(1.0, done.load()))) stopped = true;
  }

  void addColumns()
  {
    if (stopped) throw ReadCancelled();
    auto const wanted =
        static_cast<std::size_t>(std::count(format.wanted.begin(), format.wanted.end(), true));
    // A row takes a character and its end for each field, or at least the ends where fields are empty. With
    // fewer bytes some row is short: no memory for rows that a malformed file only pretends to have.
    if (table.rows > (static_cast<std::size_t>(end - begin) + 1) / format.wanted.size()) check(begin, end);
    try {
      for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (!format.wanted[i]) continue;
        table.columns[i].cells.reset(new double[table.rows]);
        preferHugePages(table.columns[i].cells.get(), table.rows * sizeof(double));
      }
    } catch (std::bad_alloc const&) {
      throw ScanError(table.file, "not enough memory for " + std::to_string(table.rows) + " rows of " +
                                      std::to_string(wanted) + " columns");
    }
  }

  void parseRows()
  {
    std::vector<double*> targets;
    for (CellColumn const& column : table.columns) targets.push_back(column.cells.get());
    inParallel(threads, chunks.size(), [&](std::size_t i) { parseRows(chunks[i], i, targets); });
    if (stopped) throw ReadCancelled();
    for (Chunk const& chunk : chunks)
      if (chunk.fault) fail(*chunk.fault);
    for (Chunk const& chunk : chunks)
      if (chunk.otherHeader != nullptr)
        throw ScanError(
            table.file,
            {1 + static_cast<std::size_t>(std::count(text.data(), chunk.otherHeader, '\n')), 0, {}},
            "the columns are named in another way than in line " + std::to_string(dialect.headerLine) +
                "; give all rows the same columns");
  }

  void parseRows(Chunk& chunk, std::size_t index, std::vector<double*> const& targets)
  {
    RowParser parser(format, static_cast<std::uint64_t>(index) << parserShift);
    std::size_t row = chunk.firstRow;
    for (char const* at = chunk.begin; at < chunk.end && !chunk.fault && !stopped;) {
      char const* const stop = nextLine(at + std::min(pieceSize, chunk.end - at) - 1, chunk.end);
      chunk.fault = parser.parse(between(at, stop), row, targets);
      releaseUpTo(stop, chunk);
      tellProgress(stop - at, 0.9);
      at = stop;
    }
    chunk.texts = parser.texts();
    chunk.blockStarts = parser.blockStarts();
    chunk.endsInBlank = parser.endsInBlank();
    chunk.comments = parser.commentLines();
    chunk.otherHeader = parser.otherHeader();
    for (std::size_t i = 0; i < format.wanted.size(); ++i) {
      chunk.hasText.push_back(parser.hasText(i));
      chunk.hasMissing.push_back(parser.hasMissing(i));
      chunk.hasRounded.push_back(parser.hasRounded(i));
      chunk.namelessValues.push_back(parser.namelessValue(i));
    }
  }

  // Each parser has numbered its texts by itself; equal texts get one number.
  void joinTexts()
  {
    std::unordered_map<std::string, std::uint64_t> numbers;
    std::vector<std::vector<std::uint64_t>> joined;
    bool latin = false;
    for (Chunk const& chunk : chunks) {
      joined.emplace_back();
      for (std::string_view const written : chunk.texts) {
        auto const [place, isNew] = numbers.emplace(toUtf8(fieldText(written), latin), table.texts.size());
        if (isNew) table.texts.push_back(place->first);
        joined.back().push_back(place->second);
      }
    }
    if (latin) findings.push_back({"texts were converted from Latin-1", "they are no UTF-8", true});
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      CellColumn& column = table.columns[i];
      if (!column.cells) continue;
      for (Chunk const& chunk : chunks) {
        column.hasText = column.hasText || chunk.hasText[i];
        column.hasMissing = column.hasMissing || chunk.hasMissing[i];
      }
      if (column.hasText) renumber(column, joined);
    }
  }

  void tellRounding()
  {
    NameList names;
    for (std::size_t i = 0; i < table.columns.size(); ++i)
      if (std::any_of(chunks.begin(), chunks.end(), [i](Chunk const& chunk) { return chunk.hasRounded[i]; }))
        names.add(quoted(table.columns[i].header));
    if (names.count() > 0)
      findings.push_back({"whole numbers of " + names.text() + " were rounded",
                          "numbers are exact up to 2^53; write longer ones in the form of texts (s123) if "
                          "different ones must stay different",
                          true});
  }

  void tellNameless()
  {
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      auto const holder = std::find_if(chunks.begin(), chunks.end(), [i](Chunk const& chunk) {
        return !chunk.namelessValues.empty() && !chunk.namelessValues[i].empty();
      });
      if (holder != chunks.end())
        findings.push_back({"column " + std::to_string(i + 1) +
                                " was left out, though it holds values such as " +
                                quoted(fieldText(holder->namelessValues[i])),
                            "it has no name", true});
    }
  }

  void renumber(CellColumn& column, std::vector<std::vector<std::uint64_t>> const& joined) const
  {
    constexpr std::uint64_t within = (std::uint64_t(1) << parserShift) - 1;
    for (std::size_t row = 0; row < table.rows; ++row) {
      double& value = column.cells[row];
      if (!cell::isText(value)) continue;
      std::uint64_t const number = cell::textNumber(value);
      value = cell::text(joined[number >> parserShift][number & within]);
    }
  }

  void joinBlocks()
  {
    bool blankBefore = false;
    std::size_t comments = 0;
    for (Chunk const& chunk : chunks) {
      if (blankBefore && chunk.rows > 0 &&
          (chunk.blockStarts.empty() || chunk.blockStarts.front() != chunk.firstRow))
        table.blockStarts.push_back(chunk.firstRow);
      table.blockStarts.insert(table.blockStarts.end(), chunk.blockStarts.begin(), chunk.blockStarts.end());
      if (chunk.rows > 0 || chunk.endsInBlank) blankBefore = chunk.endsInBlank;
      comments += chunk.comments;
    }
    if (!table.blockStarts.empty() && table.blockStarts.front() == 0)
      table.blockStarts.erase(table.blockStarts.begin());
    if (comments > 0)
      findings.push_back({"passed over " + std::to_string(comments) +
                              (comments == 1 ? " comment" : " comments") + " between the rows",
                          "", false});
  }

  // A last field that the one above begins with was perhaps not written to its end.
  void tellCutEnd()
  {
    if (table.rows < 2 || end[-1] == '\n') return;
    char const* last = end;
    while (last > begin && last[-1] != '\n') --last;
    if (last == begin) return;
    char const* above = last - 1;
    while (above > begin && above[-1] != '\n') --above;
    std::string_view const field = lastField(lineAt(last, end));
    std::string_view const full = lastField(lineAt(above, end));
    if (field.size() < full.size() && full.substr(0, field.size()) == field)
      findings.push_back({"the file may be cut off: its last field is " + quoted(field) + ", and " +
                              quoted(full) + " above it",
                          "the last line has no end", true});
  }

  [[nodiscard]] std::string_view lastField(std::string_view line) const
  {
    char const delimiter = dialect.fields.delimiter;
    return trimmed(line.substr(delimiter == ' ' ? line.find_last_of(" \t") + 1 : line.rfind(delimiter) + 1));
  }

  std::string_view text;
  Dialect const& dialect;
  ReadOptions const& options;
  bool release;
  std::vector<Finding>& findings;
  RowFormat format;
  CellTable table;
  std::vector<Chunk> chunks;
  char const* begin = nullptr;
  char const* end = nullptr;
  unsigned threads = 1;
  std::thread::id reader = std::this_thread::get_id();
  std::atomic<double> done = 0.0;
  std::atomic<bool> stopped = false;
};

} // namespace

std::string CellTable::written(double value) const
{
  if (cell::isText(value)) return texts[cell::textNumber(value)];
  return cell::isMissing(value) ? std::string() : decimal(value);
}

void CellTable::fail(std::size_t row, std::size_t column, std::string const& message) const
{
  CellPlace const place = placeOf ? placeOf(row, column) : CellPlace{file, lineOf(row), column + 1};
  throw ScanError(place.file, {place.line, place.column, columns[column].header}, message);
}

void CellTable::failInHeader(std::size_t column, std::string const& message) const
{
  throw ScanError(file, {headerLine, column + 1, columns[column].header}, message);
}

CellTable readCells(std::string const& file, std::string_view text, Dialect const& dialect,
                    ReadOptions const& options, bool release, std::vector<Finding>& findings)
{
  return CellReading(file, text, dialect, options, release, findings).read();
}

} // namespace runsieve
