#pragma once

#include <QIcon>
#include <QPalette>

namespace runsieve::app {

/// The icon of an action of the toolbar, in the colours of a palette and sharp at any scale; a null icon for
/// actions without one.
[[nodiscard]] QIcon iconOf(char const* action, QPalette const& palette);

/// The icon of the program.
[[nodiscard]] QIcon programIcon();

} // namespace runsieve::app
