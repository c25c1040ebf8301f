#include <runsieve/core/inference/LaneWalk.h>

#include <cstring>

#if defined(__x86_64__) && defined(__GNUC__)
#define RUNSIEVE_HAS_AVX2_WALK
#endif

namespace runsieve {

namespace {

/// The sums of all lanes, in registers of some bytes. Compilers cut registers that the machine lacks into
/// scalars, so the bytes must be right; all is inlined into the functions that say for which machine they
/// are.
template <class Number, class Mask, std::size_t BYTES> class LaneSums
{
public:
  [[gnu::always_inline]] inline LaneSums(std::uint64_t upNumber, LaneNumbers const& downNumbers)
  {
    static_assert(sizeof(Number) == sizeof(Mask));
    up = reinterpret_cast<Masks>(Numbers{} + static_cast<Number>(upNumber));
    for (std::size_t lane = 0; lane < laneCount; ++lane) {
      bitOf[lane / width][lane % width] = Mask{1} << lane;
      down[lane / width][lane % width] = static_cast<Number>(downNumbers[lane]);
    }
  }

  [[gnu::always_inline]] inline void step(LaneBits bits)
  {
    Masks const all = Masks{} + static_cast<Mask>(bits);
    for (std::size_t v = 0; v < vectors; ++v)
      sum[v] += reinterpret_cast<Numbers>(((all & bitOf[v]) == bitOf[v]) & up) - down[v];
  }

  [[gnu::always_inline]] inline void keep()
  {
    for (std::size_t v = 0; v < vectors; ++v) {
      high[v] = sum[v] > high[v] ? sum[v] : high[v];
      low[v] = sum[v] < low[v] ? sum[v] : low[v];
    }
  }

  [[gnu::always_inline]] inline void restart()
  {
    for (std::size_t v = 0; v < vectors; ++v) sum[v] = Numbers{};
  }

  [[gnu::always_inline]] inline void store(LaneNumbers& largest) const
  {
    for (std::size_t lane = 0; lane < laneCount; ++lane) {
      Number const above = high[lane / width][lane % width];
      Number const below = -low[lane / width][lane % width];
      largest[lane] = static_cast<std::uint64_t>(above > below ? above : below);
    }
  }

private:
  using Numbers [[gnu::vector_size(BYTES)]] = Number;
  using Masks [[gnu::vector_size(BYTES)]] = Mask;
  static constexpr std::size_t width = BYTES / sizeof(Number);
  static constexpr std::size_t vectors = laneCount / width;

  Masks up;
  Masks bitOf[vectors];
  Numbers down[vectors];
  Numbers sum[vectors] = {};
  Numbers high[vectors] = {};
  Numbers low[vectors] = {};
};

/// One walk along the runs of a parameter: each member of a set adds `up` to the sum of its lane, and each
/// run takes `down` from it.
struct Way
{
  OrderedValues const& ordered;
  LaneBits const* bits;
  std::uint64_t up;
  LaneNumbers const& down;
  Steps steps;
  LaneNumbers* largest; ///< of the sums without sign, at the ends of groups
};

template <class Sums> [[gnu::always_inline]] inline void walk(Way const& way)
{
  LaneBits const* const bits = way.bits;
  std::uint32_t const* const order = way.ordered.order.data();
  std::size_t const runs = way.ordered.order.size();
  Sums sums(way.up, way.down);
  if (way.steps == Steps::CUMULATIVE && !way.ordered.tied()) {
    for (std::size_t i = 0; i < runs; ++i) {
      sums.step(bits[order[i]]);
      sums.keep();
    }
  } else {
    std::size_t i = 0;
    for (std::uint32_t const end : way.ordered.groupEnds) {
      for (; i < end; ++i) sums.step(bits[order[i]]);
      sums.keep();
      if (way.steps == Steps::EACH_GROUP) sums.restart();
    }
  }
  sums.store(*way.largest);
}

template <std::size_t BYTES> [[gnu::always_inline]] inline void walk(Way const& way, Counts counts)
{
  if (counts == Counts::NARROW)
    walk<LaneSums<std::int32_t, std::int32_t, BYTES>>(way);
  else
    walk<LaneSums<double, std::int64_t, BYTES>>(way);
}

void walkAnywhere(Way const& way, Counts counts)
{
  walk<16>(way, counts);
}

#ifdef RUNSIEVE_HAS_AVX2_WALK
[[gnu::target("avx2")]] void walkByAvx2(Way const& way, Counts counts)
{
  walk<32>(way, counts);
}
#endif

void walkBy(Registers registers, Way const& way, Counts counts)
{
#ifdef RUNSIEVE_HAS_AVX2_WALK
  if (registers == Registers::WIDEST && __builtin_cpu_supports("avx2")) {
    walkByAvx2(way, counts);
    return;
  }
#endif
  walkAnywhere(way, counts);
}

} // namespace

LaneNumbers largestDifferences(OrderedValues const& ordered, std::vector<LaneBits> const& bits,
                               LaneNumbers const& members, Steps steps, Counts counts, Registers registers)
{
  LaneNumbers largest{};
  walkBy(registers, {ordered, bits.data(), ordered.order.size(), members, steps, &largest}, counts);
  return largest;
}

// Sums that only grow are largest at the end.
LaneNumbers membersAmong(OrderedValues const& ordered, std::vector<LaneBits> const& bits)
{
  LaneNumbers members{};
  walkBy(Registers::WIDEST, {ordered, bits.data(), 1, LaneNumbers{}, Steps::CUMULATIVE, &members},
         Counts::NARROW);
  return members;
}

} // namespace runsieve
