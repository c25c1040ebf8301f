#include <runsieve/selection/RowSpans.h>

#include <algorithm>

namespace runsieve {

namespace {

template <class T> void gather(RowSpans const& rows, T const* column, T* out)
{
  for (RowSpan span : rows.spans()) {
    T const* from = column + span.first;
    // Spans are mostly a dozen rows long: a loop beats the call of memcpy.
    for (long long i = 0; i < span.count; ++i) out[i] = from[i];
    out += span.count;
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

void RowSpans::markRuns(long long stride, unsigned char* mask) const
{
  for (RowSpan span : list) {
    const long long last = (span.first + span.count - 1) / stride;
    for (long long run = span.first / stride; run <= last; ++run) mask[run] = 1;
  }
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
