#pragma once

#include <runsieve/core/scan/Scan.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace runsieve::app {

/// A number of one run of an output. Missing values are left out, as gates on these numbers leave them out.
enum class RunFeature : std::uint8_t
{
  Last,
  Max,
  Min,
  Mean,
  TimeOfMax ///< the first of several
};

inline constexpr std::array<RunFeature, 5> runFeatures = {RunFeature::Last, RunFeature::Max, RunFeature::Min,
                                                          RunFeature::Mean, RunFeature::TimeOfMax};

/// The word that gates have for it: "timeofmax".
[[nodiscard]] char const* featureWord(RunFeature feature);

/// NaN for a run without values. Linear in the times.
[[nodiscard]] double featureOf(Scan const& scan, std::size_t output, std::size_t run, RunFeature feature);

} // namespace runsieve::app
