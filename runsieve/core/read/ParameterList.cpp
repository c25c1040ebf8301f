#include <runsieve/core/read/ParameterList.h>

#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/Fields.h>
#include <runsieve/core/read/Lines.h>
#include <runsieve/core/read/NameList.h>
#include <runsieve/core/read/ParameterTable.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <array>
#include <limits>
#include <unordered_map>
#include <unordered_set>

namespace runsieve {

namespace {

constexpr std::size_t longestFile = std::size_t(16) << 20;

std::string unquoted(std::string_view text, bool& latin)
{
  return toUtf8(fieldText(trimmed(text)), latin);
}

bool isComment(std::string_view line)
{
  constexpr std::array<std::string_view, 3> marks = {"#", "%", "//"};
  return std::any_of(marks.begin(), marks.end(),
                     [&](std::string_view mark) { return line.substr(0, mark.size()) == mark; });
}

// "k1 0.5 # per second"
std::string_view withoutComment(std::string_view line)
{
  bool inQuotes = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') inQuotes = !inQuotes;
    if (line[i] == '#' && !inQuotes && i > 0 && (line[i - 1] == ' ' || line[i - 1] == '\t'))
      return trimmed(line.substr(0, i));
  }
  return line;
}

// Divided at '=', ':' and the like with blanks around, else at blanks.
std::optional<ListedParameter> entryOf(std::string_view line)
{
  bool const isQuoted = line.front() == '"' && line.find('"', 1) != std::string_view::npos;
  std::size_t const nameEnd = isQuoted ? line.find('"', 1) + 1 : 0;
  std::size_t divider = line.find_first_of("=:\t,;", nameEnd);
  if (divider == std::string_view::npos) divider = line.find(' ', nameEnd);
  if (divider == std::string_view::npos) return std::nullopt;
  bool latin = false;
  ListedParameter entry;
  entry.name = unquoted(line.substr(0, divider), latin);
  std::string_view const value = trimmed(line.substr(divider + 1));
  entry.value = unquoted(value, latin);
  std::string_view const dividers = line[divider] == ' ' ? "=\t,; " : "=\t,;";
  bool const isMore = value.substr(0, 1) != "\"" && value.find_first_of(dividers) != std::string_view::npos;
  bool const isName = !entry.name.empty() && !parseNumber(entry.name) &&
                      (isQuoted || entry.name.find(' ') == std::string::npos);
  if (!isName || isMore) return std::nullopt;
  return entry;
}

/// Lists as a table with a row for each.
class ListTable
{
public:
  explicit ListTable(std::vector<ParameterList const*> const& listsOfRuns) : listOfRun(listsOfRuns) {}

  CellTable make()
  {
    findRows();
    findNames();
    for (CellColumn& column : table.columns) {
      column.cells.reset(new double[table.rows]);
      std::fill_n(column.cells.get(), table.rows, cell::missing());
    }
    for (std::size_t row = 0; row < rows.size(); ++row)
      for (ListedParameter const& entry : rows[row]->entries) set(row, entry);
    table.file = rows.front()->file;
    table.placeOf = [files = rows, headers = table.columns](std::size_t row, std::size_t column) {
      CellPlace place;
      place.file = files[row]->file;
      for (ListedParameter const& entry : files[row]->entries)
        if (entry.name == headers[column].header) place.line = entry.line;
      return place;
    };
    return std::move(table);
  }

  [[nodiscard]] std::vector<std::optional<std::size_t>> const& rowOfRun() const { return rowOf; }

private:
  void findRows()
  {
    std::unordered_map<ParameterList const*, std::size_t> known;
    for (ParameterList const* const list : listOfRun) {
      rowOf.emplace_back();
      if (list == nullptr) continue;
      auto const [place, isNew] = known.emplace(list, rows.size());
      if (isNew) rows.push_back(list);
      rowOf.back() = place->second;
    }
    table.rows = rows.size();
  }

