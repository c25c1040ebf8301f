#pragma once

#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/runsieve_core_export.h>

#include <string>

namespace runsieve {

/// The gate as one JSON object on one line; docs/sieve_file.md tells its members. The first, "text", is
/// formatGate() for people. \throw GateError if a name or text is not UTF-8
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string toJson(Gate const& gate);

/// Reads such an object. Unknown members are passed over, and so is "text" beside "kind"; an object without
/// "kind" is read from its "text". \throw GateError that names the member
[[nodiscard]] RUNSIEVE_CORE_EXPORT Gate fromJson(std::string const& text);

} // namespace runsieve
