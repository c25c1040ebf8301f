#pragma once

class QWidget;

namespace runsieve::app {

class Document;
class RunsZoom;

/// Asks for the limits of the time axis and of the axes of the outputs on show; empty fields mean all. One
/// step that can be undone.
void editLimits(Document& document, RunsZoom const& zoom, QWidget* parent);

} // namespace runsieve::app
