#include <runsieve/core/read/ParameterTable.h>

#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/CellParameter.h>
#include <runsieve/core/read/ColumnNames.h>
#include <runsieve/core/read/NameList.h>
#include <runsieve/core/read/ParameterList.h>
#include <runsieve/core/read/TextReader.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <unordered_map>
#include <unordered_set>

namespace runsieve {

namespace {

constexpr char listOfOneRun[] = "it lists the parameters of a single run";
constexpr std::size_t noRun = std::numeric_limits<std::size_t>::max();

// "007" and "7.0" are the key "7".
std::string plainKey(std::string const& key)
{
  auto const number = parseNumber(key);
  return number && std::isfinite(*number) ? decimal(*number + 0.0) : std::string(trimmed(key));
}

/// Runs of a scan by their keys.
class RunsByKey
{
public:
  explicit RunsByKey(Scan const& scan)
  {
    for (std::size_t run = 0; run < scan.runs.size(); ++run) {
      auto const [place, isNew] = runs.emplace(plainKey(scan.runs[run].key), run);
      if (!isNew) place->second = noRun;
    }
  }

  [[nodiscard]] bool has(std::string const& key) const { return runs.count(plainKey(key)) > 0; }

  /// Nothing if there is no such run; noRun if several have the key.
  [[nodiscard]] std::optional<std::size_t> find(std::string const& key) const
  {
    auto const found = runs.find(plainKey(key));
    return found == runs.end() ? std::nullopt : std::optional(found->second);
  }

private:
  std::unordered_map<std::string, std::size_t> runs;
};

// Header of the column of runs in a scan.
std::string runHeaderOf(ReadReport const& report)
{
  for (ColumnFinding const& column : report.columns)
    if (column.role == "run") return column.header;
  return {};
}

/// Why a table cannot be joined; a table that was found by itself may be of another scan.
class NoKey : public ScanError
{
public:
  using ScanError::ScanError;
};

/// One table on its way into a scan.
class TableJoin
{
public:
  TableJoin(ScanFile& scanFile, CellTable&& tableOfFile, ReadOptions const& readOptions)
      : target(scanFile), table(std::move(tableOfFile)), options(readOptions), runs(target.scan)
  {}

  void join()
  {
    findKey();
    findRows();
    if (matched == 0) failWithoutMatch();
    tell();
    joinColumns(target, table, rowOfRun, parameterColumns(), table.file);
  }

private:
  [[nodiscard]] std::string keyAt(std::size_t row, std::size_t column) const
  {
    return table.written(table.columns[column].cells[row]);
  }

  void findKey()
  {
    std::optional<std::size_t> named = namedKey();
    if (named && matchesOf(*named) > 0) {
      key = *named;
      return;
    }
    if (isTransposed()) {
      transpose();
      why = "its first column names parameters, and the others are named like runs";
      isGuess = true;
      return;
    }
    if (named) {
      key = *named;
      return;
    }
    auto const first = firstColumn();
    if (first && holdsKeys(*first)) {
      key = *first;
      why = "its values are those of the runs";
      isGuess = true;
      return;
    }
    std::string const header = runHeaderOf(target.report);
    throw NoKey(table.file, {table.headerLine, 0, {}},
                "no column tells which run a row belongs to" +
                    std::string(table.rows == target.scan.runs.size()
                                    ? "; there is a row for each run, but their order proves nothing"
                                    : "") +
                    "; add a column named " + runsieve::quoted(header.empty() ? "run" : header) +
                    " with the keys of the runs, such as " + runsieve::quoted(target.scan.runs.front().key));
  }

  template <class Rule> [[nodiscard]] std::optional<std::size_t> firstOf(Rule const& rule) const
  {
    for (std::size_t i = 0; i < table.columns.size(); ++i)
      if (table.columns[i].cells && rule(table.columns[i].header)) return i;
    return std::nullopt;
  }

