#include <runsieve/core/kernels/RunParts.h>

#include <algorithm>

namespace runsieve {

std::vector<RunPart> runParts(RowSpans const& rows, long long stride)
{
  std::vector<RunPart> parts;
  parts.reserve(rows.spans().size());
  long long run = 0;
  for (RowSpan span : rows.spans()) {
    long long row = span.first;
    const long long end = span.first + span.count;
    if (row >= (run + 1) * stride) run = row / stride;
    for (; row < end; ++run) {
      const long long count = std::min(end, (run + 1) * stride) - row;
      parts.push_back({static_cast<std::int32_t>(run), static_cast<std::int32_t>(row - run * stride),
                       static_cast<std::int32_t>(count)});
      row += count;
    }
    --run; // the next span may begin in the same run
  }
  return parts;
}

std::vector<unsigned char> runsOf(std::vector<RunPart> const& parts, std::size_t runs)
{
  std::vector<unsigned char> mask(runs, 0);
  for (RunPart part : parts) mask[static_cast<std::size_t>(part.run)] = 1;
  return mask;
}

} // namespace runsieve
