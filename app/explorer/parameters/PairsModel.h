#pragma once

#include <runsieve/core/compare/Pairs.h>

#include <QAbstractTableModel>

#include <memory>

namespace runsieve::app {

/// The pairs of parameters as a table, the strongest first.
class PairsModel : public QAbstractTableModel
{
  Q_OBJECT

public:
  enum Column
  {
    First,
    Second,
    Passing,
    Others,
    P,
    columns
  };

  using QAbstractTableModel::QAbstractTableModel;

  /// \param pairs may be null
  void show(std::shared_ptr<PairComparisons const> pairs);
  [[nodiscard]] PairComparisons const* pairs() const { return shown.get(); }

  [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] int columnCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role = Qt::DisplayRole) const override;

private:
  std::shared_ptr<PairComparisons const> shown;
};

/// "r +0.43, p 0.002 ★"; empty for a pair that is not defined.
[[nodiscard]] QString pairHeadline(ParameterPair const& pair);

} // namespace runsieve::app
