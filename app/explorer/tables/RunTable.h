#pragma once

#include "app/explorer/document/Document.h"
#include "app/explorer/tables/RunExport.h"

#include <QWidget>

#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QTableView;
class QToolButton;

namespace runsieve::app {

class RunSelection;
class RunTableModel;

/// The runs as a table: filtered, put in order, selected together with the charts, copied and written.
class RunTable : public QWidget
{
  Q_OBJECT

public:
  explicit RunTable(Document& document, QWidget* parent = nullptr);

  [[nodiscard]] QTableView* table() const { return view; }
  [[nodiscard]] RunExport& writer() { return work; }
  [[nodiscard]] QLineEdit* keyFilter() const { return keys; }
  [[nodiscard]] QComboBox* runFilter() const { return which; }
  /// What is shown and what is selected, as told below the table.
  [[nodiscard]] QString statusText() const;
  [[nodiscard]] bool isSettled() const;

  /// What is written: the selected runs, or all that show, in their order.
  enum class Rows
  {
    Shown,
    Selected
  };
  /// The columns that show. writer() tells when it is done.
  void writeCsv(Rows rows, QString const& path);
  void writeScan(Rows rows, QString const& path);

public Q_SLOTS:
  /// These ask for a file.
  void exportCsv();
  void exportSelectedCsv();
  void exportScan();
  void exportSelectedScan();
  /// Copies the selected rows, or without any all that show.
  void copy();
  /// Asks for a file for the passing runs as a scan, whatever the table shows.
  void exportPassingScan();

private:
  void build();
  void buildMenu();
  void connectWork();
  void listFilters();
  void takeFilter();
  void refresh();
  void tell(QString const& text);
  void showMenu(QPoint const& at);
  [[nodiscard]] std::vector<std::size_t> runsOf(Rows rows) const;
  [[nodiscard]] std::vector<std::size_t> shownColumns() const;
  [[nodiscard]] bool mayWrite(QString const& path);
  void askForCsv(Rows rows);
  void writeScan(std::vector<std::size_t> const& runs, QString const& path);
  void askForScan(std::vector<std::size_t> const& runs);

  Document& document;
  RunExport work;
  RunTableModel* model = nullptr;
  QTableView* view = nullptr;
  RunSelection* selection = nullptr;
  QComboBox* which = nullptr;
  QLineEdit* keys = nullptr;
  QLabel* status = nullptr;
  QLabel* told = nullptr; ///< what was written; hidden if nothing was
  QToolButton* exporting = nullptr;
  QToolButton* cancelling = nullptr; ///< hidden unless something is being written
};

} // namespace runsieve::app
