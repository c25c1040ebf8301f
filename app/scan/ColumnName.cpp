#include "app/scan/ColumnName.h"

#include <array>

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

std::optional<Kestrane::TypedConcentrationName> parseColumnName(std::string_view text)
{
  for (std::size_t type = 0; type < displayNames.size(); ++type) {
    std::string_view display = displayNames[type];
    if (text.substr(0, display.size()) == display && text.substr(display.size(), 2) == ": ")
      return Kestrane::TypedConcentrationName(static_cast<Kestrane::DataType>(type),
                                              text.substr(display.size() + 2));
  }
  return std::nullopt;
}

} // namespace runsieve::app
