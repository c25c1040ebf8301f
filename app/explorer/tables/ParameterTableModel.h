#pragma once

#include "app/explorer/document/Document.h"

#include <QAbstractTableModel>

#include <cstddef>
#include <optional>
#include <vector>

namespace runsieve::app {

/// The parameters that are compared, a row each, in the order of the comparison or that of a column. The
/// distances follow a gate that is being moved; the other numbers, and the order, stay until it rests.
class ParameterTableModel : public QAbstractTableModel
{
  Q_OBJECT

public:
  explicit ParameterTableModel(Document& document, QObject* parent = nullptr);

  [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] int columnCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  /// \param column below 0: as the comparison ranks them. Undefined numbers are last in both orders.
  void sort(int column, Qt::SortOrder order) override;

  /// Shows those whose name holds a text, in any case.
  void setFilter(QString const& text);
  /// Position in the scan of the parameter in a row.
  [[nodiscard]] std::size_t parameterAt(int row) const;

private:
  void refresh();
  [[nodiscard]] std::vector<std::size_t> wantedRows() const;
  void order(std::vector<std::size_t>& rows) const;
  [[nodiscard]] ParameterComparison const& comparisonAt(int row) const;
  [[nodiscard]] QString textOf(QModelIndex const& index) const;

  Document& document;
  std::vector<std::size_t> rows;   ///< positions in the comparison
  std::vector<std::size_t> stands; ///< of each row its parameter
  QString filter;
  int sortColumn = -1;
  Qt::SortOrder sortOrder = Qt::AscendingOrder;
};

} // namespace runsieve::app
