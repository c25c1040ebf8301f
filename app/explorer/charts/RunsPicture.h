#pragma once

#include "app/explorer/charts/RunsRenderer.h"
#include "app/explorer/document/Background.h"

#include <QObject>

#include <memory>

class QPainter;
class QRectF;

namespace runsieve::app {

/// The picture of the runs of a chart, made beside the interface. Until a new one is ready the former one is
/// shown, moved and scaled to where it belongs.
class RunsPicture : public QObject
{
  Q_OBJECT

public:
  explicit RunsPicture(QObject* parent = nullptr);

  /// Asks for a picture; nothing happens if it is the one that was asked for last.
  void request(RunsRequest request);
  /// Whether what was asked for is shown.
  [[nodiscard]] bool isSettled() const { return !work.isBusy(); }

  /// Draws layers of the picture. \param plot where the axes `time` and `value` are
  /// \param opacity of each layer, one for each; 1 for those that are missing
  void paint(QPainter& painter, QRectF const& plot, AxisMap const& time, AxisMap const& value,
             std::vector<double> const& opacity = {}) const;

  /// Of the layers of the last picture.
  [[nodiscard]] RunsRenderer::Images const& images() const { return shown; }

Q_SIGNALS:
  void changed();

private:
  RunsRequest wanted;
  RunsRequest made; ///< what `shown` was made for; its layers are left out
  RunsRenderer::Images shown;
  std::shared_ptr<RunsRenderer> renderer;
  Background work;
};

} // namespace runsieve::app
