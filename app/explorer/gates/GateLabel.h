#pragma once

#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/scan/Scan.h>

#include <string>

namespace runsieve::app {

/// A gate as short as people would type it: with bare names where they mean the same, and open ends of ranges
/// as nothing. parseGate() reads it; on the scan it lets the same runs through.
[[nodiscard]] std::string gateLabel(Gate const& gate, Scan const& scan);

} // namespace runsieve::app
