#pragma once

#include <runsieve/items/LinkedPlotPoints.h>
#include <runsieve/runsieve_export.h>

/// Points that can be selected but, while OnlyShowSelected is set, are not seen until they are selected.
class RUNSIEVE_EXPORT vtkPlotInvisiblePoints : public runsieve::LinkedPlotPoints
{
public:
  static vtkPlotInvisiblePoints* New();
  vtkTypeMacro(vtkPlotInvisiblePoints, runsieve::LinkedPlotPoints)
  void PrintSelf(ostream& os, vtkIndent indent) override;

  bool Paint(vtkContext2D* painter) override;

  /// Non-zero: only selected points are painted; zero: painted as plain points. Default 1.
  virtual void SetOnlyShowSelected(int only);
  virtual int GetOnlyShowSelected();
  virtual void OnlyShowSelectedOn();
  virtual void OnlyShowSelectedOff();

protected:
  vtkPlotInvisiblePoints();
  ~vtkPlotInvisiblePoints() override;

  int OnlyShowSelected;

private:
  vtkPlotInvisiblePoints(vtkPlotInvisiblePoints const&) = delete;
  void operator=(vtkPlotInvisiblePoints const&) = delete;

  void UpdateSelectedPoints();
};
