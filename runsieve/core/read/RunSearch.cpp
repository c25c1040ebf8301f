#include <runsieve/core/read/RunSearch.h>

#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/ColumnNames.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace runsieve {

namespace {

/// The search in one table.
class RunSearch
{
public:
  RunSearch(CellTable const& cellsOfTable, ReadOptions const& options, std::vector<Finding>& told)
      : table(cellsOfTable), findings(told), roles(rolesByName(table, options)),
        namedRun(columnOf(roles, Role::Run))
  {}

  TableRuns find()
  {
    findTime();
    dropRowNumbers();
    findRuns();
    return {std::move(roles), time, std::move(rows), namedRun};
  }

private:
  void tell(std::string what, std::string why = {}, bool guess = false)
  {
    findings.push_back({std::move(what), std::move(why), guess});
  }

  [[nodiscard]] double const* cells(std::size_t column) const { return table.columns[column].cells.get(); }

  void findTime()
  {
    auto const column = columnOf(roles, Role::Time);
    if (!column)
      throw ScanError(
          table.file, {table.headerLine, 0, {}},
          "no time column: none is named \"time\", \"t\", \": Time [s]\" or the like; name the one that "
          "is with --time, or the outputs with --output if each row is a run without time");
    time = *column;
    for (std::size_t row = 0; row < table.rows; ++row)
      if (!std::isfinite(cells(time)[row])) failAtTime(row);
  }

  [[noreturn]] void failAtTime(std::size_t row) const
  {
    double const value = cells(time)[row];
    if (cell::isText(value)) table.fail(row, time, numberFault(table.written(value)));
    table.fail(row, time, "the time must be a finite number");
  }

  // Row numbers, as data frames write them.
  void dropRowNumbers()
  {
    for (std::size_t i = 0; i < roles.size(); ++i) {
      if (roles[i].role != Role::Free || !isRowNumberName(table.columns[i].header)) continue;
      double const first = cells(i)[0];
      bool numbers = (first == 0.0 || first == 1.0) && table.rows > 1;
      for (std::size_t row = 1; row < table.rows && numbers; ++row)
        numbers = cells(i)[row] == first + static_cast<double>(row);
      if (numbers) roles[i] = {Role::Ignored, roles[i].label, "it counts the rows"};
    }
  }

  [[nodiscard]] std::vector<std::size_t> freeColumns() const
  {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < roles.size(); ++i)
      if (roles[i].role == Role::Free) found.push_back(i);
    return found;
  }

  // Free columns that could be parameters: constant within runs, and not the same in all.
  [[nodiscard]] std::vector<std::size_t> variedColumns() const
  {
    std::vector<std::size_t> found;
    for (std::size_t const column : freeColumns())
      if (changesWithinRuns(table, rows, column).runs == 0 && differsBetweenRuns(column))
        found.push_back(column);
    return found;
  }

  [[nodiscard]] bool differsBetweenRuns(std::size_t column) const
  {
    std::uint64_t const first = cell::bitsOf(cells(column)[rows.row(0)]);
    for (std::size_t run = 1; run < rows.runs(); ++run)
      if (cell::bitsOf(cells(column)[rows.row(rows.starts[run])]) != first) return true;
    return false;
  }

  void findRuns()
  {
    auto run = namedRun;
    if (!run) run = likelyRun();
    if (run) {
      takeRun(*run);
      return;
    }
    if (takeRunsByPosition()) return;
    rows = runsByRestart(table, time);
    std::vector<std::size_t> const varied = variedColumns();
    // A parameter that was scanned in steps of one counts the runs as well. Where it is the only one, it
    // stays.
    auto const counter = varied.size() > 1 || columnOf(roles, Role::Parameter)
                             ? findRunCounter(table, rows, varied)
                             : std::nullopt;
    if (counter) {
      roles[*counter] = {Role::Run, roles[*counter].label,
                         "it keeps its value until time restarts, and counts or names the runs"};
      tell("column " + quoted(table.columns[*counter].header) + " is the run",
           roles[*counter].why + "; name the parameters with --parameter if it is one", true);
      takeRun(*counter);
      return;
    }
    if (rows.runs() > 1)
      tell("runs are split " +
               std::string(table.blockStarts.size() + 1 == rows.runs() ? "at blank lines"
                                                                       : "where time restarts") +
               ", and counted from 0",
           "no column tells the runs apart", true);
    tellOrder("time");
  }

  // A table in the order of time, with a row of every run for each.
  bool takeRunsByPosition()
  {
    if (!repeatsTimes(table, time)) return false;
    double const* const times = cells(time);
    auto const isOther = [&](double value) { return value != times[0]; };
    if (std::none_of(times, times + table.rows, isOther)) return false; // a time per run
    std::vector<std::size_t> columns;
    for (std::size_t i = 0; i < roles.size(); ++i)
      if (roles[i].role == Role::Free || roles[i].role == Role::Parameter) columns.push_back(i);
    auto found = runsByPosition(table, time, columns);
    if (!found)
      throw ScanError(table.file, {table.headerLine, 0, {}},
                      "many rows have the time of the row before, and no column tells which runs they belong "
                      "to; name the one that does with --run, or add one");
    rows = std::move(*found);
    tell("each time has a row for each of " + std::to_string(rows.runs()) + " runs, which are counted from 0",
         "no column counts them, but others tell them apart", true);
    return true;
  }

  // Of the columns named like a run the first whose values fit.
  std::optional<std::size_t> likelyRun()
  {
    for (std::size_t const column : freeColumns()) {
      if (runName(table.columns[column].header) != RunName::Likely || !tellsRunsApart(table, column, time))
        continue;
      roles[column] = {Role::Run, roles[column].label, "its name, and time rises within each of its values"};
      tell("column " + quoted(table.columns[column].header) + " is the run",
           roles[column].why + "; name the run with --run if it is another", true);
      return column;
    }
    return std::nullopt;
  }

  void takeRun(std::size_t run)
  {
    for (std::size_t row = 0; row < table.rows; ++row)
      if (std::isnan(cells(run)[row]) && !cell::isText(cells(run)[row]))
        table.fail(row, run,
                   "a row that belongs to no run: expected a number or a name, found an empty field");
    rows = runsByColumn(table, run, time);
    tellOrder(table.columns[run].header);
  }

  void tellOrder(std::string const& run)
  {
    if (rows.joinedRuns)
      tell("rows of a run that stood apart were put together",
           "column " + quoted(run) + " says where they belong");
    if (rows.sortedRuns) tell("runs were put in the order of their numbers");
    if (rows.sortedTimes) tell("rows were put in the order of time");
    if (rows.repeatedRows > 0)
      tell(std::to_string(rows.repeatedRows) + (rows.repeatedRows == 1 ? " row was" : " rows were") +
               " left out, as the next row of the run has the same time",
           "the last of them tells the state after an event");
  }

  CellTable const& table;
  std::vector<Finding>& findings;
  std::vector<ColumnRole> roles;
  std::optional<std::size_t> namedRun;
  std::size_t time = 0;
  RunRows rows;
};

} // namespace

TableRuns findRuns(CellTable const& table, ReadOptions const& options, std::vector<Finding>& findings)
{
  return RunSearch(table, options, findings).find();
}

} // namespace runsieve
