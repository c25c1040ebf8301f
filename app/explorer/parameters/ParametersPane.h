#pragma once

#include "app/explorer/document/Document.h"
#include "app/explorer/parameters/LargeChart.h"
#include "app/explorer/parameters/ParameterGrid.h"
#include "app/explorer/parameters/ParameterRuns.h"

#include <QPointer>
#include <QWidget>

class QComboBox;
class QTabWidget;

namespace runsieve::app {

/// The parameters of the open scan: small charts of each.
class ParametersPane : public QWidget
{
  Q_OBJECT

public:
  /// The pages, in their order.
  enum class Page
  {
    Charts,
    Pairs,
    Box,
    Parallel
  };

  explicit ParametersPane(Document& document, QWidget* parent = nullptr);

  void showPage(Page page);
  /// Opens the chart of a parameter in a window of its own, the same for all.
  void openLarge(std::size_t parameter);

  [[nodiscard]] ParameterRuns& runs() { return shown; }
  [[nodiscard]] ParameterGrid* grid() const { return charts; }
  /// Null if none is open.
  [[nodiscard]] LargeChart* large() const { return window; }
  [[nodiscard]] QTabWidget* tabs() const { return pages; }

Q_SIGNALS:
  /// For the status bar; empty if there is nothing to tell.
  void told(QString const& text);

private:
  [[nodiscard]] QWidget* chartsPage();
  void refresh();

  Document& document;
  ParameterRuns shown;
  ParameterGrid* charts = nullptr;
  QComboBox* looks = nullptr;
  QTabWidget* pages = nullptr;
  QPointer<LargeChart> window;
};

} // namespace runsieve::app
