#pragma once

#include <runsieve/core/read/RunTimes.h>

namespace runsieve {

struct TimeSpan
{
  double from = 0.0;
  double to = 0.0;
};

/// The longest span that all runs share but those that begin clearly late or end clearly early.
///
/// Solvers that choose their steps end a little behind the time they were asked for, or a little before it,
/// each run at another time. Ends within three steps of a run, and a tenth of its span, are one end; at most
/// a tenth of the runs go on behind it. The same holds for the starts.
[[nodiscard]] TimeSpan commonSpan(RunTimes const& runs);

} // namespace runsieve
