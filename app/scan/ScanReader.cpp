#include "app/scan/ScanReader.h"

#include "app/scan/ColumnName.h"
#include "app/scan/ColumnRoles.h"
#include "app/scan/Header.h"
#include "app/scan/RowParser.h"
#include "app/scan/RunStructure.h"
#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/parallel/Parallel.h>
#include <runsieve/core/scan/ParameterBounds.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>
#include <set>
#include <string_view>

namespace runsieve::app {

namespace {

constexpr std::size_t headerLines = 1;
constexpr std::ptrdiff_t pieceSize = std::ptrdiff_t(4) << 20; ///< bytes between two releases of pages

std::size_t countLineEnds(char const* begin, char const* end)
{
  std::size_t count = 0;
  while (begin < end) {
    auto found = static_cast<char const*>(std::memchr(begin, '\n', static_cast<std::size_t>(end - begin)));
    if (found == nullptr) break;
    ++count;
    begin = found + 1;
  }
  return count;
}

// After the line that holds `at`, or `end`.
char const* nextLine(char const* at, char const* end)
{
  auto found = static_cast<char const*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
  return found == nullptr ? end : found + 1;
}

std::string_view between(char const* begin, char const* end)
{
  return {begin, static_cast<std::size_t>(end - begin)};
}

/// Whole lines, that one thread parses.
struct Chunk
{
  char const* begin;
  char const* end;
  std::size_t firstRow = 0;
  std::size_t rows = 0;
  std::optional<RowFault> fault;
};

// Two pieces: a page fault at the start of a piece maps some pages before it again.
void releaseUpTo(char const* stop, Chunk const& chunk)
{
  MappedFile::release(stop - std::min(2 * pieceSize, stop - chunk.begin), stop);
}

/// One reading of one file.
class ScanReading
{
public:
  ScanReading(std::string const& file, ReadOptions const& readOptions)
      : path(file), options(readOptions), map(file),
        header(readHeader(file, between(map.begin(), map.end()))),
        columns(findRoles(file, header, readOptions)), scan(boost::make_shared<LinePlotTable>())
  {}

  boost::shared_ptr<LinePlotTable> read()
  {
    begin = header.dataBegin;
    end = endOfRows();
    if (begin == end) throw ScanError(path, "the file has a header and no rows");
    threads = end - begin > pieceSize ? threadCount(options.threads) : 1;
    checkFirstRow();
    countRows();
    addColumns();
    parseRows();
    findStructure();
    settleParameters();
    arrangeColumns();
    return scan;
  }

private:
  // Behind the last line that holds more than blanks.
  char const* endOfRows() const
  {
    char const* last = map.end();
    while (last > begin && std::strchr("\n\r\t ", last[-1]) != nullptr && last[-1] != '\0') --last;
    return last == begin ? begin : nextLine(last, map.end());
  }

  std::vector<bool> wantedFields() const
  {
    std::vector<bool> wanted;
    for (auto const& column : columns) wanted.push_back(column.role != Role::Ignored);
    return wanted;
  }

  // A file of another kind should not cost a pass over gigabytes.
  void checkFirstRow() const
  {
    auto const limit = std::min<std::ptrdiff_t>(end - begin, longestLine + 1);
    check(begin, nextLine(begin, begin + limit));
  }

  void check(char const* first, char const* last) const
  {
    if (auto fault = RowParser(header.delimiter, wantedFields()).check(between(first, last))) fail(*fault);
  }

  void countRows()
  {
    char const* at = begin;
    for (unsigned i = 0; i < threads && at < end; ++i) {
      char const* stop =
          i + 1 == threads ? end : nextLine(std::max(at, begin + (end - begin) / threads * (i + 1)), end);
      chunks.push_back({at, stop, 0, 0, std::nullopt});
      at = stop;
    }
    inParallel(threads, chunks.size(), [&](std::size_t i) { countRows(chunks[i]); });
    for (auto& chunk : chunks) {
      chunk.firstRow = rows;
      rows += chunk.rows;
    }
  }

  static void countRows(Chunk& chunk)
  {
    for (char const* at = chunk.begin; at < chunk.end;) {
      char const* stop = at + std::min(pieceSize, chunk.end - at);
      chunk.rows += countLineEnds(at, stop);
      releaseUpTo(stop, chunk);
      at = stop;
    }
    if (chunk.end[-1] != '\n') ++chunk.rows;
  }

  // Columns stay in file order until it is known what they are.
  void addColumns()
  {
    std::vector<bool> const wanted = wantedFields();
    auto const wantedCount = static_cast<std::size_t>(std::count(wanted.begin(), wanted.end(), true));
    // A field is a character at least, and its end another one. With fewer bytes some row is short: no memory
    // for rows that a malformed file only pretends to have.
    std::size_t const shortestRow = columns.size() + wantedCount;
    if (rows > (static_cast<std::size_t>(end - begin) + 1) / shortestRow) check(begin, end);

    scan->trajectoryCount = rows;
    scan->trajectoryLength = 1;
    try {
      for (auto const& column : columns)
        data.push_back(column.role == Role::Ignored ? nullptr
                                                    : scan->addColumn(column.name.first, column.name.second));
    } catch (std::bad_alloc const&) {
      throw ScanError(path, "not enough memory for " + std::to_string(rows) + " rows of " +
                                std::to_string(wantedCount) + " columns");
    }
  }

