#pragma once

#include <runsieve/core/scan/Scan.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace runsieve::app {

/// Quantiles of some runs of an output at each time.
struct RunBands
{
  /// Shares of the runs that lie below.
  static constexpr std::array<double, 5> shares = {0.05, 0.25, 0.5, 0.75, 0.95};

  /// One row for each share, one value per time; NaN where no run has a finite value.
  std::array<std::vector<double>, shares.size()> quantiles;
};

/// The quantiles of the finite values at each time, linear between order statistics (R's type 7).
/// \param mask 1 per run that counts, else 0 \param cancelled asked at each time
/// \return nothing if cancelled
[[nodiscard]] std::optional<RunBands> bandsOf(Scan const& scan, std::size_t output,
                                              std::vector<std::uint8_t> const& mask,
                                              std::function<bool()> const& cancelled);

} // namespace runsieve::app
