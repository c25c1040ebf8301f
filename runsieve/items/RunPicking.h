#pragma once

#include <cstddef>
#include <optional>

namespace runsieve {

/// A rectangle around a place, in the units of the points.
struct PickedPlace
{
  float x;
  float y;
  float toleranceX;
  float toleranceY;
};

/// The times that all runs of a block share, to find points near a place without a look at those of other
/// times.
class TimeColumns
{
public:
  /// \param points x and y in turn, `stride` points for each run, the runs one behind another
  /// \return nothing if the runs have not all the same x in ascending order
  static std::optional<TimeColumns> of(float const* points, std::size_t count, std::size_t stride);

  /// The point in the rectangle, borders excluded, that has the smallest x, and of those the first run's;
  /// nothing if there is none. \param points those that this was made of
  [[nodiscard]] std::optional<std::size_t> find(float const* points, PickedPlace const& place) const;

private:
  TimeColumns(std::size_t pointCount, std::size_t runLength) : count(pointCount), stride(runLength) {}

  std::size_t count;
  std::size_t stride;
};

} // namespace runsieve
