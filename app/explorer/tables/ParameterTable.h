#pragma once

#include "app/explorer/document/Document.h"

#include <QWidget>

#include <cstddef>

class QLabel;
class QLineEdit;
class QTableView;
class QToolButton;

namespace runsieve::app {

class ParameterTableModel;

/// All numbers of the comparison of the passing runs with the others.
class ParameterTable : public QWidget
{
  Q_OBJECT

public:
  explicit ParameterTable(Document& document, QWidget* parent = nullptr);

  [[nodiscard]] QTableView* table() const { return view; }
  [[nodiscard]] QLineEdit* filterField() const { return filter; }
  /// What stands below: parameters that are left out, and warnings.
  [[nodiscard]] QString remarks() const;
  /// Writes the comparison as the rank command does in its format csv. \throw ScanError
  void writeCsv(QString const& path) const;

public Q_SLOTS:
  /// Asks for a file.
  void exportCsv();
  /// Copies the selected rows, or without any all that show.
  void copy();
  /// As the comparison ranks them.
  void sortAsRanked();

Q_SIGNALS:
  /// A row was double clicked, or Return pressed on it. \param parameter position in the scan
  void parameterWanted(std::size_t parameter);

private:
  void build();
  void refresh();
  void showMenu(QPoint const& at);

  Document& document;
  ParameterTableModel* model = nullptr;
  QTableView* view = nullptr;
  QLineEdit* filter = nullptr;
  QLabel* empty = nullptr; ///< in place of the table
  QLabel* below = nullptr;
  QToolButton* exporting = nullptr;
};

} // namespace runsieve::app
