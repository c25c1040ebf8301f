#pragma once

#include <runsieve/records/TypedConcentrationName.h>

#include <vector>

class PlotMetaData;
class vtkTable;

namespace runsieve {

/// Removes all columns but those that the settings name and the auxiliary ones, renumbers the settings, and
/// keeps the typed names of what stays. A number past the end removes every column. Says on standard error if
/// there is no colour column; number 0 counts as none.
void keepColumnsInUse(vtkTable* table, PlotMetaData& settings,
                      std::vector<Kestrane::TypedConcentrationName>& names);

} // namespace runsieve
