#include <runsieve/core/read/ColumnRoles.h>

#include <runsieve/core/read/ColumnNames.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <array>

namespace runsieve {

namespace {

// Columns that plots add to their tables; they come back when such a table was saved.
constexpr std::array<std::string_view, 4> flagColumns = {"vtkComplementSelection", "vtkReducedSelection",
                                                         "vtkRemainderSelection", "selected points"};

/// Finds out the roles of one table.
class RoleSearch
{
public:
  RoleSearch(CellTable const& cells, ReadOptions const& readOptions) : table(cells), options(readOptions)
  {
    for (CellColumn const& column : table.columns) roles.push_back(describe(column));
  }

  std::vector<ColumnRole> find()
  {
    for (std::string const& name : options.ignore) set(named(name), Role::Ignored, "by option");
    findTime();
    findRun();
    findOthers();
    return roles;
  }

private:
  [[noreturn]] void fail(std::string const& message) const
  {
    throw ScanError(table.file, {table.headerLine, 0, {}}, message);
  }

  static ColumnRole describe(CellColumn const& column)
  {
    NamedColumn const named = describeColumn(column.header);
    ColumnRole role;
    role.label = named.label;
    role.label.unit = column.unit;
    if (named.kind == NamedKind::Output || named.kind == NamedKind::Parameter) {
      role.role = named.kind == NamedKind::Output ? Role::Output : Role::Parameter;
      role.why = "its name says so";
    }
    if (column.isOutput) role = {Role::Output, role.label, "the layout of the table says so"};
    bool const isFlag = std::find(flagColumns.begin(), flagColumns.end(), column.header) != flagColumns.end();
    if (!isFlag && !column.header.empty() && column.cells) return role;
    role.role = Role::Ignored;
    role.why = column.header.empty() ? "it has no name" : (isFlag ? "the mark of a selection" : "by option");
    return role;
  }

  void set(std::size_t column, Role role, std::string why)
  {
    roles[column].role = role;
    roles[column].why = std::move(why);
  }

  // A column by its name in the file or by its bare name.
  [[nodiscard]] std::size_t named(std::string const& name) const
  {
    for (std::size_t i = 0; i < roles.size(); ++i)
      if (table.columns[i].header == name) return i;
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < roles.size(); ++i) {
      if (roles[i].label.name != name) continue;
      if (found) fail("several columns are named " + quoted(name));
      found = i;
    }
    if (!found) fail("no column is named " + quoted(name) + "; there are " + listed());
    return *found;
  }

  [[nodiscard]] std::string listed() const
  {
    constexpr std::size_t most = 12;
    std::string text;
    for (std::size_t i = 0; i < std::min(table.columns.size(), most); ++i)
      text += (i > 0 ? ", " : "") + quoted(table.columns[i].header);
    if (table.columns.size() > most) text += " and " + std::to_string(table.columns.size() - most) + " more";
    return text;
  }

  // The one free column that a rule holds for.
  template <class Rule>
  std::optional<std::size_t> single(char const* what, char const* option, Rule const& rule) const
  {
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < roles.size(); ++i) {
      if (roles[i].role != Role::Free || !rule(i)) continue;
      if (found)
        fail("both " + quoted(table.columns[*found].header) + " and " + quoted(table.columns[i].header) +
             " could be the " + what + "; name the one that is with " + option);
      found = i;
    }
    return found;
  }

  [[nodiscard]] std::optional<std::size_t> exactly(char const* header) const
  {
    for (std::size_t i = 0; i < roles.size(); ++i)
      if (table.columns[i].header == header && roles[i].role == Role::Free) return i;
    return std::nullopt;
  }

  [[nodiscard]] ColumnLabel labelOfTime(std::size_t column) const
  {
    ColumnLabel const own = ownTimeLabel(table.columns[column].header).value_or(roles[column].label);
    ColumnLabel label = timeLabel(roles[column].label.name).value_or(own);
    if (!table.columns[column].unit.empty()) label.unit = table.columns[column].unit;
    return label;
  }

  void findTime()
  {
    std::optional<std::size_t> time;
    std::string why = "its name says so";
    if (!options.time.empty()) {
      time = named(options.time);
      if (options.run == options.time) fail("one column cannot be both time and run");
      why = "by option";
    }
    if (!time) time = exactly(": Time [s]");
    if (!time)
      time =
          single("time", "--time", [&](std::size_t i) { return timeLabel(roles[i].label.name).has_value(); });
    if (!time) time = exactly(": Value"); // the x axis of saved curves that have no time
    if (!time)
      time = single("time", "--time",
                    [&](std::size_t i) { return ownTimeLabel(table.columns[i].header).has_value(); });
    if (!time) return;
    roles[*time].label = labelOfTime(*time);
    set(*time, Role::Time, why);
  }

  void findRun()
  {
    std::optional<std::size_t> run;
    std::string why = "its name says so";
    if (!options.run.empty()) {
      run = named(options.run);
      why = "by option";
      if (roles[*run].role == Role::Time) fail("one column cannot be both time and run");
    }
    if (!run) run = exactly(": Run Index");
    if (!run)
      run = single("run", "--run",
                   [&](std::size_t i) { return runName(roles[i].label.name) == RunName::Surely; });
    if (run) set(*run, Role::Run, why);
  }

  void findOthers()
  {
    auto const choose = [&](std::string const& name, Role role) {
      std::size_t const column = named(name);
      if (roles[column].role == Role::Time || roles[column].role == Role::Run)
        fail("the time or run column " + quoted(name) + " cannot be a" +
             (role == Role::Parameter ? " parameter" : "n output"));
      set(column, role, "by option");
    };
    for (std::string const& name : options.outputs) choose(name, Role::Output);
    if (options.parameters) {
      for (std::string const& name : *options.parameters) choose(name, Role::Parameter);
      for (ColumnRole& role : roles)
        if (role.role == Role::Free) role = {Role::Output, role.label, "parameters are named by option"};
    }
    for (std::size_t i = 0; i < roles.size(); ++i)
      if (roles[i].role == Role::Free && isStatusName(roles[i].label.name))
        set(i, Role::Status, "its name says so");
  }

  CellTable const& table;
  ReadOptions const& options;
  std::vector<ColumnRole> roles;
};

} // namespace

std::vector<ColumnRole> rolesByName(CellTable const& table, ReadOptions const& options)
{
  return RoleSearch(table, options).find();
}

std::optional<std::size_t> columnOf(std::vector<ColumnRole> const& roles, Role role)
{
  for (std::size_t i = 0; i < roles.size(); ++i)
    if (roles[i].role == role) return i;
  return std::nullopt;
}

std::string roleName(Role role)
{
  switch (role) {
  case Role::Time:
    return "time";
  case Role::Run:
    return "run";
  case Role::Output:
    return "output";
  case Role::Parameter:
    return "parameter";
  case Role::Status:
    return "status";
  case Role::Free:
  case Role::Ignored:
    break;
  }
  return "ignored";
}

} // namespace runsieve
