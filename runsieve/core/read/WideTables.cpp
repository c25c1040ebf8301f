#include <runsieve/core/read/Layouts.h>

#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/ColumnNames.h>
#include <runsieve/core/read/Fields.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <unordered_set>

namespace runsieve {

namespace {

/// A column that holds one output at one time of all runs, or of one run at all times.
struct Part
{
  std::string output;
  double position = 0.0; ///< the time, or the number of the run
  std::string key;       ///< the run as it is named
  std::size_t column = 0;
};

/// Outputs, and for each position their columns.
struct Unrolling
{
  std::vector<std::string> outputs;
  std::vector<double> positions;
  std::vector<std::string> keys;
  std::vector<std::vector<std::size_t>> columns; ///< by position and output
  std::vector<std::size_t> others;               ///< columns that stay
};

bool hasTime(CellTable const& table, ReadOptions const& options)
{
  return std::any_of(table.columns.begin(), table.columns.end(), [&](CellColumn const& column) {
    return column.cells &&
           (options.time.empty() ? timeLabel(describeColumn(column.header).label.name).has_value() ||
                                       ownTimeLabel(column.header).has_value()
                                 : column.header == options.time);
  });
}

CellColumn const* runColumnOf(CellTable const& table, ReadOptions const& options)
{
  auto const found = std::find_if(table.columns.begin(), table.columns.end(), [&](CellColumn const& column) {
    return options.run.empty() ? runName(describeColumn(column.header).label.name) != RunName::No
                               : column.header == options.run;
  });
  return found == table.columns.end() ? nullptr : &*found;
}

/// Whether no two rows have the same cell.
bool isDistinct(CellColumn const& column, std::size_t rows)
{
  std::unordered_set<std::uint64_t> seen;
  for (std::size_t row = 0; row < rows; ++row)
    if (!seen.insert(cell::bitsOf(column.cells[row])).second) return false;
  return true;
}

std::optional<double> plainNumber(std::string_view text)
{
  if (text.empty() || (std::isdigit(static_cast<unsigned char>(text.front())) == 0 && text.front() != '-' &&
                       text.front() != '.'))
    return std::nullopt;
  auto const number = parseNumber(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

// "S@10", "S_t10", "S (t=10)", "S[t=10]", "t=10": output and time.
std::optional<Part> outputAtTime(std::string const& header, std::size_t column)
{
  constexpr std::array<std::string_view, 7> marks = {"@t=", "@", "_t=", "_t", "(t=", "[t=", "t="};
  std::string_view name = header;
  if (!name.empty() && (name.back() == ')' || name.back() == ']')) name.remove_suffix(1);
  for (std::string_view const mark : marks) {
    std::size_t const found = name.rfind(mark);
    if (found == std::string_view::npos) continue;
    auto const time = plainNumber(trimmed(name.substr(found + mark.size())));
    if (!time) continue;
    return Part{std::string(trimmed(name.substr(0, found))), *time, {}, column};
  }
  return std::nullopt;
}

// "run 1", "sim_12", "A run 3", "12": output and run.
std::optional<Part> outputOfRun(std::string const& header, std::size_t column)
{
  std::size_t digits = header.size();
  while (digits > 0 && std::isdigit(static_cast<unsigned char>(header[digits - 1])) != 0) --digits;
  std::string_view const number = std::string_view(header).substr(digits);
  constexpr std::size_t longestNumber = 15;
  if (number.empty() || number.size() > longestNumber) return std::nullopt;
  constexpr std::string_view fillers = " _-.#:";
  std::string_view stem = std::string_view(header).substr(0, digits);
  while (!stem.empty() && fillers.find(stem.back()) != std::string_view::npos) stem.remove_suffix(1);
  std::size_t word = stem.size();
  while (word > 0 && std::isalpha(static_cast<unsigned char>(stem[word - 1])) != 0) --word;
  bool const isRun = runName(stem.substr(word)) != RunName::No;
  if (!isRun && !stem.empty()) return std::nullopt;
  std::string_view output = stem.substr(0, word);
  while (!output.empty() && fillers.find(output.back()) != std::string_view::npos) output.remove_suffix(1);
  return Part{std::string(output), *parseNumber(number), std::string(number), column};
}

/// The parts as a table of positions and outputs; nothing if some output lacks a position, or has it twice.
std::optional<Unrolling> arranged(std::vector<Part> const& parts)
{
  Unrolling found;
  std::map<double, std::map<std::string, std::size_t>> byPosition;
  std::map<double, std::string> keys;
  for (Part const& part : parts) {
    if (std::find(found.outputs.begin(), found.outputs.end(), part.output) == found.outputs.end()) {
      constexpr std::size_t mostOutputs = 1000;
      if (found.outputs.size() == mostOutputs) return std::nullopt;
      found.outputs.push_back(part.output);
    }
    if (!byPosition[part.position].emplace(part.output, part.column).second) return std::nullopt;
    keys[part.position] = part.key;
  }
  if (byPosition.size() < 2) return std::nullopt;
  for (auto const& [position, columns] : byPosition) {
    if (columns.size() != found.outputs.size()) return std::nullopt;
    found.positions.push_back(position);
    found.keys.push_back(keys[position]);
    found.columns.emplace_back();
    for (std::string const& output : found.outputs) found.columns.back().push_back(columns.at(output));
  }
  return found;
}

template <class Reader> std::optional<Unrolling> findParts(CellTable const& table, Reader const& reader)
{
  std::vector<Part> parts;
  std::vector<std::size_t> others;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    if (!table.columns[i].cells) continue;
    auto const part = reader(table.columns[i].header, i);
    if (part)
      parts.push_back(*part);
    else
      others.push_back(i);
  }
  auto found = arranged(parts);
  if (found) found->others = std::move(others);
  return found;
}

// A name for the one output of a table that does not name it.
std::string unnamedOutput(CellTable const& table, ReadOptions const& options)
{
  if (options.outputs.size() == 1) return options.outputs.front();
  std::set<std::string> taken;
  for (CellColumn const& column : table.columns) taken.insert(column.header);
  std::string name = "value";
  while (taken.count(name) > 0) name += '\'';
  return name;
}

/// A table of `positions` rows for each row, or of that many copies of all rows.
class Unroller
{
public:
  Unroller(CellTable&& wide, Unrolling const& parts, ReadOptions const& readOptions)
      : table(std::move(wide)), found(parts), options(readOptions)
  {
    result.file = table.file;
    result.texts = std::move(table.texts);
    result.headerLine = table.headerLine;
    result.rows = table.rows * found.positions.size();
  }

  // A row per run becomes a row per run and time.
  CellTable times()
  {
    std::size_t const each = found.positions.size();
    result.lineOf = [lineOf = table.lineOf, each](std::size_t row) { return lineOf(row / each); };
    fill([each](std::size_t position, std::size_t row) { return row * each + position; });
    double* const time = add({"Time", "", nullptr, false, false, false});
    for (std::size_t row = 0; row < result.rows; ++row) time[row] = found.positions[row % each];
    bool const isNumbered = std::any_of(found.others.begin(), found.others.end(), [&](std::size_t i) {
      std::string const& header = table.columns[i].header;
      return options.run.empty() ? runName(header) != RunName::No : header == options.run;
    });
    if (!isNumbered) {
      double* const run = add({": Run Index", "", nullptr, false, false, false});
      for (std::size_t row = 0; row < result.rows; ++row) run[row] = static_cast<double>(row / each);
    }
    return std::move(result);
  }

  // A row per time becomes a row per run and time.
  CellTable runs()
  {
    std::size_t const rows = table.rows;
    result.lineOf = [lineOf = table.lineOf, rows](std::size_t row) { return lineOf(row % rows); };
    fill([rows](std::size_t position, std::size_t row) { return position * rows + row; });
    double* const run = add({": Run Index", "", nullptr, false, false, false});
    for (std::size_t row = 0; row < result.rows; ++row) run[row] = found.positions[row / rows];
    return std::move(result);
  }

private:
  double* add(CellColumn column)
  {
    column.cells.reset(new double[result.rows]);
    result.columns.push_back(std::move(column));
    return result.columns.back().cells.get();
  }

  template <class Target> void fill(Target const& target)
  {
    std::size_t const each = found.positions.size();
    for (std::size_t const i : found.others) {
      CellColumn const& from = table.columns[i];
      double* const cells = add({from.header, from.unit, nullptr, from.hasText, from.hasMissing, false});
      for (std::size_t position = 0; position < each; ++position)
        for (std::size_t row = 0; row < table.rows; ++row) cells[target(position, row)] = from.cells[row];
    }
    for (std::size_t output = 0; output < found.outputs.size(); ++output) {
      std::string const name =
          found.outputs[output].empty() ? unnamedOutput(table, options) : found.outputs[output];
      CellColumn column{name, "", nullptr, false, false, true};
      double* const cells = add(column);
      for (std::size_t position = 0; position < each; ++position) {
        CellColumn& from = table.columns[found.columns[position][output]];
        result.columns.back().hasText = result.columns.back().hasText || from.hasText;
        result.columns.back().hasMissing = result.columns.back().hasMissing || from.hasMissing;
        for (std::size_t row = 0; row < table.rows; ++row) cells[target(position, row)] = from.cells[row];
        from.cells.reset();
      }
    }
  }

  CellTable table;
  Unrolling const& found;
  ReadOptions const& options;
  CellTable result;
};

std::string example(CellTable const& table, Unrolling const& found)
{
  return quoted(table.columns[found.columns.front().front()].header) + " to " +
         quoted(table.columns[found.columns.back().back()].header);
}

} // namespace

CellTable unrolledTimes(CellTable table, ReadOptions const& options, ReadReport& report)
{
  if (hasTime(table, options)) return table;
  auto found = findParts(table, outputAtTime);
  if (!found)
    found = findParts(table, [](std::string const& header, std::size_t column) -> std::optional<Part> {
      auto const time = plainNumber(header);
      if (!time) return std::nullopt;
      return Part{{}, *time, {}, column};
    });
  if (!found) return table;
  report.findings.push_back({"each row is a run; columns " + example(table, *found) + " are " +
                                 std::to_string(found->positions.size()) + " times",
                             "their names end in times, and no column is one of time", true});
  return Unroller(std::move(table), *found, options).times();
}

CellTable unrolledRuns(CellTable table, ReadOptions const& options, ReadReport& report)
{
  if (!hasTime(table, options)) return table;
  auto const found = findParts(table, outputOfRun);
  if (!found) return table;
  report.findings.push_back(
      {"columns " + example(table, *found) + " are " + std::to_string(found->positions.size()) + " runs",
       "their names count runs, beside one column of time", true});
  return Unroller(std::move(table), *found, options).runs();
}

CellTable withoutTime(CellTable table, ReadOptions const& options, bool certain, ReadReport& report)
{
  // Rows of one run without times would be one row over another.
  CellColumn const* const named = runColumnOf(table, options);
  bool const isAsked = !options.outputs.empty() && options.time.empty() &&
                       (!named || (named->cells && isDistinct(*named, table.rows)));
  if ((!certain && !isAsked) || hasTime(table, options) || table.columns.size() < 2) return table;
  bool const namesRuns = isAsked && named;
  CellTable result = std::move(table);
  bool isFirst = true;
  for (CellColumn& column : result.columns) {
    if (!column.cells) continue;
    column.isOutput = !isAsked && !isFirst;
    isFirst = false;
  }
  CellColumn time{"Time", "", std::shared_ptr<double[]>(new double[result.rows]), false, false, false};
  CellColumn run{": Run Index", "", std::shared_ptr<double[]>(new double[result.rows]), false, false, false};
  for (std::size_t row = 0; row < result.rows; ++row) {
    time.cells[row] = 0.0;
    run.cells[row] = static_cast<double>(row);
  }
  result.columns.push_back(std::move(time));
  if (!namesRuns) result.columns.push_back(std::move(run));
  if (isAsked)
    report.findings.push_back(
        {"each row is a run with one time", "no column is one of time, and outputs are named", true});
  else
    report.findings.push_back(
        {"each row is a run with one time; the first column is a parameter, the others are outputs",
         "no column is one of time, and the names stand in a comment, as in the scans of rule-based models",
         true});
  return result;
}

} // namespace runsieve
