#pragma once

#include "app/explorer/parameters/BoxPathPicture.h"

#include <runsieve/core/compare/BoxOfRuns.h>

#include <QWidget>

#include <memory>

namespace runsieve::app {

/// The way from the box of all runs to ever smaller ones: coverage against density of each.
class BoxPathChart : public QWidget
{
  Q_OBJECT

public:
  explicit BoxPathChart(QWidget* parent = nullptr);

  /// \param box may be null
  void show(std::shared_ptr<BoxOfRuns const> box);
  [[nodiscard]] QSize sizeHint() const override { return {360, 300}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {180, 120}; }

protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

private:
  [[nodiscard]] BoxPathPicture picture() const;
  [[nodiscard]] QString tipAt(QPointF const& at) const;

  Theme theme;
  std::shared_ptr<BoxOfRuns const> box;
};

} // namespace runsieve::app
