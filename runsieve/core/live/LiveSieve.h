#pragma once

#include <runsieve/core/gate/ResolvedGate.h>
#include <runsieve/core/live/LiveDistance.h>
#include <runsieve/core/live/LiveWork.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace runsieve {

/// Sieves a scan while one gate is being moved: after each move the passing runs, those that have come or
/// gone, and the distance of every parameter, within some milliseconds also of 100,000 runs.
///
/// A rectangle in a chart is a gate of kind Inside or Ever with a span of times and a range of values;
/// resolveGate() puts it on the time grid. The runs and distances are those of runsThrough() and
/// compareParameters(), number by number.
///
/// What makes it fast is prepared when it is first needed, or ahead by prepare(): for each parameter the
/// order of the runs, and a copy of the curves of one output, the one that the gate was last on, time by
/// time. They take memory: that of the values of the output and a quarter more, and some 12 bytes per run and
/// parameter.
///
/// No thread is made. Not for several threads at once.
class RUNSIEVE_CORE_EXPORT LiveSieve
{
public:
  /// All runs of the scan are compared, and all pass.
  /// \param scan must outlive the sieve and not change
  explicit LiveSieve(Scan const& scan);
  /// \param eligible runs of the scan that are compared, as in compareParameters()
  /// \throw std::invalid_argument if the set, or a parameter, is not of as many runs as the scan has
  LiveSieve(Scan const& scan, RunSet eligible);
  LiveSieve(LiveSieve&&) noexcept;
  LiveSieve& operator=(LiveSieve&&) noexcept;
  ~LiveSieve();

  /// Prepares the parameters, and the output at all times. Asks between pieces of some milliseconds whether
  /// it is interrupted. Called again it goes on where it was. \return false if interrupted
  bool prepare(std::size_t output, LiveWork const& work = {});

  /// The runs that pass the gates that stand still; until the next update() they pass.
  /// \return how many they are \throw std::invalid_argument if the set is not of as many runs as the scan has
  std::size_t setFixed(RunSet const& fixed);

  /// From now on the runs pass that pass the gates that stand still and this one.
  ///
  /// Fast on kinds Inside, Ever and Never on an output; any other takes as long as runsThrough() and is not
  /// interrupted. \param moving was resolved on this scan
  /// \return how many pass; nothing if interrupted: then all is as it was before
  /// \throw GateError for a gate on clusters
  std::optional<std::size_t> update(ResolvedGate const& moving, LiveWork const& work = {});

  /// One per run, 1 for those that pass.
  [[nodiscard]] std::vector<std::uint8_t> const& mask() const;
  /// Positions of the runs, ascending, that the last setFixed() or update() let pass but the state before did
  /// not, and of those of which the opposite holds.
  [[nodiscard]] std::vector<std::uint32_t> const& changed() const;

  /// The distances of the passing runs and the others, one per parameter in the order of the scan; nothing if
  /// interrupted. Takes the longer the more runs have come or gone since the last call.
  [[nodiscard]] std::optional<std::vector<LiveDistance>> distances(LiveWork const& work = {});

private:
  struct Private;
  std::unique_ptr<Private> d;
};

} // namespace runsieve
