#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/document/Document.h"

#include <QWidget>

namespace runsieve::app {

/// Tells which colour means which runs, and what the band is.
class GroupLegend : public QWidget
{
  Q_OBJECT

public:
  explicit GroupLegend(Document& document, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  Document& document;
};

} // namespace runsieve::app
