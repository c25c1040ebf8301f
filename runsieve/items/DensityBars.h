#pragma once

#include <runsieve/core/coverage/ColorRamp.h>
#include <runsieve/core/coverage/DensityScale.h>

#include <vector>

class vtkContext2D;

namespace runsieve {

/// What the colours of a layer of runs mean.
struct DensityBar
{
  DensityScale scale;
  Color color; ///< of the layer
};

/// A corner of a chart for bars.
struct BarCorner
{
  float x;      ///< pixels: the right end of the chart, or its left one
  float top;    ///< pixels
  bool isRight; ///< of the two
};

/// Paints a small bar for each layer below one another, from its smallest to its largest number of runs with
/// marks at 10, 100 and so on, in pixels of the painter's scene. Layers without runs have none. \param scale
/// pixels of the screen for each of 72 per inch
void paintDensityBars(vtkContext2D* painter, std::vector<DensityBar> const& bars, BarCorner corner,
                      float scale);

} // namespace runsieve
