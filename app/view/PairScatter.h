#pragma once

#include "app/view/AxisTicks.h"

#include <runsieve/core/compare/Pairs.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <vtkContextItem.h>

#include <string>
#include <vector>

class vtkContext2D;

namespace runsieve::app {

/// Charts of the runs of a scan by pairs of its parameters: the runs that pass above all others, so that none
/// of them is hidden. Fills the scene.
class PairScatter : public vtkContextItem
{
public:
  static PairScatter* New();
  vtkTypeMacro(PairScatter, vtkContextItem)

  /// \param passing all of them eligible \param eligible the runs that are drawn
  void show(Scan const& scan, std::vector<ParameterPair> const& pairs, RunSet const& passing,
            RunSet const& eligible);
  void setTitle(std::string const& text) { title = text; }
  /// For documents, which have no translucency: points are as dark as single translucent ones would be on
  /// white, and at most some 10,000 of each kind are drawn.
  void setOpaque(bool opaque) { isOpaque = opaque; }

  bool Paint(vtkContext2D* painter) override;

protected:
  PairScatter() = default;
  ~PairScatter() override = default;

private:
  struct Points
  {
    std::vector<double> x; ///< from 0 to 1
    std::vector<double> y;
  };

  struct Chart
  {
    std::string title;
    std::string xName;
    std::string yName;
    AxisScale x;
    AxisScale y;
    Points others;
    Points passing;
    double crowdOfOthers = 0.0;
    double crowdOfPassing = 0.0;
  };

  struct Box;
  class Painting;

  std::vector<Chart> charts;
  std::string title;
  std::size_t passingRuns = 0;
  std::size_t otherRuns = 0;
  bool isOpaque = false;
};

} // namespace runsieve::app
