#pragma once

#include "app/explorer/charts/Theme.h"

#include <runsieve/core/scan/Scan.h>

#include <QRectF>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <vector>

class QPainter;

namespace runsieve::app {

/// The runs with each text of a text parameter.
struct TextGroups
{
  std::vector<std::size_t> passing; ///< one per text
  std::vector<std::size_t> others;
  std::size_t allPassing = 0; ///< with a value
  std::size_t allOthers = 0;
};

/// \param passing 1 per run that passes \param eligible 1 per run that takes part
[[nodiscard]] TextGroups textGroupsOf(ScanParameter const& parameter,
                                      std::vector<std::uint8_t> const& passing,
                                      std::vector<std::uint8_t> const& eligible);

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
