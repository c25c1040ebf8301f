#include <runsieve/items/RunPicking.h>

namespace runsieve {

std::optional<TimeColumns> TimeColumns::of(float const* points, std::size_t count, std::size_t stride)
{
  if (stride < 1) return std::nullopt;
  for (std::size_t i = 1; i < stride && i < count; ++i)
    if (!(points[2 * (i - 1)] < points[2 * i])) return std::nullopt;
  for (std::size_t i = stride; i < count; ++i)
    if (points[2 * i] != points[2 * (i % stride)]) return std::nullopt;
  return TimeColumns(count, stride);
}

std::optional<std::size_t> TimeColumns::find(float const* points, PickedPlace const& place) const
{
  for (std::size_t time = 0; time < stride && time < count; ++time) {
    const float x = points[2 * time];
    if (x >= place.x + place.toleranceX) return std::nullopt;
    if (!(x > place.x - place.toleranceX)) continue;
    for (std::size_t i = time; i < count; i += stride) {
      const float y = points[2 * i + 1];
      if (y > place.y - place.toleranceY && y < place.y + place.toleranceY) return i;
    }
  }
  return std::nullopt;
}

} // namespace runsieve
