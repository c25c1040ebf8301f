#include <runsieve/core/kernels/RowSpans.h>

#include <cstddef>
#include <cstring>

namespace runsieve {

namespace {

template <class T> void gather(RowSpans const& rows, T const* column, T* out)
{
  // Spans lie a run apart, too far for the processor to foresee them.
  constexpr std::size_t ahead = 16;
  std::vector<RowSpan> const& spans = rows.spans();
  for (std::size_t i = 0; i < spans.size(); ++i) {
    if (i + ahead < spans.size()) {
      T const* next = column + spans[i + ahead].first;
      __builtin_prefetch(next);
      __builtin_prefetch(next + 64 / sizeof(T));
    }
    std::memcpy(out, column + spans[i].first, static_cast<std::size_t>(spans[i].count) * sizeof(T));
    out += spans[i].count;
  }
}

} // namespace

void RowSpans::clear()
{
  list.clear();
  total = 0;
}

void RowSpans::expand(long long* out) const
{
  for (RowSpan span : list)
    for (long long i = 0; i < span.count; ++i) *out++ = span.first + i;
}

void gatherRows(RowSpans const& rows, double const* column, double* out)
{
  gather(rows, column, out);
}

void gatherRows(RowSpans const& rows, long long const* column, long long* out)
{
  gather(rows, column, out);
}

} // namespace runsieve
