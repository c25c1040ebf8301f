#pragma once

#include "DocumentScene.h"
#include "Mouse.h"

#include "app/explorer/parameters/ParametersPane.h"

#include <QImage>
#include <QTabWidget>

#include <algorithm>
#include <cstdlib>

namespace runsieve::test {

/// The pane of the parameters in a window.
struct ParametersScene : DocumentScene
{
  std::unique_ptr<app::ParametersPane> pane;

  void SetUp() override { openPane(); }
  void openPane()
  {
    pane = std::make_unique<app::ParametersPane>(document);
    pane->resize(800, 600);
    pane->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(pane.get()));
  }
  void openScan(std::shared_ptr<Scan const> scan) { document.open(std::move(scan), {}); }

  [[nodiscard]] app::ParameterGrid& grid() { return *pane->grid(); }
  /// A place in the plot of a parameter. \param x from 0 at its left end to 1 \param y from 0 at the bottom
  [[nodiscard]] QPointF inPlot(std::size_t parameter, double x, double y = 0.5)
  {
    const QRectF plot = grid().plot(parameter);
    return {plot.left() + x * plot.width(), plot.bottom() - y * plot.height()};
  }
  /// Drags in the small chart of a parameter.
  void dragIn(std::size_t parameter, double from, double to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    Mouse(*grid().viewport())
        .drag(inPlot(parameter, from), inPlot(parameter, to, 0.4), Qt::LeftButton, modifiers);
  }
  [[nodiscard]] Gate const& gate(std::size_t i = 0) { return document.state().gates.at(i).gate; }
  void setLook(app::ParameterLook look)
  {
    document.change("Look", [&](app::State& state) { state.view.parameterLook = look; });
  }
  /// Pixels of about a colour.
  static int pixelsOf(QImage const& image, QColor const& wanted)
  {
    constexpr int near = 12;
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) {
        const QColor color = image.pixelColor(x, y);
        count += std::abs(color.red() - wanted.red()) < near &&
                         std::abs(color.green() - wanted.green()) < near &&
                         std::abs(color.blue() - wanted.blue()) < near
                     ? 1
                     : 0;
      }
    return count;
  }
  [[nodiscard]] QImage shot() { return grid().viewport()->grab().toImage(); }
  [[nodiscard]] app::Theme theme() { return app::Theme::ofPalette(grid().palette(), grid().font()); }
  /// Pixels of the hue of passing runs, however dense these are there.
  [[nodiscard]] int passingPixels(QImage const& image)
  {
    constexpr int near = 12; // degrees
    constexpr int leastSaturation = 50;
    const int hue = theme().passing.hsvHue();
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) {
        const QColor color = image.pixelColor(x, y);
        const int away = std::abs(color.hsvHue() - hue);
        count += color.hsvSaturation() >= leastSaturation && std::min(away, 360 - away) < near ? 1 : 0;
      }
    return count;
  }
  [[nodiscard]] int passingPixels() { return passingPixels(shot()); }
};

} // namespace runsieve::test
