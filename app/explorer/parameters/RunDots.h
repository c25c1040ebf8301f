#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/ColumnCounts.h"

#include <QImage>
#include <QRectF>

#include <cstdint>
#include <vector>

namespace runsieve::app {

/// Two values of each run, as places on two axes.
struct DotPlaces
{
  RunColumns const& across;
  RunColumns const& up;
  double acrossFrom = 0.0; ///< share of the plot at which the columns begin
  double acrossTo = 1.0;
  double upFrom = 0.0;
  double upTo = 1.0;
};

/// A picture of runs as dots, darker where they are many: the passing ones above the others. Time is linear
/// in the runs, however many lie on one another. \param passing 1 per run \param eligible 1 per run that is
/// shown \param size device pixels \param ratio device pixels per pixel
[[nodiscard]] QImage dotsImage(DotPlaces const& places, std::vector<std::uint8_t> const& passing,
                               std::vector<std::uint8_t> const& eligible, QSize const& size, double ratio,
                               Theme const& theme);

} // namespace runsieve::app
