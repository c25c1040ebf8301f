#pragma once

#include <runsieve/core/inference/RandomStream.h>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace runsieve {

/// Brings `taken` of the values, in random order, to the front; all orders are equally likely (Fisher and
/// Yates, Statistical Tables, 1938). \param count below 2^32 \param taken at most count
template <class Value>
void shuffleToFront(Value* values, std::size_t count, std::size_t taken, RandomStream& random)
{
  for (std::size_t i = 0; i < taken; ++i)
    std::swap(values[i], values[i + random.below(static_cast<std::uint32_t>(count - i))]);
}

} // namespace runsieve
