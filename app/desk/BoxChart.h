#pragma once

#include <runsieve/core/compare/BoxOfRuns.h>

#include <vtkContextItem.h>

#include <string>

namespace runsieve::app {

/// Density against coverage along the path on which a box was found, in a picture of its own: both axes from
/// 0 to 1, points larger the more parameters are restricted, their number where it changes, the box itself,
/// how boxes of half of the runs do on the other half, and the density of all runs.
class BoxChart : public vtkContextItem
{
public:
  vtkTypeMacro(BoxChart, vtkContextItem);
  static BoxChart* New();
  BoxChart(BoxChart const&) = delete;
  BoxChart& operator=(BoxChart const&) = delete;

  void show(BoxOfRuns const& box, std::string const& title);
  bool Paint(vtkContext2D* painter) override;

protected:
  BoxChart() = default;
  ~BoxChart() override = default;

private:
  BoxOfRuns shown;
  std::string heading;
};

} // namespace runsieve::app
