#include <runsieve/core/read/RunRows.h>

#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/Rounding.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/Decimal.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <unordered_map>
#include <unordered_set>

namespace runsieve {

namespace {

constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

/// Consecutive rows of one key.
struct Segment
{
  std::size_t first;
  std::size_t count;
  std::size_t run; ///< in the order of the file
};

// 0 and -0 are one key, and so are all NaN.
std::uint64_t keyBits(double value)
{
  if (value == 0.0) return 0;
  if (std::isnan(value) && !cell::isText(value)) return cell::missingMark;
  return cell::bitsOf(value);
}

/// Whether rows that repeat a time are too many for events.
bool areManyRepeats(std::size_t repeated, std::size_t rows)
{
  return 2 * repeated >= rows && repeated > 0;
}

void keepLastOfEqualTimes(RunRows& runs, double const* time, std::size_t repeated)
{
  if (repeated == 0) return;
  std::vector<std::size_t> kept;
  kept.reserve(runs.rows() - repeated);
  std::vector<std::size_t> starts;
  for (std::size_t run = 0; run < runs.runs(); ++run) {
    starts.push_back(kept.size());
    for (std::size_t at = runs.starts[run]; at < runs.starts[run + 1]; ++at)
      if (at + 1 == runs.starts[run + 1] || time[runs.row(at)] != time[runs.row(at + 1)])
        kept.push_back(runs.row(at));
  }
  starts.push_back(kept.size());
  runs.repeatedRows = runs.rows() - kept.size();
  runs.order = std::move(kept);
  runs.starts = std::move(starts);
}

/// Groups the rows of a table, and puts each group in the order of time.
class Grouping
{
public:
  Grouping(CellTable const& cells, std::size_t runColumn, std::size_t timeColumn)
      : table(cells), run(cells.columns[runColumn].cells.get()), time(cells.columns[timeColumn].cells.get()),
        timeAt(timeColumn)
  {
    findSegments();
  }

  RunRows group()
  {
    std::vector<std::size_t> const rank = runOrder();
    RunRows result;
    result.keys.resize(firstRows.size());
    std::vector<std::size_t> counts(firstRows.size() + 1, 0);
    for (Segment const& segment : segments) counts[rank[segment.run] + 1] += segment.count;
    std::partial_sum(counts.begin(), counts.end(), counts.begin());
    result.starts = counts;
    for (std::size_t i = 0; i < firstRows.size(); ++i)
      result.keys[rank[i]] = table.written(run[firstRows[i]]);
    result.joinedRuns = segments.size() > firstRows.size();
    result.sortedRuns = !std::is_sorted(rank.begin(), rank.end());
    if (result.joinedRuns || result.sortedRuns) fillOrder(result, rank);
    sortByTime(result);
    if (duplicate == none) keepLastOfEqualTimes(result, time, repeated);
    return result;
  }

  // Without a message and without rearranging.
  [[nodiscard]] bool hasNoFault()
  {
    if (segments.size() == firstRows.size() && rises()) return true;
    RunRows const result = group();
    return duplicate == none;
  }

  [[nodiscard]] std::size_t duplicatePosition() const { return duplicate; }

private:
  void findSegments()
  {
    std::unordered_map<std::uint64_t, std::size_t> known;
    for (std::size_t row = 0; row < table.rows; ++row) {
      std::uint64_t const key = keyBits(run[row]);
      if (row > 0 && key == keyBits(run[row - 1])) {
        ++segments.back().count;
        continue;
      }
      auto const [place, isNew] = known.emplace(key, firstRows.size());
      if (isNew) firstRows.push_back(row);
      segments.push_back({row, 1, place->second});
    }
  }

  [[nodiscard]] bool rises() const
  {
    return std::all_of(segments.begin(), segments.end(), [&](Segment const& segment) {
      for (std::size_t row = segment.first + 1; row < segment.first + segment.count; ++row)
        if (!(time[row] > time[row - 1])) return false;
      return true;
    });
  }

  [[nodiscard]] bool rises(RunRows const& runs, std::size_t begin, std::size_t end) const
  {
    for (std::size_t at = begin + 1; at < end; ++at)
      if (!(time[runs.row(at)] > time[runs.row(at - 1)])) return false;
    return true;
  }

  // Numbers in their order, texts as they come.
  [[nodiscard]] std::vector<std::size_t> runOrder() const
  {
    std::vector<std::size_t> runs(firstRows.size());
    std::iota(runs.begin(), runs.end(), std::size_t(0));
    bool const numbers = std::none_of(firstRows.begin(), firstRows.end(),
                                      [&](std::size_t row) { return std::isnan(run[row]); });
    if (numbers)
      std::stable_sort(runs.begin(), runs.end(),
                       [&](std::size_t a, std::size_t b) { return run[firstRows[a]] < run[firstRows[b]]; });
    std::vector<std::size_t> rank(runs.size());
    for (std::size_t i = 0; i < runs.size(); ++i) rank[runs[i]] = i;
    return rank;
  }

