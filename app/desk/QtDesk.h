#pragma once

#include "app/desk/Desk.h"

namespace runsieve::app {

/// The desk on Qt and VTK.
class QtDesk : public Desk
{
public:
  int render(RenderArguments const& arguments) override;
  int convert(ConvertArguments const& arguments) override;
  int explore(ExploreArguments const& arguments) override;
  void drawClusters(ClusterArguments const& arguments, Scan const& scan,
                    ClusterPicture const& picture) override;
  void drawBox(BoxArguments const& arguments, BoxOfRuns const& box, std::string const& title) override;
  void drawStability(RankArguments const& arguments, Comparison const& comparison,
                     ComparisonStability const& stability) override;
  void drawPairs(PairsArguments const& arguments, Scan const& scan, PairPicture const& picture) override;
  OpenedScan readPlotScan(std::string const& path) override;
};

} // namespace runsieve::app
