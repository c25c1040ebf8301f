#pragma once

#include "app/explorer/session/Session.h"

#include <string>

namespace runsieve::app {

/// Sets, view, zoom and pinned runs of a session as one JSON object: the member "window" of a sieve file.
[[nodiscard]] std::string windowJson(Session const& session);

/// Reads such an object into a session. Unknown members are passed over, missing ones leave what is there.
/// \throw std::runtime_error that names the member that is wrong
void readWindowJson(std::string const& text, Session& session);

} // namespace runsieve::app
