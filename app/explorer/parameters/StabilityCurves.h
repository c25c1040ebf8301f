#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/StabilityPicture.h"

#include <QWidget>

#include <memory>

namespace runsieve::app {

/// A comparison with what resampling the runs tells of it.
struct StabilityOfRuns
{
  std::shared_ptr<Comparison const> comparison;
  ComparisonStability stability;
};

/// How |d| of the parameters settles with a growing number of runs.
class StabilityCurves : public QWidget
{
  Q_OBJECT

public:
  explicit StabilityCurves(QWidget* parent = nullptr);

  /// \param found may be null
  void show(std::shared_ptr<StabilityOfRuns const> found);
  /// What is told of a place.
  [[nodiscard]] QString tipAt(QPointF const& at) const;
  /// What is painted; only while something is shown.
  [[nodiscard]] StabilityPicture picture() const;

  [[nodiscard]] QSize sizeHint() const override { return {420, 320}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {180, 120}; }

protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

private:
  Theme theme;
  std::shared_ptr<StabilityOfRuns const> shown;
};

} // namespace runsieve::app
