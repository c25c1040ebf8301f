#include "app/explorer/parameters/ResultTable.h"

#include <QEvent>
#include <QHeaderView>
#include <QTableView>

#include <algorithm>
#include <utility>

namespace runsieve::app {

namespace {

/// Shares what the other columns leave among those of names; where that is too little they keep a width that
/// tells names apart, and the table scrolls.
class NameColumns : public QObject
{
public:
  NameColumns(QTableView& ofTable, std::vector<int> wide)
      : QObject(&ofTable), table(ofTable), columns(std::move(wide))
  {
    table.viewport()->installEventFilter(this);
    connect(
        table.model(), &QAbstractItemModel::modelReset, this, [this] { fit(); }, Qt::QueuedConnection);
  }

  bool eventFilter(QObject* watched, QEvent* event) override
  {
    if (event->type() == QEvent::Resize) fit();
    return QObject::eventFilter(watched, event);
  }

private:
  void fit()
  {
    QHeaderView& header = *table.horizontalHeader();
    int room = table.viewport()->width();
    for (int column = 0; column < header.count(); ++column)
      if (std::find(columns.begin(), columns.end(), column) == columns.end())
        room -= header.sectionSize(column);
    constexpr int letters = 14;
    const int least = letters * table.fontMetrics().averageCharWidth();
    const bool fits = room >= least * static_cast<int>(columns.size());
    for (int const column : columns) {
      header.setSectionResizeMode(column, fits ? QHeaderView::Stretch : QHeaderView::Fixed);
      if (!fits) header.resizeSection(column, least);
    }
  }

  QTableView& table;
  std::vector<int> columns;
};

} // namespace

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
  new NameColumns(*table, wideColumns); // the table owns it
  return table;
}

} // namespace runsieve::app
