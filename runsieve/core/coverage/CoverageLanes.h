#pragma once

#include <runsieve/core/coverage/RunCoverage.h>
#include <runsieve/core/parallel/BlockRunner.h>
#include <runsieve/core/runsieve_core_export.h>

#include <cstdint>

namespace runsieve {

/// Counts runs in a host's threads: each thread counts some of them in an object of its own, and their sums
/// are those of a single thread, bit for bit. Without a runner, with little to do, or with so many runs that
/// mostCoats is near, all is done in the calling thread. Threads take 8 MB beside the counts at most, and
/// only until they are done; where a picture is so large that this is not enough for two, none help.
///
/// If an exception leaves one of these, the counts are not to be used any more.
namespace CoverageLanes {

/// As RunCoverage::add().
RUNSIEVE_CORE_EXPORT bool add(RunCoverage& counts, RunBlock const& runs, std::uint8_t const* coats,
                              BlockRunner const& runner);
/// As RunCoverage::change().
RUNSIEVE_CORE_EXPORT bool change(RunCoverage& counts, RunBlock const& runs, std::uint8_t const* oldCoats,
                                 std::uint8_t const* newCoats, BlockRunner const& runner);

} // namespace CoverageLanes

} // namespace runsieve
