#include <runsieve/core/gate/ParameterName.h>

#include <algorithm>

namespace runsieve {

std::string nameOfParameter(Scan const& scan, std::size_t parameter)
{
  std::string name = scan.parameters[parameter].label.fullName();
  bool const isUnique = std::none_of(scan.outputs.begin(), scan.outputs.end(), [&](ScanOutput const& output) {
    return output.label.name == name || output.label.fullName() == name;
  });
  return isUnique ? name : std::string(parameterPrefix) + name;
}

} // namespace runsieve