  [[nodiscard]] std::optional<std::size_t> namedKey() const
  {
    std::string const header = runHeaderOf(target.report);
    auto found =
        firstOf([&](std::string const& name) { return !options.run.empty() && name == options.run; });
    if (!found) found = firstOf([&](std::string const& name) { return !header.empty() && name == header; });
    if (!found)
      found = firstOf([](std::string const& name) {
        return runName(describeColumn(name).label.name) == RunName::Surely;
      });
    if (!found) found = firstOf([](std::string const& name) { return runName(name) == RunName::Likely; });
    return found;
  }

  [[nodiscard]] std::optional<std::size_t> firstColumn() const
  {
    return firstOf([](std::string const&) { return true; });
  }

  [[nodiscard]] std::size_t matchesOf(std::size_t column) const
  {
    std::size_t count = 0;
    for (std::size_t row = 0; row < table.rows; ++row) count += runs.has(keyAt(row, column)) ? 1 : 0;
    return count;
  }

  // Every row has a key of its own, and rows or runs are all known to the other.
  [[nodiscard]] bool holdsKeys(std::size_t column) const
  {
    std::unordered_set<std::string> keys;
    for (std::size_t row = 0; row < table.rows; ++row)
      if (!keys.insert(plainKey(keyAt(row, column))).second) return false;
    std::size_t const known = matchesOf(column);
    return known > 0 && (known == table.rows || known == target.scan.runs.size());
  }

  [[nodiscard]] bool isTransposed() const
  {
    auto const first = firstColumn();
    if (!first) return false;
    std::unordered_set<std::string> names;
    for (std::size_t row = 0; row < table.rows; ++row) {
      if (!cell::isText(table.columns[*first].cells[row])) return false;
      if (!names.insert(keyAt(row, *first)).second) return false;
    }
    auto const isRun = [&](CellColumn const& column) {
      return column.cells && &column != &table.columns[*first] && runs.has(column.header);
    };
    auto const found = std::count_if(table.columns.begin(), table.columns.end(), isRun);
    // A list of parameters may begin with one whose value happens to be the key of a run.
    constexpr std::string_view word = "parameter";
    return found > 1 ||
           (found == 1 && plainName(table.columns[*first].header).substr(0, word.size()) == word);
  }

  void transpose()
  {
    std::size_t const names = *firstColumn();
    std::optional<std::size_t> const units = firstOf(
        [](std::string const& name) { return plainName(name) == "unit" || plainName(name) == "units"; });
    std::vector<std::size_t> from; // the column of each row that will be
    for (std::size_t i = 0; i < table.columns.size(); ++i)
      if (table.columns[i].cells && i != names && units != i) from.push_back(i);
    CellTable turned;
    turned.file = table.file;
    turned.headerLine = table.headerLine;
    turned.rows = from.size();
    turned.texts = table.texts;
    for (std::size_t row = 0; row < table.rows; ++row) {
      CellColumn column{keyAt(row, names), units ? keyAt(row, *units) : "", nullptr, false, false, false};
      column.cells.reset(new double[turned.rows]);
      for (std::size_t i = 0; i < from.size(); ++i) {
        column.cells[i] = table.columns[from[i]].cells[row];
        column.hasText = column.hasText || cell::isText(column.cells[i]);
      }
      turned.columns.push_back(std::move(column));
    }
    key = turned.columns.size();
    turned.columns.push_back(
        {"", "", std::shared_ptr<double[]>(new double[from.size()]), true, false, false});
    for (std::size_t i = 0; i < from.size(); ++i) {
      turned.columns.back().cells[i] = cell::text(turned.texts.size());
      turned.texts.push_back(table.columns[from[i]].header);
    }
    std::size_t const keyColumn = key;
    turned.placeOf = [file = table.file, lineOf = table.lineOf, header = table.headerLine, from,
                      keyColumn](std::size_t row, std::size_t column) {
      return CellPlace{file, column == keyColumn ? header : lineOf(column), from[row] + 1};
    };
    table = std::move(turned);
  }