  void parseRows()
  {
    inParallel(threads, chunks.size(), [&](std::size_t i) { parseRows(chunks[i]); });
    for (auto const& chunk : chunks)
      if (chunk.fault) fail(*chunk.fault);
  }

  void parseRows(Chunk& chunk) const
  {
    RowParser parser(header.delimiter, wantedFields());
    std::size_t row = chunk.firstRow;
    for (char const* at = chunk.begin; at < chunk.end && !chunk.fault;) {
      char const* stop = nextLine(at + std::min(pieceSize, chunk.end - at) - 1, chunk.end);
      chunk.fault = parser.parse(between(at, stop), row, data);
      releaseUpTo(stop, chunk);
      at = stop;
    }
  }

  void findStructure()
  {
    std::size_t const time = *columnOf(Role::Time);
    std::optional<std::size_t> const run = columnOf(Role::Run);
    RunStructure const found = findRuns(data[time], run ? data[*run] : nullptr, rows);
    if (found.fault) {
      RowFault fault{found.fault->row, 0, found.fault->message};
      if (found.fault->place == RunFault::Place::Time) fault.field = time + 1;
      if (found.fault->place == RunFault::Place::Run && run) fault.field = *run + 1;
      fail(fault);
    }
    scan->trajectoryCount = found.runs;
    scan->trajectoryLength = found.times;
  }

  std::optional<std::size_t> columnOf(Role role) const
  {
    for (std::size_t i = 0; i < columns.size(); ++i)
      if (columns[i].role == role) return i;
    return std::nullopt;
  }

  // What is constant within every run is a parameter, and a parameter must be.
  void settleParameters()
  {
    std::vector<std::size_t> changes(columns.size(), rows);
    inParallel(threads, columns.size(), [&](std::size_t i) {
      if (columns[i].role == Role::Parameter || columns[i].role == Role::Free)
        changes[i] = firstChangeWithinRun(data[i], scan->trajectoryCount, scan->trajectoryLength);
    });
    for (std::size_t i = 0; i < columns.size(); ++i) {
      bool const isConstant = changes[i] == rows;
      if (columns[i].role == Role::Parameter && !isConstant)
        fail({changes[i], i + 1, "a parameter must keep its value within a run"});
      if (columns[i].role != Role::Free) continue;
      columns[i].role = isConstant ? Role::Parameter : Role::Output;
      columns[i].name.first = isConstant ? Kestrane::Parameter : Kestrane::Molecule;
    }
    if (!columnOf(Role::Output))
      throw ScanError(path, {headerLines, 0, {}},
                      "no output column: besides time and run there are only parameters");
  }

  void arrangeColumns()
  {
    std::vector<Kestrane::TypedConcentrationName> names;
    std::set<Kestrane::TypedConcentrationName> known;
    std::vector<double*> arranged;
    auto append = [&](Role role) {
      for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].role != role) continue;
        if (!known.insert(columns[i].name).second)
          throw ScanError(path, {headerLines, i + 1, columns[i].header},
                          "a second column named " + quoted(columnName(columns[i].name)));
        names.push_back(columns[i].name);
        arranged.push_back(data[i]);
      }
    };
    append(Role::Output);
    append(Role::Time);
    if (columnOf(Role::Run)) {
      append(Role::Run);
    } else {
      names.emplace_back(Kestrane::Unnamed, "Run Index");
      arranged.push_back(addRunColumn());
    }
    append(Role::Parameter);
    scan->columnNames = std::move(names);
    scan->columnData = std::move(arranged);
    findBounds();
  }

  double* addRunColumn()
  {
    double* run = scan->addColumn(Kestrane::Unnamed, "Run Index");
    for (std::size_t i = 0; i < scan->trajectoryCount; ++i)
      std::fill_n(run + i * scan->trajectoryLength, scan->trajectoryLength, static_cast<double>(i));
    return run;
  }

  void findBounds()
  {
    for (std::size_t i = 0; i < scan->columnData.size(); ++i)
      if (scan->columnNames[i].first == Kestrane::Parameter)
        scan->parameterBounds.push_back(
            boundsOfRuns(scan->columnData[i], scan->trajectoryCount, scan->trajectoryLength));
  }

  [[noreturn]] void fail(RowFault const& fault) const
  {
    std::string const field = fault.field > 0 ? header.names[fault.field - 1] : std::string();
    throw ScanError(path, {fault.row + headerLines + 1, fault.field, field}, fault.message);
  }

  std::string path;
  ReadOptions options;
  MappedFile map;
  Header header;
  std::vector<FileColumn> columns; ///< in file order
  std::vector<double*> data;       ///< likewise; null for an ignored one
  boost::shared_ptr<LinePlotTable> scan;
  char const* begin = nullptr;
  char const* end = nullptr;
  unsigned threads = 1;
  std::vector<Chunk> chunks;
  std::size_t rows = 0;
};

} // namespace

boost::shared_ptr<LinePlotTable> readScan(std::string const& path, ReadOptions const& options)
{
  return ScanReading(path, options).read();
}

} // namespace runsieve::app
