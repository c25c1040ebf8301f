#include <runsieve/core/inference/BoxSurroundings.h>

#include <algorithm>

namespace runsieve {

namespace {

constexpr unsigned char several = 2; ///< ranges that a run is outside of, or more

void countOutside(double const* values, BoxRange const& range, std::vector<unsigned char>& outside)
{
  for (std::size_t run = 0; run < outside.size(); ++run) {
    unsigned char const more = range.holds(values[run]) ? outside[run] : outside[run] + 1;
    outside[run] = std::min(more, several);
  }
}

} // namespace

BoxSurroundings surroundingsOf(BoxTable const& table, BoxSample const& sample, Box const& box)
{
  checkSizes(table, sample);
  BoxSurroundings result;
  std::vector<unsigned char>& outside = result.near;
  outside.resize(table.runs());
  for (BoxRange const& range : box.ranges)
    countOutside(table.columns()[range.parameter].values, range, outside);
  for (std::size_t run = 0; run < outside.size(); ++run) {
    unsigned char const mark = sample.marks()[run];
    if (outside[run] == 0) result.inside += BoxSample::tallyOf(mark);
    outside[run] = outside[run] == 1 ? mark : 0;
  }
  return result;
}

BoxMeasures measure(BoxTable const& table, BoxSample const& sample, Box const& box)
{
  return {surroundingsOf(table, sample, box).inside, sample.all()};
}

} // namespace runsieve
