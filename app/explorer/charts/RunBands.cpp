#include "app/explorer/charts/RunBands.h"

#include "app/view/ThreadPool.h"

#include <runsieve/core/inference/FunctionalBands.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace runsieve::app {

namespace {

/// \param from values before this place are no larger than those from it on
double quantile(std::vector<double>& values, std::size_t from, double share)
{
  const double place = share * static_cast<double>(values.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const auto nth = values.begin() + static_cast<std::ptrdiff_t>(below);
  std::nth_element(values.begin() + static_cast<std::ptrdiff_t>(from), nth, values.end());
  const double part = place - static_cast<double>(below);
  if (part == 0.0 || below + 1 == values.size()) return *nth;
  return *nth + part * (*std::min_element(nth + 1, values.end()) - *nth);
}

std::optional<RunBands> quantilesOf(Scan const& scan, std::size_t output,
                                    std::vector<std::uint8_t> const& mask,
                                    std::function<bool()> const& cancelled)
{
  RunBands bands;
  std::vector<double> values;
  const std::size_t times = scan.times.size();
  for (std::size_t time = 0; time < times; ++time) {
    if (cancelled()) return std::nullopt;
    values.clear();
    for (std::size_t run = 0; run < mask.size(); ++run) {
      const double value = mask[run] != 0 ? scan.valuesOf(output, run)[time] : std::nan("");
      if (std::isfinite(value)) values.push_back(value);
    }
    std::size_t from = 0;
    for (std::size_t i = 0; i < RunBands::shares.size(); ++i) {
      double found = std::numeric_limits<double>::quiet_NaN();
      if (!values.empty()) {
        found = quantile(values, from, RunBands::shares[i]);
        from = static_cast<std::size_t>(RunBands::shares[i] * static_cast<double>(values.size() - 1));
      }
      bands.lines[i].push_back(found);
    }
  }
  return bands;
}

std::optional<RunBands> wholeRunsOf(Scan const& scan, std::size_t output,
                                    std::vector<std::uint8_t> const& mask,
                                    std::function<bool()> const& cancelled)
{
  const std::size_t times = scan.times.size();
  auto found = functionalBandsOf(scan.outputs[output].values.get(), times, mask, cancelled, sharedThreads());
  if (!found) return std::nullopt;
  auto const rowOf = [&](std::size_t run) {
    double const* row = scan.valuesOf(output, run);
    return std::vector<double>(row, row + times);
  };
  RunBands bands;
  bands.lines = {std::move(found->low), std::move(found->centralLow),
                 found->deepest ? rowOf(*found->deepest)
                                : std::vector<double>(times, std::numeric_limits<double>::quiet_NaN()),
                 std::move(found->centralHigh), std::move(found->high)};
  bands.outlying = std::move(found->outlying);
  for (std::size_t i = 0; i < std::min(bands.outlying.size(), RunBands::mostOutlying); ++i)
    bands.outlyingValues.push_back(rowOf(bands.outlying[i]));
  return bands;
}

} // namespace

std::optional<BandsKind> bandsKindOf(RunsLook look)
{
  if (look == RunsLook::Bands) return BandsKind::Quantiles;
  if (look == RunsLook::WholeBands) return BandsKind::WholeRuns;
  return std::nullopt;
}

std::optional<RunBands> bandsOf(Scan const& scan, std::size_t output, std::vector<std::uint8_t> const& mask,
                                BandsKind kind, std::function<bool()> const& cancelled)
{
  return kind == BandsKind::Quantiles ? quantilesOf(scan, output, mask, cancelled)
                                      : wholeRunsOf(scan, output, mask, cancelled);
}

} // namespace runsieve::app
