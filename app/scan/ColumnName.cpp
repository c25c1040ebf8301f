#include "app/scan/ColumnName.h"

#include <array>
#include <string_view>

namespace runsieve::app {

namespace {

// By the value of Kestrane::DataType, as the library names its columns.
constexpr std::array<std::string_view, 7> displayNames = {
    "Complex", "Molecule", "Complex With Molecule", "Pattern", "", "Parameter", "Undefined Type"};

} // namespace

std::string columnName(Kestrane::TypedConcentrationName const& name)
{
  auto type = static_cast<std::size_t>(name.first);
  std::string_view display = type < displayNames.size() ? displayNames[type] : std::string_view();
  return std::string(display) + ": " + name.second;
}

} // namespace runsieve::app