  void fillOrder(RunRows& result, std::vector<std::size_t> const& rank) const
  {
    result.order.resize(table.rows);
    std::vector<std::size_t> next(result.starts.begin(), result.starts.end() - 1);
    for (Segment const& segment : segments) {
      std::size_t& at = next[rank[segment.run]];
      for (std::size_t i = 0; i < segment.count; ++i) result.order[at++] = segment.first + i;
    }
  }

  void sortByTime(RunRows& result)
  {
    for (std::size_t i = 0; i < result.runs(); ++i) {
      std::size_t const begin = result.starts[i];
      std::size_t const end = result.starts[i + 1];
      if (rises(result, begin, end)) continue;
      std::size_t const firstRepeat = repeated;
      bool inOrder = true;
      for (std::size_t at = begin + 1; at < end; ++at) {
        double const step = time[result.row(at)] - time[result.row(at - 1)];
        inOrder = inOrder && step >= 0.0;
        repeated += step == 0.0 ? 1 : 0;
        if (step == 0.0 && firstRepeated == none) firstRepeated = result.row(at);
      }
      if (inOrder) continue;
      if (result.order.empty()) {
        result.order.resize(table.rows);
        std::iota(result.order.begin(), result.order.end(), std::size_t(0));
      }
      auto const first = result.order.begin();
      std::stable_sort(first + static_cast<std::ptrdiff_t>(begin), first + static_cast<std::ptrdiff_t>(end),
                       [&](std::size_t a, std::size_t b) { return time[a] < time[b]; });
      result.sortedTimes = true;
      std::size_t equal = firstRepeat;
      for (std::size_t at = begin + 1; at < end && duplicate == none; ++at)
        if (time[result.order[at]] == time[result.order[at - 1]] && ++equal > repeated)
          duplicate = result.order[at];
    }
    if (duplicate == none && areManyRepeats(repeated, table.rows)) duplicate = firstRepeated;
  }

