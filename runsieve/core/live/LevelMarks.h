#pragma once

#include <runsieve/core/inference/ComparedParameter.h>
#include <runsieve/core/live/LargestDifference.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// How many runs pass at each of a few levels of a parameter, and their distance from the others.
///
/// A run that begins or ends to pass changes one count, and the distance takes one step per level.
class LevelMarks
{
public:
  /// No run passes.
  /// \param levels of each run, from 0; any number from `count` on for a run without a value
  /// \param steps Steps::CUMULATIVE for the distribution functions, as compareSamples(); Steps::EACH_GROUP
  /// for
  ///              the shares of each level, as compareCategories()
  LevelMarks(std::vector<std::uint32_t> levels, std::size_t count, Steps steps);

  /// These runs pass from now on if they did not, and the other way round. \param changed each run at most
  /// once \param passes of each run, whether it passes from now on, 0 or 1
  void flip(std::vector<std::uint32_t> const& changed, std::uint8_t const* passes);

  /// `place` is the level.
  [[nodiscard]] LargestDifference largest() const;

private:
  Steps steps;
  std::vector<std::uint32_t> levels;
  std::vector<std::uint32_t> sizes;   ///< runs of each level
  std::vector<std::uint32_t> passing; ///< those that pass; one more, for runs without a value
};

} // namespace runsieve
