#include <runsieve/core/read/Layouts.h>

#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/ColumnNames.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <unordered_map>

namespace runsieve {

namespace {

template <std::size_t N>
std::optional<std::size_t> named(CellTable const& table, std::array<std::string_view, N> const& names)
{
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    CellColumn const& column = table.columns[i];
    if (column.cells && std::find(names.begin(), names.end(), plainName(column.header)) != names.end())
      return i;
  }
  return std::nullopt;
}

/// The columns of a melted table.
struct MeltedColumns
{
  std::size_t variable = 0;
  std::size_t value = 0;
  std::size_t time = 0;
  std::optional<std::size_t> run;
};

std::optional<std::size_t> timeOf(CellTable const& table, ReadOptions const& options)
{
  for (std::size_t i = 0; i < table.columns.size(); ++i)
    if (table.columns[i].cells && (options.time.empty() ? timeLabel(table.columns[i].header).has_value()
                                                        : table.columns[i].header == options.time))
      return i;
  return std::nullopt;
}

std::optional<std::size_t> runOf(CellTable const& table, ReadOptions const& options)
{
  std::optional<std::size_t> likely;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    std::string const& header = table.columns[i].header;
    if (!table.columns[i].cells) continue;
    if (options.run.empty() ? runName(header) == RunName::Surely : header == options.run) return i;
    if (options.run.empty() && runName(header) == RunName::Likely && !likely) likely = i;
  }
  return likely;
}

std::optional<MeltedColumns> meltedColumns(CellTable const& table, ReadOptions const& options)
{
  constexpr std::array<std::string_view, 8> variables = {"variable", "species", "observable", "observableid",
                                                         "output",   "series",  "quantity",   "name"};
  constexpr std::array<std::string_view, 8> values = {"value",         "values", "measurement", "simulation",
                                                      "concentration", "amount", "level",       "y"};
  auto const variable = named(table, variables);
  auto const value = named(table, values);
  auto const time = timeOf(table, options);
  if (!variable || !value || !time || !table.columns[*variable].hasText || table.columns[*value].hasText)
    return std::nullopt;
  auto run = runOf(table, options);
  if (run == value || run == variable) run.reset();
  return MeltedColumns{*variable, *value, *time, run};
}

struct Place
{
  std::uint64_t run;
  std::uint64_t time;
  bool operator==(Place const& other) const { return run == other.run && time == other.time; }
};

struct PlaceHash
{
  std::size_t operator()(Place const& place) const
  {
    return std::hash<std::uint64_t>()(place.run * 0x9E37'79B9'7F4A'7C15 ^ place.time);
  }
};

/// One table on its way from a row per value to a row per run and time.
class Pivot
{
public:
  Pivot(CellTable&& melted, MeltedColumns const& found) : table(std::move(melted)), at(found) {}

  CellTable make(ReadReport& report)
  {
    findPlaces();
    CellTable result;
    result.file = table.file;
    result.texts = table.texts;
    result.headerLine = table.headerLine;
    result.rows = firstRows.size();
    result.lineOf = [lineOf = table.lineOf, rows = firstRows](std::size_t row) { return lineOf(rows[row]); };
    for (std::size_t i = 0; i < table.columns.size(); ++i)
      if (i != at.variable && i != at.value) addKey(result, i, report);
    addOutputs(result);
    report.findings.push_back(
        {"each row holds one value of one output; " + std::to_string(table.rows) + " rows became " +
             std::to_string(result.rows) + " of " + std::to_string(names.size()) + " outputs",
         "column " + quoted(table.columns[at.variable].header) + " names the outputs, " +
             quoted(table.columns[at.value].header) + " holds their values",
         true});
    return result;
  }

private:
  [[nodiscard]] double cellAt(std::size_t column, std::size_t row) const
  {
    return table.columns[column].cells[row];
  }

  void findPlaces()
  {
    std::unordered_map<Place, std::size_t, PlaceHash> known;
    std::unordered_map<std::uint64_t, std::size_t> knownNames;
    for (std::size_t row = 0; row < table.rows; ++row) {
      std::uint64_t const run = at.run ? cell::bitsOf(cellAt(*at.run, row)) : 0;
      double const time = cellAt(at.time, row);
      auto const [place, isNew] = known.emplace(Place{run, cell::bitsOf(time + 0.0)}, firstRows.size());
      if (isNew) firstRows.push_back(row);
      placeOf.push_back(place->second);
      double const variable = cellAt(at.variable, row);
      if (!cell::isText(variable))
        table.fail(row, at.variable,
                   "expected the name of an output, found " + quoted(table.written(variable)));
      auto const [name, isNewName] = knownNames.emplace(cell::textNumber(variable), names.size());
      if (isNewName) names.push_back(cell::textNumber(variable));
      nameOf.push_back(name->second);
    }
  }

  // What goes with the run and the time; the first row of a place stands for it.
  void addKey(CellTable& result, std::size_t column, ReadReport& report) const
  {
    CellColumn key = table.columns[column];
    key.cells.reset();
    if (table.columns[column].cells) {
      for (std::size_t row = 0; row < table.rows; ++row)
        if (cell::bitsOf(cellAt(column, row)) != cell::bitsOf(cellAt(column, firstRows[placeOf[row]]))) {
          report.columns.push_back({key.header, "ignored", "it differs between the outputs of one time"});
          return;
        }
      key.cells.reset(new double[result.rows]);
      for (std::size_t i = 0; i < result.rows; ++i) key.cells[i] = cellAt(column, firstRows[i]);
    }
    result.columns.push_back(std::move(key));
  }

  void addOutputs(CellTable& result) const
  {
    double const cells = static_cast<double>(names.size()) * static_cast<double>(result.rows);
    if (cells > 64.0 * static_cast<double>(table.rows) + 1e6)
      throw ScanError(table.file, {table.headerLine, at.variable + 1, table.columns[at.variable].header},
                      std::to_string(names.size()) + " names of outputs in " + std::to_string(table.rows) +
                          " rows; this is no column of names");
    std::vector<double*> targets;
    for (std::uint64_t const name : names) {
      result.columns.push_back({table.texts[name], table.columns[at.value].unit, nullptr, false, true, true});
      result.columns.back().cells.reset(new double[result.rows]);
      targets.push_back(result.columns.back().cells.get());
      std::fill_n(targets.back(), result.rows, cell::missing());
    }
    std::vector<bool> filled(names.size() * result.rows);
    for (std::size_t row = 0; row < table.rows; ++row) {
      std::size_t const mark = nameOf[row] * result.rows + placeOf[row];
      if (filled[mark])
        table.fail(row, at.value,
                   "a second value of " + quoted(table.texts[names[nameOf[row]]]) + " at time " +
                       decimal(cellAt(at.time, row)) +
                       " of one run; name the column that tells the runs apart with --run");
      filled[mark] = true;
      targets[nameOf[row]][placeOf[row]] = cellAt(at.value, row);
    }
  }

  CellTable table;
  MeltedColumns at;
  std::vector<std::size_t> firstRows; ///< of each place
  std::vector<std::size_t> placeOf;   ///< one per row
  std::vector<std::size_t> nameOf;    ///< one per row
  std::vector<std::uint64_t> names;   ///< texts of the outputs
};

} // namespace

CellTable unmelted(CellTable table, ReadOptions const& options, ReadReport& report)
{
  auto const found = meltedColumns(table, options);
  if (!found) return table;
  return Pivot(std::move(table), *found).make(report);
}

} // namespace runsieve
