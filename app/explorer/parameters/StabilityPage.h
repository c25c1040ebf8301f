#pragma once

#include "app/explorer/parameters/PassingWork.h"
#include "app/explorer/parameters/StabilityCurves.h"
#include "app/explorer/parameters/StabilityModel.h"
#include "app/explorer/parameters/WorkBar.h"

#include <QWidget>

class QLabel;
class QTableView;

namespace runsieve::app {

/// Whether the scan has enough runs for what was found: which parameters are settled, and which would need
/// more runs.
class StabilityPage : public QWidget
{
  Q_OBJECT

public:
  explicit StabilityPage(Document& document, QWidget* parent = nullptr);

  [[nodiscard]] PassingWork& work() { return resampling; }
  [[nodiscard]] WorkBar* bar() const { return progress; }
  [[nodiscard]] QTableView* table() const { return list; }
  [[nodiscard]] StabilityCurves* shownChart() const { return chart; }
  /// Which parameters are settled.
  [[nodiscard]] QString words() const;

protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

private:
  void take(std::shared_ptr<StabilityOfRuns const> found);

  PassingWork resampling;
  StabilityModel model;
  WorkBar* progress = nullptr;
  QLabel* told = nullptr;
  QTableView* list = nullptr;
  StabilityCurves* chart = nullptr;
};

} // namespace runsieve::app
