#pragma once

#include "app/cli/Commands.h"
#include "app/scan/OpenScan.h"

#include <runsieve/core/compare/Pairs.h>
#include <runsieve/core/compare/StabilityOfComparison.h>

#include <string>
#include <vector>

namespace runsieve::app {

/// What a picture of clusters shows.
struct ClusterPicture
{
  std::size_t output = 0;  ///< by which the runs are grouped
  RunSet eligible;         ///< the runs that are compared
  ComparisonMethod method; ///< likewise
};

/// What a picture of pairs of parameters shows.
struct PairPicture
{
  std::vector<ParameterPair> pairs; ///< the first parameter of each on the horizontal axis
  RunSet passing;                   ///< all of them eligible
  RunSet eligible;                  ///< the runs that are drawn
  std::string title;
};

/// The part of the program that needs Qt, VTK and OpenGL: pictures, stored plots, the explorer.
class Desk
{
public:
  Desk() = default;
  Desk(Desk const&) = delete;
  Desk& operator=(Desk const&) = delete;
  virtual ~Desk() = default;

  // Each returns the exit status, and throws if its work fails.
  virtual int render(RenderArguments const& arguments) = 0;
  virtual int convert(ConvertArguments const& arguments) = 0;
  virtual int explore(ExploreArguments const& arguments) = 0;
  /// Draws the runs of a scan, grouped by one of its outputs; with the switches of a stored plot if the file
  /// is one.
  virtual void drawClusters(ClusterArguments const& arguments, Scan const& scan,
                            ClusterPicture const& picture) = 0;
  /// Draws the runs of a scan by pairs of their parameters, a chart for each pair.
  virtual void drawPairs(PairsArguments const& arguments, Scan const& scan, PairPicture const& picture) = 0;

  /// Draws how coverage and density change along the path on which a box was found.
  virtual void drawBox(BoxArguments const& arguments, BoxOfRuns const& box, std::string const& title) = 0;
  /// Draws |d| of the first parameters of a comparison against the share of the runs.
  virtual void drawStability(RankArguments const& arguments, Comparison const& comparison,
                             ComparisonStability const& stability) = 0;

  /// \throw ScanError for a file that is not a complete plot
  virtual OpenedScan readPlotScan(std::string const& path) = 0;
};

/// The desk that is in use; loaded when it is asked for first. \throw std::runtime_error if it cannot be
/// loaded, such as where Qt or VTK are not installed
[[nodiscard]] Desk& desk();

/// Uses another desk than the one that would be loaded; it must live as long as the program.
void useDesk(Desk& other);

} // namespace runsieve::app
