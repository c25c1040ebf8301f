#include <runsieve/core/kernels/RunValues.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace runsieve {

namespace {

bool allEqual(double const* values, long long count, double value)
{
  std::uint64_t expected;
  std::memcpy(&expected, &value, sizeof expected);
  std::uint64_t difference = 0;
  for (long long i = 0; i < count; ++i) {
    std::uint64_t bits;
    std::memcpy(&bits, values + i, sizeof bits);
    difference |= bits ^ expected;
  }
  return difference == 0;
}

} // namespace

RunValues::RunValues(double const* column, long long rows, long long stride)
{
  const long long runs = (rows + stride - 1) / stride;
  runValue.resize(static_cast<std::size_t>(runs));
  constant = true;
  for (long long run = 0; run < runs; ++run) {
    const long long first = run * stride;
    const double value = column[first];
    runValue[static_cast<std::size_t>(run)] = value;
    constant = constant && allEqual(column + first, std::min(stride, rows - first), value);
  }
}

void RunValues::gather(std::vector<RunPart> const& parts, double* out) const
{
  for (RunPart part : parts) out = std::fill_n(out, part.count, runValue[static_cast<std::size_t>(part.run)]);
}

} // namespace runsieve
