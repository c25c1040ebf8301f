#pragma once

#include "app/explorer/runs/RunsZoom.h"
#include "app/explorer/session/Session.h"

namespace runsieve::app {

/// Adds what the charts of the runs show to a session.
void keepZoom(RunsZoom const& zoom, Document const& document, Session& session);

/// Shows what a session has kept, as far as the scan has it.
void showZoom(Session const& session, Document const& document, RunsZoom& zoom);

} // namespace runsieve::app
