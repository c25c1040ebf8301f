#include <runsieve/core/read/JoinedRows.h>

#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/NaturalOrder.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <memory>
#include <unordered_set>
#include <utility>

namespace runsieve {

namespace {

bool isJoined(CellTable const& table, TableRuns const& found, std::size_t column)
{
  return !table.columns[column].header.empty() && found.namedRun != column;
}

std::string unitOf(CellTable const& table, TableRuns const& found, std::size_t column)
{
  return column == found.time ? found.roles[column].label.unit : table.columns[column].unit;
}

bool countsRows(TableRuns const& found, std::size_t column)
{
  return found.roles[column].role == Role::Ignored;
}

bool isWholeNumber(std::string const& key)
{
  constexpr std::size_t longest = 15; // digits that a double keeps
  return !key.empty() && key.size() <= longest && digitsAt(key, 0).size() == key.size() &&
         withoutLeadingZeros(key) == key;
}

std::string inWords(std::string const& unit)
{
  return unit.empty() ? "no unit" : quoted(unit);
}

// The memory of a vector as that of a column; nothing is copied.
std::shared_ptr<double[]> shared(std::vector<double> cells)
{
  auto const owner = std::make_shared<std::vector<double>>(std::move(cells));
  return {owner, owner->data()};
}

} // namespace

void JoinedRows::begin(CellTable const& table, TableRuns const& found)
{
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    if (!isJoined(table, found, i)) continue;
    Column column;
    column.like = table.columns[i];
    column.like.cells.reset();
    column.like.hasText = column.like.hasMissing = false;
    column.file = table.file;
    column.isTime = i == found.time;
    column.isWanted = table.columns[i].cells != nullptr;
    column.like.unit = unitOf(table, found, i);
    columns.push_back(std::move(column));
  }
}

void JoinedRows::leaveOut(std::string const& header)
{
  constexpr std::size_t most = 10000; // names for a message
  if (missing.size() < most) missing.insert(header);
}

void JoinedRows::add(std::string const& key, CellTable const& table, TableRuns const& found)
{
  if (fileRows.empty()) begin(table, found);
  numbers.clear();
  std::unordered_map<std::string_view, std::size_t> places;
  for (std::size_t i = 0; i < table.columns.size(); ++i)
    if (isJoined(table, found, i) && i != found.time) places.emplace(table.columns[i].header, i);
  std::vector<Column> common;
  for (Column& column : columns) {
    auto const place = places.find(column.like.header);
    if (!column.isTime && place == places.end()) {
      leaveOut(column.like.header);
      continue;
    }
    append(column, table, column.isTime ? found.time : place->second, found);
    if (!column.isTime) places.erase(place);
    common.push_back(std::move(column));
  }
  columns = std::move(common);
  for (auto const& [header, column] : places) leaveOut(std::string(header));
  if (found.namedRun) ++replaced;
  addRuns(key, table, found.rows);
  rows += found.rows.rows();
}

void JoinedRows::append(Column& column, CellTable const& table, std::size_t from, TableRuns const& found)
{
  CellColumn const& source = table.columns[from];
  std::string const unit = unitOf(table, found, from);
  if (unit != column.like.unit)
    throw ScanError(table.file, {table.headerLine, from + 1, source.header},
                    "the unit is " + inWords(unit) + ", but " + inWords(column.like.unit) + " in " +
                        column.file);
  column.like.isOutput = column.like.isOutput || source.isOutput;
  column.isKept = column.isKept || !countsRows(found, from);
  column.isWanted = column.isWanted && source.cells != nullptr;
  if (!column.isWanted) return;
  column.like.hasText = column.like.hasText || source.hasText;
  column.like.hasMissing = column.like.hasMissing || source.hasMissing;
  for (std::size_t position = 0; position < found.rows.rows(); ++position) {
    double const value = source.cells[found.rows.row(position)];
    column.cells.push_back(source.hasText && cell::isText(value)
                               ? cell::text(textNumbers(table)[cell::textNumber(value)])
                               : value);
  }
}

std::vector<std::uint64_t> const& JoinedRows::textNumbers(CellTable const& table)
{
  if (!numbers.empty()) return numbers;
  for (std::string const& text : table.texts) {
    auto const [place, isNew] = knownTexts.emplace(text, allTexts.size());
    if (isNew) allTexts.push_back(text);
    numbers.push_back(place->second);
  }
  return numbers;
}

void JoinedRows::addRuns(std::string const& key, CellTable const& table, RunRows const& found)
{
  std::size_t const file = fileRows.size();
  fileRows.push_back(rows);
  for (std::size_t run = 0; run < found.runs(); ++run)
    allRuns.push_back(
        {found.runs() == 1 ? key : key + '/' + found.keys[run], file, rows + found.starts[run]});
  if (table.rows == 0) throw ScanError(table.file, "the file has no rows");
}

CellTable JoinedRows::take()
{
  checkKeys();
  CellTable table;
  table.file = folder;
  table.headerLine = 0;
  table.rows = rows;
  table.texts = std::move(allTexts);
  std::unordered_set<std::string> taken;
  bool hasValues = false;
  for (Column& column : columns) {
    taken.insert(column.like.header);
    if (column.isWanted && column.isKept) column.like.cells = shared(std::move(column.cells));
    hasValues = hasValues || (column.like.cells != nullptr && !column.isTime);
    table.columns.push_back(std::move(column.like));
  }
  if (!hasValues)
    throw ScanError(folder, "the files have no column in common besides the time; put the files of one kind "
                            "into a folder of their own");
  runName = "run";
  while (taken.count(runName) > 0) runName += '\'';
  table.columns.push_back(runColumn(table.texts));
  return table;
}

CellColumn JoinedRows::runColumn(std::vector<std::string>& texts) const
{
  bool const isNumber =
      std::all_of(allRuns.begin(), allRuns.end(), [](Run const& run) { return isWholeNumber(run.key); });
  std::vector<double> cells;
  cells.reserve(rows);
  for (std::size_t i = 0; i < allRuns.size(); ++i) {
    double value = 0.0;
    if (isNumber) {
      value = static_cast<double>(std::stoll(allRuns[i].key));
    } else {
      value = cell::text(texts.size());
      texts.push_back(allRuns[i].key);
    }
    cells.resize(i + 1 < allRuns.size() ? allRuns[i + 1].firstRow : rows, value);
  }
  return {runName, "", shared(std::move(cells)), !isNumber, false, false};
}

void JoinedRows::checkKeys() const
{
  std::unordered_set<std::string> keys;
  for (Run const& run : allRuns)
    if (!keys.insert(run.key).second)
      throw ScanError(folder, "two runs would be named " + quoted(run.key) +
                                  "; rename the files so that their names tell the runs apart");
}

} // namespace runsieve
