#pragma once

#include <runsieve/core/read/ReadOptions.h>

#include <QStringList>

namespace runsieve::app {

/// Shows a window for each file and begins to read it there. Work that a crash has left is offered in the
/// first; if it is wanted it has that window to itself, and a file that is already in it is not opened again.
/// \param files empty: one window without a file
void openWindows(QStringList const& files, ReadOptions const& options = {});

} // namespace runsieve::app
