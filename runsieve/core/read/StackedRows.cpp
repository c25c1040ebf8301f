#include <runsieve/core/read/StackedRows.h>

#include <runsieve/core/kernels/HugePages.h>
#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/CellParameter.h>
#include <runsieve/core/read/ColumnNames.h>
#include <runsieve/core/read/ColumnRoles.h>
#include <runsieve/core/read/CommonGrid.h>
#include <runsieve/core/read/NameList.h>
#include <runsieve/core/read/RunSearch.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <set>

namespace runsieve {

namespace {

std::string counted(std::size_t count, std::string const& what)
{
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

/// One table on its way to a scan.
class Stacking
{
public:
  Stacking(CellTable&& cells, ReadOptions const& readOptions, ReadReport& told)
      : table(std::move(cells)), options(readOptions), report(told)
  {
    TableRuns found = findRuns(table, options, report.findings);
    roles = std::move(found.roles);
    time = found.time;
    rows = std::move(found.rows);
  }

  Scan make()
  {
    settleColumns();
    reportColumns();
    makeGrid();
    addOutputs();
    addParameters();
    markFailed();
    scan.findStatus();
    reportStatus();
    return std::move(scan);
  }

private:
  void tell(std::string what, std::string why = {}, bool guess = false)
  {
    report.findings.push_back({std::move(what), std::move(why), guess});
  }

  [[nodiscard]] double const* cells(std::size_t column) const { return table.columns[column].cells.get(); }

  void settleColumns()
  {
    for (std::size_t i = 0; i < roles.size(); ++i) {
      if (roles[i].role == Role::Status) settleStatus(i);
      if (roles[i].role == Role::Free || roles[i].role == Role::Parameter) settleColumn(i);
    }
    tellWeakParameters();
    for (std::size_t i = 0; i < roles.size(); ++i)
      if (roles[i].role == Role::Output) requireNumbers(i);
    if (!columnOf(roles, Role::Output))
      throw ScanError(
          table.file, {table.headerLine, 0, {}},
          "no output column: besides time and run there are only parameters, as no column changes within "
          "a run (name outputs with --output)");
    checkNames();
  }

  void settleColumn(std::size_t i)
  {
    ColumnRole& role = roles[i];
    ColumnChanges const changes = changesWithinRuns(table, rows, i);
    std::string const name = quoted(table.columns[i].header);
    if (role.role == Role::Parameter && changes.runs > 0)
      table.fail(rows.row(changes.first), i, "a parameter must keep its value within a run");
    if (changes.inFirstRowOnly)
      tell(name + " is taken for a parameter: its value stands in the first row of each run",
           "the other rows have none", true);
    if (changes.runs == 0 && changes.rounding)
      tell(name + " is taken for a parameter: its values within a run differ by rounding",
           "the first of each run stands; --output " + name + " says otherwise", true);
    if (role.role == Role::Parameter) return;
    if (changes.runs == 0 && !isNamedAsOutput(role.label.name)) {
      role = {Role::Parameter, role.label, "constant within every run"};
      if (!changes.rounding && !changes.inFirstRowOnly) found.push_back(i);
      return;
    }
    role = {Role::Output, role.label,
            changes.runs == 0 ? "its name is that of a concentration" : "it changes within runs"};
    if (changes.runs > 0 && 2 * changes.runs <= rows.runs())
      tell(name + " is taken for an output: it changes within " + std::to_string(changes.runs) + " of " +
               counted(rows.runs(), "run"),
           "--parameter " + name + " says otherwise", true);
  }

  // Of two rows, or beside outputs on either side, an output may happen to be constant.
  void tellWeakParameters()
  {
    std::size_t longest = 0;
    for (std::size_t run = 0; run < rows.runs(); ++run)
      longest = std::max(longest, rows.starts[run + 1] - rows.starts[run]);
    if (longest < 2) return;
    auto const isOutput = [](ColumnRole const& role) { return role.role == Role::Output; };
    NameList weak;
    for (std::size_t const i : found) {
      auto const here = roles.begin() + static_cast<std::ptrdiff_t>(i);
      if (longest == 2 ||
          (std::any_of(roles.begin(), here, isOutput) && std::any_of(here, roles.end(), isOutput)))
        weak.add(quoted(table.columns[i].header));
    }
    if (weak.count() > 0)
      tell(weak.text() + (weak.count() == 1 ? " is taken for a parameter" : " are taken for parameters"),
           std::string("constant within every run, ") +
               (longest == 2 ? "though of two rows at most" : "though between outputs") +
               "; --output NAME says otherwise",
           true);
  }

  // A run may tell its status in one row only.
  void settleStatus(std::size_t i)
  {
    ColumnRole& role = roles[i];
    bool const isCode =
        plainName(role.label.name).find("status") != std::string::npos && !table.columns[i].hasText;
    if (isCode)
      tell("column " + quoted(table.columns[i].header) + " is not taken for the status of runs",
           "it holds numbers, whose meaning is not known; write words such as ok and failed");
    bool isOne = !isCode;
    for (std::size_t run = 0; run < rows.runs() && isOne; ++run)
      for (std::size_t at = rows.starts[run]; at < rows.starts[run + 1] && isOne; ++at) {
        double const value = cells(i)[rows.row(at)];
        isOne = cell::isMissing(value) || cell::bitsOf(value) == cell::bitsOf(statusOf(run, i));
      }
    if (!isOne) role = {Role::Free, role.label, {}};
  }

  // What the first row that has any says.
  [[nodiscard]] double statusOf(std::size_t run, std::size_t column) const
  {
    for (std::size_t at = rows.starts[run]; at < rows.starts[run + 1]; ++at)
      if (!cell::isMissing(cells(column)[rows.row(at)])) return cells(column)[rows.row(at)];
    return cell::missing();
  }

  // "[S]", a concentration in the names of COPASI and tellurium, also where it is held constant.
  static bool isNamedAsOutput(std::string const& name)
  {
    return name.size() > 2 && name.front() == '[' && name.back() == ']';
  }

  void requireNumbers(std::size_t column) const
  {
    if (!table.columns[column].hasText) return;
    for (std::size_t row = 0; row < table.rows; ++row)
      if (cell::isText(cells(column)[row]))
        table.fail(row, column, numberFault(table.written(cells(column)[row])));
  }

  // Plots know outputs of free names as molecules.
  static std::string nameInPlots(ColumnLabel const& label)
  {
    return label.type.empty() ? "Molecule: " + label.name : label.fullName();
  }

  void checkNames() const
  {
    for (Role const role : {Role::Output, Role::Parameter}) {
      std::set<std::string> known;
      for (std::size_t i = 0; i < roles.size(); ++i)
        if (roles[i].role == role && !known.insert(nameInPlots(roles[i].label)).second)
          table.failInHeader(i, "a second column named " + quoted(nameInPlots(roles[i].label)));
    }
  }

  void reportColumns()
  {
    for (std::size_t i = 0; i < roles.size(); ++i)
      report.columns.push_back({table.columns[i].header, roleName(roles[i].role), roles[i].why});
  }

  void makeGrid()
  {
    RunTimes times;
    times.starts = rows.starts;
    std::vector<double> ordered;
    if (rows.order.empty()) {
      times.times = cells(time);
    } else {
      ordered = inOrder(time);
      times.times = ordered.data();
    }
    CommonGrid const found(times, options.exactTimes);
    checkSize(found);
    scan.time = roles[time].label;
    scan.times = found.times();
    for (std::string const& key : rows.keys) scan.runs.push_back({key, RunStatus::Complete, 0});
    tellGrid(found);
    bool const inPlace = found.kind() == CommonGrid::Kind::Same && rows.order.empty();
    for (std::size_t i = 0; i < roles.size(); ++i)
      if (roles[i].role == Role::Output) {
        if (inPlace)
          values[i] = table.columns[i].cells;
        else
          values[i] = placed(found, i);
        table.columns[i].cells.reset();
      }
  }

  // One long run among many short ones would take memory out of all proportion.
  void checkSize(CommonGrid const& found) const
  {
    constexpr double most = 64.0;
    double const wanted = static_cast<double>(found.times().size()) * static_cast<double>(rows.runs());
    if (wanted > most * static_cast<double>(table.rows) + 1e6)
      throw ScanError(table.file, "the runs have too different times: " + counted(rows.runs(), "run") +
                                      " of " + counted(table.rows, "row") + " in all would become " +
                                      counted(found.times().size(), "time") + " each" +
                                      (options.exactTimes ? " (read them without --exact-times)" : ""));
  }

  void tellGrid(CommonGrid const& found)
  {
    if (found.rounded()) tell("times that differ by rounding are one", "they agree to a relative 1e-9");
    if (found.kind() == CommonGrid::Kind::Interpolated)
      tell(counted(found.resampledRuns(), "run") + " of " + std::to_string(rows.runs()) +
               (found.resampledRuns() == 1 ? " was" : " were") + " interpolated linearly onto " +
               counted(found.times().size(), "common time") + ", " + decimal(found.times().front()) + ".." +
               decimal(found.times().back()),
           "their times are not those of the others; --exact-times keeps every time", true);
    tellCut(found.cutBefore(), "before " + decimal(found.times().front()), "the first", "begin with them");
    tellCut(found.cutBehind(), "after " + decimal(found.times().back()), "the last", "reach them");
    if (found.lateRuns() > 0)
      tell(counted(found.lateRuns(), "run") + (found.lateRuns() == 1 ? " begins" : " begin") +
               " after the first common time",
           "the values before are missing");
    if (found.gaps() > 0 && !options.exactTimes)
      tell(counted(found.gaps(), "run") + (found.gaps() == 1 ? " lacks" : " lack") +
               " times between its first and its last",
           "other runs have them");
    if (found.kind() == CommonGrid::Kind::Gaps && options.exactTimes)
      tell("all times of all runs are kept; a run has gaps where only others have times", "by option");
  }

  void tellCut(CommonGrid::Cut const& cut, std::string const& where, std::string const& which,
               std::string const& what)
  {
    if (cut.runs == 0) return;
    tell("times " + where + " were left out: " + counted(cut.samples, "row") + " of " +
             counted(cut.runs, "run") + ", " + which + " at " + decimal(cut.farthest),
         "not all runs " + what + "; --exact-times keeps every time", true);
  }

  [[nodiscard]] std::vector<double> inOrder(std::size_t column) const
  {
    std::vector<double> ordered(rows.rows());
    for (std::size_t at = 0; at < rows.rows(); ++at) ordered[at] = cells(column)[rows.row(at)];
    return ordered;
  }

  std::shared_ptr<double[]> placed(CommonGrid const& found, std::size_t column) const
  {
    std::size_t const length = found.times().size();
    std::shared_ptr<double[]> target(new double[length * rows.runs()]);
    preferHugePages(target.get(), length * rows.runs() * sizeof(double));
    std::vector<double> ordered;
    if (!rows.order.empty()) ordered = inOrder(column);
    double const* const samples = rows.order.empty() ? cells(column) : ordered.data();
    for (std::size_t run = 0; run < rows.runs(); ++run)
      found.place(run, samples + rows.starts[run], target.get() + run * length);
    return target;
  }

  void addOutputs()
  {
    std::size_t missing = 0;
    for (auto const& [column, data] : values) {
      if (table.columns[column].hasMissing)
        for (std::size_t i = 0; i < scan.rows(); ++i)
          if (cell::isMissing(data[i])) {
            data[i] = std::numeric_limits<double>::quiet_NaN();
            ++missing;
          }
      scan.outputs.push_back({roles[column].label, data});
    }
    if (missing > 0)
      tell(counted(missing, "missing value") + " among the outputs",
           options.missing.empty()
               ? "empty fields, or words such as NA"
               : "empty fields, words such as NA, or what an option says to mean no value");
  }

  void addParameters()
  {
    for (std::size_t i = 0; i < roles.size(); ++i) {
      if (roles[i].role != Role::Parameter) continue;
      std::vector<double> cellsOfRuns;
      for (std::size_t run = 0; run < rows.runs(); ++run)
        cellsOfRuns.push_back(cells(i)[rows.row(rows.starts[run])]);
      ScanParameter parameter = parameterOf(table, i, std::move(cellsOfRuns));
      if (parameter.isText())
        tell("parameter " + quoted(parameter.label.name) + " is text",
             "it has " + counted(parameter.texts.size(), "different text"));
      scan.parameters.push_back(std::move(parameter));
    }
  }

  void markFailed()
  {
    for (std::size_t i = 0; i < roles.size(); ++i) {
      if (roles[i].role != Role::Status) continue;
      for (std::size_t run = 0; run < rows.runs(); ++run)
        if (saysFailed(statusOf(run, i))) scan.runs[run].status = RunStatus::Failed;
    }
  }

  // Whatever is not a known word for success is a failure: nothing that went wrong passes for well.
  [[nodiscard]] bool saysFailed(double value) const
  {
    constexpr std::array<std::string_view, 12> well = {"ok",        "true",     "success",   "successful",
                                                       "succeeded", "complete", "completed", "converged",
                                                       "done",      "finished", "yes",       "passed"};
    if (!cell::isText(value)) return !(value == 1.0);
    std::string const word = plainName(table.written(value));
    return std::find(well.begin(), well.end(), word) == well.end();
  }

  void reportStatus()
  {
    std::size_t failed = 0;
    std::size_t ended = 0;
    for (ScanRun const& run : scan.runs) {
      failed += run.status == RunStatus::Failed ? 1 : 0;
      ended += run.status == RunStatus::Short ? 1 : 0;
    }
    if (failed > 0)
      tell(counted(failed, "failed run"), "said so by a status column, or missing or infinite values");
    if (ended > 0)
      tell(counted(ended, "run") + (ended == 1 ? " ends early" : " end early"),
           "before the last time of the scan");
  }

  CellTable table;
  ReadOptions const& options;
  ReadReport& report;
  std::vector<ColumnRole> roles;
  std::size_t time = 0;
  RunRows rows;
  std::vector<std::size_t> found; ///< parameters that no name or option tells, by column
  std::map<std::size_t, std::shared_ptr<double[]>> values; ///< of the outputs, by column
  Scan scan;
};

} // namespace

Scan scanOfRows(CellTable&& table, ReadOptions const& options, ReadReport& report)
{
  return Stacking(std::move(table), options, report).make();
}

} // namespace runsieve
