#include <runsieve/core/inference/PermutationTest.h>

#include <runsieve/core/inference/ShuffledLabels.h>
#include <runsieve/core/inference/WilsonInterval.h>
#include <runsieve/core/parallel/Parallel.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <map>
#include <stdexcept>
#include <utility>

namespace runsieve {

namespace {

constexpr std::size_t stepsOfSlice = std::size_t{1}
                                     << 21; ///< of a thread, each for all lanes: some milliseconds

std::vector<std::uint32_t> classesOf(std::vector<unsigned char> const& passing)
{
  std::vector<std::uint32_t> classes(passing.size());
  std::transform(passing.begin(), passing.end(), classes.begin(),
                 [](unsigned char mark) { return mark != 0 ? 1u : 0u; });
  return classes;
}

/// For each run, its number among those that take part, or PermutationTest::leftOut.
std::vector<std::uint32_t> numbersOf(std::vector<std::uint32_t> const& classes)
{
  std::vector<std::uint32_t> numbers(classes.size(), PermutationTest::leftOut);
  std::uint32_t next = 0;
  for (std::size_t run = 0; run < classes.size(); ++run)
    if (classes[run] != PermutationTest::leftOut) numbers[run] = next++;
  return numbers;
}

void require(bool good, char const* message)
{
  if (!good) throw std::invalid_argument(message);
}

void requireRunsOnce(std::vector<std::uint32_t> const& order, std::size_t runs)
{
  std::vector<bool> seen(runs);
  for (std::uint32_t const run : order) {
    require(run < runs, "a parameter has a value of a run that is not compared");
    require(!seen[run], "a parameter has a run twice");
    seen[run] = true;
  }
}

void requireGroups(OrderedValues const& values)
{
  std::uint32_t begin = 0;
  for (std::uint32_t const end : values.groupEnds) {
    require(end > begin, "groups of equal values are not ascending");
    begin = end;
  }
  require(begin == values.order.size(), "groups of equal values do not cover the runs of a parameter");
}

/// Only the runs that take part, by their numbers.
OrderedValues renumbered(OrderedValues const& values, std::vector<std::uint32_t> const& numbers)
{
  OrderedValues result;
  result.order.reserve(values.order.size());
  std::size_t i = 0;
  for (std::uint32_t const end : values.groupEnds) {
    std::size_t const begin = result.order.size();
    for (; i < end; ++i)
      if (std::uint32_t const number = numbers[values.order[i]]; number != PermutationTest::leftOut)
        result.order.push_back(number);
    if (result.order.size() > begin)
      result.groupEnds.push_back(static_cast<std::uint32_t>(result.order.size()));
  }
  return result;
}

/// The largest product of the sizes of two sides that `size` of `runs` runs and all others can have among
/// those that have a value.
std::uint64_t largestProduct(std::uint64_t size, std::uint64_t runs, std::uint64_t withValue)
{
  std::uint64_t const missing = runs - withValue;
  std::uint64_t const least = size > missing ? size - missing : 0;
  std::uint64_t const most = std::min(size, withValue);
  std::uint64_t const members = std::clamp(withValue / 2, least, most);
  return members * (withValue - members);
}

Fraction differenceOfShares(std::uint64_t difference, std::uint64_t members, std::uint64_t withValue)
{
  std::uint64_t const product = members * (withValue - members);
  return product == 0 ? Fraction{} : Fraction{difference, product};
}

} // namespace

PermutationTest::PermutationTest(std::vector<ComparedParameter> const& all,
                                 std::vector<unsigned char> const& passing, PermutationOptions const& asked)
    : PermutationTest(all, classesOf(passing), asked)
{}

PermutationTest::PermutationTest(std::vector<ComparedParameter> const& all,
                                 std::vector<std::uint32_t> const& classes, PermutationOptions const& asked)
    : options(asked), threads(threadCount(asked.threads)), batchEnd(asked.permutations)
{
  require(asked.permutations > 0, "no permutations are asked for");
  require(asked.cut >= 0.0 && asked.cut <= 1.0, "the cut of p-values is not in 0..1");
  if (classes.size() > mostLaneRuns) throw std::length_error("too many runs to permute");
  takeSides(classes);
  takeParameters(all, classes);
  permutable = sideSizes.size() > 1 && !parameters.empty();
  observe();
  finished = !permutable;
}

// Sides by ascending size, so that the largest is last.
void PermutationTest::takeSides(std::vector<std::uint32_t> const& classes)
{
  std::map<std::uint32_t, std::uint32_t> sizes;
  for (std::uint32_t const number : classes)
    if (number != leftOut) ++sizes[number];
  std::vector<std::pair<std::uint32_t, std::uint32_t>> bySize;
  for (auto const& [number, size] : sizes) bySize.emplace_back(size, number);
  std::sort(bySize.begin(), bySize.end());

  std::map<std::uint32_t, std::uint32_t> sides;
  for (auto const& [size, number] : bySize) {
    sides[number] = static_cast<std::uint32_t>(sideSizes.size());
    sideSizes.push_back(size);
    classOf.push_back(number);
  }
  for (std::uint32_t const number : classes)
    if (number != leftOut) sideOf.push_back(sides[number]);
  runs = sideOf.size();
}

void PermutationTest::takeParameters(std::vector<ComparedParameter> const& all,
                                     std::vector<std::uint32_t> const& classes)
{
  std::vector<std::uint32_t> const numbers = numbersOf(classes);
  parameters.reserve(all.size());
  for (ComparedParameter const& parameter : all) {
    requireRunsOnce(parameter.values.order, classes.size());
    requireGroups(parameter.values);
    parameters.push_back({renumbered(parameter.values, numbers), parameter.steps});
  }
}

// The observed sides go through the same walks as the permuted ones, in the first lane.
void PermutationTest::observe()
{
  observed.resize(parameters.size());
  reached.resize(parameters.size());
  observedOfSide.resize(sidesWalked());
  reachedOfSide.assign(sidesWalked(), std::vector<std::size_t>(parameters.size()));
  std::vector<LaneBits> bits(runs);
  for (std::size_t side = 0; side < sidesWalked(); ++side) {
    std::transform(sideOf.begin(), sideOf.end(), bits.begin(),
                   [&](std::uint32_t of) { return static_cast<LaneBits>(of == side ? 1 : 0); });
    for (LaneFractions const& d : differences(side, 1, bits)) observedOfSide[side].push_back(d[0]);
    for (std::size_t p = 0; p < parameters.size(); ++p)
      observed[p] = std::max(observed[p], observedOfSide[side][p]);
  }
}

// Of two sides each differs from the other by the same.
std::size_t PermutationTest::sidesWalked() const
{
  return sideSizes.size() <= 2 ? std::min<std::size_t>(sideSizes.size(), 1) : sideSizes.size();
}

/// The differences of all parameters between one side and all others.
std::vector<PermutationTest::LaneFractions>
PermutationTest::differences(std::size_t side, std::size_t lanes, std::vector<LaneBits> const& bits) const
{
  std::vector<LaneFractions> found(parameters.size());
  LaneNumbers ofAll{};
  std::fill_n(ofAll.begin(), lanes, sideSizes[side]);
  for (std::size_t p = 0; p < parameters.size(); ++p) {
    OrderedValues const& values = parameters[p].values;
    std::size_t const withValue = values.order.size();
    LaneNumbers const members = withValue == runs ? ofAll : membersAmong(values, bits);
    Counts const counts = countsFor(largestProduct(sideSizes[side], runs, withValue));
    LaneNumbers const largest = largestDifferences(values, bits, members, parameters[p].steps, counts);
    for (std::size_t lane = 0; lane < lanes; ++lane)
      found[p][lane] = differenceOfShares(largest[lane], members[lane], withValue);
  }
  return found;
}

/// Counts where the categories of one side reach what they do in the data.
void PermutationTest::countReached(std::vector<LaneFractions> const& of, std::size_t side, Block& block) const
{
  for (std::size_t p = 0; p < parameters.size(); ++p) {
    if (parameters[p].steps != Steps::EACH_GROUP) continue;
    block.reachedOfSide[side][p] += static_cast<std::size_t>(
        std::count_if(of[p].begin(), of[p].begin() + static_cast<std::ptrdiff_t>(block.lanes),
                      [&](Fraction d) { return !(d < observedOfSide[side][p]); }));
  }
}

void PermutationTest::permute(Block& block)
{
  ShuffledLabels labels(sideSizes);
  for (std::size_t lane = 0; lane < block.lanes; ++lane)
    labels.shuffle(lane, RandomStream(options.seed, block.begin + lane));

  std::vector<LaneFractions> largest(parameters.size());
  std::vector<LaneBits> bits(runs);
  block.reachedOfSide.assign(sidesWalked(), std::vector<std::size_t>(parameters.size()));
  for (std::size_t side = 0; side < sidesWalked(); ++side) {
    labels.mark(side, block.lanes, bits);
    std::vector<LaneFractions> const ofSide = differences(side, block.lanes, bits);
    countReached(ofSide, side, block);
    for (std::size_t p = 0; p < parameters.size(); ++p)
      for (std::size_t lane = 0; lane < block.lanes; ++lane)
        largest[p][lane] = std::max(largest[p][lane], ofSide[p][lane]);
  }

  block.reached.resize(parameters.size());
  for (std::size_t lane = 0; lane < block.lanes; ++lane) {
    Fraction maximum;
    for (LaneFractions const& d : largest) maximum = std::max(maximum, d[lane]);
    maxima[block.begin + lane] = maximum.value();
    for (std::size_t p = 0; p < parameters.size(); ++p) {
      if (!(maximum < observed[p])) ++block.reached[p].byMaximum;
      if (!(largest[p][lane] < observed[p])) ++block.reached[p].alone;
    }
  }
}

void PermutationTest::permuteTo(std::size_t end)
{
  std::vector<Block> blocks;
  for (std::size_t begin = made; begin < end; begin += laneCount)
    blocks.push_back({begin, std::min(laneCount, end - begin), {}, {}});
  maxima.resize(end);
  inParallel(threads, blocks.size(), [&](std::size_t i) { permute(blocks[i]); });
  for (Block const& block : blocks)
    for (std::size_t p = 0; p < parameters.size(); ++p) {
      reached[p].byMaximum += block.reached[p].byMaximum;
      reached[p].alone += block.reached[p].alone;
      for (std::size_t side = 0; side < sidesWalked(); ++side)
        reachedOfSide[side][p] += block.reachedOfSide[side][p];
    }
  made = end;
}

void PermutationTest::advance(std::size_t wanted)
{
  while (wanted > 0 && !finished) {
    std::size_t const count = std::min({wanted, batchEnd - made, sliceSize()});
    permuteTo(made + count);
    wanted -= count;
    if (made == batchEnd) endBatch();
  }
}

void PermutationTest::endBatch()
{
  finished = batchEnd >= options.mostPermutations || settled();
  if (!finished) batchEnd += std::min(options.permutations, options.mostPermutations - batchEnd);
}

bool PermutationTest::run(std::function<bool()> const& cancelled)
{
  while (!finished && !(cancelled && cancelled())) advance(sliceSize());
  return finished;
}

std::size_t PermutationTest::sliceSize() const
{
  std::size_t const stepsOfBlock = std::max<std::size_t>(1, runs * parameters.size() * sidesWalked());
  return laneCount * threads * std::max<std::size_t>(1, stepsOfSlice / stepsOfBlock);
}

bool PermutationTest::settled() const
{
  if (made == 0) return !permutable;
  if (options.cut == 0.0 || options.cut == 1.0) return true; // all p-values are above 0 and at most 1
  return std::none_of(reached.begin(), reached.end(), [&](Reached const& of) {
    Interval const p = wilsonInterval(of.byMaximum, made, normal99);
    return p.low <= options.cut && options.cut <= p.high;
  });
}

double PermutationTest::shareOf(std::size_t count) const
{
  if (!permutable) return std::numeric_limits<double>::quiet_NaN();
  return (1.0 + static_cast<double>(count)) / (1.0 + static_cast<double>(made));
}

double PermutationTest::noiseFloor() const
{
  std::size_t place = 0; // shareOf() takes the number of maxima that reach d, one less than their place
  while (place < made && shareOf(place) <= options.cut) ++place;
  if (place == 0) return std::numeric_limits<double>::quiet_NaN();
  std::vector<double> sorted = maxima;
  auto const found = sorted.begin() + static_cast<std::ptrdiff_t>(place - 1);
  std::nth_element(sorted.begin(), found, sorted.end(), std::greater<>());
  return *found;
}

std::map<std::uint32_t, std::vector<double>> PermutationTest::aloneOfClass() const
{
  std::map<std::uint32_t, std::vector<double>> alone;
  for (std::size_t side = 0; side < sideSizes.size(); ++side) {
    std::size_t const walked = std::min(side, sidesWalked() - 1); // two sides differ by the same
    std::vector<double>& ofClass = alone[classOf[side]];
    for (std::size_t p = 0; p < parameters.size(); ++p)
      ofClass.push_back(parameters[p].steps == Steps::EACH_GROUP ? shareOf(reachedOfSide[walked][p])
                                                                 : std::numeric_limits<double>::quiet_NaN());
  }
  return alone;
}

PermutationResult PermutationTest::result() const
{
  PermutationResult result;
  result.permutable = permutable;
  result.settled = settled();
  result.permutations = made;
  for (std::size_t p = 0; p < parameters.size(); ++p) {
    result.d.push_back(observed[p].value());
    result.p.push_back(shareOf(reached[p].byMaximum));
    result.alone.push_back(shareOf(reached[p].alone));
  }
  result.aloneOfClass = aloneOfClass();
  result.noiseFloor = noiseFloor();
  result.maxima = maxima;
  return result;
}

} // namespace runsieve
