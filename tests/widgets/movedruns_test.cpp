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
#include <QFile>
#include <QImage>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

#include <cmath>
#include <memory>
#include <set>
#include <vector>

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
struct MovedRuns : testing::Test
{
  void SetUp() override
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
    waitForRest(); // showing it was a resize
    widget.renderWindow()->AddObserver(vtkCommand::EndEvent, this, &MovedRuns::endFrame);
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
    int const* size = pixels->GetDimensions();
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
    const QPoint place = at(0.5, 0.5);
    QWheelEvent event(place, widget.mapToGlobal(place), QPoint(), QPoint(0, 120 * steps), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
  }

  void mouse(QEvent::Type type, QPoint place, Qt::MouseButton button)
  {
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, place, widget.mapToGlobal(place), isMove ? Qt::NoButton : button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : button, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
  }

  /// Presses with a button in the middle of the chart and moves on.
  void dragBy(QPoint way, Qt::MouseButton button)
  {
    const QPoint start = at(0.5, 0.5);
    mouse(QEvent::MouseButtonPress, start, button);
    for (int step = 1; step <= 4; ++step) mouse(QEvent::MouseMove, start + way * step / 4, button);
  }

  /// A place of the chart of the runs, 0 to 1 from its lower left corner.
  QPoint at(double x, double y)
  {
    auto const on = [](vtkAxis* axis, double share) {
      return axis->GetMinimum() + share * (axis->GetMaximum() - axis->GetMinimum());
    };
    return ChartMouse(widget, plot().chartXY).at(on(axis(vtkAxis::BOTTOM), x), on(axis(vtkAxis::LEFT), y));
  }

  /// What the first frame shows that some action causes, as it is drawn.
  template <class Action> QImage firstFrame(Action const& action)
  {
    first = QImage();
    isWaiting = true;
    action();
    QElapsedTimer timer;
    timer.start();
    while (isWaiting && timer.elapsed() < 5000) QApplication::processEvents(QEventLoop::AllEvents, 5);
    EXPECT_FALSE(isWaiting) << "no frame was drawn";
    return first;
  }

  /// Runs the event loop until no frame has been drawn for a while.
  void waitForRest()
  {
    for (int before = -1; before != frames;) {
      before = frames;
      QTest::qWait(300);
    }
  }

  void endFrame(vtkObject*, unsigned long, void*)
  {
    ++frames;
    if (!isWaiting) return;
    isWaiting = false;
    first = shown();
  }

  std::set<int> survivors()
  {
    const std::unique_ptr<ParameterSelection> selection(plot().getSelection());
    return selection->selectedRuns;
  }

  VtkPlotWidget widget;
  int frames = 0;

private:
  bool isWaiting = false;
  QImage first;
};

// A moved image is told by what becomes of it: the runs counted anew look otherwise.
TEST_F(MovedRuns, AWheelStepMovesTheImageAndRunsAreCountedAtRest)
{
  const QImage before = shown();
  const QImage moved = firstFrame([&] { wheel(1); });
  waitForRest();
  const QImage rest = shown();
  EXPECT_NE(moved, before);
  EXPECT_NE(moved, rest);
  EXPECT_EQ(rest, countedAtOnce());
}

TEST_F(MovedRuns, APanMovesTheImageAndRunsAreCountedAtRest)
{
  const double start = axis(vtkAxis::BOTTOM)->GetMinimum();
  const QImage moved = firstFrame([&] { dragBy({-60, 25}, Qt::LeftButton); });
  EXPECT_GT(axis(vtkAxis::BOTTOM)->GetMinimum(), start + 1.0);
  waitForRest(); // the button is still held
  const QImage rest = shown();
  EXPECT_NE(moved, rest);
  mouse(QEvent::MouseButtonRelease, at(0.5, 0.5), Qt::LeftButton);
  waitForRest();
  EXPECT_EQ(shown(), countedAtOnce());
}

TEST_F(MovedRuns, AHandThatMovesOnFindsTheImageOfTheLastRest)
{
  for (int turn = 0; turn < 3; ++turn) {
    const QImage moved = firstFrame([&] { wheel(1); });
    const QImage again = firstFrame([&] { wheel(1); });
    EXPECT_NE(again, moved);
    waitForRest();
    const QImage rest = shown();
    EXPECT_NE(again, rest) << turn;
    EXPECT_EQ(rest, countedAtOnce()) << turn;
  }
}

TEST_F(MovedRuns, ARectangleToZoomIntoIsShownFromTheImageAtFirst)
{
  const double before = axis(vtkAxis::LEFT)->GetMaximum();
  const QPoint end = at(0.5, 0.5) + QPoint(120, 60);
  static_cast<void>(firstFrame([&] { dragBy({120, 60}, Qt::MiddleButton); }));
  const QImage moved = firstFrame([&] { mouse(QEvent::MouseButtonRelease, end, Qt::MiddleButton); });
  EXPECT_LT(axis(vtkAxis::LEFT)->GetMaximum(), before);
  waitForRest();
  const QImage rest = shown();
  EXPECT_NE(moved, rest);
  EXPECT_EQ(rest, countedAtOnce());
}

TEST_F(MovedRuns, AResizeStretchesTheImageAndRunsAreCountedAtRest)
{
  const QImage moved = firstFrame([&] { widget.resize(900, 500); });
  waitForRest();
  const QImage rest = shown();
  EXPECT_EQ(rest.width(), qRound(900 * widget.devicePixelRatioF()));
  EXPECT_NE(moved, rest);
  EXPECT_EQ(rest, countedAtOnce());
}

