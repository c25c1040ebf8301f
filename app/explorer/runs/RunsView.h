#pragma once

#include "app/explorer/charts/BandsPicture.h"
#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/charts/DensityLegend.h"
#include "app/explorer/charts/RunsPicture.h"
#include "app/explorer/document/Document.h"
#include "app/explorer/runs/GateShapes.h"
#include "app/explorer/runs/RunFinder.h"
#include "app/explorer/runs/RunsZoom.h"

#include <QWidget>

#include <cstddef>
#include <optional>

namespace runsieve::app {

/// What dragging with the left button does in a chart of runs.
enum class RunsTool
{
  Gate, ///< draws a gate, or moves one
  Pan,
  Zoom ///< into a rectangle
};

/// The runs of one output over time, with gates on it, by mouse and keyboard.
class RunsView : public QWidget
{
  Q_OBJECT

public:
  RunsView(Document& document, RunsZoom& zoom, std::size_t output, QWidget* parent = nullptr);

  [[nodiscard]] std::size_t shownOutput() const { return output; }
  void setOutput(std::size_t position);
  void setTool(RunsTool tool);
  /// Whether the time axis has numbers and a title; of charts above one another only the lowest.
  void setTimeNumbers(bool on);
  /// Room left of the plot, for charts that line up: what this one needs, and what it takes at least.
  [[nodiscard]] double neededLeft() const;
  void setLeastLeft(double width);
  /// Height of what stands below the plot.
  [[nodiscard]] double belowPlot() const { return height() - axes.plot().bottom(); }

  [[nodiscard]] ChartFrame const& frame() const { return axes; }
  /// Whether the picture is the one of the present state.
  [[nodiscard]] bool isSettled() const { return picture.isSettled() && bands.isSettled(); }

  /// What the colours and shades of the picture stand for.
  [[nodiscard]] std::vector<LegendLine> legend() const;

  QSize sizeHint() const override { return {700, 420}; }
  /// With a plot that shows something.
  QSize minimumSizeHint() const override { return {200, static_cast<int>(leastPlot + aroundPlot)}; }

Q_SIGNALS:
  void legendChanged();
  /// How many runs a gate under the pointer lets through, for the status bar; empty if there is none.
  void told(QString const& text);
  /// A gate, which is selected now, was clicked with the right button. \param at on the screen
  void gateMenuWanted(QPoint const& at);

protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;

private:
  /// A drag of the mouse.
  struct Drag
  {
    enum class Kind
    {
      Gate,
      NewGate,
      Pan,
      Zoom
    } kind;
    QPointF from;
    std::size_t gate = 0; ///< of Gate
    GateGrip grip;
    Gate begun;           ///< of Gate: as it was
    ChartFrame axes;      ///< of Pan: as they were
    bool moved = false;   ///< beyond the jitter of a click
    bool negated = false; ///< of NewGate: runs must not pass
  };

  /// Runs that are shown in a colour, with a name for the legend; the later ones above.
  struct RunGroup
  {
    QString name;
    RunSet const* runs; ///< of the document; null: all runs
    QColor color;
  };

  void relayout();
  void refresh();
  void prepare();
  void follow(QPointF const& at);
  /// False if a drag changes nothing since no run is there.
  bool finish(QPointF const& at);
  void click(QPointF const& at);
  void openMenu(QPointF const& at);
  void cancelDrag();
  void hoverAt(QPointF const& at);
  void zoomAbout(QPointF const& at, double factor, bool horizontal, bool vertical);
  void nudge(double x, double y);
  [[nodiscard]] std::optional<std::pair<std::size_t, GateGrip>> gateAt(QPointF const& at) const;
  [[nodiscard]] Gate finished(Gate gate) const;
  [[nodiscard]] std::vector<RunGroup> groups() const;
  [[nodiscard]] RunsRequest wantedPicture() const;
  void requestBands();
  void showPicture();
  [[nodiscard]] double othersOpacity() const;
  [[nodiscard]] RunSet visibleRuns() const;

  Document& document;
  RunsZoom& zoom;
  std::size_t output;
  RunsTool tool = RunsTool::Gate;
  bool timeNumbers = true;
  bool showsFocus = false; ///< whether keys have led here
  double leastLeft = 0.0;
  static constexpr double leastPlot = 48.0;
  double aroundPlot = 8.0; ///< height of numbers and margins
  Theme theme;
  ChartFrame axes;
  RunsPicture picture;
  BandsPicture bands;
  std::optional<Drag> drag;
  QPointF pointer;
  std::optional<FoundRun> found;      ///< under the pointer
  std::optional<std::size_t> clicked; ///< run that the last click has pinned or freed
};

} // namespace runsieve::app
