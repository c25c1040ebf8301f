#include "app/desk/DeskCommands.h"

#include "app/cli/GateReport.h"
#include "app/render/OffscreenView.h"
#include "app/view/ShownComparison.h"
#include "app/view/SievedScan.h"
#include "app/view/SmallCharts.h"

#include <vtkContextScene.h>

#include <iostream>
#include <optional>
#include <stdexcept>

namespace runsieve::app {

namespace {

std::size_t outputNamed(std::string const& name, Scan const& scan)
{
  if (auto const output = scan.findOutput(name)) return *output;
  throw std::runtime_error("the scan has no output \"" + name + "\"; there are " + outputNames(scan));
}

} // namespace

int renderPicture(RenderArguments const& arguments)
{
  const SievedScan sieved(arguments);
  ViewOptions options = sieved.stored.view;
  options.pThreshold = sieved.gated.method.thresholds.largestP;
  options.ksThreshold = sieved.gated.method.thresholds.smallestD;
  options.density |= arguments.density;
  options.commonScale |= arguments.commonScale;
  options.quantiles |= arguments.quantiles;
  options.logAxes |= arguments.logAxes;
  options.points |= arguments.points;
  options.plainLines |= arguments.plainLines;
  if (!arguments.species.empty()) options.output = outputNamed(arguments.species, sieved.gated.scan());

  OffscreenView view(arguments.width, arguments.height);
  PlotContainer plot(nullptr);
  view.scene()->AddItem(plot.getItem());
  sieved.applyTo(plot, options);
  plot.metaData->plotTitle = pictureTitle(sieved.gated);
  std::optional<ParameterComparer> comparer;
  ShownComparison shown;
  if (sieved.gated.sieves()) {
    comparer.emplace(sieved.gated.scan(), sieved.gated.eligible());
    shown = compareRuns(*comparer, sieved.gated.passed.runs, sieved.gated.method);
  }
  const bool isCompared = !shown.numbers.parameters.empty();
  if (isCompared) orderBy(plot, shown.numbers);
  plot.redraw();
  polish(plot);
  nameTexts(plot, sieved.gated.scan(), arguments.width);
  if (isCompared) label(plot, *comparer, shown);
  const std::string note = view.save(arguments.output);
  // A plot that outlived its view would let go of textures in a context that is gone.
  plot.setScene(nullptr);
  saveSieve(sieved.gated, arguments);
  printNotes(sieved.gated);
  if (!note.empty()) std::cerr << "runsieve: " << note << '\n';
  if (sieved.gated.sieves() && sieved.gated.passed.runs.count() == 0)
    std::cerr << "runsieve: no run passes through all gates\n";
  return 0;
}

} // namespace runsieve::app
