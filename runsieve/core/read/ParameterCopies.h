#pragma once

#include <runsieve/core/read/ReadReport.h>
#include <runsieve/core/scan/Scan.h>

#include <vector>

namespace runsieve {

/// Tells parameters that are strictly monotone functions of another one, such as a parameter and its
/// logarithm: whatever compares ranks finds the same for both. Nothing is dropped.
///
/// Takes the time of sorting each parameter: those of equal ranks, upwards or downwards, are found by a hash
/// of the ranks. Texts, constants, and scans of fewer than three runs have no copies.
void tellCopies(Scan const& scan, std::vector<Finding>& findings);

} // namespace runsieve
