#pragma once

class QWidget;

namespace runsieve::app {

class Document;

/// Asks how parameters are compared: thresholds, adjustment, permutations, seed, sets of gates that were
/// tried.
void editMethod(Document& document, QWidget* parent);

} // namespace runsieve::app
