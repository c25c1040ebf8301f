#include "app/cli/Commands.h"

#include "app/render/OffscreenView.h"
#include "app/view/SievedScan.h"

#include <vtkContextScene.h>

#include <iostream>

namespace runsieve::app {

namespace {

std::string titleOf(SievedScan const& sieved, std::size_t passing)
{
  std::string title;
  for (ResolvedGate const& gate : sieved.gates) title += (title.empty() ? "" : ", ") + gate.text();
  if (sieved.sieves())
    title += (title.empty() ? "" : " - ") + std::to_string(passing) + " of " +
             std::to_string(sieved.scan->trajectoryCount) + " runs pass";
  return title;
}

} // namespace

int runRender(RenderArguments const& arguments)
{
  const SievedScan sieved(arguments.file, arguments.read, arguments.gates);
  ViewOptions options = sieved.stored.view;
  options.pThreshold = arguments.pThreshold.value_or(options.pThreshold);
  options.ksThreshold = arguments.ksThreshold.value_or(options.ksThreshold);
  options.density |= arguments.density;
  options.commonScale |= arguments.commonScale;
  options.quantiles |= arguments.quantiles;
  options.logAxes |= arguments.logAxes;
  options.points |= arguments.points;
  if (!arguments.species.empty())
    options.output = outputColumn(arguments.species, *sieved.scan);
  else if (!sieved.gates.empty())
    options.output = sieved.gates.front().column;

  OffscreenView view(arguments.width, arguments.height);
  PlotContainer plot(nullptr);
  view.scene()->AddItem(plot.getItem());
  const std::size_t passing = sieved.applyTo(plot, options);
  plot.metaData->plotTitle = titleOf(sieved, passing);
  plot.redraw();
  polish(plot);
  view.save(arguments.output);
  // A plot that outlived its view would let go of textures in a context that is gone.
  plot.setScene(nullptr);
  for (std::string const& note : sieved.notes()) std::cerr << "runsieve: " << note << '\n';
  if (passing == 0 && sieved.sieves()) std::cerr << "runsieve: no run passes through all gates\n";
  return 0;
}

} // namespace runsieve::app
