#pragma once

#include "app/cli/Commands.h"

#include <runsieve/core/gate/Gate.h>

#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
}

namespace runsieve::app {

/// Adds the options of a figure to the command that draws.
void addFigureOptions(CLI::App& command, FigureArguments& figure);

/// "0..60". \throw UsageError for anything but two rising numbers
[[nodiscard]] std::pair<double, double> rangeOfTimes(std::string const& text);

/// "3,5,10-15". \throw UsageError for anything else
[[nodiscard]] std::vector<RunKey> keysOfRuns(std::string const& text);

} // namespace runsieve::app
