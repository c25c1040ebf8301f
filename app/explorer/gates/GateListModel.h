#pragma once

#include "app/explorer/document/Document.h"

#include <QAbstractTableModel>

#include <optional>
#include <vector>

namespace runsieve::app {

/// The gates of a document as the rows of a table, with the runs left after each. A gate that is being drawn
/// is the last row until the mouse is released.
class GateListModel : public QAbstractTableModel
{
  Q_OBJECT

public:
  enum Column
  {
    Name, ///< with the switch
    AsksFor,
    Left,
    Columns
  };

  explicit GateListModel(Document& document, QObject* parent = nullptr);

  [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] int columnCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(QModelIndex const& index) const override;
  bool setData(QModelIndex const& index, QVariant const& value, int role) override;

  [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
  [[nodiscard]] QStringList mimeTypes() const override;
  [[nodiscard]] QMimeData* mimeData(QModelIndexList const& indexes) const override;
  bool dropMimeData(QMimeData const* data, Qt::DropAction action, int row, int column,
                    QModelIndex const& parent) override;

private:
  void refresh();
  [[nodiscard]] bool isGate(int row) const;
  [[nodiscard]] Gate const& gateAt(int row) const;
  [[nodiscard]] QString textOf(QModelIndex const& index) const;

  Document& document;
  std::vector<std::optional<std::size_t>> left; ///< one per row
};

/// All that is to be told of a gate of the list: what it asks for, what was moved to the grid of times, and
/// why it does not fit the scan, line by line.
[[nodiscard]] QString gateDetails(Document const& document, std::size_t gate);

} // namespace runsieve::app
