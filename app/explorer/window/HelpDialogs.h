#pragma once

class QWidget;

namespace runsieve::app {

/// A window with all shortcuts and what the mouse does, made from the table of actions.
void showKeys(QWidget* parent);

/// A short guide in a window, and where the long one is.
void showGuide(QWidget* parent);

/// Versions of the program and of what it stands on.
void showAbout(QWidget* parent);

} // namespace runsieve::app
