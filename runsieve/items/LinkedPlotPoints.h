#pragma once

#include <runsieve/runsieve_export.h>

#include <vtkPlotPoints.h>
#include <vtkRect.h>

#include <string>

class vtkAbstractArray;

namespace runsieve {

/// Base of point plots in charts that share a selection: vtkPlotPoints for large tables.
///
/// A chart with an annotation link marks its plots as modified at every update, whereupon the base class
/// rebuilds its points and sorts them again for the next search. This class rebuilds them only when something
/// they are made of has changed, and selects a rectangle in one pass without sorting. What is seen and
/// selected is the same.
class RUNSIEVE_EXPORT LinkedPlotPoints : public vtkPlotPoints
{
public:
  vtkTypeMacro(LinkedPlotPoints, vtkPlotPoints)

  void Update() override;
  bool SelectPoints(const vtkVector2f& min, const vtkVector2f& max) override;

protected:
  LinkedPlotPoints() = default;
  ~LinkedPlotPoints() override = default;

private:
  /// Everything that the cached points are computed from.
  struct Source
  {
    vtkMTimeType mapperTime = 0;
    vtkTable* table = nullptr;
    vtkMTimeType tableTime = 0;
    vtkAbstractArray* x = nullptr;
    vtkMTimeType xTime = 0;
    vtkAbstractArray* y = nullptr;
    vtkMTimeType yTime = 0;
    vtkAbstractArray* colors = nullptr;
    vtkMTimeType colorsTime = 0;
    vtkScalarsToColors* lookupTable = nullptr;
    vtkMTimeType lookupTableTime = 0;
    vtkRectd shiftScale;
    bool logX = false;
    bool logY = false;
    bool negativeX = false;
    bool negativeY = false;
    bool indexAsX = false;
    bool coloured = false;
    std::string colorArray;
    std::string maskName;

    bool operator==(Source const& other) const;
  };

  Source CurrentSource(vtkTable* table);

  Source BuiltFrom;
};

} // namespace runsieve
