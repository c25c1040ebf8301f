// Panning with the mouse in a window: frames while the hand moves, and the picture when it rests. Needs a
// display.

#include "BenchScan.h"
#include "QuietRun.h"

#include "app/view/ScanPlot.h"

#include <runsieve/plot/PlotContainer.h>
#include <runsieve/widgets/VtkPlotWidget.h>

#include <vtkAnnotationLink.h>
#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkCommand.h>
#include <vtkRenderWindow.h>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <vector>

using namespace runsieve;
using namespace runsieve::bench;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int moves = 60;
constexpr auto betweenMoves = std::chrono::milliseconds(16);
constexpr auto quiet = std::chrono::milliseconds(500); ///< without a frame: the hand rests and all is counted

double since(Clock::time_point start)
{
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double medianOf(std::vector<double> times)
{
  if (times.empty()) return 0.0;
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

/// A scan with a selection in a window of 1200 x 900.
class ShownScan
{
public:
  explicit ShownScan(std::string const& name)
  {
    BenchScan const& scan = benchScan(name);
    app::ViewOptions options;
    options.output = 3;
    app::showScan(*widget.plotContainer, scan.table, options);
    widget.updatePlot(true);
    widget.resize(1200, 900);
    widget.show();
    widget.plotContainer->annotationLink->SetCurrentSelection(rowSelection(scan.brush));
    app::polish(*widget.plotContainer);
    widget.updatePlot(true);
    vtkRenderWindow* window = widget.renderWindow();
    window->AddObserver(vtkCommand::StartEvent, this, &ShownScan::beginFrame);
    window->AddObserver(vtkCommand::EndEvent, this, &ShownScan::endFrame);
    waitUntilQuiet();
  }
  ~ShownScan() { widget.renderWindow()->RemoveAllObservers(); }

  /// An event of the left button at the middle of the chart of the runs, some pixels below.
  void mouse(QEvent::Type type, double below)
  {
    vtkChart* chart = widget.plotContainer->chartXY;
    float const* low = chart->GetAxis(vtkAxis::BOTTOM)->GetPoint1();
    float const* high = chart->GetAxis(vtkAxis::BOTTOM)->GetPoint2();
    const double middle = 0.5 * (low[1] + chart->GetAxis(vtkAxis::LEFT)->GetPoint2()[1]);
    const QPointF place(0.5 * (low[0] + high[0]), widget.height() - 1.0 - middle + below);
    QMouseEvent event(type, place, widget.mapToGlobal(place.toPoint()),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
  }

  /// Runs the event loop, and notes how long it is kept busy.
  void wait(Clock::duration time)
  {
    for (const auto start = Clock::now(); Clock::now() - start < time;) {
      const auto busy = Clock::now();
      QApplication::processEvents();
      longest = std::max(longest, since(busy));
    }
  }

  void waitUntilQuiet()
  {
    do {
      wait(std::chrono::milliseconds(20));
    } while (Clock::now() - ended < quiet);
  }

  std::vector<double> frames; ///< ms
  Clock::time_point ended = Clock::now();
  double longest = 0.0; ///< ms

private:
  void beginFrame(vtkObject*, unsigned long, void*) { began = Clock::now(); }
  void endFrame(vtkObject*, unsigned long, void*)
  {
    frames.push_back(since(began));
    ended = Clock::now();
  }

  VtkPlotWidget widget;
  Clock::time_point began;
};

void pan(benchmark::State& state, std::string const& name)
{
  ShownScan shown(name);
  std::vector<double> moving;
  std::vector<double> atRest;
  shown.longest = 0.0;
  for (auto _ : state) {
    shown.frames.clear();
    shown.mouse(QEvent::MouseButtonPress, 0.0);
    for (int i = 1; i <= moves; ++i) {
      shown.mouse(QEvent::MouseMove, 40.0 * std::sin(0.1 * i));
      shown.wait(betweenMoves);
    }
    moving.insert(moving.end(), shown.frames.begin(), shown.frames.end());
    const auto last = Clock::now();
    shown.waitUntilQuiet();
    atRest.push_back(std::chrono::duration<double, std::milli>(shown.ended - last).count());
    shown.mouse(QEvent::MouseButtonRelease, 0.0);
    shown.waitUntilQuiet();
  }
  state.counters["frames"] = static_cast<double>(moving.size()) / static_cast<double>(state.iterations());
  state.counters["median frame ms"] = medianOf(moving);
  state.counters["worst frame ms"] = *std::max_element(moving.begin(), moving.end());
  state.counters["rest ms"] = medianOf(atRest); // the tenth of a second that is waited included
  state.counters["longest ms"] = shown.longest; // without events
}

} // namespace

int main(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication application(argc, argv);
  for (std::string scan : {"W1", "W2", "W3"})
    benchmark::RegisterBenchmark(("pan/" + scan).c_str(), pan, scan)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(3);
  return runQuietly(argc, argv);
}
