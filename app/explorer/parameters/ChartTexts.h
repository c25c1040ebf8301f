#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/ParameterNumbers.h"

#include <QRectF>
#include <QString>

class QPainter;

namespace runsieve::app {

/// The texts above the plot of a parameter, two lines at the top of its chart.
[[nodiscard]] double heightOfChartTexts(Theme const& theme);
void paintChartName(QPainter& painter, QRectF const& area, QString const& name, Theme const& theme);
/// The difference, and how many runs there are where that has room too. \param sieves whether some runs pass
/// and others don't
void paintChartNumbers(QPainter& painter, QRectF const& area, ParameterNumbers const& numbers, bool sieves,
                       std::size_t passing, std::size_t others, Theme const& theme);

} // namespace runsieve::app
