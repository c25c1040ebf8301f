#include "app/desk/QtDesk.h"

#include "app/desk/DeskCommands.h"
#include "app/view/SievedScan.h"

namespace runsieve::app {

int QtDesk::render(RenderArguments const& arguments)
{
  return arguments.figure.wanted ? renderFigure(arguments) : renderPicture(arguments);
}

int QtDesk::convert(ConvertArguments const& arguments)
{
  return convertPlot(arguments);
}

int QtDesk::explore(ExploreArguments const& arguments)
{
  return openExplorer(arguments);
}

void QtDesk::drawClusters(ClusterArguments const& arguments, Scan const& scan, ClusterPicture const& picture)
{
  drawClusterPicture(arguments, scan, picture);
}

void QtDesk::drawBox(BoxArguments const& arguments, BoxOfRuns const& box, std::string const& title)
{
  drawBoxPicture(arguments, box, title);
}

void QtDesk::drawStability(RankArguments const& arguments, Comparison const& comparison,
                           ComparisonStability const& stability)
{
  drawStabilityPicture(arguments, comparison, stability);
}

void QtDesk::drawPairs(PairsArguments const& arguments, Scan const& scan, PairPicture const& picture)
{
  drawPairPicture(arguments, scan, picture);
}

OpenedScan QtDesk::readPlotScan(std::string const& path)
{
  return openedOf(readPlot(path));
}

} // namespace runsieve::app
