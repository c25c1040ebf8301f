#include "app/explorer/controls/TableColumns.h"

#include "app/explorer/controls/PlainText.h"

#include <QHeaderView>
#include <QMenu>
#include <QTableView>

#include <algorithm>

namespace runsieve::app {

TableColumns::TableColumns(QTableView& ofView) : QObject(&ofView), view(ofView)
{
  QHeaderView* header = view.horizontalHeader();
  header->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(header, &QWidget::customContextMenuRequested, this, &TableColumns::showMenu);
  connect(view.model(), &QAbstractItemModel::modelReset, this, &TableColumns::refresh);
  refresh();
}

QString TableColumns::titleOf(int column) const
{
  return view.model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

void TableColumns::refresh()
{
  for (int column = 0; column < view.model()->columnCount(); ++column)
    view.setColumnHidden(column, column > 0 && hiddenTitles.contains(titleOf(column)));
  fit();
}

void TableColumns::fit()
{
  QStringList titles;
  for (int column = 0; column < view.model()->columnCount(); ++column) titles << titleOf(column);
  if (titles == fitted || view.model()->rowCount() == 0) return;
  fitted = titles;
  constexpr int rows = 30; // that tell how wide a column is
  const QFontMetrics metrics = view.fontMetrics();
  const int letter = metrics.averageCharWidth();
  for (int column = 0; column < titles.size(); ++column) {
    int width = metrics.horizontalAdvance(titles[column]) + 4 * letter; // with the arrow of the order
    for (int row = 0; row < std::min(rows, view.model()->rowCount()); ++row)
      width = std::max(width, metrics.horizontalAdvance(view.model()->index(row, column).data().toString()) +
                                  2 * letter);
    view.setColumnWidth(column, std::clamp(width, 6 * letter, (column == 0 ? 34 : 26) * letter));
  }
}

void TableColumns::setHidden(int column, bool hidden)
{
  if (column <= 0) return;
  if (hidden)
    hiddenTitles.insert(titleOf(column));
  else
    hiddenTitles.remove(titleOf(column));
  view.setColumnHidden(column, hidden);
  Q_EMIT changed();
}

void TableColumns::showAll()
{
  hiddenTitles.clear();
  refresh();
  Q_EMIT changed();
}

void TableColumns::showMenu(QPoint const& at)
{
  QMenu menu(&view);
  const int pointed = view.horizontalHeader()->logicalIndexAt(at);
  if (pointed > 0)
    menu.addAction("Hide " + menuText(titleOf(pointed)), this, [=] { setHidden(pointed, true); });
  menu.addAction("Show all columns", this, &TableColumns::showAll)->setEnabled(!hiddenTitles.isEmpty());
  menu.addSeparator();
  for (int column = 1; column < view.model()->columnCount(); ++column) {
    QAction* action = menu.addAction(menuText(titleOf(column)));
    action->setCheckable(true);
    action->setChecked(!view.isColumnHidden(column));
    connect(action, &QAction::toggled, this, [=](bool on) { setHidden(column, !on); });
  }
  menu.exec(view.horizontalHeader()->mapToGlobal(at));
}

void styleTable(QTableView& view)
{
  view.setSelectionBehavior(QAbstractItemView::SelectRows);
  view.setSelectionMode(QAbstractItemView::ExtendedSelection);
  view.setEditTriggers(QAbstractItemView::NoEditTriggers);
  view.setTextElideMode(Qt::ElideMiddle);
  view.setWordWrap(false);
  view.setShowGrid(false);
  view.setAlternatingRowColors(true);
  view.setTabKeyNavigation(false);
  view.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  view.setContextMenuPolicy(Qt::CustomContextMenu);
  view.verticalHeader()->hide();
  view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view.verticalHeader()->setDefaultSectionSize(view.fontMetrics().height() + 6);
  view.horizontalHeader()->setHighlightSections(false);
  view.horizontalHeader()->setSectionsMovable(true);
  view.horizontalHeader()->setTextElideMode(Qt::ElideMiddle);
}

QString selectedRowsText(QTableView const& view)
{
  QHeaderView const* header = view.horizontalHeader();
  std::vector<int> columns;
  for (int place = 0; place < header->count(); ++place)
    if (!header->isSectionHidden(header->logicalIndex(place))) columns.push_back(header->logicalIndex(place));
  std::vector<int> rows;
  for (QModelIndex const& index : view.selectionModel()->selectedRows()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  if (rows.empty()) return {};
  auto const line = [&](auto const& textOf) {
    QStringList cells;
    for (int column : columns) cells << textOf(column).replace('\t', ' ').replace('\n', ' ');
    return cells.join('\t') + '\n';
  };
  QString text = line([&](int column) {
    return view.model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  });
  for (int row : rows)
    text += line([&](int column) { return view.model()->index(row, column).data().toString().trimmed(); });
  return text;
}

} // namespace runsieve::app
