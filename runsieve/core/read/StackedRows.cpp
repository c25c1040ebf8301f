#include <runsieve/core/read/StackedRows.h>

#include <runsieve/core/kernels/HugePages.h>
#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/CellParameter.h>
#include <runsieve/core/read/ColumnNames.h>
#include <runsieve/core/read/ColumnRoles.h>
#include <runsieve/core/read/CommonGrid.h>
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
      ColumnRole& role = roles[i];
      if (role.role != Role::Free && role.role != Role::Parameter && role.role != Role::Status) continue;
      std::size_t const change = firstChange(table, rows, i);
      bool const constant = change == rows.rows();
      if (role.role == Role::Parameter && !constant)
        table.fail(rows.row(change), i, "a parameter must keep its value within a run");
      bool const isCode =
          plainName(role.label.name).find("status") != std::string::npos && !table.columns[i].hasText;
      if (role.role == Role::Status && isCode)
        tell("column " + quoted(table.columns[i].header) + " is not taken for the status of runs",
             "it holds numbers, whose meaning is not known; write words such as ok and failed");
      if (role.role == Role::Status && (!constant || isCode)) role = {Role::Free, role.label, {}};
      if (role.role != Role::Free) continue;
      if (constant && !isNamedAsOutput(role.label.name))
        role = {Role::Parameter, role.label, "constant within every run"};
      else
        role = {Role::Output, role.label,
                constant ? "its name is that of a concentration" : "it changes within runs"};
    }
    for (std::size_t i = 0; i < roles.size(); ++i)
      if (roles[i].role == Role::Output) requireNumbers(i);
    if (!columnOf(roles, Role::Output))
      throw ScanError(
          table.file, {table.headerLine, 0, {}},
          "no output column: besides time and run there are only parameters, as no column changes within "
          "a run (name outputs with --output)");
    checkNames();
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
        if (saysFailed(cells(i)[rows.row(rows.starts[run])])) scan.runs[run].status = RunStatus::Failed;
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
  std::map<std::size_t, std::shared_ptr<double[]>> values; ///< of the outputs, by column
  Scan scan;
};

} // namespace

Scan scanOfRows(CellTable&& table, ReadOptions const& options, ReadReport& report)
{
  return Stacking(std::move(table), options, report).make();
}

} // namespace runsieve
