#include "app/scan/ColumnRoles.h"

#include "app/scan/ColumnName.h"
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/scan/ScanError.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace runsieve::app {

namespace {

using Columns = std::vector<FileColumn>;

// Columns that the library adds to a table of plots; they come back when such a table was saved.
constexpr std::array<std::string_view, 4> flagColumns = {"vtkComplementSelection", "vtkReducedSelection",
                                                         "vtkRemainderSelection", "selected points"};
constexpr std::array<std::string_view, 9> runNames = {
    "run", "runindex", "runid", "runnumber", "simulation", "simulationid", "sim", "simid", "trajectory"};

std::string lowerCase(std::string_view text)
{
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

bool isRunName(std::string_view name)
{
  std::string plain = lowerCase(name);
  plain.erase(
      std::remove_if(plain.begin(), plain.end(), [](char c) { return c == ' ' || c == '_' || c == '-'; }),
      plain.end());
  return std::find(runNames.begin(), runNames.end(), plain) != runNames.end() || plain == "trajectoryid";
}

// "time (min)" -> "Time [min]", "t" -> "Time": the name of the time axis. Nothing for other names.
std::optional<std::string> timeName(std::string_view name)
{
  std::string const lower = lowerCase(trimmed(name));
  std::size_t const stem = lower.rfind("time", 0) == 0 ? 4 : lower.rfind('t', 0) == 0 ? 1 : 0;
  if (stem == 0) return std::nullopt;
  std::string_view unit = trimmed(trimmed(name).substr(stem));
  if (unit.empty()) return "Time";
  bool const bracketed = unit.size() > 2 && ((unit.front() == '[' && unit.back() == ']') ||
                                             (unit.front() == '(' && unit.back() == ')'));
  if (bracketed) return "Time [" + std::string(unit.substr(1, unit.size() - 2)) + ']';
  constexpr std::array<std::string_view, 8> units = {"_s", "_sec",   "_ms", "_min",
                                                     "_h", "_hours", "_d",  "_days"};
  if (stem == 4 && std::find(units.begin(), units.end(), lowerCase(unit)) != units.end())
    return "Time [" + std::string(unit.substr(1)) + ']';
  return std::nullopt;
}

// Types are told by the name's prefix alone. An untyped name, with or without a leading ": ", stays open.
FileColumn describe(std::string const& header)
{
  FileColumn column;
  column.header = header;
  if (auto typed = parseColumnName(header)) {
    column.name = *typed;
    if (typed->first == Kestrane::Parameter)
      column.role = Role::Parameter;
    else if (typed->first != Kestrane::Unnamed)
      column.role = Role::Output;
  } else {
    column.name = {Kestrane::Unnamed, header};
  }
  bool const isFlag = std::find(flagColumns.begin(), flagColumns.end(), header) != flagColumns.end();
  if (header.empty() || isFlag) column.role = Role::Ignored;
  return column;
}

// A column asked for by its name in the file or by its bare name.
FileColumn& named(std::string const& file, Columns& columns, std::string const& name)
{
  for (auto& column : columns)
    if (column.header == name) return column;
  FileColumn* found = nullptr;
  for (auto& column : columns) {
    if (column.name.second != name || column.role == Role::Ignored) continue;
    if (found != nullptr) throw ScanError(file, {1, 0, {}}, "several columns are named " + quoted(name));
    found = &column;
  }
  if (found == nullptr) throw ScanError(file, {1, 0, {}}, "no column is named " + quoted(name));
  return *found;
}

// The one untyped column that a rule holds for; null if there is none.
template <class Rule>
FileColumn* single(std::string const& file, Columns& columns, char const* what, Rule const& rule)
{
  FileColumn* found = nullptr;
  for (auto& column : columns) {
    if (column.role != Role::Free || !rule(column.name.second)) continue;
    if (found != nullptr)
      throw ScanError(file, {1, 0, {}},
                      "both " + quoted(found->header) + " and " + quoted(column.header) + " could be the " +
                          what + "; name the one that is");
    found = &column;
  }
  return found;
}

FileColumn* exactly(Columns& columns, char const* header)
{
  for (auto& column : columns)
    if (column.header == header && column.role == Role::Free) return &column;
  return nullptr;
}

void findTime(std::string const& file, Columns& columns, std::string const& wanted)
{
  FileColumn* time = nullptr;
  if (!wanted.empty())
    time = &named(file, columns, wanted);
  else if ((time = exactly(columns, ": Time [s]")) == nullptr)
    time = single(file, columns, "time", [](std::string const& name) { return timeName(name).has_value(); });
  if (time == nullptr) time = exactly(columns, ": Value"); // the x axis of saved curves that have no time
  if (time == nullptr)
    throw ScanError(
        file, {1, 0, {}},
        "no time column: none is named \": Time [s]\", \"time\", \"t\" or the like; name the one that is");
  time->role = Role::Time;
  bool const typed = parseColumnName(time->header).has_value();
  time->name = {Kestrane::Unnamed, typed ? time->name.second : timeName(time->header).value_or(time->header)};
}

void findRun(std::string const& file, Columns& columns, std::string const& wanted)
{
  FileColumn* run = nullptr;
  if (!wanted.empty())
    run = &named(file, columns, wanted);
  else if ((run = exactly(columns, ": Run Index")) == nullptr)
    run = single(file, columns, "run", isRunName);
  if (run == nullptr) return;
  if (run->role == Role::Time) throw ScanError(file, {1, 0, {}}, "one column cannot be both time and run");
  run->role = Role::Run;
  run->name = {Kestrane::Unnamed, "Run Index"};
}

void setRole(FileColumn& column, Role role)
{
  column.role = role;
  if (column.name.first == Kestrane::Unnamed || role == Role::Parameter)
    column.name.first = role == Role::Parameter ? Kestrane::Parameter : Kestrane::Molecule;
}

void findParameters(std::string const& file, Columns& columns, std::vector<std::string> const& wanted)
{
  for (auto const& name : wanted) {
    FileColumn& column = named(file, columns, name);
    if (column.role == Role::Time || column.role == Role::Run)
      throw ScanError(file, {1, 0, {}}, "the time or run column " + quoted(name) + " cannot be a parameter");
    setRole(column, Role::Parameter);
  }
  for (auto& column : columns)
    if (column.role == Role::Free) setRole(column, Role::Output);
}

} // namespace

std::vector<FileColumn> findRoles(std::string const& file, Header const& header, ReadOptions const& options)
{
  Columns columns;
  columns.reserve(header.names.size());
  for (auto const& name : header.names) columns.push_back(describe(name));
  findTime(file, columns, options.timeColumn);
  findRun(file, columns, options.runColumn);
  if (options.parameterColumns) findParameters(file, columns, *options.parameterColumns);
  return columns;
}

} // namespace runsieve::app
