#pragma once

#include "app/explorer/document/GateOutcomes.h"

#include <runsieve/core/live/LiveDistance.h>
#include <runsieve/core/live/LiveSieve.h>

#include <QElapsedTimer>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace runsieve::app {

/// What passes while one gate of a list is being moved, and the distances of the parameters.
class GatePreview
{
public:
  /// Forgets all that is prepared. \param scan must outlive this object and not change; may be null
  /// \param eligible runs that are compared
  void reset(Scan const* scan, RunSet eligible);

  /// Prepares gates on an output for being moved, for some milliseconds. \return whether all is prepared
  bool prepare(std::size_t output);
  /// The runs that pass if a gate of the list is replaced. \param index its place; that of no gate: one is
  /// added \throw GateError
  [[nodiscard]] RunSet passing(std::size_t index, ResolvedGate const& gate, GateOutcomes const& others);
  /// The gates that stand still may be others from now on.
  void forgetOthers();

  /// After passing(): new distances of its runs, now and then, so that a reader can follow. Nothing if it is
  /// too early, or gates are joined so that the distances are not known.
  [[nodiscard]] std::optional<std::vector<LiveDistance>> newDistances();

private:
  LiveSieve& sieve();

  Scan const* scan = nullptr;
  RunSet eligible;
  std::unique_ptr<LiveSieve> live;     ///< none before the first use
  std::optional<std::size_t> fixedFor; ///< the gate whose others the sieve holds still
  bool isJoint = false;                ///< whether the sieve's runs are all that pass
  QElapsedTimer sinceDistances;
};

} // namespace runsieve::app
