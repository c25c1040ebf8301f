#pragma once

#include <QIcon>

namespace runsieve::app {

/// The icon of an action of the toolbar, in the colours of the program's palette and sharp at any scale; a
/// null icon for actions without one.
[[nodiscard]] QIcon iconOf(char const* action);

/// The icon of the program.
[[nodiscard]] QIcon programIcon();

} // namespace runsieve::app
