#include <runsieve/core/read/ArrayTables.h>

#include <runsieve/core/read/ArrayRoles.h>
#include <runsieve/core/read/ArrayScan.h>
#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/ColumnNames.h>
#include <runsieve/core/read/RunKeys.h>
#include <runsieve/core/read/StackedRows.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <map>
#include <utility>

namespace runsieve {

namespace {

using Names = std::vector<std::string>;

struct Table
{
  NamedArray const* values = nullptr;
  Names columns;
};

bool isTime(std::string const& name, ReadOptions const& options)
{
  return options.time.empty() ? isTimeName(name) || timeLabel(name).has_value() : name == options.time;
}

std::optional<Table> tableOf(Hdf5File const& hdf5, NamedArray const& dataSet, ReadOptions const& options)
{
  if (!dataSet.isNumbers(2) || dataSet.shape[0] == 0 || dataSet.shape[1] < 2) return std::nullopt;
  for (NamedArray const& attribute : hdf5.textAttributes(dataSet.name)) {
    if (attribute.shape.front() != dataSet.shape[1]) continue;
    Names names = attribute.texts();
    if (std::any_of(names.begin(), names.end(), [&](auto const& name) { return isTime(name, options); }))
      return Table{&dataSet, std::move(names)};
  }
  return std::nullopt;
}

bool tellsRuns(Names const& columns, ReadOptions const& options)
{
  return std::any_of(columns.begin(), columns.end(), [&](std::string const& name) {
    return options.run.empty() ? runName(name) != RunName::No : name == options.run;
  });
}

/// Tables of one file on their way to a scan.
class TableReading
{
public:
  TableReading(std::string const& file, Hdf5File const& hdf5File, std::vector<Table> const& found,
               ReadOptions const& readOptions)
      : fileName(file), hdf5(hdf5File), tables(found), options(readOptions)
  {}

  ScanFile read()
  {
    makeColumns();
    for (std::size_t i = 0; i < tables.size(); ++i) {
      copyRows(i);
      tellProgress(options, static_cast<double>(i + 1) / static_cast<double>(tables.size()));
    }
    if (tables.size() > 1) nameRuns();
    ScanFile result;
    result.report.format =
        tables.size() > 1 ? "HDF5, " + std::to_string(tables.size()) + " tables" : "HDF5, a table";
    if (tables.size() > 1)
      result.report.findings.push_back({"each of " + std::to_string(tables.size()) + " data sets is a run: " +
                                            quoted(tables.front().values->name) + " and others",
                                        "they have the same columns, named by an attribute", true});
    result.scan = scanOfRows(std::move(table), options, result.report);
    leaveOutMissing(options, result);
    finishScan(fileName, options, result.scan);
    return result;
  }

private:
  double* add(std::string name)
  {
    CellColumn column;
    column.header = std::move(name);
    column.cells.reset(new double[table.rows]);
    std::fill_n(column.cells.get(), table.rows, std::numeric_limits<double>::quiet_NaN());
    table.columns.push_back(std::move(column));
    return table.columns.back().cells.get();
  }

  void makeColumns()
  {
    table.file = fileName;
    table.headerLine = 0;
    table.placeOf = [file = fileName](std::size_t, std::size_t column) {
      return CellPlace{file, 0, column + 1};
    };
    for (Table const& each : tables) {
      firstRows.push_back(table.rows);
      table.rows += each.values->shape.front();
    }
    firstRows.push_back(table.rows);
    for (std::string const& name : tables.front().columns) add(name);
  }

  // The bits of a NaN mean texts in cells, so all become the usual one.
  void copyRows(std::size_t i)
  {
    NamedArray const& values = *tables[i].values;
    std::size_t const width = values.shape.back();
    std::vector<double> const numbers = allNumbers(values);
    for (std::size_t at = 0; at < numbers.size(); ++at)
      if (!std::isnan(numbers[at])) table.columns[at % width].cells[firstRows[i] + at / width] = numbers[at];
    for (auto const& [name, value] : hdf5.numberAttributes(values.name)) {
      auto const known = std::find(tables[i].columns.begin(), tables[i].columns.end(), name);
      if (known != tables[i].columns.end() || std::isnan(value) || tables.size() == 1) continue;
      auto const [place, isNew] = parameters.emplace(name, nullptr);
      if (isNew) place->second = add(name);
      std::fill(place->second + firstRows[i], place->second + firstRows[i + 1], value);
    }
  }

  void nameRuns()
  {
    Names paths;
    for (Table const& each : tables) paths.push_back(each.values->name);
    Names const keys = runKeysOf(paths);
    double* const cells = add(": Run Index");
    table.columns.back().hasText = true;
    for (std::size_t i = 0; i < tables.size(); ++i) {
      std::fill(cells + firstRows[i], cells + firstRows[i + 1], cell::text(i));
      table.texts.push_back(keys[i]);
    }
  }

  std::string const& fileName;
  Hdf5File const& hdf5;
  std::vector<Table> const& tables;
  ReadOptions const& options;
  CellTable table;
  std::vector<std::size_t> firstRows; ///< of each data set, and the number of all rows
  std::map<std::string, double*> parameters;
};

} // namespace

std::optional<ScanFile> scanOfTables(std::string const& file, Hdf5File const& hdf5,
                                     std::vector<NamedArray> const& dataSets, ReadOptions const& options)
{
  std::vector<Table> tables;
  for (NamedArray const& dataSet : dataSets)
    if (auto found = tableOf(hdf5, dataSet, options)) tables.push_back(std::move(*found));
  if (tables.empty()) return std::nullopt;
  Names const& columns = tables.front().columns;
  bool const alike =
      std::all_of(tables.begin(), tables.end(), [&](Table const& other) { return other.columns == columns; });
  if (!alike || tellsRuns(columns, options) != (tables.size() == 1)) return std::nullopt;
  return TableReading(file, hdf5, tables, options).read();
}

} // namespace runsieve
