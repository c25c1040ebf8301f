#include <runsieve/tables/ColumnNames.h>

#include <array>

namespace runsieve {

std::string displayName(Kestrane::DataType type)
{
  static const std::array<const char*, 7> names = {"Complex", "Molecule",  "Complex With Molecule", "Pattern",
                                                   "",        "Parameter", "Undefined Type"};
  const auto index = static_cast<unsigned int>(type);
  return index < names.size() ? names[index] : "";
}

std::string typedColumnName(Kestrane::TypedConcentrationName const& name)
{
  return displayName(name.first) + ": " + name.second;
}

} // namespace runsieve
