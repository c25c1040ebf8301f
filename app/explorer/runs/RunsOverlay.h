#pragma once

#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/charts/PlotNames.h"
#include "app/explorer/document/Document.h"
#include "app/explorer/runs/RunFinder.h"

#include <QString>

#include <cstddef>
#include <optional>

class QPainter;

namespace runsieve::app {

/// What lies over the runs of one output: gates, runs that are looked at, and what is told of them.
class RunsOverlay
{
public:
  RunsOverlay(Document const& document, std::size_t output, ChartFrame const& frame, Theme const& theme)
      : document(document), output(output), frame(frame), theme(theme)
  {}

  /// Gates on the output, with their names; the selected one with handles.
  void paintGates(QPainter& painter, bool handles) const;
  /// Pinned runs and the one under the pointer, in `hovered` only.
  void paintRuns(QPainter& painter) const;
  /// A box beside the pointer that tells of a run.
  void paintHover(QPainter& painter, FoundRun const& found) const;

private:
  void paintGate(QPainter& painter, std::size_t index, QRectF const& shape, bool handles,
                 PlotNames& names) const;
  void paintRun(QPainter& painter, std::size_t run, QColor const& color, double width) const;

  Document const& document;
  std::size_t output;
  ChartFrame const& frame;
  Theme const& theme;
};

/// A gate's place in the chart of an output; nothing if it is on something else, or is no rectangle.
/// \param index of the gate; that of a new one which is being drawn as well
[[nodiscard]] std::optional<QRectF> gateShape(Document const& document, std::size_t index, std::size_t output,
                                              ChartFrame const& frame);

/// What is told of a run under the pointer, line by line: its key, time and value, status and parameters, the
/// first of many.
[[nodiscard]] QStringList runLines(Document const& document, std::size_t output, FoundRun const& found);

} // namespace runsieve::app
