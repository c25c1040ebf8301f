#pragma once

#include <runsieve/core/inference/LaneWalk.h>
#include <runsieve/core/inference/RandomStream.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// Runs dealt out at random to sides of given sizes, every way being equally likely; one deal for each lane.
class ShuffledLabels
{
public:
  /// \param sizes runs of each side; together all runs. The last side gets what is left, so it costs nothing:
  ///   it is best the largest
  explicit ShuffledLabels(std::vector<std::uint32_t> const& sizes);

  /// Deals anew for a lane: from the first run on, each of the runs before the last side changes places with
  /// itself or a later one (Fisher and Yates; Durstenfeld, Commun. ACM 7, 1964). Run i draws below(runs - i).
  void shuffle(std::size_t lane, RandomStream random);

  /// Sets the bits of a side's runs in the first lanes, and clears all others.
  /// \param bits one per run
  void mark(std::size_t side, std::size_t lanes, std::vector<LaneBits>& bits) const;

private:
  std::vector<std::size_t> begins; ///< of the sides, and one past the last
  std::size_t dealt;               ///< runs before the last side
  std::vector<std::uint32_t> order;
  std::vector<std::uint32_t> drawn; ///< for each lane, the runs before the last side
};

} // namespace runsieve
