#pragma once

#include <runsieve/core/gate/Gate.h>

#include <QString>

#include <vector>

namespace runsieve::app {

/// What gates of a kind are given by, and how they are told to people.
struct GateKindEntry
{
  GateKind kind;
  QString words; ///< "all the time"
  QString hint;  ///< a sentence without a full stop
  bool startsGroup = false;
};

/// All kinds, in the order in which they are offered.
[[nodiscard]] std::vector<GateKindEntry> const& gateKinds();

/// Whether a gate of the kind is on values of an output at some times.
[[nodiscard]] bool isOnOutput(GateKind kind);
/// Whether a gate of the kind may be on a parameter.
[[nodiscard]] bool mayBeOnParameter(GateKind kind);
/// Whether a gate of the kind has a range of values.
[[nodiscard]] bool hasValues(GateKind kind);

} // namespace runsieve::app
