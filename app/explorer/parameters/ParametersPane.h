#pragma once

#include "app/explorer/document/Document.h"
#include "app/explorer/document/ParametersPage.h"
#include "app/explorer/parameters/BoxPage.h"
#include "app/explorer/parameters/LargeChart.h"
#include "app/explorer/parameters/PairsPage.h"
#include "app/explorer/parameters/ParallelView.h"
#include "app/explorer/parameters/ParameterGrid.h"
#include "app/explorer/parameters/ParameterRuns.h"
#include "app/explorer/parameters/StabilityPage.h"

#include <QPointer>
#include <QWidget>

class QComboBox;
class QTabWidget;

namespace runsieve::app {

/// The parameters of the open scan: small charts of each, which of them go together, the box of the passing
/// runs, parallel coordinates, and whether there are enough runs.
class ParametersPane : public QWidget
{
  Q_OBJECT

public:
  using Page = ParametersPage;

  explicit ParametersPane(Document& document, QWidget* parent = nullptr);

  void showPage(Page page);
  [[nodiscard]] Page page() const;
  /// Opens the chart of a parameter in a window of its own, the same for all.
  void openLarge(std::size_t parameter);

  [[nodiscard]] ParameterRuns& runs() { return shown; }
  [[nodiscard]] ParameterGrid* grid() const { return charts; }
  [[nodiscard]] PairsPage* pairs() const { return pairing; }
  [[nodiscard]] BoxPage* box() const { return boxes; }
  [[nodiscard]] ParallelView* parallel() const { return lines; }
  [[nodiscard]] StabilityPage* stability() const { return sureness; }
  /// Null if none is open.
  [[nodiscard]] LargeChart* large() const { return window; }
  [[nodiscard]] QTabWidget* tabs() const { return pages; }

Q_SIGNALS:
  /// For the status bar; empty if there is nothing to tell.
  void told(QString const& text);
  /// Another page is shown.
  void pageChanged();

private:
  [[nodiscard]] QWidget* chartsPage();
  void refresh();

  Document& document;
  ParameterRuns shown;
  ParameterGrid* charts = nullptr;
  PairsPage* pairing = nullptr;
  BoxPage* boxes = nullptr;
  ParallelView* lines = nullptr;
  StabilityPage* sureness = nullptr;
  QComboBox* looks = nullptr;
  QTabWidget* pages = nullptr;
  QPointer<LargeChart> window;
};

} // namespace runsieve::app
