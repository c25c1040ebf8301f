#pragma once

#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/Scan.h>

#include <string>

namespace runsieve {

/// Tells the data of two scans apart, as 16 hexadecimal digits.
///
/// It is made of times, keys of runs, and bare names and values of outputs and parameters: of numbers as
/// such, so that it does not depend on how they are written in a file; -0 is 0, and all NaN are alike. The
/// order of the columns, their types, units and labels, and the status of runs have no part in it; the order
/// of runs and times has. Texts of a parameter count as texts.
///
/// The hash is XXH64 (Y. Collet, xxHash fast digest algorithm, format description 0.1.1): of blocks of 4096
/// values, each with the hash of the one before as its seed. Those of the columns are added. It finds
/// mistakes, not forgeries.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string fingerprintOf(Scan const& scan);

} // namespace runsieve
