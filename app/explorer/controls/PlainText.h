#pragma once

#include <QString>

#include <string>

class QWidget;

namespace runsieve::app {

/// A name of a file for a label: control characters, line ends too, as "\x0a".
[[nodiscard]] QString shownText(std::string const& text);

/// A tooltip that is no markup, whatever it looks like.
[[nodiscard]] QString toolTipText(QString const& text);

/// A text of a menu or button in which "&" is nothing but itself.
[[nodiscard]] QString menuText(QString text);

/// Says in a box what could not be done. \param message may be long
void tellFailure(QWidget* parent, QString const& title, QString const& message);

} // namespace runsieve::app
