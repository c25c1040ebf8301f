#include <runsieve/core/inference/ShuffledLabels.h>

#include <algorithm>
#include <numeric>

namespace runsieve {

ShuffledLabels::ShuffledLabels(std::vector<std::uint32_t> const& sizes) : begins{0}
{
  for (std::uint32_t const size : sizes) begins.push_back(begins.back() + size);
  dealt = begins[sizes.size() - 1];
  order.resize(begins.back());
  drawn.resize(laneCount * dealt);
}

void ShuffledLabels::shuffle(std::size_t lane, RandomStream random)
{
  std::iota(order.begin(), order.end(), 0u);
  std::uint32_t* const to = drawn.data() + lane * dealt;
  auto const runs = static_cast<std::uint32_t>(order.size());
  for (std::uint32_t i = 0; i < dealt; ++i) {
    std::uint32_t const from = i + random.below(runs - i);
    to[i] = order[from];
    order[from] = order[i];
  }
}

void ShuffledLabels::mark(std::size_t side, std::size_t lanes, std::vector<LaneBits>& bits) const
{
  bool const last = side + 2 == begins.size();
  std::size_t const begin = last ? 0 : begins[side];
  std::size_t const end = last ? dealt : begins[side + 1];
  // The last side has all but what was drawn.
  std::fill(bits.begin(), bits.end(), static_cast<LaneBits>(last ? (1u << lanes) - 1u : 0u));
  for (std::size_t lane = 0; lane < lanes; ++lane) {
    std::uint32_t const* const runs = drawn.data() + lane * dealt;
    auto const bit = static_cast<LaneBits>(1u << lane);
    for (std::size_t i = begin; i < end; ++i) bits[runs[i]] ^= bit;
  }
}

} // namespace runsieve
