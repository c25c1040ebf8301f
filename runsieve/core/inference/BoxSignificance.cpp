#include <runsieve/core/inference/BoxSignificance.h>

#include <runsieve/core/inference/BinomialTail.h>
#include <runsieve/core/inference/BoxSurroundings.h>

#include <cmath>

namespace runsieve {

namespace {

/// The runs that one range alone keeps out.
struct KeptOut
{
  BoxTally below;
  BoxTally above;
  BoxTally missing; ///< without a value
  BoxTally others;  ///< in categories that are left out

  KeptOut(BoxColumn const& column, BoxRange const& range, std::vector<unsigned char> const& near)
  {
    for (std::size_t run = 0; run < near.size(); ++run) {
      if (near[run] == 0 || range.holds(column.values[run])) continue;
      sideOf(range, column.values[run]) += BoxSample::tallyOf(near[run]);
    }
  }

  /// What comes in if a limit opens: runs without a value too if it was the only one.
  [[nodiscard]] BoxTally withoutLow(BoxRange const& range) const
  {
    return range.cutsHigh() ? below : below + missing;
  }
  [[nodiscard]] BoxTally withoutHigh(BoxRange const& range) const
  {
    return range.cutsLow() ? above : above + missing;
  }
  [[nodiscard]] BoxTally withoutRange() const { return below + above + missing + others; }

private:
  BoxTally& sideOf(BoxRange const& range, double value)
  {
    if (std::isnan(value)) return missing;
    if (range.isText()) return others;
    return value < range.low ? below : above;
  }
};

double quasiP(BoxTally const& inside, BoxTally const& added)
{
  if (inside.runs == 0) return 1.0;
  BoxTally const without = inside + added;
  return binomialUpperTail(inside.passing, inside.runs,
                           static_cast<double>(without.passing) / static_cast<double>(without.runs));
}

/// The limit that matters least.
struct WeakestLimit
{
  double p = -1.0;
  std::size_t place = 0; ///< of its range
  BoxRange wider;        ///< that range without it

  void offer(BoxTally const& inside, BoxTally const& added, std::size_t candidate, BoxRange range)
  {
    double const value = added.runs == 0 ? std::numeric_limits<double>::infinity() : quasiP(inside, added);
    if (value > p) *this = {value, candidate, std::move(range)};
  }
};

WeakestLimit weakestLimit(BoxTable const& table, BoxSample const& sample, Box const& box)
{
  BoxSurroundings const around = surroundingsOf(table, sample, box);
  WeakestLimit weakest;
  for (std::size_t place = 0; place < box.ranges.size(); ++place) {
    BoxRange const& range = box.ranges[place];
    KeptOut const out(table.columns()[range.parameter], range, around.near);
    if (range.isText()) weakest.offer(around.inside, out.withoutRange(), place, {});
    BoxRange wider = range;
    wider.low = BoxRange::OPEN_LOW;
    if (range.cutsLow()) weakest.offer(around.inside, out.withoutLow(range), place, wider);
    wider = range;
    wider.high = BoxRange::OPEN_HIGH;
    if (range.cutsHigh()) weakest.offer(around.inside, out.withoutHigh(range), place, wider);
  }
  return weakest;
}

} // namespace

std::vector<RangeSignificance> quasiP(BoxTable const& table, BoxSample const& sample, Box const& box)
{
  BoxSurroundings const around = surroundingsOf(table, sample, box);
  std::vector<RangeSignificance> result;
  for (BoxRange const& range : box.ranges) {
    KeptOut const out(table.columns()[range.parameter], range, around.near);
    RangeSignificance p;
    if (range.cutsLow()) p.low = quasiP(around.inside, out.withoutLow(range));
    if (range.cutsHigh()) p.high = quasiP(around.inside, out.withoutHigh(range));
    p.range = quasiP(around.inside, out.withoutRange());
    result.push_back(p);
  }
  return result;
}

Box significantLimits(BoxTable const& table, BoxSample const& sample, Box box, double largest)
{
  while (!box.ranges.empty()) {
    WeakestLimit weakest = weakestLimit(table, sample, box);
    if (!(weakest.p > largest)) break;
    box.ranges[weakest.place] = std::move(weakest.wider);
    box.dropFreeRanges();
  }
  return box;
}

} // namespace runsieve
