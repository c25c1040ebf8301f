#pragma once

#include "app/explorer/parameters/Settling.h"
#include "app/explorer/parameters/StabilityCurves.h"

#include <QAbstractTableModel>

#include <memory>
#include <vector>

namespace runsieve::app {

/// How sure d of each parameter is, in the order of the comparison.
class StabilityModel : public QAbstractTableModel
{
  Q_OBJECT

public:
  enum Column
  {
    Name,
    Distance,
    Interval,
    Top,
    SettledAt,
    columns
  };

  using QAbstractTableModel::QAbstractTableModel;

  /// \param found may be null
  void show(std::shared_ptr<StabilityOfRuns const> found);

  [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] int columnCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role = Qt::DisplayRole) const override;

private:
  [[nodiscard]] QString cellText(std::size_t row, int column) const;
  [[nodiscard]] QString columnTip(int column) const;

  std::shared_ptr<StabilityOfRuns const> shown;
  std::vector<Settling> settling;
};

} // namespace runsieve::app
