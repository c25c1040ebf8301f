#pragma once

#include "app/explorer/charts/TextBars.h"
#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/ParameterSpans.h"

#include <QRectF>

#include <vector>

class QPainter;

namespace runsieve::app {

/// Spans as bands with ends over the plot of their axis. \param across whether the axis is, or up and down
void paintSpans(QPainter& painter, std::vector<ParameterSpan> const& spans, SpanAxis const& axis,
                QRectF const& plot, bool across, Theme const& theme);

/// Gates on texts as frames around their rows; dotted around the rest if they ask for some of it only.
void paintTextGates(QPainter& painter, std::vector<ParameterSpan> const& spans, TextBarRows const& rows,
                    Theme const& theme);

} // namespace runsieve::app
