#pragma once

#include "app/explorer/charts/Theme.h"

#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace runsieve::app {

/// Labels at the right ends of curves, none over another while there is room above, on a ground that lets
/// them be read among lines.
class RunLabels
{
public:
  /// \param theme kept by reference
  RunLabels(QRectF const& plot, Theme const& theme) : plot(plot), theme(theme) {}

  /// \param end of the curve; the label stands left above it, within the plot
  void paint(QPainter& painter, QString const& name, QPointF const& end, QColor const& color);

private:
  QRectF plot;
  Theme const& theme;
  std::vector<QRectF> taken;
};

} // namespace runsieve::app
