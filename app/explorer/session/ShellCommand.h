#pragma once

#include "app/explorer/figure/FigureOptions.h"
#include "app/explorer/session/Session.h"

#include <functional>
#include <string>
#include <vector>

namespace runsieve::app {

/// A word as a shell takes it: in single quotes if it holds anything but letters, digits and a few signs.
[[nodiscard]] std::string shellWord(std::string const& word);
/// Words as one command.
[[nodiscard]] std::string shellLine(std::vector<std::string> const& words);

/// The words by which a command reads a scan in the same way.
[[nodiscard]] std::vector<std::string> readingWords(ReadOptions const& read);

/// The words of the command that prints the table of the parameters of a session. Gates that are off are left
/// out; nothing without gates, by which there is nothing to rank.
[[nodiscard]] std::vector<std::string> rankCommand(Session const& session);

/// The words of the command that makes a figure of a session: what it shows, with these options. \param scan
/// of the session
[[nodiscard]] std::vector<std::string> figureCommand(Session const& session, FigureOptions const& options,
                                                     Scan const& scan, std::string const& picture);

/// The lines that make table and picture of a session. Sets have no options: a session that is saved and
/// given to `--sieve` has them.
[[nodiscard]] std::string commandOf(Session const& session, FigureOptions const& options, Scan const& scan);
/// The same of a document, with the size and the parts of the last figure that was exported. \param complete
/// adds what the document does not know, such as the zoom
[[nodiscard]] std::string commandOf(Document const& document,
                                    std::function<void(Session&)> const& complete = {});

} // namespace runsieve::app
