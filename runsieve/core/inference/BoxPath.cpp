#include <runsieve/core/inference/BoxPath.h>

#include <runsieve/core/inference/BoxLevels.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve {

void PeelOptions::check() const
{
  if (!(fraction > 0.0 && fraction < 1.0))
    throw std::invalid_argument("the fraction of runs that a peel takes away is not between 0 and 1");
  if (!(leastMass >= 0.0 && leastMass <= 1.0))
    throw std::invalid_argument("the least mass of a box is not in 0 to 1");
}

// Products are rounded: 0.29 x 100 comes out below 29, and 0.07 x 100 above 7. Quotients of counts are what
// callers compare with.
std::size_t PeelOptions::runsOf(std::size_t inside) const
{
  auto const runs = static_cast<double>(inside);
  double share = std::floor(fraction * runs);
  if ((share + 1.0) / runs <= fraction) share += 1.0;
  return std::max<std::size_t>(1, static_cast<std::size_t>(share));
}

std::size_t PeelOptions::leastRunsOf(std::size_t all) const
{
  auto const runs = static_cast<double>(all);
  double share = std::floor(leastMass * runs);
  if (share / runs < leastMass) share += 1.0;
  return std::max<std::size_t>(1, static_cast<std::size_t>(share));
}

void BoxPeel::applyTo(Box& box) const
{
  BoxRange& range = box.range(parameter, categories);
  switch (kind) {
  case Kind::Low:
    range.low = limit;
    break;
  case Kind::High:
    range.high = limit;
    break;
  case Kind::Category:
    range.kept[static_cast<std::size_t>(limit)] = 0;
    break;
  }
}

Box BoxPath::box(std::size_t step) const
{
  Box box;
  for (std::size_t i = 1; i <= step; ++i) steps[i].peel->applyTo(box);
  return box;
}

/// A peel that could be done.
struct BoxPeeler::Candidate
{
  BoxPeel peel;
  BoxTally removed;
  std::ptrdiff_t level = 0; ///< the first that stays on this side, or that of the category
  double score = -std::numeric_limits<double>::infinity();
};

BoxPeeler::BoxPeeler(BoxTable const& table, BoxSample const& sample, PeelOptions const& options)
    : table(table), options(options), marks(sample.marks()), inside(sample.all())
{
  options.check();
  checkSizes(table, sample);
  leastInside = options.leastRunsOf(inside.runs);
  for (BoxColumn const& column : table.columns()) {
    if (column.categories > 0 || !column.missing.empty()) followed.push_back(extents.size());
    extents.push_back(extentOf(column));
  }
  found.all = inside;
  found.steps.push_back({std::nullopt, inside, 0});
}

BoxPeeler::Extent BoxPeeler::extentOf(BoxColumn const& column) const
{
  Extent extent{0, static_cast<std::ptrdiff_t>(column.levels()) - 1, tallyOfMissing(column, marks), {}};
  extent.categories.resize(column.categories);
  for (std::size_t level = 0; column.categories > 0 && level < column.levels(); ++level)
    extent.categories[static_cast<std::size_t>(column.valueOf(level))] = tallyOf(column, level, marks);
  return extent;
}

bool BoxPeeler::peel()
{
  if (inside.passing == 0 || inside.passing == inside.runs) return false;
  Candidate best;
  for (std::size_t parameter = 0; parameter < extents.size(); ++parameter) {
    if (table.columns()[parameter].categories > 0)
      offerCategories(parameter, best);
    else
      offerSides(parameter, best);
  }
  if (best.removed.runs == 0) return false;
  execute(best);
  return true;
}

bool BoxPeeler::hasRuns(BoxColumn const& column, std::ptrdiff_t level) const
{
  auto const at = static_cast<std::size_t>(level);
  return std::any_of(column.begin(at), column.end(at), [&](std::uint32_t run) { return marks[run] != 0; });
}

// A box never grows again, so that levels without runs at its ends are passed only once.
void BoxPeeler::trim(std::size_t parameter)
{
  BoxColumn const& column = table.columns()[parameter];
  Extent& extent = extents[parameter];
  while (extent.first <= extent.last && !hasRuns(column, extent.first)) ++extent.first;
  while (extent.first < extent.last && !hasRuns(column, extent.last)) --extent.last;
}

void BoxPeeler::offerSides(std::size_t parameter, Candidate& best)
{
  trim(parameter);
  if (extents[parameter].first >= extents[parameter].last) return;
  offerSide(parameter, BoxPeel::Kind::Low, best);
  offerSide(parameter, BoxPeel::Kind::High, best);
}

