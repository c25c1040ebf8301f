#pragma once

#include "app/store/StoredPlot.h"

#include <QString>

class QWidget;

namespace runsieve::app {

class Document;

/// The open scan as a plot: the first output on show, the passing runs selected, the gates that are on.
[[nodiscard]] StoredPlot plotOf(Document const& document);

/// Opens the composite view of the scan in a window of its own, as it is now. \param path of the scan, for
/// the title
void showComposite(Document const& document, QString const& path, QWidget* parent);

/// Asks for a file and stores the scan with its selection there.
void savePlot(Document const& document, QWidget* parent);

} // namespace runsieve::app
