#pragma once

#include <runsieve/records/TypedConcentrationName.h>

#include <string>

namespace runsieve::app {

/// The name of a column in files and plots: display name of the type, ": ", bare name ("Parameter: k1",
/// ": Time [s]").
[[nodiscard]] std::string columnName(Kestrane::TypedConcentrationName const& name);

} // namespace runsieve::app
