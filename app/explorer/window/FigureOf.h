#pragma once

#include "app/explorer/figure/FigureContent.h"

class QWidget;

namespace runsieve::app {

class Document;
class RunsZoom;

/// What the charts show, as far as they are zoomed.
[[nodiscard]] FigureContent figureOf(Document const& document, RunsZoom const& zoom);

/// Makes a figure of what is shown, in a dialog.
void exportFigure(Document& document, RunsZoom const& zoom, QWidget* parent);

} // namespace runsieve::app
