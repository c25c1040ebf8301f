#pragma once

#include <runsieve/records/DataType.h>

#include <string>
#include <utility>

namespace Kestrane {

/// Type and bare name of a simulated item. boost::hash covers pairs, so it can be the key of a Boost hash
/// map.
using TypedConcentrationName = std::pair<DataType, std::string>;

} // namespace Kestrane
