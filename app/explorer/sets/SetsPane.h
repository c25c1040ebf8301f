#pragma once

#include "app/explorer/document/Background.h"
#include "app/explorer/document/Document.h"
#include "app/explorer/sets/ClusterForm.h"
#include "app/explorer/sets/SetEdits.h"

#include <QWidget>

#include <cstddef>
#include <string>
#include <vector>

class QLabel;
class QMenu;
class QProgressBar;
class QTableView;
class QToolButton;

namespace runsieve::app {

class SetListModel;

/// Sets of runs: kept, typed, read, grouped; joined, compared, and made gates of.
class SetsPane : public QWidget
{
  Q_OBJECT

public:
  explicit SetsPane(Document& document, QWidget* parent = nullptr);

  [[nodiscard]] QTableView* list() const { return view; }
  /// What was told of the last thing done; empty if there was nothing to tell.
  [[nodiscard]] QString told() const;
  [[nodiscard]] bool isSettled() const { return !clustering.isBusy(); }

  void keepPassing(std::string const& name);
  void readFile(QString const& path);
  void cluster(ClusterRequest const& request);
  /// Of the one or two selected sets. \param swapped whether the lower one is the first
  void combine(SetOperation operation, bool swapped = false);

public Q_SLOTS:
  /// Asks for a name.
  void keepPassingRuns();
  void typeRuns();
  void chooseFile();
  void groupRuns();
  void keepIncomplete();
  /// Of the selected set, or of both.
  void useAsGate();
  void compareSelected();
  void deleteSelected();

Q_SIGNALS:
  /// What told() says now; the pane may stand behind another one.
  void toldAnew(QString const& text);
  /// Runs are being grouped, which takes a while and can be cancelled here.
  void groupingBegun();

private:
  void build();
  void buildButtons();
  void buildProgress();
  void fillNewMenu(QMenu& menu);
  void fillCombineMenu(QMenu& menu);
  void fillSetMenu(QMenu& menu);
  void refresh();
  void showMenu(QPoint const& at);
  void tell(QString const& text);
  void takeClusters(ClusterRequest const& request, std::vector<int> const& labels);
  [[nodiscard]] std::vector<std::size_t> selected() const;
  [[nodiscard]] std::string keptOrigin() const;

  Document& document;
  SetListModel* model = nullptr;
  QTableView* view = nullptr;
  QLabel* empty = nullptr; ///< in place of the list, what sets are
  QLabel* message = nullptr;
  QWidget* progress = nullptr; ///< hidden unless runs are being grouped
  QToolButton* adding = nullptr;
  QToolButton* combining = nullptr;
  QToolButton* comparing = nullptr;
  QToolButton* gating = nullptr;
  QToolButton* deleting = nullptr;
  Background clustering;
};

} // namespace runsieve::app
