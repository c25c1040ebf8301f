#pragma once

#include "app/explorer/document/Document.h"

#include <QAbstractTableModel>
#include <QIcon>

#include <cstddef>
#include <vector>

namespace runsieve::app {

/// The sets of a document as the rows of a table.
class SetListModel : public QAbstractTableModel
{
  Q_OBJECT

public:
  enum Column
  {
    Name, ///< with its colour, and whether it shows
    Origin,
    Runs,
    Passing,
    Columns
  };

  explicit SetListModel(Document& document, QObject* parent = nullptr);

  [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] int columnCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(QModelIndex const& index) const override;
  bool setData(QModelIndex const& index, QVariant const& value, int role) override;

private:
  void refresh();
  void count();
  [[nodiscard]] QString textOf(QModelIndex const& index) const;

  Document& document;
  std::vector<std::size_t> sizes;   ///< one per row
  std::vector<std::size_t> passing; ///< of each, members that pass
};

/// A square of one of the colours of sets.
[[nodiscard]] QIcon colorIcon(std::size_t color, QPalette const& palette, int side);

} // namespace runsieve::app
