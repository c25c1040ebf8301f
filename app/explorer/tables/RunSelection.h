#pragma once

#include "app/explorer/document/Document.h"

#include <QObject>

#include <cstddef>
#include <vector>

class QTableView;

namespace runsieve::app {

class RunTableModel;

/// Keeps the selected rows of the table of runs and the pinned runs in step: what is selected is pinned, and
/// what is pinned elsewhere is selected. Charts can point out some runs, not thousands: of a larger selection
/// none is pinned. While the table shows the pinned runs only, selecting rows pins nothing.
class RunSelection : public QObject
{
  Q_OBJECT

public:
  RunSelection(Document& document, RunTableModel& model, QTableView& view);

  /// The selected runs, in the order of the rows.
  [[nodiscard]] std::vector<std::size_t> runs() const;

  static constexpr std::size_t mostPinned = 100;

Q_SIGNALS:
  void changed();

private:
  void takeSelection();
  void showPins();

  Document& document;
  RunTableModel& model;
  QTableView& view;
  bool showing = false;             ///< the selection is being set to the pinned runs
  std::set<std::size_t> pinsOnShow; ///< those that the selection shows
};

} // namespace runsieve::app
