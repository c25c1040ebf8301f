// The first picture of grouped runs, each a line of its own, beside that of the same runs as one set of
// lines.

#include "BenchScan.h"

#include "app/render/OffscreenView.h"

#include <runsieve/plot/PlotContainer.h>

#include <vtkChart.h>
#include <vtkContextScene.h>
#include <vtkPen.h>
#include <vtkPlot.h>

#include <benchmark/benchmark.h>

#include <iostream>
#include <memory>

using namespace runsieve::bench;

namespace {

constexpr double lineWidth = 4.0; ///< of clusters, for both

/// Drops what plots print, as long as it lives.
struct Silence
{
  ~Silence() { std::cout.rdbuf(former); }
  std::streambuf* former = std::cout.rdbuf(nullptr);
};

/// A plot of all runs in a scene, not painted yet.
struct RunPicture
{
  RunPicture(std::string const& scan, bool clusters) : view(1000, 700, 0), plot(nullptr)
  {
    const Silence silence;
    view.scene()->AddItem(plot.getItem());
    plot.metaData->setPlotLine(true);
    plot.setLinePlotTable(benchScan(scan).table, false);
    if (clusters) {
      plot.chartXY->ClearPlots();
      plot.clusterTimeSeries(4, 0);
    } else {
      plot.setColor(60, 90, 160, 180);
      plot.chartXY->GetPlot(0)->SetWidth(lineWidth);
    }
    view.scene()->ClearItems();
    view.scene()->AddItem(plot.getItem());
  }

  runsieve::app::OffscreenView view;
  PlotContainer plot;
};

void firstPicture(benchmark::State& state, std::string const& scan, bool clusters)
{
  for (auto _ : state) {
    state.PauseTiming();
    auto picture = std::make_unique<RunPicture>(scan, clusters);
    state.ResumeTiming();
    picture->view.render();
    state.PauseTiming();
    picture.reset();
    state.ResumeTiming();
  }
}

void repaint(benchmark::State& state, std::string const& scan)
{
  RunPicture picture(scan, true);
  picture.view.render();
  for (auto _ : state) picture.view.render();
}

#define RUNSIEVE_PICTURES(SCAN)                                                                              \
  BENCHMARK_CAPTURE(firstPicture, SCAN##_lines, std::string(#SCAN), false)->Unit(benchmark::kMillisecond);   \
  BENCHMARK_CAPTURE(firstPicture, SCAN##_clusters, std::string(#SCAN), true)->Unit(benchmark::kMillisecond); \
  BENCHMARK_CAPTURE(repaint, SCAN##_clusters, std::string(#SCAN))->Unit(benchmark::kMillisecond);

RUNSIEVE_PICTURES(W1)
RUNSIEVE_PICTURES(W2)
RUNSIEVE_PICTURES(W3)

} // namespace

BENCHMARK_MAIN();