TEST_F(MovedRuns, AtRestNoFrameIsDrawn)
{
  wheel(1);
  waitForRest();
  const int before = frames;
  QTest::qWait(400);
  EXPECT_EQ(frames, before);
}

TEST_F(MovedRuns, AHoveringMouseDoesNotKeepRunsFromBeingCounted)
{
  mouse(QEvent::MouseMove, at(0.4, 0.5), Qt::NoButton);
  waitForRest();
  const QImage moved = firstFrame([&] { wheel(1); });
  mouse(QEvent::MouseMove, at(0.45, 0.5), Qt::NoButton);
  waitForRest();
  const QImage rest = shown();
  EXPECT_NE(rest, moved);
  EXPECT_EQ(rest, countedAtOnce());
}

TEST_F(MovedRuns, AnUpdateIsExactAtOnce)
{
  const QImage moved = firstFrame([&] { wheel(1); });
  widget.updatePlot(true);
  const QImage exact = shown();
  EXPECT_NE(exact, moved);
  const int before = frames;
  QTest::qWait(300);
  EXPECT_LE(frames, before + 1); // the window is shown again, but nothing was left to be counted
  EXPECT_EQ(shown(), exact);
  EXPECT_EQ(exact, countedAtOnce());
}

TEST_F(MovedRuns, AFrameThatAHostRendersIsExact)
{
  const QImage moved = firstFrame([&] { wheel(1); });
  widget.view->Render();
  const QImage exact = shown();
  EXPECT_NE(exact, moved);
  EXPECT_EQ(exact, countedAtOnce());
}

TEST_F(MovedRuns, GrabbedPicturesAreExact)
{
  auto const asShown = [](QImage const& image) { return image.convertToFormat(QImage::Format_RGB888); };
  const QImage moved = firstFrame([&] { wheel(1); });
  const QImage framebuffer = asShown(widget.grabFramebuffer());
  EXPECT_NE(framebuffer, moved);
  EXPECT_EQ(framebuffer, countedAtOnce());
  static_cast<void>(firstFrame([&] { wheel(1); }));
  const QImage ofWidget = asShown(widget.grab().toImage());
  EXPECT_EQ(ofWidget, countedAtOnce());
}

TEST_F(MovedRuns, SavedPicturesOfTheWindowAreExact)
{
  static_cast<void>(firstFrame([&] { wheel(1); }));
  vtkNew<vtkWindowToImageFilter> filter; // renders
  filter->SetInput(widget.renderWindow());
  filter->ReadFrontBufferOff();
  filter->Update();
  const QImage saved = shown();
  EXPECT_EQ(saved, countedAtOnce());
}

TEST_F(MovedRuns, APrintedPlotIsExact)
{
  const QTemporaryDir folder;
  auto const printed = [&](char const* name) {
    widget.printPlot(folder.filePath(name));
    QFile file(folder.filePath(name) + ".pdf");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  };
  static_cast<void>(firstFrame([&] { wheel(1); }));
  const QByteArray ofHand = printed("hand");
  const QImage after = shown();
  EXPECT_EQ(after, countedAtOnce());
  EXPECT_EQ(ofHand.size(), printed("rest").size());
}

TEST_F(MovedRuns, ASelectionRightBehindAZoomFindsItsRuns)
{
  static_cast<void>(firstFrame([&] { wheel(1); }));
  ChartMouse(widget, plot().chartXY).drag({20.5, 0.3}, {21.5, 0.6}, Qt::RightButton);
  std::set<int> expected;
  for (int run = 0; run < runs; ++run)
    if (wave(0, run, 21) >= 0.3 && wave(0, run, 21) <= 0.6) expected.insert(run);
  const std::set<int> found = survivors();
  EXPECT_GT(found.size(), 20u);
  EXPECT_NEAR(static_cast<double>(found.size()), static_cast<double>(expected.size()), 4.0); // pixels
  waitForRest();
  const QImage rest = shown();
  EXPECT_EQ(rest, countedAtOnce());
}

TEST_F(MovedRuns, RunsThatLightUpRightBehindAZoomAreShown)
{
  static_cast<void>(firstFrame([&] { wheel(1); }));
  mouse(QEvent::MouseButtonPress, at(0.3, 0.3), Qt::RightButton);
  ASSERT_TRUE(lines());
  lines()->SetPreview(std::vector<unsigned char>(runs, 1));
  const QImage lit = firstFrame([&] { mouse(QEvent::MouseMove, at(0.6, 0.6), Qt::RightButton); });
  waitForRest();
  const QImage rest = shown();
  auto const reds = [](QImage const& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) {
        const QColor color = image.pixelColor(x, y);
        count += color.red() > 150 && color.blue() < 120;
      }
    return count;
  };
  EXPECT_GT(reds(rest), 10000);
  EXPECT_GT(reds(lit), reds(rest) / 2);
  lines()->ClearPreview();
  mouse(QEvent::MouseButtonRelease, at(0.6, 0.6), Qt::RightButton);
  waitForRest();
  EXPECT_EQ(shown(), countedAtOnce());
}

TEST_F(MovedRuns, AWidgetMayBeDeletedWhileRunsAreCounted)
{
  auto other = std::make_unique<VtkPlotWidget>();
  other->setPlotContainer(&plot());
  showAndWait(*other, 500, 400);
  const QPoint place(250, 100);
  QWheelEvent event(place, other->mapToGlobal(place), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(other.get(), &event);
  QApplication::processEvents();
  other.reset();
  widget.setPlotContainer(&plot());
  waitForRest();
  EXPECT_EQ(shown(), countedAtOnce());
}

} // namespace
} // namespace runsieve::test
