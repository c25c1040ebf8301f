#pragma once

#include "app/explorer/document/Document.h"
#include "app/explorer/parameters/BoxPage.h"
#include "app/explorer/parameters/LargeChart.h"
#include "app/explorer/parameters/PairsPage.h"
#include "app/explorer/parameters/ParallelView.h"
#include "app/explorer/parameters/ParameterGrid.h"
#include "app/explorer/parameters/ParameterRuns.h"

#include <QPointer>
#include <QWidget>

class QComboBox;
class QTabWidget;

namespace runsieve::app {

/// The parameters of the open scan: small charts of each, which of them go together, the box of the passing
/// runs, and parallel coordinates.
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
  [[nodiscard]] PairsPage* pairs() const { return pairing; }
  [[nodiscard]] BoxPage* box() const { return boxes; }
  [[nodiscard]] ParallelView* parallel() const { return lines; }
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
  PairsPage* pairing = nullptr;
  BoxPage* boxes = nullptr;
  ParallelView* lines = nullptr;
  QComboBox* looks = nullptr;
  QTabWidget* pages = nullptr;
  QPointer<LargeChart> window;
};

} // namespace runsieve::app
