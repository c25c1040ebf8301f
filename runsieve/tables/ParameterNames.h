#pragma once

#include <runsieve/records/TypedConcentrationName.h>

#include <string>
#include <vector>

class vtkTable;

namespace runsieve {

/// The bare name of a parameter: the typed name of its column or, without one, what follows the type in the
/// name of the column.
std::string parameterName(std::vector<Kestrane::TypedConcentrationName> const& names, vtkTable* table,
                          int column);

} // namespace runsieve
