#pragma once

#include <QString>

class QWidget;

namespace runsieve::app {

/// Asks for the name of a file to write, and whether it may take the place of a file that exists.
/// \param proposed a name, with or without a folder
/// \param suffix what a name without one gets, before it is looked for; without the dot
/// \return empty if nothing is to be written
[[nodiscard]] QString askForSaveName(QWidget* parent, QString const& title, QString const& proposed,
                                     QString const& filter, QString const& suffix);

} // namespace runsieve::app
