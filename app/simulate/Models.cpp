#include "app/simulate/Model.h"

#include "app/simulate/ModelTable.h"

#include <algorithm>

namespace runsieve::app {

std::vector<Model> const& models()
{
  static std::vector<Model> const table = {repressilator(), mapkCascade(), toggleSwitch()};
  return table;
}

Model const* findModel(std::string const& name)
{
  auto const found =
      std::find_if(models().begin(), models().end(), [&](Model const& m) { return m.name == name; });
  return found == models().end() ? nullptr : &*found;
}

Model const& exampleModel()
{
  return models().front();
}

} // namespace runsieve::app
