// The explorer's window as a user waits for it: opening, a gate that is drawn with 200 moves, its release,
// panning, another output. Needs a display.
//
// A frame is a move of the mouse until the window is free again and has been painted. The picture of the
// passing runs is made beside the interface: "shown ms" is a move until its picture is on the screen, if no
// other move follows.

#include "BenchScan.h"
#include "QuietRun.h"

#include "app/explorer/parameters/ParametersPane.h"
#include "app/explorer/runs/RunsPane.h"
#include "app/explorer/window/ExplorerWindow.h"

#include <runsieve/adapters/ScanTable.h>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QSettings>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <memory>
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

/// ms of this thread.
double processorTime()
{
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

/// W1, W2 and W3 have 20 parameters; W2x40 has 40, W3x30 has 30.
std::shared_ptr<Scan const> scanNamed(std::string const& name)
{
  const std::size_t size = name.find('x');
  auto scan = std::make_shared<Scan>(scanOf(benchScan(name.substr(0, size)).table));
  const std::size_t wanted = size == std::string::npos ? 0 : std::stoul(name.substr(size + 1));
  for (std::size_t p = scan->parameters.size(); p < wanted; ++p) {
    ScanParameter parameter;
    parameter.label.name = "more" + std::to_string(p);
    for (std::size_t run = 0; run < scan->runs.size(); ++run) {
      const double turn = static_cast<double>(run + 1) * std::sqrt(2.0 + 3.0 * static_cast<double>(p));
      parameter.values.push_back(turn - std::floor(turn));
    }
    scan->parameters.push_back(std::move(parameter));
  }
  return scan;
}

class OpenWindow
{
public:
  OpenWindow()
  {
    window.resize(1200, 900);
    window.show();
    QApplication::processEvents();
  }

  void open(std::shared_ptr<Scan const> const& scan)
  {
    window.document().open(scan, {});
    settle();
  }

  void settle()
  {
    do QApplication::processEvents(QEventLoop::AllEvents, 1);
    while (!window.isSettled());
    QApplication::processEvents();
  }

  /// Events, and what they have made to be painted.
  void frame()
  {
    QApplication::sendPostedEvents();
    QApplication::processEvents();
  }

  void mouse(QEvent::Type type, double x, double y, Qt::MouseButton button)
  {
    app::RunsView& view = *window.runs().view();
    const QRectF plot = view.frame().plot();
    const QPointF place(plot.left() + x * plot.width(), plot.bottom() - y * plot.height());
    const bool isRelease = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, place, view.mapToGlobal(place.toPoint()),
                      type == QEvent::MouseMove ? Qt::NoButton : button, isRelease ? Qt::NoButton : button,
                      Qt::NoModifier);
    QApplication::sendEvent(&view, &event);
  }

  app::ExplorerWindow window;
};

void open(benchmark::State& state, std::string const& name)
{
  const auto scan = scanNamed(name);
  OpenWindow explorer;
  for (auto _ : state) explorer.open(scan);
}

void report(benchmark::State& state, std::vector<double>& frames)
{
  std::sort(frames.begin(), frames.end());
  state.counters["median frame ms"] = frames[frames.size() / 2];
  state.counters["worst frame ms"] = frames.back();
  state.counters["late of 200"] =
      static_cast<double>(std::count_if(frames.begin(), frames.end(), [](double ms) { return ms > late; })) *
      moves / static_cast<double>(frames.size());
}

void drag(benchmark::State& state, std::string const& name)
{
  OpenWindow explorer;
  explorer.open(scanNamed(name));
  std::vector<double> frames;
  std::vector<double> shown;
  std::vector<double> pictures;
  std::vector<double> releases;
  for (auto _ : state) {
    explorer.mouse(QEvent::MouseButtonPress, 0.4, 0.2, Qt::RightButton);
    for (int i = 1; i <= moves; ++i) {
      auto const start = std::chrono::steady_clock::now();
      explorer.mouse(QEvent::MouseMove, 0.4 + 0.1 * i / moves, 0.2 + 0.3 * i / moves, Qt::RightButton);
      explorer.frame();
      frames.push_back(since(start));
      while (!explorer.window.runs().isSettled()) explorer.frame();
      explorer.frame();
      shown.push_back(since(start));
    }
    auto const start = std::chrono::steady_clock::now();
    explorer.mouse(QEvent::MouseButtonRelease, 0.5, 0.5, Qt::RightButton);
    do explorer.frame();
    while (!explorer.window.runs().isSettled());
    explorer.frame();
    pictures.push_back(since(start));
    explorer.settle();
    releases.push_back(since(start));
    explorer.window.document().undoStack().undo();
    explorer.settle();
  }
  report(state, frames);
  std::sort(shown.begin(), shown.end());
  std::sort(pictures.begin(), pictures.end());
  std::sort(releases.begin(), releases.end());
  state.counters["shown ms"] = shown[shown.size() / 2];
  state.counters["picture ms"] = pictures[pictures.size() / 2];
  state.counters["release ms"] = releases[releases.size() / 2];
}

