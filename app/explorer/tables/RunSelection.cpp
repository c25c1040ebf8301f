#include "app/explorer/tables/RunSelection.h"

#include "app/explorer/tables/RunTableModel.h"

#include <QTableView>

#include <algorithm>

namespace runsieve::app {

RunSelection::RunSelection(Document& ofDocument, RunTableModel& ofModel, QTableView& ofView)
    : QObject(&ofView), document(ofDocument), model(ofModel), view(ofView)
{
  connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this, &RunSelection::takeSelection);
  connect(&model, &QAbstractItemModel::modelReset, this, &RunSelection::showPins);
  connect(&document, &Document::highlightChanged, this, [this] {
    if (document.pinnedRuns() != pinsOnShow) showPins();
  });
}

std::vector<std::size_t> RunSelection::runs() const
{
  std::vector<int> rows;
  for (QItemSelectionRange const& range : view.selectionModel()->selection())
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  std::vector<std::size_t> runs;
  for (int row : rows) runs.push_back(model.runAt(row));
  return runs;
}

void RunSelection::takeSelection()
{
  if (showing) return;
  if (model.filter().kind != RunFilter::Kind::Pinned) {
    const std::vector<std::size_t> selected = runs();
    pinsOnShow = selected.size() > mostPinned ? std::set<std::size_t>()
                                              : std::set<std::size_t>(selected.begin(), selected.end());
    document.pin(pinsOnShow);
  }
  Q_EMIT changed();
}

void RunSelection::showPins()
{
  pinsOnShow = document.pinnedRuns();
  QItemSelection rows;
  std::size_t shown = 0;
  for (std::size_t run : pinsOnShow) {
    auto const row = model.rowOf(run);
    if (!row || ++shown > mostPinned) continue;
    rows.append(QItemSelectionRange(model.index(*row, 0), model.index(*row, model.columnCount() - 1)));
  }
  showing = true;
  view.selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
  if (!rows.isEmpty() && !view.currentIndex().isValid())
    view.selectionModel()->setCurrentIndex(rows.first().topLeft(), QItemSelectionModel::NoUpdate);
  showing = false;
  if (!rows.isEmpty() && !view.hasFocus()) view.scrollTo(rows.first().topLeft());
  Q_EMIT changed();
}

} // namespace runsieve::app
