#pragma once

#include <runsieve/core/coverage/RunCoverage.h>
#include <runsieve/core/parallel/BlockRunner.h>
#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// Counts of runs of one block that are brought to the coats that a picture is to show, at once or slice by
/// slice.
///
/// A slice takes runs from all over the block, in golden steps, so that a few of them show the shape of all,
/// whatever order or pattern the block has. In how many slices runs are counted, and what coats are wanted
/// meanwhile, makes no difference to the counts, bit for bit.
class RUNSIEVE_CORE_EXPORT SlicedCoverage
{
public:
  using Coats = std::vector<std::uint8_t>;

  enum class Progress
  {
    more,   ///< there are runs left
    done,   ///< every run has its coats
    tooMany ///< RunCoverage::mostCoats could be exceeded; the counts are not to be used any more
  };

  /// Nothing is counted yet. \param runs of the block. \throws std::invalid_argument as RunCoverage
  SlicedCoverage(RunCoverage::Frame const& frame, std::size_t runs);

  [[nodiscard]] RunCoverage const& counts() const { return coverage; }
  /// Of each run, as they are counted.
  [[nodiscard]] Coats const& coats() const { return counted; }
  /// Of the coats that are wanted, the part that is counted, 0 to 1; 1 if none are.
  [[nodiscard]] double share(Coats const& wanted) const;

  /// Adds a line that is none of the runs. \return false, and nothing has changed, if there are too many
  bool addLine(float const* points, std::size_t count) { return coverage.add(points, count); }

  /// Gives runs their coats. The block must have the same points each time; `wanted` has as many coats as it
  /// has runs. If an exception leaves one of these, the counts are not to be used any more.
  /// \param mostRuns that are drawn
  Progress advance(RunBlock const& runs, Coats const& wanted, std::size_t mostRuns,
                   BlockRunner const& runner);
  /// All that are left. Never Progress::more.
  Progress finish(RunBlock const& runs, Coats const& wanted, BlockRunner const& runner);

private:
  Progress change(RunBlock const& runs, Coats next, BlockRunner const& runner);

  RunCoverage coverage;
  Coats counted;
  std::size_t stepSize = 1; ///< prime to the number of runs, so that steps reach all of them
  std::size_t place = 0;    ///< the run that is looked at next
};

} // namespace runsieve
