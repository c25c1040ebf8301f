#include <runsieve/core/inference/BoxPasting.h>

#include <runsieve/core/inference/BoxLevels.h>
#include <runsieve/core/inference/BoxSurroundings.h>

#include <algorithm>

namespace runsieve {

namespace {

/// A range that is wider than one of the box, and the runs that it lets in.
struct Paste
{
  std::size_t place = 0; ///< among the ranges of the box
  BoxRange range;
  BoxTally added;
};

class Paster
{
public:
  Paster(BoxTable const& table, BoxSurroundings const& around, std::size_t most)
      : table(table), around(around), most(most)
  {}

  /// The best paste; of no runs if there is none.
  Paste bestOf(Box const& box)
  {
    for (std::size_t place = 0; place < box.ranges.size(); ++place) {
      BoxRange const& range = box.ranges[place];
      BoxColumn const& column = table.columns()[range.parameter];
      if (range.isText()) offerCategories(column, range, place);
      if (range.cutsLow()) offerLow(column, range, place);
      if (range.cutsHigh()) offerHigh(column, range, place);
    }
    return best;
  }

private:
  void offerLow(BoxColumn const& column, BoxRange const& range, std::size_t place)
  {
    auto const& ends = column.ordered.groupEnds;
    auto const first = std::partition_point(ends.begin(), ends.end(), [&](std::uint32_t const& end) {
      return column.values[column.ordered.order[end - 1]] < range.low;
    });
    std::ptrdiff_t const below = first - ends.begin();
    TakenLevels const taken = takeLevels(column, around.near, below - 1, -1, -1, most);
    BoxRange wider = range;
    wider.low = taken.next < 0 ? BoxRange::OPEN_LOW : limitOf(column, taken);
    offer({place, std::move(wider), taken.tally}, column);
  }

  void offerHigh(BoxColumn const& column, BoxRange const& range, std::size_t place)
  {
    auto const& ends = column.ordered.groupEnds;
    auto const above = std::partition_point(ends.begin(), ends.end(), [&](std::uint32_t const& end) {
      return column.values[column.ordered.order[end - 1]] <= range.high;
    });
    TakenLevels const taken = takeLevels(column, around.near, above - ends.begin(),
                                         static_cast<std::ptrdiff_t>(ends.size()), 1, most);
    BoxRange wider = range;
    wider.high = taken.next < 0 ? BoxRange::OPEN_HIGH : limitOf(column, taken);
    offer({place, std::move(wider), taken.tally}, column);
  }

  static double limitOf(BoxColumn const& column, TakenLevels const& taken)
  {
    return limitBetween(column.valueOf(static_cast<std::size_t>(taken.last)),
                        column.valueOf(static_cast<std::size_t>(taken.next)));
  }

  void offerCategories(BoxColumn const& column, BoxRange const& range, std::size_t place)
  {
    for (std::size_t level = 0; level < column.levels(); ++level) {
      auto const category = static_cast<std::size_t>(column.valueOf(level));
      if (range.kept[category] != 0) continue;
      BoxRange wider = range;
      wider.kept[category] = 1;
      offer({place, std::move(wider), tallyOf(column, level, around.near)}, column);
    }
  }

  void offer(Paste paste, BoxColumn const& column)
  {
    if (paste.range.isFree()) paste.added += tallyOfMissing(column, around.near);
    BoxTally const after = around.inside + paste.added;
    bool const isDense = after.passing * around.inside.runs >= around.inside.passing * after.runs;
    if (paste.added.passing > 0 && isDense && isBetter(paste)) best = std::move(paste);
  }

  [[nodiscard]] bool isBetter(Paste const& paste) const
  {
    BoxTally const a = around.inside + paste.added;
    BoxTally const b = around.inside + best.added;
    if (a.passing * b.runs != b.passing * a.runs) return a.passing * b.runs > b.passing * a.runs;
    return a.runs > b.runs;
  }

  BoxTable const& table;
  BoxSurroundings const& around;
  std::size_t most;
  Paste best;
};

} // namespace

std::optional<Box> pasted(BoxTable const& table, BoxSample const& sample, Box box, PeelOptions const& options,
                          StopAsked const& stopAsked)
{
  options.check();
  while (true) {
    if (stopAsked && stopAsked()) return std::nullopt;
    BoxSurroundings const around = surroundingsOf(table, sample, box);
    Paste paste = Paster(table, around, options.runsOf(around.inside.runs)).bestOf(box);
    if (paste.added.runs == 0) return box;
    box.ranges[paste.place] = std::move(paste.range);
    box.dropFreeRanges();
  }
}

} // namespace runsieve
