#pragma once

#include "app/explorer/document/Document.h"

#include <cstddef>
#include <string>

namespace runsieve::app {

/// Changes of the list of gates, each a step that can be undone. The selection goes with the gate that is
/// changed. Positions are those of gates that exist.
void switchGate(Document& document, std::size_t gate, bool on);
/// An empty name leaves the former.
void renameGate(Document& document, std::size_t gate, std::string const& name);
/// Lets through exactly the other runs.
void invertGate(Document& document, std::size_t gate);
/// \param to the position that it has afterwards
void moveGate(Document& document, std::size_t gate, std::size_t to);
/// Puts a copy behind a gate, with a name of its own.
void duplicateGate(Document& document, std::size_t gate);
void deleteGate(Document& document, std::size_t gate);
/// How a gate on an output takes the values of its times; gates of other kinds stay as they are.
void setGateKind(Document& document, std::size_t gate, GateKind kind);
void joinGates(Document& document, GateJoin join);

} // namespace runsieve::app
