#include <runsieve/core/read/NamedArray.h>

#include <functional>
#include <numeric>

namespace runsieve {

std::string shapeText(std::vector<std::size_t> const& shape)
{
  if (shape.empty()) return "a single value";
  std::string text = std::to_string(shape.front());
  for (std::size_t axis = 1; axis < shape.size(); ++axis) text += " x " + std::to_string(shape[axis]);
  return text;
}

std::string bareName(std::string const& path)
{
  return path.substr(path.rfind('/') + 1); // all of it if there is none
}

std::vector<double> allNumbers(NamedArray const& array)
{
  std::vector<double> values(
      std::accumulate(array.shape.begin(), array.shape.end(), std::size_t(1), std::multiplies<>()));
  if (!values.empty()) array.numbers(0, array.shape.front(), values.data());
  return values;
}

} // namespace runsieve
