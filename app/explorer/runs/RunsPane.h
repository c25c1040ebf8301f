#pragma once

#include "app/explorer/document/Document.h"
#include "app/explorer/runs/RunsChart.h"
#include "app/explorer/runs/RunsZoom.h"

#include <QWidget>

#include <vector>

class QScrollArea;
class QVBoxLayout;

namespace runsieve::app {

/// The charts of the runs, one above the other, on one time axis.
class RunsPane : public QWidget
{
  Q_OBJECT

public:
  explicit RunsPane(Document& document, QWidget* parent = nullptr);

  [[nodiscard]] RunsZoom& zoom() { return shown; }
  /// Null without an open scan.
  [[nodiscard]] RunsView* view(std::size_t place = 0) const;
  void setTool(RunsTool tool);
  /// Adds a chart, of the first output that is not shown. False if there are as many as there may be.
  bool addOutput();
  /// Whether all pictures are those of the present state.
  [[nodiscard]] bool isSettled() const;

Q_SIGNALS:
  void told(QString const& text);
  /// A gate, which is selected now, was clicked with the right button. \param at on the screen
  void gateMenuWanted(QPoint const& at);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void rebuild();
  void align();
  void shareHeight();

  Document& document;
  RunsZoom shown;
  RunsTool tool = RunsTool::Gate;
  QScrollArea* scroll = nullptr;
  QWidget* page = nullptr; ///< of it; scrolls if the charts would be too low
  QVBoxLayout* column = nullptr;
  std::shared_ptr<Scan const> scan; ///< that the charts were made for
  std::vector<RunsChart*> charts;
  /// After one was added, which is to be seen, until the user does something else: it gets its height in some
  /// rounds of events, since its axes say how much they need.
  bool staysAtEnd = false;
};

} // namespace runsieve::app