  CellTable const& table;
  double const* run;
  double const* time;
  std::size_t timeAt;
  std::vector<Segment> segments;
  std::vector<std::size_t> firstRows; ///< of each key
  std::size_t repeated = 0;           ///< rows with the time of the row of the run before
  std::size_t firstRepeated = none;
  std::size_t duplicate = none; ///< a row whose time its run has already, and not for an event
};

// Whether most of the first steps of time go down.
bool descends(double const* time, std::size_t rows)
{
  constexpr std::size_t judged = 1000;
  std::size_t up = 0;
  std::size_t down = 0;
  for (std::size_t row = 1; row < std::min(rows, judged); ++row) {
    up += time[row] > time[row - 1] ? 1 : 0;
    down += time[row] < time[row - 1] ? 1 : 0;
  }
  return down > up;
}

// Rows with the time of the row before that no blank line divides from it.
std::size_t countRepeats(CellTable const& table, std::size_t time)
{
  double const* const times = table.columns[time].cells.get();
  std::size_t count = 0;
  for (std::size_t row = 1; row < table.rows; ++row) count += times[row] == times[row - 1] ? 1 : 0;
  for (std::size_t const row : table.blockStarts)
    count -= row > 0 && row < table.rows && times[row] == times[row - 1] ? 1 : 0;
  return count;
}

bool standsInFirstRowsOnly(CellTable const& table, RunRows const& runs, std::size_t column)
{
  if (!table.columns[column].hasMissing || runs.runs() < 2 || runs.rows() == runs.runs()) return false;
  double const* const cells = table.columns[column].cells.get();
  for (std::size_t i = 0; i < runs.runs(); ++i)
    for (std::size_t at = runs.starts[i]; at < runs.starts[i + 1]; ++at)
      if (cell::isMissing(cells[runs.row(at)]) != (at > runs.starts[i])) return false;
  return true;
}

bool countsRuns(CellTable const& table, RunRows const& runs, double const* cells)
{
  double last = cells[runs.row(0)];
  bool const texts = cell::isText(last);
  if (!texts && last != 0.0 && last != 1.0) return false;
  std::unordered_set<std::uint64_t> seen = {cell::bitsOf(last)};
  for (std::size_t i = 1; i < runs.runs(); ++i) {
    double const value = cells[runs.row(runs.starts[i])];
    bool const fits =
        texts ? cell::isText(value) && seen.insert(cell::bitsOf(value)).second : value == last + 1.0;
    if (!fits) return false;
    last = value;
  }
  return table.rows > runs.runs(); // where each row is a run, anything would count them
}

} // namespace

RunRows runsByColumn(CellTable const& table, std::size_t run, std::size_t time)
{
  Grouping grouping(table, run, time);
  RunRows rows = grouping.group();
  std::size_t const twice = grouping.duplicatePosition();
  if (twice != none)
    table.fail(twice, time,
               "time " + decimal(table.columns[time].cells[twice]) + " stands twice in run " +
                   table.written(table.columns[run].cells[twice]) + "; a run has each time once (if " +
                   table.columns[run].header +
                   " does not tell the runs apart, name the column that does with --run)");
  return rows;
}

bool tellsRunsApart(CellTable const& table, std::size_t run, std::size_t time)
{
  return Grouping(table, run, time).hasNoFault();
}

bool repeatsTimes(CellTable const& table, std::size_t time)
{
  return areManyRepeats(countRepeats(table, time), table.rows);
}

std::optional<RunRows> runsByPosition(CellTable const& table, std::size_t time,
                                      std::vector<std::size_t> const& keys)
{
  double const* const times = table.columns[time].cells.get();
  std::size_t count = 1;
  while (count < table.rows && times[count] == times[0]) ++count;
  if (count < 2 || count == table.rows || table.rows % count != 0) return std::nullopt;
  for (std::size_t row = count; row < table.rows; ++row)
    if (row % count == 0 ? !(times[row] > times[row - 1]) : times[row] != times[row - 1]) return std::nullopt;
  std::vector<std::vector<std::uint64_t>> keyOfRun(count);
  for (std::size_t const column : keys) {
    double const* const cells = table.columns[column].cells.get();
    auto const bits = [&](std::size_t row) { return keyBits(cells[row]); };
    std::size_t row = count;
    while (row < table.rows && bits(row) == bits(row - count)) ++row;
    for (std::size_t run = 0; run < count && row == table.rows; ++run) keyOfRun[run].push_back(bits(run));
  }
  std::sort(keyOfRun.begin(), keyOfRun.end());
  if (std::adjacent_find(keyOfRun.begin(), keyOfRun.end()) != keyOfRun.end()) return std::nullopt;
  RunRows result;
  result.joinedRuns = true;
  for (std::size_t run = 0; run < count; ++run) {
    result.keys.push_back(std::to_string(run));
    result.starts.push_back(result.order.size());
    for (std::size_t row = run; row < table.rows; row += count) result.order.push_back(row);
  }
  result.starts.push_back(table.rows);
  return result;
}

RunRows runsByRestart(CellTable const& table, std::size_t time)
{
  double const* const times = table.columns[time].cells.get();
  bool const down = descends(times, table.rows);
  std::size_t const repeats = countRepeats(table, time);
  bool const equalGoesOn = !areManyRepeats(repeats, table.rows);
  RunRows result;
  auto block = table.blockStarts.begin();
  for (std::size_t row = 0; row < table.rows; ++row) {
    bool const isBlock = block != table.blockStarts.end() && *block == row;
    if (isBlock) ++block;
    bool const goesOn = row > 0 && (down ? times[row] < times[row - 1] : times[row] > times[row - 1]);
    bool const stays = row > 0 && equalGoesOn && times[row] == times[row - 1];
    if ((goesOn || stays) && !isBlock) continue;
    result.keys.push_back(std::to_string(result.keys.size()));
    result.starts.push_back(row);
  }
  result.starts.push_back(table.rows);
  if (down && table.rows > result.runs()) {
    result.sortedTimes = true;
    result.order.resize(table.rows);
    for (std::size_t i = 0; i < result.runs(); ++i)
      for (std::size_t at = result.starts[i]; at < result.starts[i + 1]; ++at)
        result.order[at] = result.starts[i + 1] - 1 - (at - result.starts[i]);
  }
  if (equalGoesOn) keepLastOfEqualTimes(result, times, repeats);
  return result;
}

std::optional<std::size_t> findRunCounter(CellTable const& table, RunRows const& runs,
                                          std::vector<std::size_t> const& columns)
{
  if (runs.runs() < 2) return std::nullopt;
  for (std::size_t const column : columns)
    if (countsRuns(table, runs, table.columns[column].cells.get())) return column;
  return std::nullopt;
}

ColumnChanges changesWithinRuns(CellTable const& table, RunRows const& runs, std::size_t column)
{
  double const* const cells = table.columns[column].cells.get();
  ColumnChanges changes;
  changes.first = runs.rows();
  changes.inFirstRowOnly = standsInFirstRowsOnly(table, runs, column);
  if (changes.inFirstRowOnly) return changes;
  for (std::size_t i = 0; i < runs.runs(); ++i) {
    double const value = cells[runs.row(runs.starts[i])];
    for (std::size_t at = runs.starts[i] + 1; at < runs.starts[i + 1]; ++at) {
      double const other = cells[runs.row(at)];
      if (other == value || keyBits(other) == keyBits(value)) continue;
      if (equalButForRounding(other, value)) {
        changes.rounding = true;
        continue;
      }
      if (changes.runs++ == 0) changes.first = at;
      break;
    }
  }
  return changes;
}

} // namespace runsieve
