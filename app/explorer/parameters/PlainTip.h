#pragma once

#include <QPoint>
#include <QString>

class QWidget;

namespace runsieve::app {

/// A tooltip of plain text, whatever markup the names in it look like.
void showPlainTip(QPoint const& at, QString const& text, QWidget* widget);
void hidePlainTip();

} // namespace runsieve::app
