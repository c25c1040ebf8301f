#pragma once

#include <runsieve/records/TypedConcentrationName.h>

#include <string>

namespace runsieve {

/// The name shown for a data type; empty for Unnamed and for values outside the enumeration.
std::string displayName(Kestrane::DataType type);

/// The name of a column of typed data: display name, ": ", bare name. Auxiliary columns begin with ": ".
std::string typedColumnName(Kestrane::TypedConcentrationName const& name);

} // namespace runsieve
