#pragma once

#include "app/explorer/document/Background.h"
#include "app/explorer/figure/PaintFigure.h"

#include <QImage>
#include <QWidget>

#include <memory>

namespace runsieve::app {

/// Shows a figure as it will be, on the paper that it stands on. Painted beside the interface.
class FigurePreview : public QWidget
{
  Q_OBJECT

public:
  explicit FigurePreview(FigureContent content, QWidget* parent = nullptr);
  ~FigurePreview() override;

  void show(FigureOptions const& options);
  /// Whether what was asked for is shown.
  [[nodiscard]] bool isSettled() const { return !work->isBusy(); }
  [[nodiscard]] QImage const& picture() const { return shown; }

  QSize sizeHint() const override { return {560, 460}; }
  QSize minimumSizeHint() const override { return {120, 100}; }

Q_SIGNALS:
  /// A picture has been made, of which something may be left out.
  void changed(FigureNotes const& notes);

protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

private:
  void request();

  FigureContent content;
  FigureOptions options;
  QImage shown;
  std::unique_ptr<Background> work = std::make_unique<Background>();
};

} // namespace runsieve::app
