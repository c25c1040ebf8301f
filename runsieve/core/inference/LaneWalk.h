#pragma once

#include <runsieve/core/inference/ComparedParameter.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// Sets of runs that are compared side by side in the lanes of a register.
constexpr std::size_t laneCount = 16;

/// For each run, bit l says whether it belongs to the set of lane l. A small table (200 KB for 100,000 runs)
/// is what makes reading it in the order of each parameter cheap.
using LaneBits = std::uint16_t;

/// A number for each lane.
using LaneNumbers = std::array<std::uint64_t, laneCount>;

/// What the lanes count in; both are exact as far as they are chosen by countsFor().
enum class Counts
{
  NARROW, ///< 32 bits: differences below 2^31
  WIDE,   ///< whole numbers in 64-bit floating point: differences up to 2^53, at half the speed
};

enum class Registers
{
  ANY_MACHINE,
  WIDEST, ///< what the machine has; the same numbers sooner
};

/// Most runs of a walk, so that all differences are below 2^53.
constexpr std::size_t mostLaneRuns = std::size_t{1} << 27;

/// The fastest counts that hold differences of two sets up to `largest`, the product of their sizes.
[[nodiscard]] inline Counts countsFor(std::uint64_t largest)
{
  return largest < (std::uint64_t{1} << 31) ? Counts::NARROW : Counts::WIDE;
}

/// For each lane, the largest |n a - k g| over the groups of equal values, where k of the n runs in `ordered`
/// belong to the set of the lane, and a of the g runs up to the end of the group (Steps::EACH_GROUP: of the
/// group alone). Divided by k (n - k) it is the largest difference of the shares of the set and of all
/// others, by cumulative steps the two-sample Kolmogorov-Smirnov statistic. Runs of a group are stepped
/// together.
///
/// \param ordered at most mostLaneRuns runs
/// \param bits by position of the run
/// \param members k of each lane, as membersAmong() counts it: other numbers overflow
[[nodiscard]] LaneNumbers largestDifferences(OrderedValues const& ordered, std::vector<LaneBits> const& bits,
                                             LaneNumbers const& members, Steps steps, Counts counts,
                                             Registers registers = Registers::WIDEST);

/// For each lane, how many of the runs in `ordered` belong to its set.
[[nodiscard]] LaneNumbers membersAmong(OrderedValues const& ordered, std::vector<LaneBits> const& bits);

} // namespace runsieve
