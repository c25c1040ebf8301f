#pragma once

#include <cstdint>
#include <vector>

namespace runsieve {

/// Finds the positions at which two rows of marks, of equal length, differ, ascending.
void findChanged(std::vector<std::uint8_t> const& before, std::vector<std::uint8_t> const& after,
                 std::vector<std::uint32_t>& changed);

} // namespace runsieve