  void findRows()
  {
    rowOfRun.resize(target.scan.runs.size());
    std::unordered_map<std::string, std::size_t> rowOfKey;
    for (std::size_t row = 0; row < table.rows; ++row) {
      std::string const text = keyAt(row, key);
      if (text.empty()) table.fail(row, key, "expected the key of a run, found an empty field");
      auto const [place, isNew] = rowOfKey.emplace(plainKey(text), row);
      if (!isNew) table.fail(row, key, "run " + runsieve::quoted(text) + " stands twice");
      auto const run = runs.find(text);
      if (run == noRun)
        table.fail(row, key, "several runs of the scan have the key " + runsieve::quoted(text));
      if (run) {
        rowOfRun[*run] = row;
        ++matched;
      } else {
        surplus.add(text);
      }
    }
  }

  [[noreturn]] void failWithoutMatch() const
  {
    throw NoKey(table.file, {table.headerLine, key + 1, table.columns[key].header},
                "none of its keys is that of a run: expected such as " +
                    runsieve::quoted(target.scan.runs.front().key) + ", found " +
                    runsieve::quoted(keyAt(0, key)));
  }

  [[nodiscard]] std::vector<std::size_t> parameterColumns() const
  {
    std::vector<std::size_t> columns;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      std::string const& header = table.columns[i].header;
      auto const isIgnored = [&](std::string const& name) {
        return name == header || name == describeColumn(header).label.name;
      };
      if (i != key && table.columns[i].cells &&
          std::none_of(options.ignore.begin(), options.ignore.end(), isIgnored))
        columns.push_back(i);
    }
    return columns;
  }

  void tell()
  {
    std::string const header = table.columns[key].header;
    target.report.findings.push_back(
        {"parameters of the runs were taken from " + table.file +
             (header.empty() ? "" : ", whose rows have their run in column " + runsieve::quoted(header)),
         why, isGuess});
    NameList missing;
    for (std::size_t run = 0; run < rowOfRun.size(); ++run)
      if (!rowOfRun[run]) missing.add(target.scan.runs[run].key);
    if (missing.count() > 0)
      target.report.findings.push_back({std::to_string(missing.count()) +
                                            (missing.count() == 1 ? " run is" : " runs are") + " not in " +
                                            table.file + ": " + missing.text(),
                                        "their parameters of that table are missing", false});
    if (surplus.count() > 0)
      target.report.findings.push_back(
          {std::to_string(surplus.count()) + (surplus.count() == 1 ? " key" : " keys") + " of " + table.file +
               (surplus.count() == 1 ? " belongs" : " belong") + " to no run: " + surplus.text(),
           "", false});
  }

