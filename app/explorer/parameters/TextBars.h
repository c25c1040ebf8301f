#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/ParameterRuns.h"

#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace runsieve::app {

/// A text of a parameter and its shares in both groups.
struct TextRow
{
  QString text;
  double passing = 0.0; ///< of the passing runs that have a value
  double others = 0.0;
  bool isRest = false; ///< several texts together
};

/// As many rows as there is room for: texts in the order of the scan; if they are too many, the most frequent
/// ones, and one row for all the rest. \param most at least 2
[[nodiscard]] std::vector<TextRow> textRows(ScanParameter const& parameter, TextGroups const& groups,
                                            std::size_t most);

/// The rows as pairs of bars, each with its text. \param marked the text whose shares differ most; empty:
/// none
void paintTextBars(QPainter& painter, QRectF const& area, std::vector<TextRow> const& rows, bool hasPassing,
                   QString const& marked, Theme const& theme);

} // namespace runsieve::app
