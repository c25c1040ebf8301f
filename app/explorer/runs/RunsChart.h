#pragma once

#include "app/explorer/runs/RunsLegend.h"
#include "app/explorer/runs/RunsView.h"

#include <QWidget>

#include <cstddef>

class QCheckBox;
class QToolButton;

namespace runsieve::app {

class SearchableBox;

/// One of the charts of the runs with what belongs to it alone: which output it shows, its axis, and a button
/// that closes it.
class RunsChart : public QWidget
{
  Q_OBJECT

public:
  /// \param place of the output among those that are shown
  RunsChart(Document& document, RunsZoom& zoom, std::size_t place, QWidget* parent = nullptr);

  [[nodiscard]] RunsView* view() const { return chart; }
  /// Takes what the document shows at the place.
  void refresh();

private:
  void choose(int index);
  void close();

  Document& document;
  std::size_t place;
  RunsView* chart = nullptr;
  RunsLegend* legend = nullptr;
  SearchableBox* outputs = nullptr;
  QCheckBox* logarithmic = nullptr;
  QToolButton* closing = nullptr;
};

} // namespace runsieve::app
