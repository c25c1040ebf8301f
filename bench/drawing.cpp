// What a user waits for: from a drag to the picture, and frames in which nothing or the window on the axes
// changes, as a host asks for them and as a hand sees them that pans. Pictures of 1200 x 900 without a
// window.

#include "BenchScan.h"
#include "QuietRun.h"

#include "app/render/OffscreenView.h"
#include "app/view/ScanPlot.h"

#include <runsieve/items/MovedImages.h>
#include <runsieve/plot/PlotContainer.h>

#include <vtkAnnotationLink.h>
#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkContextScene.h>
#include <vtkContextView.h>
#include <vtkNew.h>
#include <vtkRenderWindow.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>

using namespace runsieve;
using namespace runsieve::bench;

namespace {

constexpr std::size_t lastOutput = 3;

/// A plot of a scan in a view of its own.
class DrawnScan
{
public:
  DrawnScan(std::string const& name, bool plainLines) : view(1200, 900, 0), plot(nullptr)
  {
    BenchScan const& scan = benchScan(name);
    view.scene()->AddItem(plot.getItem());
    app::ViewOptions options;
    options.output = lastOutput;
    options.plainLines = plainLines;
    app::showScan(plot, scan.table, options);
    view.render();
    brushes[0] = rowSelection(scan.brush);
    brushes[1] = rowSelection(partOf(scan.brush));
  }
  ~DrawnScan() { plot.setScene(nullptr); }

  void select(int brush)
  {
    plot.annotationLink->SetCurrentSelection(brushes[brush]);
    app::polish(plot);
  }

  /// Another window on the vertical axis, to and fro. \param hundredths of the axis
  void pan(int hundredths = 1)
  {
    vtkAxis* left = plot.chartXY->GetAxis(vtkAxis::LEFT);
    const double step = direction * 0.01 * hundredths * (left->GetMaximum() - left->GetMinimum());
    left->SetRange(left->GetMinimum() + step, left->GetMaximum() + step);
    direction = -direction;
  }

  app::OffscreenView view;
  PlotContainer plot;

private:
  /// The rows of nine runs of ten, as if a side of the rectangle had moved.
  static std::vector<long long> partOf(std::vector<long long> const& rows)
  {
    constexpr long long stride = 101;
    std::vector<long long> part;
    for (long long row : rows)
      if (row / stride % 10 != 0) part.push_back(row);
    return part;
  }

  vtkSmartPointer<vtkSelection> brushes[2];
  double direction = 1.0;
};

void firstPicture(benchmark::State& state, std::string const& name, bool plainLines)
{
  static_cast<void>(benchScan(name));
  for (auto _ : state) DrawnScan drawn(name, plainLines);
}

void dragToPicture(benchmark::State& state, std::string const& name, bool plainLines)
{
  DrawnScan drawn(name, plainLines);
  int brush = 0;
  for (auto _ : state) {
    drawn.select(brush);
    brush = 1 - brush;
    drawn.view.render();
  }
}

/// Nothing is known of the columns yet, and all memory comes from the system.
void firstDragToPicture(benchmark::State& state, std::string const& name, bool plainLines)
{
  for (auto _ : state) {
    DrawnScan drawn(name, plainLines);
    auto const start = std::chrono::steady_clock::now();
    drawn.select(0);
    drawn.view.render();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    state.SetIterationTime(taken.count());
  }
}

void repaint(benchmark::State& state, std::string const& name, bool plainLines)
{
  DrawnScan drawn(name, plainLines);
  drawn.select(0);
  drawn.view.render();
  for (auto _ : state) drawn.view.render();
}

void panned(benchmark::State& state, std::string const& name, bool plainLines)
{
  DrawnScan drawn(name, plainLines);
  drawn.select(0);
  drawn.view.render();
  for (auto _ : state) {
    drawn.pan();
    drawn.view.render();
  }
}

void moving(benchmark::State& state, std::string const& name, bool plainLines)
{
  DrawnScan drawn(name, plainLines);
  drawn.select(0);
  drawn.view.render();
  MovedImages images(drawn.view.contextView()->GetRenderWindow());
  drawn.pan(5); // the windows are not the one that was counted
  for (auto _ : state) {
    drawn.pan();
    const MovedImages::Frame frame(images, MovedImages::Hand::moves);
    drawn.view.render();
  }
}

/// From the last step of a hand to the picture that is counted, as a widget does it, but for the tenth of a
/// second that it waits.
void atRest(benchmark::State& state, std::string const& name, bool plainLines)
{
  using Clock = std::chrono::steady_clock;
  using Milliseconds = std::chrono::duration<double, std::milli>;
  DrawnScan drawn(name, plainLines);
  drawn.select(0);
  drawn.view.render();
  MovedImages images(drawn.view.contextView()->GetRenderWindow());
  Milliseconds worst{0};
  for (auto _ : state) {
    state.PauseTiming();
    drawn.pan();
    {
      const MovedImages::Frame frame(images, MovedImages::Hand::moves);
      drawn.view.render();
    }
    state.ResumeTiming();
    bool isCounted = false;
    while (!isCounted) {
      const auto start = Clock::now();
      isCounted = images.count(std::chrono::milliseconds(15));
      worst = std::max<Milliseconds>(worst, Clock::now() - start);
    }
    drawn.view.render();
  }
  state.counters["worst slice ms"] = worst.count();
}

using Frame = void (*)(benchmark::State&, std::string const&, bool);

benchmark::internal::Benchmark* add(std::string const& title, Frame frame, std::string const& scan,
                                    bool plain)
{
  const std::string name = title + "/" + scan + (plain ? "/plain" : "/shades");
  return benchmark::RegisterBenchmark(name.c_str(), frame, scan, plain)->Unit(benchmark::kMillisecond);
}

void registerFrame(std::string const& title, Frame frame)
{
  for (std::string const scan : {"W1", "W2", "W3"})
    for (bool plain : {false, true}) add(title, frame, scan, plain);
}

} // namespace

int main(int argc, char** argv)
{
  registerFrame("first picture", firstPicture);
  registerFrame("drag to picture", dragToPicture);
  for (std::string const scan : {"W1", "W2", "W3"})
    add("first drag to picture", firstDragToPicture, scan, false)->UseManualTime();
  registerFrame("repaint", repaint);
  registerFrame("panned", panned);
  registerFrame("panned, hand moving", moving);
  registerFrame("panned, hand at rest", atRest);
  return runQuietly(argc, argv);
}
