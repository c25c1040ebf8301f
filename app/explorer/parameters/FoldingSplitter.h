#pragma once

#include <QSplitter>

namespace runsieve::app {

/// Two parts beside each other where there is room, else one above the other.
class FoldingSplitter : public QSplitter
{
  Q_OBJECT

public:
  explicit FoldingSplitter(QWidget* parent = nullptr);

  [[nodiscard]] QSize minimumSizeHint() const override { return {200, 160}; }

protected:
  void resizeEvent(QResizeEvent* event) override;
};

} // namespace runsieve::app