  void findNames()
  {
    std::size_t entries = 0;
    for (ParameterList const* const list : rows)
      for (ListedParameter const& entry : list->entries) {
        ++entries;
        auto const [place, isNew] = columnOf.emplace(entry.name, table.columns.size());
        if (isNew) table.columns.push_back({entry.name, "", nullptr, false, false, false});
      }
    // Lists that have nothing in common would take memory out of all proportion.
    if (static_cast<double>(table.columns.size()) * static_cast<double>(rows.size()) >
        64.0 * static_cast<double>(entries) + 1e6)
      throw ScanError(rows.front()->file, "the lists of parameters of the runs have " +
                                              std::to_string(table.columns.size()) +
                                              " different names; most runs lack most of them");
  }

  void set(std::size_t row, ListedParameter const& entry)
  {
    CellColumn& column = table.columns[columnOf[entry.name]];
    double& value = column.cells[row];
    if (auto const number = fieldNumber(entry.value, '.')) {
      value = *number;
    } else if (!isUsualMissing(entry.value)) {
      column.hasText = true;
      auto const [place, isNew] = textNumbers.emplace(entry.value, table.texts.size());
      if (isNew) table.texts.push_back(entry.value);
      value = cell::text(place->second);
    }
  }

  std::vector<ParameterList const*> const& listOfRun;
  std::vector<ParameterList const*> rows;
  std::vector<std::optional<std::size_t>> rowOf;
  CellTable table;
  std::unordered_map<std::string, std::size_t> columnOf;
  std::unordered_map<std::string, std::size_t> textNumbers;
};

// Parameters that only some lists have.
void tellGaps(CellTable const& table, std::vector<Finding>& findings)
{
  NameList gaps;
  for (CellColumn const& column : table.columns)
    if (std::any_of(column.cells.get(), column.cells.get() + table.rows, cell::isMissing))
      gaps.add(quoted(column.header));
  if (gaps.count() > 0)
    findings.push_back({"parameters without a value in some lists: " + gaps.text(), "", false});
}

} // namespace

std::optional<ParameterList> readParameterList(std::string const& file)
{
  MappedFile const map(file);
  ParameterList list;
  list.file = file;
  if (static_cast<std::size_t>(map.end() - map.begin()) > longestFile) return std::nullopt;
  char const* at = map.begin();
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (between(at, map.end()).substr(0, byteOrderMark.size()) == byteOrderMark) at += byteOrderMark.size();
  std::unordered_set<std::string> names;
  for (std::size_t line = 1; at < map.end(); at = nextLine(at, map.end()), ++line) {
    std::string_view const text = trimmed(lineAt(at, map.end()));
    if (text.find('\0') != std::string_view::npos)
      throw ScanError(file, {line, 0, {}}, "binary data, not text");
    if (text.empty() || isComment(text)) continue;
    auto entry = entryOf(withoutComment(text));
    if (!entry) return std::nullopt;
    entry->line = line;
    if (!names.insert(entry->name).second)
      throw ScanError(file, {line, 0, {}}, "parameter " + quoted(entry->name) + " stands twice");
    list.entries.push_back(std::move(*entry));
  }
  if (list.entries.empty()) return std::nullopt;
  return list;
}

void joinParameterLists(ScanFile& target, std::vector<ParameterList const*> const& lists)
{
  ListTable maker(lists);
  CellTable const table = maker.make();
  NameList without;
  for (std::size_t run = 0; run < lists.size(); ++run)
    if (lists[run] == nullptr) without.add(target.scan.runs[run].key);
  if (without.count() > 0)
    target.report.findings.push_back({"runs without a list of parameters: " + without.text(),
                                      "their parameters of such lists are missing", false});
  std::vector<std::size_t> columns;
  for (std::size_t i = 0; i < table.columns.size(); ++i) columns.push_back(i);
  tellGaps(table, target.report.findings);
  joinColumns(target, table, maker.rowOfRun(), columns, "lists of parameters");
}

} // namespace runsieve
