#pragma once

#include <runsieve/runsieve_export.h>

#include <QPointer>
#include <QVTKOpenGLNativeWidget.h>
#include <vtkSmartPointer.h>

#include <memory>

class PlotContainer;
class vtkContextView;

namespace runsieve {
class HandFrames;
class SelectionDrag;
} // namespace runsieve

/// Shows one PlotContainer in a Qt window and writes it to PDF.
///
/// A new widget shows sample curves in a container of its own. A host fills `plotContainer`, or brings a
/// container with setPlotContainer(), and calls updatePlot(true) after any change that may have switched the
/// plot style. The application should call
/// QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat()) before it makes its
/// QApplication.
///
/// While the mouse pans or zooms, and while the window is being resized, images of many runs move with their
/// axes; a tenth of a second later the runs are counted anew, in slices between events. Frames that a host
/// renders, pictures that it grabs and files show counted runs always.
class RUNSIEVE_EXPORT VtkPlotWidget : public QVTKOpenGLNativeWidget
{
  Q_OBJECT

public:
  explicit VtkPlotWidget(QWidget* parent = nullptr);
  ~VtkPlotWidget() override;

  vtkSmartPointer<vtkContextView> view;
  PlotContainer* plotContainer = nullptr; ///< the plot on show

  /// Shows another plot. It stays its owner's; the old one stays a child of this widget if it was made here.
  void setPlotContainer(PlotContainer* container);

  /// Tells of rectangles while they are dragged over chartXY to select; the widget's. Include
  /// runsieve/widgets/SelectionDrag.h.
  [[nodiscard]] runsieve::SelectionDrag* selectionDrag() const { return drag; }

  /// Writes the visible plot as PDF. The exporter appends ".pdf"; the last ".pdf" in the name, in any case,
  /// is removed first if it starts at position 2 or later. A file that cannot be written is not reported.
  void printPlot(QString fileName);

public Q_SLOTS:
  /// Puts the current item into the scene again if clear is set, then renders.
  void updatePlot(bool clear = true);

protected:
  bool event(QEvent* event) override;
  void initializeGL() override;
  void paintGL() override;

private:
  void followDrag(QEvent* event);
  void cancelDrag();
  void followHand(QEvent* event, bool selects);
  bool handle(QEvent* event);
  void renderExactly();
  [[nodiscard]] QPointF inScene(QPointF const& position) const;

  runsieve::SelectionDrag* drag = nullptr;
  std::unique_ptr<runsieve::HandFrames> frames;
  bool isPainting = false;     ///< for the screen
  bool ignoresRelease = false; ///< of the button that a cancelled drag still holds
  [[nodiscard]] bool hasContainer() const { return !guard.isNull(); }

  QPointer<QObject> guard; ///< tells that the host deleted the container on show
};
