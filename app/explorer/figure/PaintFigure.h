#pragma once

#include "app/explorer/figure/FigureContent.h"
#include "app/explorer/figure/FigureOptions.h"

#include <QRectF>

#include <cstddef>

class QPainter;

namespace runsieve::app {

/// What there was no room for.
struct FigureNotes
{
  std::size_t parametersAsked = 0;
  std::size_t parametersShown = 0;
  bool legendShown = false;
};

/// Paints a figure: title, charts of the outputs one above the other, legend, and the small charts of the
/// parameters below them, or beside them in a wide figure. May be called from any thread.
/// \param place in units of figureUnitsPerInch
/// \param pixelsPerUnit of the images of dense runs; of a painter on pixels its own scale
FigureNotes paintFigure(QPainter& painter, QRectF const& place, FigureContent const& content,
                        FigureOptions const& options, double pixelsPerUnit);

} // namespace runsieve::app