void BoxPeeler::offerSide(std::size_t parameter, BoxPeel::Kind kind, Candidate& best) const
{
  BoxColumn const& column = table.columns()[parameter];
  Extent const& extent = extents[parameter];
  std::size_t const valued = inside.runs - extent.missing.runs;
  std::size_t const most = std::min(options.runsOf(inside.runs), valued - 1); // a level must stay
  bool const low = kind == BoxPeel::Kind::Low;
  TakenLevels const taken = low ? takeLevels(column, marks, extent.first, extent.last + 1, 1, most)
                                : takeLevels(column, marks, extent.last, extent.first - 1, -1, most);
  double const limit = limitBetween(column.valueOf(static_cast<std::size_t>(taken.next)),
                                    column.valueOf(static_cast<std::size_t>(taken.last)));
  offer({{parameter, kind, limit, 0}, taken.tally + extent.missing, taken.next}, best);
}

void BoxPeeler::offerCategories(std::size_t parameter, Candidate& best) const
{
  BoxColumn const& column = table.columns()[parameter];
  Extent const& extent = extents[parameter];
  for (std::size_t level = 0; level < column.levels(); ++level) {
    double const category = column.valueOf(level);
    BoxTally const& tally = extent.categories[static_cast<std::size_t>(category)];
    if (tally.runs == 0 || tally.runs + extent.missing.runs == inside.runs) continue;
    offer({{parameter, BoxPeel::Kind::Category, category, column.categories},
           tally + extent.missing,
           static_cast<std::ptrdiff_t>(level)},
          best);
  }
}

// The criterion without the constant factor 1 / n. Both sides of the fraction are whole numbers, so that
// equal criteria are equal here as well, on any machine.
void BoxPeeler::offer(Candidate candidate, Candidate& best) const
{
  BoxTally const left{inside.runs - candidate.removed.runs, inside.passing - candidate.removed.passing};
  if (left.runs < leastInside || left.passing == 0) return;
  auto const gain = static_cast<std::int64_t>(left.passing * inside.runs) -
                    static_cast<std::int64_t>(inside.passing * left.runs);
  std::size_t const taken = std::max(candidate.removed.runs, options.runsOf(inside.runs));
  candidate.score = static_cast<double>(gain) / static_cast<double>(left.runs * taken);
  bool const smaller = candidate.removed.runs < best.removed.runs;
  if (candidate.score > best.score || (candidate.score == best.score && smaller)) best = candidate;
}

void BoxPeeler::execute(Candidate const& best)
{
  BoxColumn const& column = table.columns()[best.peel.parameter];
  Extent& extent = extents[best.peel.parameter];
  switch (best.peel.kind) {
  case BoxPeel::Kind::Low:
    while (extent.first < best.level) removeLevel(column, static_cast<std::size_t>(extent.first++));
    break;
  case BoxPeel::Kind::High:
    while (extent.last > best.level) removeLevel(column, static_cast<std::size_t>(extent.last--));
    break;
  case BoxPeel::Kind::Category:
    removeLevel(column, static_cast<std::size_t>(best.level));
    break;
  }
  if (!extent.restricted) {
    for (std::uint32_t const run : column.missing) remove(run);
    extent.restricted = true;
    ++restricted;
  }
  found.steps.push_back({best.peel, inside, restricted});
}

void BoxPeeler::removeLevel(BoxColumn const& column, std::size_t level)
{
  std::for_each(column.begin(level), column.end(level), [&](std::uint32_t run) { remove(run); });
}

void BoxPeeler::remove(std::uint32_t run)
{
  unsigned const mark = marks[run];
  if (mark == 0) return;
  marks[run] = 0;
  BoxTally const one = BoxSample::tallyOf(mark);
  inside -= one;
  for (std::size_t const parameter : followed) {
    Extent& extent = extents[parameter];
    double const value = table.columns()[parameter].values[run];
    if (std::isnan(value))
      extent.missing -= one;
    else if (!extent.categories.empty())
      extent.categories[static_cast<std::size_t>(value)] -= one;
  }
}

std::optional<BoxPath> findBoxPath(BoxTable const& table, BoxSample const& sample, PeelOptions const& options,
                                   StopAsked const& stopAsked)
{
  BoxPeeler peeler(table, sample, options);
  do
    if (stopAsked && stopAsked()) return std::nullopt;
  while (peeler.peel());
  return peeler.path();
}

} // namespace runsieve
