#pragma once

#include <runsieve/runsieve_export.h>

#include <vtkPlotPoints.h>
#include <vtkRect.h>

#include <memory>

namespace runsieve {

/// Base of point plots in charts that share a selection: vtkPlotPoints for large tables.
///
/// A chart with an annotation link marks its plots as modified at every update, whereupon the base class
/// rebuilds its points and sorts them again for the next search. This class rebuilds them only when something
/// they are made of has changed or somebody has called Modified(), and selects a rectangle in one pass
/// without sorting. While the table lacks the column that colours the points they have the colour of the pen,
/// and selected rows that the plot does not have are not marked. Else what is seen and selected is the same.
class RUNSIEVE_EXPORT LinkedPlotPoints : public vtkPlotPoints
{
public:
  vtkTypeMacro(LinkedPlotPoints, vtkPlotPoints)

  void Update() override;
  bool Paint(vtkContext2D* painter) override;
  bool SelectPoints(const vtkVector2f& min, const vtkVector2f& max) override;
  /// As the base class, but no reason to rebuild the points.
  void SetSelection(vtkIdTypeArray* rows) override;
  void Modified() override;

protected:
  LinkedPlotPoints();
  ~LinkedPlotPoints() override;

  /// Modified() for observers and for others' caches, while the points stay as they are.
  void ModifiedByUpdate();
  /// How often somebody has called Modified().
  [[nodiscard]] unsigned long long Changes() const;
  /// A number that no other points have had, but those of the same data that a chart has shifted: it does so
  /// when the smallest value on an axis is close to 0, or far away from it.
  [[nodiscard]] unsigned long long DataVersion() const;
  /// Shift and scale that the points have, which the chart may have changed since.
  [[nodiscard]] vtkRectd ShiftOfPoints() const;

private:
  struct Cache;
  std::unique_ptr<Cache> Built;
};

} // namespace runsieve
