#pragma once

#include "app/explorer/session/Session.h"

#include <QByteArray>
#include <QString>

namespace runsieve::app {

/// Writes a session as a sieve file, which takes the place of a former one when it is complete. The path of
/// the data is told from the root and from the folder of the file.
/// \throw ScanError, GateError, or std::invalid_argument if a text is not UTF-8
void writeSession(QString const& path, Session const& session);

/// Reads a session, or any other sieve file: what it does not tell is as in a new window. \throw ScanError
[[nodiscard]] Session readSession(QString const& path);

/// Whether a file is a sieve file, by how it begins or by its ending.
[[nodiscard]] bool isSessionFile(QString const& path);

/// Where the data of a session are: beside the file as they were, else where they were, else beside it under
/// their name. Empty if they are at none of these places.
[[nodiscard]] QString dataOf(Session const& session, QString const& path);

/// A digest of a file of a session, to tell whether it has changed; empty if it cannot be read.
[[nodiscard]] QByteArray sessionDigest(QString const& path);

} // namespace runsieve::app
