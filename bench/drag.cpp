// A rectangle dragged over the runs in the explorer's window: 200 moves, a frame after each, and the release.
// Needs a display.

#include "BenchScan.h"
#include "QuietRun.h"

#include "app/composite/CompositeWindow.h"

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/core/write/WriteScan.h>
#include <runsieve/widgets/VtkPlotWidget.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkContextView.h>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <vector>

using namespace runsieve;
using namespace runsieve::bench;

namespace {

constexpr int moves = 200;
constexpr double late = 33.0; // ms of a frame that a hand notices

double since(std::chrono::steady_clock::time_point start)
{
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// The explorer with a scan open.
class OpenExplorer
{
public:
  explicit OpenExplorer(std::string const& name)
  {
    const QString path = folder.filePath("scan.csv");
    writeScan(scanOf(benchScan(name).table), path.toStdString());
    window.resize(1200, 950);
    window.show();
    QString error;
    if (!window.open(path, error)) throw std::runtime_error(error.toStdString());
    for (int i = 0; i < 20; ++i) QApplication::processEvents();
  }

  void frame()
  {
    window.plotWidget()->view->Render();
    QApplication::processEvents();
  }

  /// An event of the right button at a place of the chart of the runs, from 0 to 1 in both directions.
  void mouse(QEvent::Type type, double x, double y)
  {
    VtkPlotWidget& widget = *window.plotWidget();
    vtkChart* chart = window.plot()->chartXY;
    vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
    vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
    const auto at = [](double share, double from, double to) { return from + share * (to - from); };
    const QPointF place(at(x, bottom->GetPosition1().GetX(), bottom->GetPosition2().GetX()),
                        widget.height() - 1.0 -
                            at(y, left->GetPosition1().GetY(), left->GetPosition2().GetY()));
    const bool isRelease = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, place, widget.mapToGlobal(place.toPoint()),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::RightButton,
                      isRelease ? Qt::NoButton : Qt::RightButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
  }

private:
  QTemporaryDir folder;
  app::CompositeWindow window;
};

void drag(benchmark::State& state, std::string const& name)
{
  OpenExplorer explorer(name);
  std::vector<double> frames;
  std::vector<double> releases;
  for (auto _ : state) {
    explorer.mouse(QEvent::MouseButtonPress, 0.4, 0.2);
    for (int i = 1; i <= moves; ++i) {
      auto const start = std::chrono::steady_clock::now();
      explorer.mouse(QEvent::MouseMove, 0.4 + 0.1 * i / moves, 0.2 + 0.3 * i / moves);
      explorer.frame();
      frames.push_back(since(start));
    }
    auto const start = std::chrono::steady_clock::now();
    explorer.mouse(QEvent::MouseButtonRelease, 0.5, 0.5);
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
    explorer.frame();
    releases.push_back(since(start));
  }
  std::sort(frames.begin(), frames.end());
  std::sort(releases.begin(), releases.end());
  state.counters["median frame ms"] = frames[frames.size() / 2];
  state.counters["worst frame ms"] = frames.back();
  state.counters["late of 200"] =
      static_cast<double>(std::count_if(frames.begin(), frames.end(), [](double ms) { return ms > late; })) *
      moves / static_cast<double>(frames.size());
  state.counters["release ms"] = releases[releases.size() / 2];
}

void hover(benchmark::State& state, std::string const& name)
{
  OpenExplorer explorer(name);
  for (auto _ : state) explorer.frame();
}

} // namespace

int main(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication application(argc, argv);
  for (std::string scan : {"W1", "W2"}) {
    benchmark::RegisterBenchmark(("drag/" + scan).c_str(), drag, scan)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(2);
    benchmark::RegisterBenchmark(("repaint/" + scan).c_str(), hover, scan)->Unit(benchmark::kMillisecond);
  }
  return runQuietly(argc, argv);
}