void pan(benchmark::State& state, std::string const& name)
{
  OpenWindow explorer;
  explorer.open(scanNamed(name));
  std::vector<double> frames;
  double rest = 0.0;
  for (auto _ : state) {
    explorer.mouse(QEvent::MouseButtonPress, 0.5, 0.5, Qt::MiddleButton);
    for (int i = 1; i <= moves; ++i) {
      auto const start = std::chrono::steady_clock::now();
      explorer.mouse(QEvent::MouseMove, 0.5 + 0.2 * i / moves, 0.5 + 0.1 * i / moves, Qt::MiddleButton);
      explorer.frame();
      frames.push_back(since(start));
    }
    auto const start = std::chrono::steady_clock::now();
    explorer.mouse(QEvent::MouseButtonRelease, 0.7, 0.6, Qt::MiddleButton);
    explorer.settle();
    rest = since(start);
    explorer.window.runs().zoom().reset();
    explorer.settle();
  }
  report(state, frames);
  state.counters["at rest ms"] = rest;
}

void output(benchmark::State& state, std::string const& name)
{
  OpenWindow explorer;
  explorer.open(scanNamed(name));
  std::size_t shown = 0;
  for (auto _ : state) {
    shown = 1 - shown;
    explorer.window.document().change("Show output", [&](app::State& s) { s.view.outputs = {shown}; });
    explorer.settle();
  }
}

/// Small charts of all parameters on a full screen while a gate moves. "paint ms" is the
/// processor time of the interface without sieving, which other work on the machine hardly changes.
void charts(benchmark::State& state, std::string const& name, app::ParameterLook look)
{
  app::Document document;
  document.open(scanNamed(name), {});
  app::ParametersPane pane(document);
  pane.resize(1150, 1080); // beside the runs on a screen of 1,920 x 1,200
  pane.show();
  document.change("Charts", [&](app::State& s) { s.view.parameterLook = look; });
  QApplication::processEvents();
  while (!document.prepareGate(0)) {
  }
  QWidget& viewport = *pane.grid()->viewport();
  std::size_t visible = 0;
  for (std::size_t const p : pane.runs().order())
    if (QRectF(viewport.rect()).contains(pane.grid()->cell(p))) ++visible;
  Scan const& scan = document.scan();
  double const* values = scan.valuesOf(0, 0);
  const auto [low, high] = std::minmax_element(values, values + scan.rows());
  const double range = *high - *low;
  Gate gate;
  gate.column = scan.outputs[0].label.fullName();
  gate.span = GateSpan{scan.times[40], scan.times[50]};
  std::vector<double> frames;
  std::vector<double> paints;
  for (auto _ : state) {
    for (int i = 0; i < moves; ++i) {
      auto const start = std::chrono::steady_clock::now();
      gate.range = {*low + 0.001 * range * i / moves, *low + (0.05 + 0.3 * i / moves) * range};
      document.previewGate(0, gate);
      const double moved = processorTime();
      QApplication::sendPostedEvents();
      QApplication::processEvents();
      frames.push_back(since(start));
      paints.push_back(processorTime() - moved);
    }
    document.cancelPreview();
    QApplication::processEvents();
  }
  report(state, frames);
  std::sort(paints.begin(), paints.end());
  state.counters["charts"] = static_cast<double>(visible);
  state.counters["paint ms"] = paints[paints.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
  QStandardPaths::setTestModeEnabled(true);
  QApplication application(argc, argv);
  QCoreApplication::setOrganizationName("runsieve-bench");
  for (std::string const scan : {"W1", "W2", "W2x40", "W3"}) {
    for (auto const& [name, measure] :
         {std::pair{"open/", open}, {"drag/", drag}, {"pan/", pan}, {"output/", output}})
      benchmark::RegisterBenchmark((name + scan).c_str(), measure, scan)
          ->Unit(benchmark::kMillisecond)
          ->UseRealTime()
          ->Iterations(3);
  }
  using Look = app::ParameterLook;
  for (auto const& [name, look] :
       {std::pair{"curves", Look::Curves}, {"densities", Look::Densities}, {"scatter", Look::Scatter}})
    for (std::string const scan : {"W2x30", "W3x30"})
      benchmark::RegisterBenchmark(("charts/" + std::string(name) + "/" + scan).c_str(), charts, scan, look)
          ->Unit(benchmark::kMillisecond)
          ->UseRealTime()
          ->Iterations(3);
  return runQuietly(argc, argv);
}
