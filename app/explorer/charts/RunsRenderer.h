#pragma once

#include "app/explorer/charts/AxisMap.h"

#include <runsieve/core/coverage/CoverageImage.h>
#include <runsieve/core/coverage/RunCoverage.h>
#include <runsieve/core/parallel/BlockRunner.h>
#include <runsieve/core/scan/Scan.h>

#include <QColor>
#include <QImage>
#include <QSize>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace runsieve::app {

/// Some runs of a picture, in a colour.
struct RunsLayer
{
  std::vector<std::uint8_t> mask; ///< 1 per run that belongs to it, else 0; empty: all runs
  QColor color;
  bool shades = true;   ///< by the number of runs; else lines over lines
  double opacity = 1.0; ///< of a line that is drawn over others

  friend bool operator==(RunsLayer const& a, RunsLayer const& b)
  {
    return a.mask == b.mask && a.color == b.color && a.shades == b.shades && a.opacity == b.opacity;
  }
};

/// Opacity of one run's line where lines lie over lines: single runs stay visible, thousands still show where
/// they are dense.
[[nodiscard]] double lineOpacity(std::size_t runs);

/// A picture of the runs of one output.
struct RunsRequest
{
  std::shared_ptr<Scan const> scan;
  std::size_t output = 0;
  AxisMap time;
  AxisMap value;
  QSize size;                    ///< device pixels
  double width = 1.0;            ///< of lines, in device pixels
  bool dark = false;             ///< whether it is drawn on a dark ground
  std::vector<RunsLayer> layers; ///< the later ones above
};

/// The picture of a layer.
struct LayerImage
{
  QImage image;       ///< premultiplied, transparent where no run is; null for a layer without runs
  DensityScale scale; ///< of a layer in shades
};

/// Counts runs per pixel and makes images of the counts. What was counted is kept: other layers of the same
/// axes take the runs that changed, and nothing is counted twice. One object serves one thread.
class RunsRenderer
{
public:
  using Images = std::vector<LayerImage>;

  explicit RunsRenderer(BlockRunner threads) : runner(std::move(threads)) {}

  /// \param cancelled asked now and then; true ends the work
  /// \return one image per layer; nothing if cancelled: what was counted until then counts for nothing
  [[nodiscard]] std::optional<Images> render(RunsRequest const& request,
                                             std::function<bool()> const& cancelled);

private:
  struct Layer
  {
    std::optional<RunCoverage> counts;
    std::vector<std::uint8_t> mask; ///< of the runs that are in
    std::optional<RunsLayer> shown; ///< how the image was made
    LayerImage picture;
  };

  [[nodiscard]] bool sameFrame(RunsRequest const& request) const;
  void begin(RunsRequest const& request);
  bool bring(Layer& layer, std::vector<std::uint8_t> const& mask, std::function<bool()> const& cancelled);
  bool draw(RunCoverage& counts, std::vector<std::uint32_t> const& runs, bool add,
            std::function<bool()> const& cancelled);
  void fillPoints(std::vector<std::uint32_t> const& runs, std::size_t first, std::size_t end);
  void paint(Layer& layer, RunsLayer const& wanted) const;

  BlockRunner runner;
  RunsRequest frame;          ///< of what was counted
  std::vector<float> columns; ///< of the times, in pixels
  std::vector<float> points;
  std::vector<Layer> layers;
};

} // namespace runsieve::app
