#pragma once

#include "app/explorer/document/State.h"

#include <runsieve/core/gate/ResolvedGate.h>
#include <runsieve/core/scan/Scan.h>

#include <optional>
#include <string>
#include <vector>

namespace runsieve::app {

/// What one gate of the list does to the open scan.
struct GateOutcome
{
  std::optional<ResolvedGate> resolved; ///< nothing if it does not fit the scan
  std::string error;                    ///< why it does not; empty if it does
  RunSet alone;                         ///< runs that pass it; all if it does not fit
  std::size_t left = 0;                 ///< runs that pass it and those before it that are on, joined
};

/// Names of the gates that are on and ask for something that the scan does not have. Those for clusters,
/// which take a while, don't count. \param outcomes one per gate
[[nodiscard]] std::vector<std::string> gatesWithoutEffect(std::vector<NamedGate> const& gates,
                                                          std::vector<GateOutcome> const& outcomes);

/// The gates of a list on a scan. Gates that have not changed are not applied anew.
class GateOutcomes
{
public:
  /// Forgets everything. \param scan must outlive this object and not change
  void reset(Scan const* scan, GateContext context);
  /// Gates that could not be applied are applied anew the next time.
  void retryFaults();
  /// Applies the gates that are on; one that does not fit the scan asks for nothing.
  void apply(std::vector<NamedGate> const& gates, GateJoin join);

  /// One for each gate of the list.
  [[nodiscard]] std::vector<GateOutcome> const& outcomes() const { return found; }
  /// The runs that pass; all if no gate is on.
  [[nodiscard]] RunSet const& passing() const { return through; }
  /// Whether some gate is on and fits.
  [[nodiscard]] bool sieves() const { return asked; }

  /// The runs that pass those gates of the last apply() that are on, but for one. \param but its position;
  /// that of no gate: all of them
  [[nodiscard]] RunSet passingBut(std::size_t but) const;
  /// Whether some gate but for one is on and fits.
  [[nodiscard]] bool sievesBut(std::size_t but) const;
  [[nodiscard]] GateJoin joined() const { return join; }

private:
  [[nodiscard]] GateOutcome outcomeOf(Gate const& gate) const;
  [[nodiscard]] bool counts(std::size_t i) const { return list[i].on && found[i].resolved.has_value(); }

  Scan const* scan = nullptr;
  GateContext context;
  std::vector<NamedGate> list;
  std::vector<GateOutcome> found;
  GateJoin join = GateJoin::All;
  RunSet through;
  bool asked = false;
};

} // namespace runsieve::app
