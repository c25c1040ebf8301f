#pragma once

#include <runsieve/core/compare/BoxOfRuns.h>
#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/Scan.h>

#include <vector>

namespace runsieve {

/// A box of runs as gates on parameters, one for each that it restricts, in the order of the scan; a run that
/// passes all of them is inside, and no other run that takes part. None if the box restricts nothing.
/// \param scan the one in which the box was found
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<Gate> gatesOf(BoxOfRuns const& box, Scan const& scan);

} // namespace runsieve
