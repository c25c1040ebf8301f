#pragma once

#include <runsieve/core/coverage/DensityScale.h>

#include <QColor>
#include <QLinearGradient>
#include <QPointF>

namespace runsieve::app {

/// The shades of a scale from its smallest to its largest number of runs, evenly in the logarithm.
/// \param shades not those of an empty picture \param dark whether they stand on a dark ground
[[nodiscard]] QLinearGradient shadeGradient(DensityScale const& shades, QColor const& color, bool dark,
                                            QPointF const& from, QPointF const& to);

} // namespace runsieve::app
