#pragma once

#include <cstddef>
#include <vector>

namespace runsieve {

/// From x of a point to columns of a picture: `column = scale * x + offset`.
struct ColumnScale
{
  double scale = 1.0;
  double offset = 0.0;
};

/// Leaves out the points of a polyline that its picture doesn't need: of consecutive points in one column the
/// first, the lowest, the highest and the last stay, in their order. What is left covers the same heights of
/// each column and leaves it at the same points. \param points pairs of x and y. A pair that isn't finite
/// stays. \param out becomes the pairs that stay; its memory is used again
void thinToColumns(float const* points, std::size_t count, ColumnScale columns, std::vector<float>& out);

} // namespace runsieve
