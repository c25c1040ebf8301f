#pragma once

#include "app/explorer/parameters/PairCharts.h"
#include "app/explorer/parameters/PairsModel.h"
#include "app/explorer/parameters/PassingWork.h"
#include "app/explorer/parameters/WorkBar.h"

#include <QWidget>

class QTableView;

namespace runsieve::app {

/// Which parameters go together in the passing runs: a list of all pairs, and charts of the strongest ones.
class PairsPage : public QWidget
{
  Q_OBJECT

public:
  /// Charts that are shown, of the strongest pairs.
  static constexpr std::size_t mostCharts = 9;

  explicit PairsPage(ParameterRuns& runs, QWidget* parent = nullptr);

  [[nodiscard]] PassingWork& work() { return pairing; }
  [[nodiscard]] WorkBar* bar() const { return progress; }
  [[nodiscard]] QTableView* table() const { return list; }
  [[nodiscard]] PairCharts* shownCharts() const { return charts; }

protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

private:
  void take(std::shared_ptr<PairComparisons const> pairs);
  void showCharts();

  PassingWork pairing;
  PairsModel model;
  WorkBar* progress = nullptr;
  QTableView* list = nullptr;
  PairCharts* charts = nullptr;
};

} // namespace runsieve::app
