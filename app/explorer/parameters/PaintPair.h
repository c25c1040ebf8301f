#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/ColumnCounts.h"

#include <QRectF>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

class QPainter;

namespace runsieve::app {

/// A parameter as an axis of a chart of two.
struct PairAxis
{
  QString title;
  AxisMap map; ///< from the lowest to the highest value
  RunColumns const& columns;
};

/// The runs of a scan by two parameters, the passing ones above the others, below a title of some lines. Dots
/// grow with the letters, and with a chart that is large.
/// \param passing 1 per run that takes part and passes \param eligible 1 per run that takes part
/// \param pixelsPerUnit of the image of the runs
void paintPair(QPainter& painter, QRectF const& area, QStringList const& title, PairAxis const& across,
               PairAxis const& up, std::vector<std::uint8_t> const& passing,
               std::vector<std::uint8_t> const& eligible, Theme const& theme, double pixelsPerUnit);

} // namespace runsieve::app
