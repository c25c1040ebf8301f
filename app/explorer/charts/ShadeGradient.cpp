#include "app/explorer/charts/ShadeGradient.h"

#include <runsieve/core/coverage/ColorRamp.h>

#include <cmath>
#include <cstdint>

namespace runsieve::app {

QLinearGradient shadeGradient(DensityScale const& shades, QColor const& color, bool dark, QPointF const& from,
                              QPointF const& to)
{
  const ColorRamp ramp({static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
                        static_cast<std::uint8_t>(color.blue())},
                       dark);
  QLinearGradient gradient(from, to);
  constexpr int stops = 8;
  const double ratio = shades.largest() / shades.smallest();
  for (int i = 0; i <= stops; ++i) {
    const double part = static_cast<double>(i) / stops;
    const Color shade = ramp.at(shades.shade(shades.smallest() * std::pow(ratio, part)));
    gradient.setColorAt(part, QColor(shade[0], shade[1], shade[2]));
  }
  return gradient;
}

} // namespace runsieve::app
