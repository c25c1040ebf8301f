#pragma once

#include "app/explorer/charts/AxisMap.h"

#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <map>
#include <memory>

namespace runsieve::app {

/// The finite values of an output.
struct Extent
{
  double low = 0.0;
  double high = 1.0;
  double lowestPositive = 0.0; ///< 0 if there is none
};

/// What outputs reach, found once.
class Extents
{
public:
  /// Forgets all that is known. \param scan may be null
  void reset(std::shared_ptr<Scan const> scan);

  [[nodiscard]] Extent const& of(std::size_t output) const;
  /// An axis of all values of an output, with a little room. \param logarithmic is left out for an output
  /// without positive values
  [[nodiscard]] AxisMap axis(std::size_t output, bool logarithmic) const;
  /// All times, without room; of a single time some around it.
  [[nodiscard]] AxisMap timeAxis() const;

private:
  std::shared_ptr<Scan const> scan;
  mutable std::map<std::size_t, Extent> known;
};

} // namespace runsieve::app
