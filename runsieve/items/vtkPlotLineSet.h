#pragma once

#include <runsieve/items/LinkedPlotPoints.h>
#include <runsieve/runsieve_export.h>

#include <vtkIdTypeArray.h>

#include <memory>
#include <vector>

namespace runsieve {
class LineSetPicture;
}

/// Paints one x and one y column as many polylines of Stride consecutive points, one per run, and paints the
/// lines of selected runs a second time, wider and in red.
///
/// The column "vtkRemainderSelection" of the input table tells which rows are selected; without it the
/// chart's own selection does. A selected point lights its whole line; a line of several selected points is
/// painted as often, up to ten times, after which no pixel changes any more. A trailing group of fewer than
/// Stride points is not painted.
///
/// On the screen and in images many lines are painted as one image, for which the lines in each pixel are
/// counted; it looks as if they were drawn one over another. Few lines, and all lines where a painter records
/// calls or exports shapes, are polylines; an export has each highlighted line once, as opaque as its coats
/// are together, and may ask for images of many lines (runsieve::ExportedImages).
class RUNSIEVE_EXPORT vtkPlotLineSet : public runsieve::LinkedPlotPoints
{
public:
  static vtkPlotLineSet* New();
  vtkTypeMacro(vtkPlotLineSet, runsieve::LinkedPlotPoints)
  void PrintSelf(ostream& os, vtkIndent indent) override;

  void Update() override;
  bool Paint(vtkContext2D* painter) override;
  /// The first point within the tolerance, from the left. Where all runs have the same times only those near
  /// the point are looked at; else all points are sorted once.
  vtkIdType GetNearestPoint(const vtkVector2f& point, const vtkVector2f& tolerance, vtkVector2f* location,
                            vtkIdType* segmentId) override;
  using vtkPlot::GetNearestPoint;
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

  /// How the image of many lines shows how many there are: no more than lines over lines do (the default), or
  /// in opaque colours of the pen's hue, light for few lines and dark for many. \sa GetDensityColors
  enum DensityColors
  {
    DENSITY_OFF,
    DENSITY_LOGARITHMIC, ///< each shade a factor
    DENSITY_EQUAL_AREA   ///< each shade for as many pixels
  };
  /// Other numbers than those of DensityColors mean DENSITY_OFF.
  void SetDensityColors(int shades);
  [[nodiscard]] int GetDensityColors() const;

  /// Highlights lines in place of those that are selected, one coat each, while a selection is being made.
  /// \param lit one per line, 0 for lines that are not highlighted; missing ones are not
  void SetPreview(std::vector<unsigned char> lit);
  /// Highlights the selected lines again.
  void ClearPreview();

  /// Lets this line set go on with an image of another one that shows the same runs, since a redraw makes its
  /// plots anew. One line set at a time should paint with it.
  void SetPicture(std::shared_ptr<runsieve::LineSetPicture> picture);

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

    bool operator==(LineSource const& o) const
    {
      return time == o.time && count == o.count && stride == o.stride && changes == o.changes;
    }
  };

  /// The lines of all runs, and one more.
  struct PlainLines
  {
    bool shown = false;
    vtkIdType extra = 0;      ///< first point of the line behind the last bad point
    vtkIdType extraCount = 0; ///< its points
  };

  bool FlagsAreStale(vtkTable* table);
  [[nodiscard]] LineSource Present(vtkIdTypeArray* rows, vtkIdType count) const;
  void PaintUnselected(vtkContext2D* painter);
  std::vector<bool> LinesHiddenInExport();
  void PaintPolyline(vtkContext2D* painter, vtkIdType firstPoint, vtkIdType count);
  void PaintSelectedLines(vtkContext2D* painter);
  void ExportSelectedLines(vtkContext2D* painter);
  bool LinesAreStale(vtkIdTypeArray* rows, vtkIdType count);
  void SelectLinesOfPoints();
  void SelectLinesOfRemainder();
  void RenewSelection();
  [[nodiscard]] vtkIdTypeArray* SelectedRows() const;
  [[nodiscard]] PlainLines LinesOfAll() const;
  bool PaintPicture(vtkContext2D* painter);
  void CountCoats(vtkIdType lines);
  [[nodiscard]] vtkIdType MostCoats() const;
  void CountCoatsOfRows(vtkIdTypeArray* rows);
  void CountCoatsOfFlags();
  void PaintPreview(vtkContext2D* painter);
  void PaintBars(vtkContext2D* painter);

  LineSource LinesFrom;
  struct Cache;
  std::unique_ptr<Cache> Kept;
  int Shades = DENSITY_OFF;
  vtkMTimeType FlagsTime = 0; ///< of the column that RemainderRows was copied from; 0 without one
  unsigned long long FlagsChanges = 0;
};
