#pragma once

#include <cstdint>
#include <vector>

namespace runsieve {

/// Opacity of many coats: 1 - (1 - a)^count for an opacity a of one coat.
///
/// Parts of a coat are parts of a pixel that it covers, so that between two whole numbers opacity grows
/// evenly.
class OpacityTable
{
public:
  /// \param opacity of one coat, 0 to 1; the nearest for others, 0 for NaN.
  explicit OpacityTable(double opacity);

  /// \param count in units of 1 / RunCoverage::perRun.
  /// \return 0 to 1
  [[nodiscard]] float at(std::uint32_t count) const
  {
    const std::uint32_t i = count >> shift;
    if (i >= last) return values.back();
    const float part = static_cast<float>(count & ((1U << shift) - 1)) * unit;
    return values[i] + part * (values[i + 1] - values[i]);
  }

private:
  /// At 0, 1, 2, ... coats, or where the opacity is small at multiples of a power of two.
  std::vector<float> values;
  std::uint32_t last; ///< from that entry on as the last
  int shift;          ///< an entry is 1 << shift units from the next
  float unit;         ///< 1 / (1 << shift)
};

} // namespace runsieve
