#pragma once

#include <runsieve/core/read/ReadOptions.h>

#include <QStringList>

namespace runsieve::app {

/// Shows a window for each file and begins to read it there. Before that all work that a crash has left is
/// offered, one after the other; what is wanted has a window of its own, and a file that is already in such
/// work is not opened again.
/// \param files empty: one window without a file
void openWindows(QStringList const& files, ReadOptions const& options = {});

} // namespace runsieve::app
