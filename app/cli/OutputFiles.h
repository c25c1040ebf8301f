#pragma once

#include "app/cli/Commands.h"

#include <string>
#include <vector>

namespace runsieve::app {

/// Whether the name of a picture ends in .png or .pdf.
[[nodiscard]] bool isPictureName(std::string const& path);

/// \param picture empty for none \throw UsageError if its name ends otherwise
void checkPictureName(char const* command, std::string const& picture);

/// The same of a picture that may be .svg as well.
void checkPaintedName(char const* command, std::string const& picture);

/// The same of a figure, which may be .svg as well.
void checkFigureName(char const* command, std::string const& picture);

/// One file must not be written over one that the same command reads, or writes as well. Empty names and "-"
/// are no files. The sieve file that is read may be replaced by SieveArguments::saveSieve, which keeps its
/// gates, and by nothing else.
/// \param outputs the files that the command writes, SieveArguments::saveSieve aside
/// \throw UsageError, or ScanError if the sieve file cannot be read
void checkOutputs(char const* command, SieveArguments const& arguments, std::vector<std::string> outputs);

/// A file must not take the place of one that is read. Names of one file are equal, by links as well.
/// \throw ScanError if it would
void requireNotRead(std::string const& output, std::vector<std::string> const& inputs);

/// Whether a name stands for standard output: an empty one and "-".
[[nodiscard]] bool isStandardOutput(std::string const& path);

/// Writes a text to a file, which takes the place of a former one when it is complete, or to standard output.
/// \throw ScanError
void writeText(std::string const& path, std::string const& text);

} // namespace runsieve::app
