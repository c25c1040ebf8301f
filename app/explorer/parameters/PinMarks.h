#pragma once

#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/charts/TextBars.h"
#include "app/explorer/document/Document.h"

#include <QStringList>

#include <cstddef>
#include <vector>

class QPainter;

namespace runsieve::app {

/// A name that stands at a place of an axis.
struct PinLabel
{
  std::size_t pin; ///< in the order of the places
  QString text;
  double left = 0.0; ///< pixel at which it begins
  double width = 0.0;
  int line = 0; ///< 0 at the axis, and upwards
};

/// Names at places of a plot, cut where they are long, on one or two lines; those without room are left out,
/// so that none touches another, nor the line from another to its place. \param places pixels; NaN: not on
/// the axis \param names one per place
[[nodiscard]] std::vector<PinLabel> pinLabels(std::vector<double> const& places, QStringList const& names,
                                              QRectF const& plot, Theme const& theme);

/// The pinned runs, and the one under the pointer, as marks at the bottom of a plot, with their names.
void paintPins(QPainter& painter, Document const& document, std::size_t parameter, ChartFrame const& frame,
               Theme const& theme);

/// The names of the pinned runs beside the rows of their texts. \param width room for them at the right ends
void paintPinsOnRows(QPainter& painter, Document const& document, std::size_t parameter,
                     TextBarRows const& rows, double width, Theme const& theme);
/// Room for that; 0 without pinned runs.
[[nodiscard]] double roomForPins(Document const& document, double width, Theme const& theme);

/// The values of the pinned runs, for a tooltip: "run 12: 0.43", the first of many.
[[nodiscard]] QStringList pinLines(Document const& document, std::size_t parameter);

} // namespace runsieve::app
