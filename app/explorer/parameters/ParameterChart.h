#pragma once

#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/charts/TextBars.h"
#include "app/explorer/parameters/GateHold.h"
#include "app/explorer/parameters/OutputFeature.h"
#include "app/explorer/parameters/ParameterRuns.h"
#include "app/explorer/parameters/ParameterSpans.h"
#include "app/explorer/parameters/RunDots.h"

#include <QPixmap>
#include <QRectF>
#include <QStringList>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class QPainter;

namespace runsieve::app {

/// What the charts of parameters show, for all of them.
struct ChartScene
{
  ParameterRuns const& runs;
  OutputFeature const& feature; ///< up to date
  ParameterSpans const& spans;
  Theme const& theme;
  double ratio = 1.0;   ///< device pixels per pixel
  bool isLarge = false; ///< alone in its window: with titles of axes and medians
};

/// The chart of a parameter: name, numbers, axes, the runs by the look of the state, and gates. It keeps
/// images of what seldom changes: of name and axes, and of the runs as long as the same ones pass, so that a
/// gate that moves, or a pointer, costs only what is new.
class ParameterChart
{
public:
  /// \param scene must outlive the chart; its theme stays
  ParameterChart(ChartScene const& scene, std::size_t parameter, QSizeF const& size);

  /// Whether it is what the scene asks for: else one that is made anew.
  [[nodiscard]] bool fits(QSizeF const& size) const;

  /// Whether it has an axis of numbers.
  [[nodiscard]] bool hasAxis() const { return !isText; }
  /// In pixels from the corner of the chart, as all that follows.
  [[nodiscard]] QRectF const& plot() const { return inner; }
  /// For gates; of a chart with an axis.
  [[nodiscard]] SpanAxis axis() const;
  /// Of a chart of texts, at this moment.
  [[nodiscard]] TextBarRows bars() const;
  /// Where a button would draw or change a gate; null elsewhere.
  [[nodiscard]] std::unique_ptr<GateHold> holdAt(QPointF const& at, Qt::KeyboardModifiers modifiers) const;

  /// What the bar of texts there tells, for a tooltip; empty elsewhere.
  [[nodiscard]] QStringList barLines(QPointF const& at) const;

  /// With the corner at the origin. \param ground behind everything
  void paint(QPainter& painter, QColor const& ground);

private:
  /// An image of the runs, and what it was made of.
  struct RunsImage
  {
    QPixmap picture;
    QRectF place;
    std::uint64_t version = 0; ///< of the runs
    double floor = 0.0;
    double furthest = 0.0;
  };

  void paintGround(QPainter& painter, QColor const& color);
  void paintBars(QPainter& painter) const;
  void paintNumbers(QPainter& painter);
  void paintRuns(QPainter& painter, double floor, double furthest);
  void paintScatter(QPainter& painter);
  void paintMedians(QPainter& painter) const;
  [[nodiscard]] std::vector<ParameterSpan> spans() const;

  ChartScene const& scene;
  Document const& document;
  std::size_t parameter;
  QSizeF whole;
  QRectF area; ///< without margins
  QRectF inner;
  double ratio;
  bool isText;
  ParameterLook look;
  std::uint64_t featureVersion;
  AxisMap values;
  ChartFrame frame;
  QPixmap ground; ///< with name and axes
  QColor groundColor;
  ParameterGroups counted; ///< of a number parameter
  std::uint64_t countedVersion = 0;
  RunsImage runsImage;
  std::optional<RunDots> dots;
};

/// The charts that are on a screen, made anew when they don't fit any more.
class ParameterCharts
{
public:
  explicit ParameterCharts(ChartScene const& scene) : scene(scene) {}

  [[nodiscard]] ParameterChart& at(std::size_t parameter, QSizeF const& size);
  /// Forgets all others. \param shown ascending
  void keepOnly(std::vector<std::size_t> const& shown);
  void clear() { charts.clear(); }

private:
  ChartScene const& scene;
  std::map<std::size_t, ParameterChart> charts;
};

} // namespace runsieve::app
