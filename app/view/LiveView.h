#pragma once

#include <runsieve/core/live/LiveSieve.h>
#include <runsieve/core/scan/Scan.h>
#include <runsieve/plot/PlotContainer.h>
#include <runsieve/widgets/DragRectangle.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace runsieve::app {

/// The passing runs and the distances of the parameters while a rectangle is dragged over the chart of the
/// runs.
class LiveView
{
public:
  /// \param scan outlives this object and does not change; its outputs are the columns of the plot
  LiveView(Scan const& scan, RunSet eligible) : runs(scan), sieve(scan, std::move(eligible)) {}

  /// Prepares an output, for some milliseconds. \return whether it is prepared now
  bool prepare(std::size_t output);

  /// The selection of a plot as it is when a drag begins.
  void begin(PlotContainer const& plot);
  /// The runs that pass if the rectangle is released now. \return their number
  std::size_t move(DragRectangle const& rectangle, std::size_t output);
  /// One per run, 1 for those that pass.
  [[nodiscard]] std::vector<unsigned char> const& lit() const { return passing; }
  /// Of those that are compared; empty if the last move was not one that distances follow.
  [[nodiscard]] std::vector<LiveDistance> distances();

private:
  [[nodiscard]] bool isNewPlace(ResolvedGate const& gate) const;
  [[nodiscard]] std::vector<long long> rowsIn(ResolvedGate const& gate) const;
  /// The rows that are selected if these are dragged over.
  [[nodiscard]] std::vector<long long> joined(std::vector<long long> const& rows,
                                              Qt::KeyboardModifiers modifiers) const;
  /// By the sieve; nothing where it doesn't have the answer of rows.
  std::optional<std::size_t> moveFast(ResolvedGate const& gate, Qt::KeyboardModifiers modifiers);
  std::size_t show(RunSet const& set);

  Scan const& runs;
  LiveSieve sieve;
  std::vector<unsigned char> passing;
  std::vector<long long> selected;       ///< rows, at the beginning of the drag
  std::vector<unsigned char> timesInUse; ///< of those rows, one per time
};

} // namespace runsieve::app
