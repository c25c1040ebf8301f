#pragma once

#include <QString>

namespace runsieve::app {

struct ScanSource;

/// What everybody asks who writes a file while a scan is open: it must not take the place of one that the
/// scan was read from, by whatever name or link. \throw ScanError if it would
void requireOtherFile(ScanSource const& source, QString const& path);

} // namespace runsieve::app
