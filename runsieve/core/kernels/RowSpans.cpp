#include <runsieve/core/kernels/RowSpans.h>

#include <algorithm>
#include <cstring>

namespace runsieve {

void RowSpans::expand(long long* out) const
{
  for (RowSpan span : list)
    for (long long i = 0; i < span.count; ++i) *out++ = span.first + i;
}

void gatherRows(RowSpans const& rows, void const* array, std::size_t rowBytes, void* out)
{
  // Spans lie a run apart, too far for the processor to foresee them.
  constexpr std::size_t ahead = 16;
  constexpr std::size_t cacheLine = 64;
  auto const* from = static_cast<char const*>(array);
  auto* to = static_cast<char*>(out);
  const auto at = [=](RowSpan span) { return from + static_cast<std::size_t>(span.first) * rowBytes; };
  std::vector<RowSpan> const& spans = rows.spans();
  for (std::size_t i = 0; i < spans.size(); ++i) {
    if (i + ahead < spans.size()) {
      __builtin_prefetch(at(spans[i + ahead]));
      __builtin_prefetch(at(spans[i + ahead]) + cacheLine);
    }
    const std::size_t bytes = static_cast<std::size_t>(spans[i].count) * rowBytes;
    std::memcpy(to, at(spans[i]), bytes);
    to += bytes;
  }
}

void gatherFlags(RowSpans const& rows, RowSpans const& ones, long long* out)
{
  auto one = ones.spans().begin();
  auto const last = ones.spans().end();
  for (RowSpan span : rows.spans()) {
    const long long end = span.first + span.count;
    std::fill_n(out, span.count, 0);
    while (one != last && one->first + one->count <= span.first) ++one;
    // The last one may reach into the next span.
    for (auto here = one; here != last && here->first < end; ++here) {
      const long long from = std::max(here->first, span.first);
      std::fill_n(out + (from - span.first), std::min(here->first + here->count, end) - from, 1);
    }
    out += span.count;
  }
}

} // namespace runsieve
