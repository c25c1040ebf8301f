#include "app/explorer/charts/CurveBand.h"

#include <algorithm>

namespace runsieve::app {

QPolygonF bandAround(QPolygonF const& curve, QRectF const& plot, double reach)
{
  QPolygonF band;
  for (QPointF const& point : curve) band << QPointF(point.x(), std::max(point.y() - reach, plot.top()));
  for (auto point = curve.crbegin(); point != curve.crend(); ++point)
    band << QPointF(point->x(), std::min(point->y() + reach, plot.bottom()));
  return band;
}

} // namespace runsieve::app
