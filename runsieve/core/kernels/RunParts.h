#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <runsieve/core/kernels/RowSpans.h>

#include <cstdint>
#include <vector>

namespace runsieve {

/// Consecutive rows of one run of a stacked table.
struct RunPart
{
  std::int32_t run;
  std::int32_t first; ///< row within the run
  std::int32_t count;
};

/// Ascending rows of a stacked table, split where runs end. \param stride rows per run, at least 1
RUNSIEVE_CORE_EXPORT std::vector<RunPart> runParts(RowSpans const& rows, long long stride);

/// One per run, 1 for those that have a row. \param runs the number of all runs
RUNSIEVE_CORE_EXPORT std::vector<unsigned char> runsOf(std::vector<RunPart> const& parts, std::size_t runs);

} // namespace runsieve
