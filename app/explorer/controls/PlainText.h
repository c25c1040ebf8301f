#pragma once

#include <QString>

#include <cstddef>
#include <string>

class QWidget;

namespace runsieve::app {

/// A name of a file for a label: control characters, line ends too, as "\x0a".
[[nodiscard]] QString shownText(std::string const& text);

/// A number of things: "1 run", "1,200 runs".
[[nodiscard]] QString plural(std::size_t count, QString const& one);

/// A tooltip that is no markup, whatever it looks like.
[[nodiscard]] QString toolTipText(QString const& text);

/// A text of a menu or button in which "&" is nothing but itself.
[[nodiscard]] QString menuText(QString text);

/// Says in a box what could not be done. \param message may be long
void tellFailure(QWidget* parent, QString const& title, QString const& message);

} // namespace runsieve::app
