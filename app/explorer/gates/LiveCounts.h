#pragma once

#include "app/explorer/document/Document.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace runsieve::app {

/// The runs left after each gate of the list, with a gate that is being moved at this moment as it is; behind
/// them that of a new gate which is being drawn. Nothing for a gate that is off or does not fit the scan, and
/// for one whose number would take too long to follow a mouse.
[[nodiscard]] std::vector<std::optional<std::size_t>> runsLeft(Document const& document);

} // namespace runsieve::app
