#include <runsieve/core/live/OrderedMarks.h>

#include <algorithm>
#include <cstdlib>

namespace runsieve {

namespace {

constexpr std::size_t WORD = 64;
constexpr std::size_t PART = 16; ///< of a word

/// By sums of neighbours: not all machines that this is compiled for count bits by themselves.
std::uint32_t countBits(std::uint64_t word)
{
  word -= (word >> 1) & 0x5555555555555555u;
  word = (word & 0x3333333333333333u) + ((word >> 2) & 0x3333333333333333u);
  word = (word + (word >> 4)) & 0x0f0f0f0f0f0f0f0fu;
  return static_cast<std::uint32_t>((word * 0x0101010101010101u) >> 56);
}

bool bitAt(std::vector<std::uint64_t> const& bits, std::size_t place)
{
  return (bits[place / WORD] >> (place % WORD) & 1u) != 0;
}

std::size_t wordsFor(std::size_t bits)
{
  return (bits + WORD - 1) / WORD;
}

} // namespace

/// Differences of the distribution functions, and the largest that was found.
struct OrderedMarks::Walk
{
  std::int64_t size;
  std::int64_t passing;
  std::int64_t others;
  std::int64_t least = 0; ///< the largest is not smaller
  std::int64_t largest = 0;
  std::size_t end = 0; ///< last place of the group where it stands

  /// After the first `met` runs of the order, of which `metPassing` pass.
  [[nodiscard]] std::int64_t difference(std::size_t met, std::uint32_t metPassing) const
  {
    return static_cast<std::int64_t>(met) * passing - std::int64_t{metPassing} * size;
  }

  /// Whether the first of the largest differences may stand among these runs, which come after a difference.
  [[nodiscard]] bool mayStandIn(std::int64_t start, std::int64_t passingRuns, std::int64_t otherRuns) const
  {
    std::int64_t const bound = std::max(start + otherRuns * passing, passingRuns * others - start);
    return bound >= least && bound > std::abs(largest);
  }
};

OrderedMarks::OrderedMarks(OrderedValues const& ordered, std::size_t runs)
    : size(ordered.order.size()), places(runs, static_cast<std::uint32_t>(wordsFor(size) * WORD)),
      passes(wordsFor(size) + 1), ends(wordsFor(size)), before(wordsFor(size) + 1)
{
  for (std::size_t place = 0; place < size; ++place)
    places[ordered.order[place]] = static_cast<std::uint32_t>(place);
  for (std::size_t const end : ordered.groupEnds)
    ends[(end - 1) / WORD] |= std::uint64_t{1} << (end - 1) % WORD;
}

void OrderedMarks::flip(std::vector<std::uint32_t> const& changed)
{
  for (std::uint32_t const run : changed) {
    std::uint32_t const place = places[run];
    passes[place / WORD] ^= std::uint64_t{1} << place % WORD;
  }
}

void OrderedMarks::countPassing()
{
  for (std::size_t word = 0; word + 1 < before.size(); ++word)
    before[word + 1] = before[word] + countBits(passes[word]);
}

std::int64_t OrderedMarks::largestAtWords(Walk const& walk) const
{
  std::int64_t largest = 0;
  for (std::size_t word = 1; word < before.size(); ++word) {
    std::size_t const met = std::min(word * WORD, size);
    if (bitAt(ends, met - 1)) largest = std::max(largest, std::abs(walk.difference(met, before[word])));
  }
  return largest;
}

void OrderedMarks::lookInto(std::size_t word, Walk& walk) const
{
  std::size_t const first = word * WORD;
  std::size_t const end = std::min(first + WORD, size);
  std::int64_t difference = walk.difference(first, before[word]);
  for (std::size_t place = first; place < end; place += PART) {
    std::uint64_t const part = passes[word] >> place % WORD & ((std::uint64_t{1} << PART) - 1);
    std::size_t const runs = std::min(PART, end - place);
    std::int64_t const passing = countBits(part);
    std::int64_t const others = static_cast<std::int64_t>(runs) - passing;
    if (walk.mayStandIn(difference, passing, others)) stepThrough(place, runs, difference, walk);
    difference += others * walk.passing - passing * walk.others;
  }
}

void OrderedMarks::stepThrough(std::size_t first, std::size_t runs, std::int64_t difference, Walk& walk) const
{
  for (std::size_t place = first; place < first + runs; ++place) {
    difference += bitAt(passes, place) ? -walk.others : walk.passing;
    if (std::abs(difference) <= std::abs(walk.largest) || !bitAt(ends, place)) continue;
    walk.largest = difference;
    walk.end = place;
  }
}

std::size_t OrderedMarks::firstOfGroup(std::size_t end) const
{
  std::size_t first = end;
  while (first > 0 && !bitAt(ends, first - 1)) --first;
  return first;
}

LargestDifference OrderedMarks::largest()
{
  countPassing();
  std::int64_t const passing = before.back();
  Walk walk{static_cast<std::int64_t>(size), passing, static_cast<std::int64_t>(size) - passing};
  walk.least = largestAtWords(walk);
  for (std::size_t word = 0; word + 1 < before.size(); ++word) {
    std::size_t const first = word * WORD;
    auto const runs = static_cast<std::int64_t>(std::min(WORD, size - first));
    std::int64_t const here = before[word + 1] - before[word];
    if (walk.mayStandIn(walk.difference(first, before[word]), here, runs - here)) lookInto(word, walk);
  }
  return {before.back(), static_cast<std::uint32_t>(walk.others), walk.largest,
          walk.largest == 0 ? 0 : firstOfGroup(walk.end)};
}

} // namespace runsieve
