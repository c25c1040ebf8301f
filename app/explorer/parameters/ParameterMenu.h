#pragma once

#include "app/explorer/parameters/ParameterRuns.h"

class QMenu;

namespace runsieve::app {

/// Adds what can be chosen for a parameter: its axis, and the gates on it.
void fillParameterMenu(QMenu& menu, ParameterRuns const& runs, std::size_t parameter);

} // namespace runsieve::app
