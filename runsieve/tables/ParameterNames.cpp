#include <runsieve/tables/ParameterNames.h>

#include <runsieve/tables/TableAccess.h>

namespace runsieve {

std::string parameterName(std::vector<Kestrane::TypedConcentrationName> const& names, vtkTable* table,
                          int column)
{
  const auto i = static_cast<std::size_t>(column);
  if (column >= 0 && i < names.size()) return names[i].second;
  return bareParameterName(columnName(table, column));
}

} // namespace runsieve
