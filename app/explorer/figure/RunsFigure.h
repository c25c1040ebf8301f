#pragma once

#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/charts/PlotNames.h"
#include "app/explorer/charts/RunBands.h"
#include "app/explorer/charts/RunsRenderer.h"
#include "app/explorer/figure/FigureLayers.h"

#include <QRectF>

#include <cstddef>
#include <vector>

class QPainter;

namespace runsieve::app {

/// The chart of one output in a figure: runs as one image or as bands, pinned runs, gates, and a bar that
/// tells what shades mean.
class RunsFigure
{
public:
  /// All must outlive this object.
  RunsFigure(FigureContent const& content, FigureOptions const& options, Theme const& theme,
             std::vector<FigureLayer> const& layers, std::size_t output);

  /// Room that is needed left of the plot.
  [[nodiscard]] double neededLeft(QRectF const& outer) const;
  /// Height that numbers and title of the time axis take.
  [[nodiscard]] double timeHeight() const;
  /// \param numbers whether the time axis has numbers and a title
  void place(QRectF const& outer, double leastLeft, bool numbers);
  /// \param pixelsPerUnit of the image of the runs
  void paint(QPainter& painter, double pixelsPerUnit) const;

private:
  /// Room right of a plot of some height; none if it is too low for a bar.
  [[nodiscard]] double barWidth(double height) const;
  [[nodiscard]] bool reachesZero() const;
  [[nodiscard]] ChartAxis timeAxis(bool numbers) const;
  [[nodiscard]] ChartAxis valueAxis() const;
  void paintImage(QPainter& painter, double pixelsPerUnit) const;
  void paintBars(QPainter& painter, RunsRenderer::Images const& images) const;
  void paintBands(QPainter& painter, BandsKind kind) const;
  void paintPinned(QPainter& painter, PlotNames& names) const;
  void paintBar(QPainter& painter, DensityScale const& scale, FigureLayer const& layer,
                QRectF const& place) const;

  FigureContent const& content;
  FigureOptions const& options;
  Theme const& theme;
  std::vector<FigureLayer> const& layers;
  std::size_t output;
  QRectF whole;
  ChartFrame frame;
};

} // namespace runsieve::app
