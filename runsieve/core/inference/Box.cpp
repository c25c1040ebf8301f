#include <runsieve/core/inference/Box.h>

#include <algorithm>

namespace runsieve {

bool BoxRange::isFree() const
{
  return !cutsLow() && !cutsHigh() && std::find(kept.begin(), kept.end(), 0) == kept.end();
}

BoxRange& Box::range(std::size_t parameter, std::size_t categories)
{
  auto const place = std::find_if(ranges.begin(), ranges.end(),
                                  [&](auto const& range) { return range.parameter >= parameter; });
  if (place != ranges.end() && place->parameter == parameter) return *place;
  BoxRange free;
  free.parameter = parameter;
  free.kept.assign(categories, 1);
  return *ranges.insert(place, std::move(free));
}

void Box::dropFreeRanges()
{
  ranges.erase(std::remove_if(ranges.begin(), ranges.end(), [](auto const& range) { return range.isFree(); }),
               ranges.end());
}

// Halves first, since a sum can overflow. Of neighbouring numbers the middle is rounded to either.
double limitBetween(double inside, double outside)
{
  double const middle = 0.5 * inside + 0.5 * outside;
  bool const between =
      inside < outside ? inside <= middle && middle < outside : outside < middle && middle <= inside;
  return between ? middle : inside;
}

} // namespace runsieve
