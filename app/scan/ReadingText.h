#pragma once

#include <runsieve/core/read/ReadReport.h>
#include <runsieve/core/scan/Scan.h>

#include <string>
#include <vector>

namespace runsieve::app {

/// How a file was read, for people, a line each: runs that are not complete, what the file was taken for,
/// columns that were ignored, guesses and notes.
[[nodiscard]] std::vector<std::string> readingLines(Scan const& scan, ReadReport const& report);

/// The keys of the runs that have a status.
[[nodiscard]] std::vector<std::string> keysOf(Scan const& scan, RunStatus status);

/// Lines that a user should know of: all but what the file was taken for.
[[nodiscard]] std::size_t remarks(Scan const& scan, ReadReport const& report);

} // namespace runsieve::app
