#pragma once

#include "app/explorer/document/State.h"

#include <runsieve/core/scan/Scan.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace runsieve::app {

/// What bands of runs are made of.
enum class BandsKind
{
  Quantiles, ///< at each time on its own
  WholeRuns  ///< a functional boxplot
};

/// \return nothing if a look has no bands
[[nodiscard]] std::optional<BandsKind> bandsKindOf(RunsLook look);

/// Some runs of an output as a line in two bands.
struct RunBands
{
  /// Shares of the runs that lie below quantiles.
  static constexpr std::array<double, 5> shares = {0.05, 0.25, 0.5, 0.75, 0.95};
  /// Of the outlying runs so many are drawn, those that are the least deep.
  static constexpr std::size_t mostOutlying = 50;

  /// One row for each quantile; or the lower ends of the range of runs that are not outlying and of the
  /// deeper half, the deepest run, and the upper ends. One value per time, NaN where no run has one.
  std::array<std::vector<double>, shares.size()> lines;
  std::vector<std::size_t> outlying; ///< the least deep first; none beside quantiles
  /// Values of the first of them, at most mostOutlying; one per time, may be NaN.
  std::vector<std::vector<double>> outlyingValues;
};

/// The bands of the finite values of runs. Quantiles lie between order statistics in proportion (R's type 7);
/// for whole runs see FunctionalBands.
/// \param mask 1 per run that counts, else 0 \param cancelled asked now and then, maybe by several threads
/// \return nothing if cancelled
[[nodiscard]] std::optional<RunBands> bandsOf(Scan const& scan, std::size_t output,
                                              std::vector<std::uint8_t> const& mask, BandsKind kind,
                                              std::function<bool()> const& cancelled);

} // namespace runsieve::app
