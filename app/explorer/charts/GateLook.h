#pragma once

#include <runsieve/core/gate/ResolvedGate.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>

namespace runsieve::app {

/// Whether a gate, as it is resolved or as it is named, is on an output.
[[nodiscard]] bool isOnOutput(Gate const& gate, Scan const& scan, std::size_t output);

/// Whether runs in its rectangle fail: such gates have dashed sides.
[[nodiscard]] bool excludesInside(Gate const& gate);

} // namespace runsieve::app
