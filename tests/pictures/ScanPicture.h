#pragma once

#include "support/PlotParts.h"

#include "support/Picture.h"
#include "support/ScanBuilder.h"

#include "app/render/OffscreenView.h"
#include "app/view/ScanPlot.h"

#include <gtest/gtest.h>
#include <vtkAxis.h>
#include <vtkPlot.h>

#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace runsieve::test {

/// The composite view of a scan in closed form, off-screen: 60 runs of 33 times and 14 parameters. At time 8
/// run r has the value r + 1. The first parameters grow with r; the others are spread evenly whatever r is.
struct ScanPicture : testing::Test
{
  static constexpr int runs = 60;
  static constexpr int times = 33;
  static constexpr int parameters = 14;
  static constexpr int gateTime = 8;

  ScanPicture()
  {
    // Baselines come from this software renderer, on which the width of the processor has no influence.
    qputenv("LIBGL_ALWAYS_SOFTWARE", "1");
    qputenv("GALLIUM_DRIVER", "llvmpipe");
  }

  ~ScanPicture() override { letGo(); }

  static double fraction(double x) { return x - std::floor(x); }

  static double value(int run, int time)
  {
    const double x = static_cast<double>(time) / gateTime;
    return (run + 1) * x * std::exp(1.0 - x) +
           6.0 * fraction(0.618034 * run) * std::sin(3.14159265358979 * x);
  }

  /// In [0, 1].
  static double spread(int parameter, int run, int growing)
  {
    const double even = fraction((run + 1) * std::sqrt(2.0 + 3.0 * parameter));
    return parameter < growing ? 0.6 * run / runs + 0.4 * even : even;
  }

  /// Shows the scan with the given number of growing parameters; odd ones lie between 1 and 10, even ones, on
  /// a logarithmic scale, between 0.01 and 1.
  void show(int growing, app::ViewOptions const& options = {}, int height = 400)
  {
    letGo();
    ScanShape shape;
    shape.runs = runs;
    shape.times = times;
    shape.parameters = parameters;
    shape.value = [](int, int run, int time) { return value(run, time); };
    shape.parameter = [growing](int p, int run) {
      const double x = spread(p, run, growing);
      return p % 2 == 0 ? 1.0 + 9.0 * x : std::pow(10.0, x);
    };
    for (int p = 0; p < parameters; ++p) shape.bounds.emplace_back(1.0, 10.0);
    view = std::make_unique<app::OffscreenView>(600, height, 0);
    plot = std::make_unique<PlotContainer>(nullptr);
    view->scene()->AddItem(plot->getItem());
    app::showScan(*plot, makeScan(shape), options);
    app::polish(*plot);
  }

  /// Selects what a drag over the highest values at the gate's time selects: the last runs.
  void selectLast(int count)
  {
    std::vector<long long> rows;
    for (int run = runs - count; run < runs; ++run)
      rows.push_back(static_cast<long long>(run) * times + gateTime);
    app::selectRows(*plot, rows);
    app::polish(*plot);
  }

  [[nodiscard]] std::size_t significant() const
  {
    return static_cast<std::size_t>(std::count_if(
        plot->ksStatistics.begin(), plot->ksStatistics.end(),
        [](PlotContainer::KsStatistics const& test) { return test.p <= 0.05 && test.d >= 0.1; }));
  }

  /// Names of the parameters on show, row by row from the bottom.
  [[nodiscard]] std::vector<std::string> shown() const
  {
    std::vector<std::string> names;
    const vtkVector2i size = plot->chartMatrix->GetSize();
    for (int row = 0; row < size.GetY() / 2; ++row)
      for (int column = 0; column < size.GetX(); ++column) {
        vtkChart* chart = plot->chartMatrix->GetChart({column, row});
        if (chart->GetNumberOfPlots() > 0) names.push_back(chart->GetAxis(vtkAxis::BOTTOM)->GetTitle());
      }
    return names;
  }

  /// The upper ends of the vertical axes of the charts of the lowest row.
  [[nodiscard]] std::vector<double> tops() const
  {
    std::vector<double> ends;
    for (int column = 0; column < plot->chartMatrix->GetSize().GetX(); ++column)
      ends.push_back(plot->chartMatrix->GetChart({column, 0})->GetAxis(vtkAxis::LEFT)->GetUnscaledMaximum());
    return ends;
  }

  static std::vector<std::string> firstParameters(int count)
  {
    std::vector<std::string> names;
    for (int p = 1; p <= count; ++p) names.push_back("k" + std::to_string(p));
    return names;
  }

  [[nodiscard]] QImage picture()
  {
    const QTemporaryDir folder;
    const QString path = folder.filePath("view.png");
    view->save(path.toStdString());
    return QImage(path);
  }

  [[nodiscard]] testing::AssertionResult looksLike(std::string const& name)
  {
    return matchesBaseline(
        picture(), name, {RUNSIEVE_SOURCE_DIR "/tests/pictures/baselines", RUNSIEVE_BINARY_DIR "/pictures"});
  }

  std::unique_ptr<app::OffscreenView> view;
  std::unique_ptr<PlotContainer> plot;

private:
  /// A plot that outlived its view would let go of textures in a context that is gone.
  void letGo()
  {
    if (plot) plot->setScene(nullptr);
    view = nullptr;
    plot = nullptr;
  }
};

} // namespace runsieve::test
