#pragma once

#include <QString>

namespace runsieve::app {

/// Whether windows are light or dark.
enum class Appearance
{
  Desktop, ///< as the desktop says
  Light,
  Dark
};

/// The one that was chosen last.
[[nodiscard]] Appearance chosenAppearance();
/// Shows all windows so, now and later.
void chooseAppearance(Appearance appearance);
/// To be called when the program starts.
void applyChosenAppearance();

} // namespace runsieve::app
