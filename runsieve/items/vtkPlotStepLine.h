#pragma once

#include <runsieve/runsieve_export.h>

#include <vtkPlotPoints.h>

/// Paints its points as a staircase that opens at height 0 under the first point and closes at height 1 over
/// the last one: a sorted sample with cumulative heights paints as an empirical distribution function.
///
/// For n points there are 2 n + 2 corners. Points are taken in their given order; one bad point (NaN or
/// infinite) leaves the item empty. It has no markers, no decoration of selected points, and the brush is not
/// used.
class RUNSIEVE_EXPORT vtkPlotStepLine : public vtkPlotPoints
{
public:
  static vtkPlotStepLine* New();
  vtkTypeMacro(vtkPlotStepLine, vtkPlotPoints)
  void PrintSelf(ostream& os, vtkIndent indent) override;

  void Update() override;
  bool Paint(vtkContext2D* painter) override;
  bool PaintLegend(vtkContext2D* painter, const vtkRectf& rect, int legendIndex) override;

  /// Rebuilds the staircase from the cached points. Always true.
  bool UpdateStepPointsCache(vtkTable* table);

protected:
  vtkPlotStepLine();
  ~vtkPlotStepLine() override;

  vtkPoints2D* StepPoints; ///< the staircase; null until the first rebuild

private:
  vtkPlotStepLine(vtkPlotStepLine const&) = delete;
  void operator=(vtkPlotStepLine const&) = delete;

  void UpdateValidPointMask(vtkTable* table);
  bool PointCacheIsStale(vtkTable* table);
};
