// What pictures of runs take in memory: counts per pixel, images of them, and what threads need in between.
// Pictures of 2400 x 1800 without a window.
//
// Blocks of 4 MB or more are counted that are allocated while a frame is drawn, and as long as they live,
// but for those of eight bytes per row of the scan: points and flags of the lines. Memory of the OpenGL
// driver is not counted: it aligns its blocks, and aligned ones come by other calls.

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
#include <vtkRenderWindow.h>

#include <benchmark/benchmark.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>

#include <malloc.h>

extern "C" void* __libc_malloc(std::size_t bytes);
extern "C" void* __libc_calloc(std::size_t count, std::size_t bytes);
extern "C" void* __libc_realloc(void* block, std::size_t bytes);
extern "C" void __libc_free(void* block);

namespace {

/// Large blocks that were allocated while counting is on.
class LargeBlocks
{
public:
  void add(void* block, std::size_t bytes)
  {
    if (!block || !counting || bytes < smallest || bytes == ignored) return;
    for (auto& slot : slots) {
      void* none = nullptr;
      if (!slot.block.compare_exchange_strong(none, block)) continue;
      slot.bytes = bytes;
      const std::size_t now = live += bytes;
      std::size_t most = peak;
      while (now > most && !peak.compare_exchange_weak(most, now)) {
      }
      return;
    }
  }

  void remove(void* block)
  {
    if (!block || live == 0 || malloc_usable_size(block) < smallest) return;
    for (auto& slot : slots) {
      if (slot.block != block) continue;
      live -= slot.bytes;
      slot.block = nullptr;
      return;
    }
  }

  std::atomic<bool> counting = false;
  std::atomic<std::size_t> live = 0;
  std::atomic<std::size_t> peak = 0;
  std::size_t ignored = 0; ///< blocks of that size

private:
  static constexpr std::size_t smallest = 4'000'000;

  struct Slot
  {
    std::atomic<void*> block = nullptr;
    std::size_t bytes = 0;
  };

  std::array<Slot, 1024> slots;
};

LargeBlocks blocks;

} // namespace

extern "C" void* malloc(std::size_t bytes)
{
  void* const block = __libc_malloc(bytes);
  blocks.add(block, bytes);
  return block;
}

extern "C" void* calloc(std::size_t count, std::size_t bytes)
{
  void* const block = __libc_calloc(count, bytes);
  blocks.add(block, count * bytes);
  return block;
}

extern "C" void* realloc(void* former, std::size_t bytes)
{
  blocks.remove(former);
  void* const block = __libc_realloc(former, bytes);
  blocks.add(block, bytes);
  return block;
}

extern "C" void free(void* block)
{
  blocks.remove(block);
  __libc_free(block);
}

namespace {

using namespace runsieve;
using namespace runsieve::bench;

constexpr std::size_t lastOutput = 3;

/// A plot of a scan in a view of its own, of which memory is counted frame by frame.
class CountedPlot
{
public:
  CountedPlot(BenchScan const& scan, bool plainLines) : view(240, 180, 0), plot(nullptr)
  {
    view.scene()->AddItem(plot.getItem());
    app::ViewOptions options;
    options.output = lastOutput;
    options.plainLines = plainLines;
    app::showScan(plot, scan.table, options);
    view.render();
    view.contextView()->GetRenderWindow()->SetSize(2400, 1800);
    blocks.live = 0;
    blocks.peak = 0;
    blocks.ignored = 8 * scan.table->rows();
  }
  ~CountedPlot() { plot.setScene(nullptr); }

  void select(vtkSelection* selection)
  {
    plot.annotationLink->SetCurrentSelection(selection);
    app::polish(plot);
  }

  void pan()
  {
    vtkAxis* const left = plot.chartXY->GetAxis(vtkAxis::LEFT);
    const double step = 0.01 * (left->GetMaximum() - left->GetMinimum());
    left->SetRange(left->GetMinimum() + step, left->GetMaximum() + step);
  }

  void drawFrame()
  {
    blocks.counting = true;
    view.render();
    blocks.counting = false;
  }

  /// What a hand sees that pans, and then rests.
  void drawMovedFrames()
  {
    blocks.counting = true;
    {
      MovedImages images(view.contextView()->GetRenderWindow());
      pan();
      drawFrameOf(images, MovedImages::Hand::moves);
      while (!images.count(std::chrono::milliseconds(15))) drawFrameOf(images, MovedImages::Hand::rests);
      view.render();
    }
    blocks.counting = false;
  }

private:
  void drawFrameOf(MovedImages& images, MovedImages::Hand hand)
  {
    const MovedImages::Frame frame(images, hand);
    view.render();
  }

  app::OffscreenView view;
  PlotContainer plot;
};

void picture(benchmark::State& state, std::string const& name, bool plainLines)
{
  BenchScan const& scan = benchScan(name);
  const auto brush = rowSelection(scan.brush);
  const auto wide = rowSelection(scan.wide);
  for (auto _ : state) {
    CountedPlot plot(scan, plainLines);
    plot.drawFrame();
    for (vtkSelection* selection : {brush.Get(), wide.Get(), brush.Get()}) {
      plot.select(selection);
      plot.drawFrame();
    }
    plot.pan();
    plot.drawFrame();
    plot.drawFrame();
    state.counters["peak MB, exact frames"] = static_cast<double>(blocks.peak) * 1e-6;
    plot.drawMovedFrames();
    plot.drawFrame();
    state.counters["kept MB"] = static_cast<double>(blocks.live) * 1e-6;
    state.counters["peak MB"] = static_cast<double>(blocks.peak) * 1e-6;
  }
}

} // namespace

int main(int argc, char** argv)
{
  for (std::string scan : {"W2", "W3"})
    for (bool plain : {false, true})
      benchmark::RegisterBenchmark(("picture/" + scan + (plain ? "/plain" : "/shades")).c_str(), picture,
                                   scan, plain)
          ->Unit(benchmark::kMillisecond)
          ->Iterations(1);
  return runQuietly(argc, argv);
}
