#pragma once

#include <runsieve/records/TypedConcentrationName.h>

#include <optional>
#include <string>
#include <string_view>

namespace runsieve::app {

/// The name of a column in files and plots: display name of the type, ": ", bare name ("Parameter: k1",
/// ": Time [s]").
[[nodiscard]] std::string columnName(Kestrane::TypedConcentrationName const& name);
/// The reverse of columnName(); nothing if the text does not begin with a display name and ": ".
[[nodiscard]] std::optional<Kestrane::TypedConcentrationName> parseColumnName(std::string_view text);

} // namespace runsieve::app
