#include "app/explorer/tables/RunTableModel.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/sets/ClusterOrigin.h"

#include <algorithm>
#include <numeric>

namespace runsieve::app {

namespace {

/// Numbers of clusters are names.
bool isRight(RunColumn const& column)
{
  return column.isNumber && column.kind != RunColumn::Kind::Cluster;
}

} // namespace

RunTableModel::RunTableModel(Document& ofDocument, QObject* parent)
    : QAbstractTableModel(parent), document(ofDocument)
{
  constexpr int pause = 100; // ms, that a reader can follow
  later.setInterval(pause);
  later.setSingleShot(true);
  connect(&later, &QTimer::timeout, this, &RunTableModel::follow);
  connect(&document, &Document::opened, this, &RunTableModel::reopen);
  connect(&document, &Document::stateChanged, this, &RunTableModel::takeState);
  connect(&document, &Document::passingChanged, this, [this] {
    if (!later.isActive()) later.start();
  });
  connect(&document, &Document::highlightChanged, this, [this] {
    if (chosen.kind == RunFilter::Kind::Pinned) refilter();
  });
  connect(&sorting, &Background::busyChanged, this, [this] {
    if (!sorting.isBusy()) Q_EMIT settled();
  });
  reopen();
}

void RunTableModel::reopen()
{
  sorting.cancel();
  chosen = {};
  sortColumn.reset();
  content = {};
  order.clear();
  withText = {};
  if (document.isOpen()) {
    content.scan = document.sharedScan();
    order.resize(content.scan->runs.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    withText = RunSet(order.size(), true);
    content.passing = document.passing();
  }
  beginResetModel();
  rows.clear();
  places.assign(order.size(), -1);
  endResetModel();
  takeState();
}

void RunTableModel::takeState()
{
  if (!content.scan || content.scan != document.sharedScan()) return;
  State const& state = document.state();
  const bool clusters = std::any_of(state.sets.begin(), state.sets.end(),
                                    [](NamedSet const& set) { return clusterOf(set.origin).has_value(); });
  std::vector<RunColumn> columns = runColumns(*content.scan, state.view.outputs, clusters);
  const bool sameColumns = columns == content.columns;
  if (!sameColumns) beginResetModel();
  content.columns = std::move(columns);
  content.sets = state.sets;
  if (!sameColumns) endResetModel();
  if (chosen.kind == RunFilter::Kind::Set && !filterSet()) chosen.kind = RunFilter::Kind::All;
  if (sortColumn &&
      std::find(content.columns.begin(), content.columns.end(), *sortColumn) == content.columns.end())
    sortColumn.reset();
  if (sortColumn && followsSets()) resort();
  refilter();
}

bool RunTableModel::followsPassing() const
{
  return chosen.kind == RunFilter::Kind::Passing || chosen.kind == RunFilter::Kind::Others;
}

bool RunTableModel::followsSets() const
{
  return sortColumn->kind == RunColumn::Kind::Sets || sortColumn->kind == RunColumn::Kind::Cluster;
}

RunSet const* RunTableModel::filterSet() const
{
  auto const found = std::find_if(content.sets.begin(), content.sets.end(),
                                  [&](NamedSet const& set) { return set.name == chosen.set; });
  return found == content.sets.end() ? nullptr : &found->runs;
}

void RunTableModel::follow()
{
  if (!content.scan) return;
  content.passing = document.passing();
  if (sortColumn && sortColumn->kind == RunColumn::Kind::Passes) resort();
  if (followsPassing())
    refilter();
  else if (!rows.empty())
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
  if (isSettled()) Q_EMIT settled();
}

void RunTableModel::setFilter(RunFilter const& filter)
{
  const bool newText = filter.text != chosen.text;
  chosen = filter;
  if (!content.scan) return;
  if (newText)
    for (std::size_t run = 0; run < order.size(); ++run)
      withText.set(
          run,
          chosen.text.isEmpty() ||
              QString::fromStdString(content.scan->runs[run].key).contains(chosen.text, Qt::CaseInsensitive));
  refilter();
}

bool RunTableModel::isShown(std::size_t run) const
{
  if (!withText.contains(run)) return false;
  switch (chosen.kind) {
  case RunFilter::Kind::Passing:
    return content.passing.contains(run);
  case RunFilter::Kind::Others:
    return !content.passing.contains(run);
  case RunFilter::Kind::Pinned:
    return document.pinnedRuns().count(run) > 0;
  case RunFilter::Kind::Set:
    return filterSet() && filterSet()->contains(run);
  default:
    return true;
  }
}

void RunTableModel::refilter()
{
  std::vector<std::size_t> wanted;
  std::copy_if(order.begin(), order.end(), std::back_inserter(wanted),
               [this](std::size_t run) { return isShown(run); });
  if (wanted == rows) {
    if (!rows.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    return;
  }
  beginResetModel();
  rows = std::move(wanted);
  places.assign(order.size(), -1);
  for (std::size_t row = 0; row < rows.size(); ++row) places[rows[row]] = static_cast<int>(row);
  endResetModel();
}

void RunTableModel::sort(int column, Qt::SortOrder inOrder)
{
  rising = inOrder == Qt::AscendingOrder;
  sortColumn.reset();
  if (column >= 0 && column < columnCount()) sortColumn = content.columns[static_cast<std::size_t>(column)];
  if (content.scan) resort();
}

void RunTableModel::resort()
{
  if (!sortColumn) {
    sorting.cancel();
    std::iota(order.begin(), order.end(), std::size_t(0));
    refilter();
    return;
  }
  const auto column = static_cast<std::size_t>(
      std::find(content.columns.begin(), content.columns.end(), *sortColumn) - content.columns.begin());
  sorting.start([this, cells = content, column,
                 up = rising](Background::Cancelled const& cancelled) -> std::function<void()> {
    std::vector<std::size_t> found = cells.sorted(column, up, cancelled);
    if (cancelled()) return {};
    return [this, scan = cells.scan, found = std::move(found)] {
      if (scan != content.scan) return;
      order = found;
      refilter();
    };
  });
}

std::optional<int> RunTableModel::rowOf(std::size_t run) const
{
  if (run >= places.size() || places[run] < 0) return std::nullopt;
  return places[run];
}

int RunTableModel::rowCount(QModelIndex const& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

int RunTableModel::columnCount(QModelIndex const& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(content.columns.size());
}

QVariant RunTableModel::data(QModelIndex const& index, int role) const
{
  if (!index.isValid()) return {};
  const auto column = static_cast<std::size_t>(index.column());
  switch (role) {
  case Qt::DisplayRole:
    return shownText(content.text(runAt(index.row()), column, false));
  case Qt::ToolTipRole:
    return toolTipText(shownText(content.text(runAt(index.row()), column, true)));
  case Qt::TextAlignmentRole:
    return static_cast<int>(Qt::AlignVCenter |
                            (isRight(content.columns[column]) ? Qt::AlignRight : Qt::AlignLeft));
  default:
    return {};
  }
}

QVariant RunTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  RunColumn const& column = content.columns[static_cast<std::size_t>(section)];
  if (role == Qt::DisplayRole) return column.title;
  if (role == Qt::ToolTipRole) return toolTipText(column.hint);
  if (role == Qt::TextAlignmentRole)
    return static_cast<int>(Qt::AlignVCenter | (isRight(column) ? Qt::AlignRight : Qt::AlignLeft));
  return {};
}

} // namespace runsieve::app