  ScanFile& target;
  CellTable table;
  ReadOptions const& options;
  RunsByKey runs;
  std::size_t key = 0; ///< column
  std::string why = "its name";
  bool isGuess = false;
  std::vector<std::optional<std::size_t>> rowOfRun;
  std::size_t matched = 0;
  NameList surplus;
};

std::string writtenValue(ScanParameter const& parameter, std::size_t run)
{
  double const value = parameter.values[run];
  if (std::isnan(value)) return "no value";
  return parameter.isText() ? parameter.texts[static_cast<std::size_t>(value)] : decimal(value);
}

// The parameter of a scan that goes by a name, with or without its type.
std::optional<std::size_t> parameterNamed(Scan const& scan, std::string const& name)
{
  for (std::size_t i = 0; i < scan.parameters.size(); ++i)
    if (scan.parameters[i].label.name == name) return i;
  return std::nullopt;
}

void passOver(ScanFile& target, std::string const& file, std::string const& why)
{
  target.report.findings.push_back({file + " was passed over", why, true});
}

// Joins a file of lines "NAME VALUE" to the only run; false if it is no such file.
bool joinListOfOneRun(ScanFile& target, std::string const& file)
{
  if (target.scan.runs.size() != 1) return false;
  auto const list = readParameterList(file);
  if (!list) return false;
  target.report.findings.push_back(
      {"parameters of the run were taken from " + file, "each of its lines has a name and a value", true});
  joinParameterLists(target, {&*list});
  return true;
}

// Whether one of the names is that of a column of runs, so that this is a table of parameters, if a damaged
// one.
bool namesRuns(std::vector<std::string> const& names, ScanFile const& target, ReadOptions const& options)
{
  return std::any_of(names.begin(), names.end(), [&](std::string const& name) {
    return !name.empty() && (name == options.run || name == runHeaderOf(target.report) ||
                             runName(describeColumn(name).label.name) != RunName::No);
  });
}

void joinTable(ScanFile& target, std::string const& file, ReadOptions const& options, bool found)
{
  MappedFile const map(file);
  ReadOptions plain;
  plain.missing = options.missing;
  plain.threads = options.threads;
  ReadReport report;
  Dialect dialect;
  std::string converted;
  CellTable table;
  try {
    table =
        readTextCells({file, {map.begin(), static_cast<std::size_t>(map.end() - map.begin())}, true, true},
                      plain, converted, report, dialect);
  } catch (ScanError const& error) {
    if (joinListOfOneRun(target, file)) return;
    if (!found || (namesRuns(dialect.names, target, options) && error.line() > dialect.headerLine)) throw;
    passOver(target, file, readParameterList(file) ? listOfOneRun : error.what());
    return;
  }
  std::size_t const rows = table.rows;
  try {
    TableJoin(target, std::move(table), options).join();
  } catch (NoKey const& error) {
    if (joinListOfOneRun(target, file)) return;
    bool const isList = found && readParameterList(file);
    if (!found || (rows == target.scan.runs.size() && !isList)) throw;
    passOver(target, file, isList ? listOfOneRun : error.what());
    return;
  }
  for (Finding& finding : report.findings) {
    finding.what = "in " + file + ": " + finding.what;
    target.report.findings.push_back(std::move(finding));
  }
}

} // namespace

void joinParameterTable(ScanFile& target, std::string const& file, ReadOptions const& options, bool found)
{
  std::size_t const told = target.report.findings.size();
  joinTable(target, file, options, found);
  if (found && target.report.findings.size() > told) {
    Finding& first = target.report.findings[told];
    first.guess = true;
    first.why += (first.why.empty() ? "" : "; ") + std::string("the file was found by its name");
  }
}

void joinColumns(ScanFile& target, CellTable const& table,
                 std::vector<std::optional<std::size_t>> const& rowOfRun,
                 std::vector<std::size_t> const& columns, std::string const& source)
{
  NameList known;
  for (std::size_t const column : columns) {
    std::vector<double> cells;
    for (auto const row : rowOfRun)
      cells.push_back(row ? table.columns[column].cells[*row] : cell::missing());
    ScanParameter parameter = parameterOf(table, column, std::move(cells));
    auto const same = parameterNamed(target.scan, parameter.label.name);
    if (!same) {
      target.report.columns.push_back({table.columns[column].header, "parameter", "a column of " + source});
      target.scan.parameters.push_back(std::move(parameter));
      continue;
    }
    known.add(runsieve::quoted(parameter.label.name));
    for (std::size_t run = 0; run < rowOfRun.size(); ++run) {
      std::string const old = writtenValue(target.scan.parameters[*same], run);
      std::string const other = writtenValue(parameter, run);
      if (!std::isnan(parameter.values[run]) && old != other)
        table.fail(*rowOfRun[run], column,
                   "run " + target.scan.runs[run].key + " has " + runsieve::quoted(other) + " here, but " +
                       runsieve::quoted(old) + " in the scan");
    }
  }
  if (known.count() > 0)
    target.report.findings.push_back(
        {"parameters that the scan has already were not taken twice: " + known.text(),
         "the values of " + source + " are the same", false});
}

} // namespace runsieve
