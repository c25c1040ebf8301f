#pragma once

#include <runsieve/items/LinkedPlotPoints.h>
#include <runsieve/runsieve_export.h>

#include <vtkIdTypeArray.h>

/// Paints one x and one y column as many polylines of Stride consecutive points, one per run, and paints the
/// lines of selected runs a second time, wider and in red.
///
/// The column "vtkRemainderSelection" of the input table tells which rows are selected; without it the
/// chart's own selection does. A selected point lights its whole line; a line of several selected points is
/// painted as often, up to ten times, after which no pixel changes any more. A trailing group of fewer than
/// Stride points is not painted.
class RUNSIEVE_EXPORT vtkPlotLineSet : public runsieve::LinkedPlotPoints
{
public:
  static vtkPlotLineSet* New();
  vtkTypeMacro(vtkPlotLineSet, runsieve::LinkedPlotPoints)
  void PrintSelf(ostream& os, vtkIndent indent) override;

  void Update() override;
  bool Paint(vtkContext2D* painter) override;
  /// A horizontal line at half the height of the rectangle; the index is ignored.
  bool PaintLegend(vtkContext2D* painter, const vtkRectf& rect, int legendIndex) override;

  /// Points per line; default 1. Below 1 nothing is painted.
  virtual int GetStride();
  virtual void SetStride(int stride);
  /// Stored and reported only; default 1.
  virtual void SetUseExternalSelection(int use);
  virtual int GetUseExternalSelection();
  virtual void UseExternalSelectionOn();
  virtual void UseExternalSelectionOff();
  /// Non-zero: lines that are not selected are not painted. Default 1, so a fresh line set shows nothing.
  virtual void SetOnlyShowSelected(int only);
  virtual int GetOnlyShowSelected();
  virtual void OnlyShowSelectedOn();
  virtual void OnlyShowSelectedOff();

  /// Copies the flags of "vtkRemainderSelection" from the table and counts them; without that column the old
  /// copy stays and counts nothing. Always true.
  bool UpdateSelectionCache(vtkTable* table);

protected:
  vtkPlotLineSet();
  ~vtkPlotLineSet() override;

  vtkIdTypeArray* SelectedLines; ///< lines to highlight, one entry per selected row
  vtkIdTypeArray* RemainderRows; ///< the flags, one per row
  int Stride;
  int UseExternalSelection;
  int OnlyShowSelected;
  long long RemainderCount; ///< flags that are not zero

private:
  vtkPlotLineSet(vtkPlotLineSet const&) = delete;
  void operator=(vtkPlotLineSet const&) = delete;

  /// What SelectedLines was made from. No two arrays were modified at one time.
  struct LineSource
  {
    vtkMTimeType time = 0; ///< of the flags or of the selection
    vtkIdType count = 0;
    int stride = 0;
    unsigned long long changes = 0;
  };

  bool FlagsAreStale(vtkTable* table);
  void PaintUnselected(vtkContext2D* painter);
  void PaintPolyline(vtkContext2D* painter, vtkIdType firstPoint, vtkIdType count);
  void PaintSelectedLines(vtkContext2D* painter);
  bool LinesAreStale(vtkIdTypeArray* rows, vtkIdType count);
  void SelectLinesOfPoints();
  void SelectLinesOfRemainder();

  LineSource LinesFrom;
  vtkMTimeType FlagsTime = 0; ///< of the column that RemainderRows was copied from; 0 without one
  unsigned long long FlagsChanges = 0;
};
