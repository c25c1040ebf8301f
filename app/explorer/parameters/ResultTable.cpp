#include "app/explorer/parameters/ResultTable.h"

#include <QHeaderView>
#include <QTableView>

namespace runsieve::app {

QTableView* resultTable(QAbstractItemModel& model, QString const& name, std::vector<int> const& wideColumns)
{
  auto* table = new QTableView;
  table->setModel(&model);
  table->setAccessibleName(name);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setSelectionMode(QAbstractItemView::SingleSelection);
  table->setTextElideMode(Qt::ElideMiddle);
  table->setTabKeyNavigation(false);
  table->setShowGrid(false);
  table->setWordWrap(false);
  table->setAlternatingRowColors(true);
  table->verticalHeader()->hide();
  table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
  table->setMinimumSize(180, 80);
  QHeaderView* header = table->horizontalHeader();
  constexpr int rowsToMeasure = 30;
  header->setHighlightSections(false);
  header->setResizeContentsPrecision(rowsToMeasure);
  header->setMinimumSectionSize(40);
  header->setSectionResizeMode(QHeaderView::ResizeToContents);
  for (int const column : wideColumns) header->setSectionResizeMode(column, QHeaderView::Stretch);
  return table;
}

} // namespace runsieve::app
