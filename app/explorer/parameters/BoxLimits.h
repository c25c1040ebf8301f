#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/ParameterRuns.h"

#include <runsieve/core/compare/BoxOfRuns.h>

#include <QAbstractScrollArea>

#include <memory>
#include <vector>

namespace runsieve::app {

/// The limits of a box: of each parameter that it restricts a bar within the range of its values.
class BoxLimits : public QAbstractScrollArea
{
  Q_OBJECT

public:
  explicit BoxLimits(ParameterRuns& runs, QWidget* parent = nullptr);

  /// \param box may be null
  void show(std::shared_ptr<BoxOfRuns const> box);
  /// Parameters that are listed.
  [[nodiscard]] std::size_t count() const { return rows.size(); }

protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;

private:
  void relayout();
  void paintRow(QPainter& painter, BoxParameter const& row, QRectF const& area) const;
  [[nodiscard]] double rowHeight() const;

  ParameterRuns& runs;
  Theme theme;
  std::shared_ptr<BoxOfRuns const> box;
  std::vector<std::size_t> rows; ///< of the parameters of the box, those that are restricted
};

/// "0.3 to 0.9", "at most 12", "at least 3"; of a text parameter the texts inside.
[[nodiscard]] QString limitsText(BoxParameter const& parameter);

} // namespace runsieve::app
