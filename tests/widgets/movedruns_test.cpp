#include "support/ChartMouse.h"
#include "support/ScanBuilder.h"

#include <runsieve/items/vtkPlotLineSet.h>
#include <runsieve/records/plotStyles.h>

#include <vtkAxis.h>
#include <vtkContextView.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkRenderWindow.h>
#include <vtkWindowToImageFilter.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

#include <cmath>
#include <memory>

namespace runsieve::test {
namespace {

constexpr int runs = 700;
constexpr int times = 41;

double scattered(int parameter, int run)
{
  const double turn = (run + 1) * std::sqrt(2.0 + 3.0 * parameter);
  return turn - std::floor(turn);
}

double wave(int, int run, int time)
{
  return (0.2 + scattered(0, run)) * std::sin(0.15 * time + 6.0 * scattered(1, run));
}

/// A widget with so many runs that they are not counted for each step of a hand.
class ShownRuns
{
public:
  ShownRuns()
  {
    ScanShape shape;
    shape.runs = runs;
    shape.times = times;
    shape.parameters = 2;
    shape.value = wave;
    shape.parameter = scattered;
    shape.bounds.assign(2, {0.0, 1.0});
    plot().metaData->setPlotStyle(selectionCdfPlot);
    plot().metaData->blockSignals(true);
    plot().metaData->setPlotLine(true);
    plot().metaData->blockSignals(false);
    plot().setLinePlotTable(makeScan(shape), false);
    plot().setColor(60, 90, 160, 60);
    widget.updatePlot(true);
    showAndWait(widget, 700, 600);
    settle(widget);
    widget.renderWindow()->AddObserver(vtkCommand::EndEvent, this, &ShownRuns::countFrame);
  }

  PlotContainer& plot() { return *widget.plotContainer; }
  vtkAxis* axis(int side) { return plot().chartXY->GetAxis(side); }
  vtkPlotLineSet* lines()
  {
    for (vtkIdType i = 0; i < plot().chartXY->GetNumberOfPlots(); ++i)
      if (auto* found = vtkPlotLineSet::SafeDownCast(plot().chartXY->GetPlot(i))) return found;
    return nullptr;
  }

  /// What the last frame showed; draws nothing.
  QImage shown()
  {
    vtkNew<vtkWindowToImageFilter> filter;
    filter->SetInput(widget.renderWindow());
    filter->ShouldRerenderOff();
    filter->ReadFrontBufferOff();
    filter->SetInputBufferTypeToRGB();
    filter->Update();
    vtkImageData* pixels = filter->GetOutput();
    int size[3];
    pixels->GetDimensions(size);
    const QImage upsideDown(static_cast<uchar const*>(pixels->GetScalarPointer()), size[0], size[1],
                            3 * size[0], QImage::Format_RGB888);
    return upsideDown.mirrored();
  }

  /// What the widget shows once it has counted the runs for the present axes at once.
  QImage countedAtOnce()
  {
    const double from = axis(vtkAxis::LEFT)->GetMinimum();
    const double to = axis(vtkAxis::LEFT)->GetMaximum();
    axis(vtkAxis::LEFT)->SetRange(from - 1.0, to + 2.0);
    widget.updatePlot(false);
    axis(vtkAxis::LEFT)->SetRange(from, to);
    widget.updatePlot(false);
    return shown();
  }

  void wheel(int steps)
  {
    const QPoint place = middle();
    QWheelEvent event(place, widget.mapToGlobal(place), QPoint(), QPoint(0, 120 * steps), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
  }

  void mouse(QEvent::Type type, QPoint place, Qt::MouseButton button)
  {
    const bool isRelease = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, place, widget.mapToGlobal(place),
                      type == QEvent::MouseMove ? Qt::NoButton : button, isRelease ? Qt::NoButton : button,
                      Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
  }

  QPoint middle()
  {
    return ChartMouse(widget, plot().chartXY)
        .at(0.5 * (axis(vtkAxis::BOTTOM)->GetMinimum() + axis(vtkAxis::BOTTOM)->GetMaximum()),
            0.5 * (axis(vtkAxis::LEFT)->GetMinimum() + axis(vtkAxis::LEFT)->GetMaximum()));
  }

  void select(QRectF rectangle)
  {
    ChartMouse(widget, plot().chartXY)
        .drag(rectangle.topLeft(), rectangle.bottomRight(), Qt::RightButton);
  }

  /// Runs the event loop until the next frame has been drawn.
  void waitForFrame()
  {
    const vtkMTimeType before = frames;
    QElapsedTimer timer;
    timer.start();
    while (frames == before && timer.elapsed() < 2000) QTest::qWait(1);
    ASSERT_NE(frames, before) << "no frame was drawn";
  }

  void countFrame(vtkObject*, unsigned long, void*) { ++frames; printf("frame %d at %lld\n", (int)frames, clock.elapsed()); }
  QElapsedTimer clock;

  VtkPlotWidget widget;
  vtkMTimeType frames = 0;
};

TEST(MovedRuns, probe)
{
  ShownRuns s;
  s.shown().save("/tmp/pan_0.png");
  s.clock.start(); s.wheel(2); printf("wheel done %lld\n", s.clock.elapsed());
  s.waitForFrame();
  s.shown().save("/tmp/pan_1.png");
  printf("%d\n", (int)s.frames);
  for (int i = 0; i < 20; ++i) { QTest::qWait(20); printf("%d\n", (int)s.frames); }
  s.shown().save("/tmp/pan_2.png");
  QImage rest = s.shown();
  EXPECT_EQ(rest, s.countedAtOnce());
  s.shown().save("/tmp/pan_3.png");
}

} // namespace
} // namespace runsieve::test
