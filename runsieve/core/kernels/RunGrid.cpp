#include <runsieve/core/kernels/RunGrid.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace runsieve {

RunGrid::RunGrid(double const* times, long long rows, long long stride)
    : grid(times, times + std::min(stride, rows)),
      runOnGrid(static_cast<std::size_t>((rows + stride - 1) / stride), 0)
{
  if (std::any_of(grid.begin(), grid.end(), [](double t) { return std::isnan(t); })) return;
  all = true;
  for (long long run = 0, first = 0; first < rows; ++run, first += stride) {
    const auto count = static_cast<std::size_t>(std::min(stride, rows - first));
    const bool same = std::memcmp(times + first, grid.data(), count * sizeof(double)) == 0;
    runOnGrid[static_cast<std::size_t>(run)] = same;
    all = all && same;
  }
}

void RunGrid::gather(std::vector<RunPart> const& parts, double* out) const
{
  for (RunPart part : parts) out = std::copy_n(grid.data() + part.first, part.count, out);
}

} // namespace runsieve
