#include <runsieve/core/read/NamedArray.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <utility>

namespace runsieve {

namespace {

struct StoredNumber
{
  double stored;
  double meant;
};

std::size_t product(std::vector<std::size_t> const& lengths, std::size_t from)
{
  return std::accumulate(lengths.begin() + static_cast<std::ptrdiff_t>(from), lengths.end(), std::size_t(1),
                         std::multiplies<>());
}

} // namespace

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

std::vector<NamedArray> withMissingAsMeant(std::vector<NamedArray> arrays, std::vector<double> const& missing)
{
  std::vector<StoredNumber> rounded;
  for (double const number : missing)
    if (auto const stored = static_cast<double>(static_cast<float>(number)); stored != number)
      rounded.push_back({stored, number});
  if (rounded.empty()) return arrays;
  for (NamedArray& array : arrays) {
    if (!array.isSingle || array.kind != NamedArray::Kind::Numbers || array.shape.empty()) continue;
    array.numbers = [stored = std::move(array.numbers), rounded,
                     each = product(array.shape, 1)](std::size_t first, std::size_t count, double* to) {
      stored(first, count, to);
      std::for_each(to, to + count * each, [&](double& value) {
        for (StoredNumber const& number : rounded)
          if (value == number.stored) value = number.meant;
      });
    };
  }
  return arrays;
}

std::vector<double> allNumbers(NamedArray const& array)
{
  std::vector<double> values(product(array.shape, 0));
  if (!values.empty()) array.numbers(0, array.shape.front(), values.data());
  return values;
}

} // namespace runsieve
