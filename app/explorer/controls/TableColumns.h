#pragma once

#include <QObject>
#include <QSet>
#include <QString>

class QTableView;

namespace runsieve::app {

/// Which columns of a table show, chosen in the context menu of its header and kept by their titles while
/// columns come and go, and how wide they are at first. The first column always shows.
class TableColumns : public QObject
{
  Q_OBJECT

public:
  /// The view must have its model, and keep it.
  explicit TableColumns(QTableView& view);

  void setHidden(int column, bool hidden);
  void showAll();

Q_SIGNALS:
  void changed();

private:
  void refresh();
  void fit();
  void showMenu(QPoint const& at);
  [[nodiscard]] QString titleOf(int column) const;

  QTableView& view;
  QSet<QString> hiddenTitles;
  QStringList fitted; ///< titles of the columns that have got their widths
};

/// How a table looks in all panes.
void styleTable(QTableView& view);

/// The selected rows of a table as text: a line of titles, then one for each row, in the order on show, with
/// tabs between the columns that show. Empty without a selection.
[[nodiscard]] QString selectedRowsText(QTableView const& view);

} // namespace runsieve::app
