#include "support/ChartMouse.h"
#include "support/PlotParts.h"
#include "support/ScanBuilder.h"
#include "support/TableFile.h"

#include "app/composite/CompositeWindow.h"
#include "app/view/ScanPlot.h"

#include <runsieve/items/vtkPlotLineSet.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkChartXY.h>
#include <vtkTooltipItem.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QImage>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

namespace runsieve::app {
namespace {

using test::ChartMouse;
using test::writeTable;

constexpr int runs = 40;

double scattered(int parameter, int run)
{
  const double turn = (run + 1) * std::sqrt(2.0 + 3.0 * parameter);
  return turn - std::floor(turn);
}

/// A window on a scan of two outputs, of which the first is the first parameter at all times.
class CompositeWindowTest : public testing::Test
{
protected:
  void SetUp() override
  {
    test::ScanShape shape;
    shape.runs = runs;
    shape.times = 11;
    shape.species = 2;
    shape.parameters = 6;
    shape.value = [](int s, int r, int) { return scattered(s, r); };
    shape.parameter = scattered;
    writeTable(test::makeScan(shape), file("scan.csv").toStdString());
    window.resize(1000, 800);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QString error;
    ASSERT_TRUE(window.open(file("scan.csv"), error)) << error.toStdString();
    settle();
  }

  QString file(const char* name) const { return folder.filePath(name); }

  void settle()
  {
    for (int i = 0; i < 3; ++i) QApplication::processEvents();
    test::settle(*window.plotWidget());
  }

  void drag(double time, double low, double high, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    ChartMouse(*window.plotWidget(), window.plot()->chartXY)
        .drag({time - 0.2, low}, {time + 0.2, high}, Qt::RightButton, modifiers);
    settle();
  }

  static int runsBetween(int parameter, double low, double high)
  {
    int count = 0;
    for (int r = 0; r < runs; ++r) count += scattered(parameter, r) >= low && scattered(parameter, r) <= high;
    return count;
  }

  template <class Widget> Widget* child(QString const& text)
  {
    for (Widget* widget : window.findChildren<Widget*>())
      if (widget->text() == text) return widget;
    return nullptr;
  }

  std::string status() { return window.statusText().toStdString(); }

  QTemporaryDir folder;
  CompositeWindow window;
};

TEST_F(CompositeWindowTest, ShowsTheScanAndSaysHowLargeItIs)
{
  EXPECT_EQ(status(), "40 runs, 11 times");
  EXPECT_EQ(window.plot()->metaData->getPlotStyle(), selectionCdfPlot);
  EXPECT_EQ(window.windowTitle(), "scan.csv - Runsieve");
}

TEST_F(CompositeWindowTest, ADragTellsHowManyRunsPass)
{
  drag(2, 0.3, 0.8);
  const std::string expected = std::to_string(runsBetween(0, 0.3, 0.8)) + " runs pass through all places";
  EXPECT_NE(status().find(expected), std::string::npos) << status();
  EXPECT_NE(status().find("of 6 parameters differ"), std::string::npos) << status();
}

/// A press and some moves of the right button; the release is left to the caller.
class HeldDrag
{
public:
  HeldDrag(CompositeWindow& window, QPointF from, QPointF to) : widget(*window.plotWidget())
  {
    const ChartMouse mouse(widget, window.plot()->chartXY);
    end = mouse.at(to.x(), to.y());
    QTest::mousePress(&widget, Qt::RightButton, Qt::NoModifier, mouse.at(from.x(), from.y()));
    for (int step = 0; step < 2; ++step) {
      QMouseEvent move(QEvent::MouseMove, end, widget.mapToGlobal(end), Qt::NoButton, Qt::RightButton,
                       Qt::NoModifier);
      QApplication::sendEvent(&widget, &move);
    }
  }
  void release() { QTest::mouseRelease(&widget, Qt::RightButton, Qt::NoModifier, end); }

private:
  VtkPlotWidget& widget;
  QPoint end;
};

int redPixels(QImage const& picture)
{
  int count = 0;
  for (int y = 0; y < picture.height() / 2; ++y)
    for (int x = 0; x < picture.width(); ++x) {
      const QColor color = picture.pixelColor(x, y);
      count += color.red() > color.blue() + 60;
    }
  return count;
}

TEST_F(CompositeWindowTest, WhileARectangleIsDraggedTheRunsThatWouldPassAreLitAndCounted)
{
  const std::string count = std::to_string(runsBetween(0, 0.3, 0.8));
  EXPECT_EQ(redPixels(window.plotWidget()->grabFramebuffer()), 0);
  HeldDrag held(window, {1.8, 0.3}, {2.2, 0.8});
  EXPECT_EQ(status(), count + " of 40 runs pass through this place");
  vtkChart* small = window.plot()->chartMatrix->GetChart({0, 0});
  EXPECT_THAT(std::string(small->GetTitle()), testing::MatchesRegex("d [+-][01]\\.[0-9][0-9]"));
  test::settle(*window.plotWidget());
  EXPECT_GT(redPixels(window.plotWidget()->grabFramebuffer()), 500);
  held.release();
  settle();
  EXPECT_NE(status().find(count + " runs pass through all places"), std::string::npos) << status();
}

TEST_F(CompositeWindowTest, EscGivesADragUpAndTheViewIsAsBefore)
{
  drag(2, 0.3, 0.8);
  const std::string before = status();
  const std::string title = window.plot()->chartMatrix->GetChart({0, 0})->GetTitle();
  ASSERT_THAT(title, testing::HasSubstr(", p "));
  HeldDrag held(window, {4.8, 0.5}, {5.2, 0.9});
  EXPECT_NE(status(), before);
  QTest::keyClick(window.plotWidget(), Qt::Key_Escape);
  held.release();
  settle();
  EXPECT_EQ(status(), before);
  EXPECT_EQ(window.plot()->chartMatrix->GetChart({0, 0})->GetTitle(), title);
}

TEST_F(CompositeWindowTest, AClickWithTheSelectingButtonLeavesTheViewAsItIs)
{
  drag(2, 0.3, 0.8);
  const std::string before = status();
  const std::string title = window.plot()->chartMatrix->GetChart({0, 0})->GetTitle();
  const QPoint place = ChartMouse(*window.plotWidget(), window.plot()->chartXY).at(5, 0.5);
  QTest::mouseClick(window.plotWidget(), Qt::RightButton, Qt::NoModifier, place);
  settle();
  EXPECT_EQ(status(), before);
  EXPECT_EQ(window.plot()->chartMatrix->GetChart({0, 0})->GetTitle(), title);
}

TEST_F(CompositeWindowTest, WhatTheReaderGuessedIsTold)
{
  auto* notes = child<QPushButton>("1 note on reading");
  EXPECT_EQ(notes, nullptr) << "nothing to tell of a scan in the library's own form";
  QFile guessed(file("guessed.csv"));
  ASSERT_TRUE(guessed.open(QIODevice::WriteOnly));
  guessed.write("time,A\n0,1\n1,2\n0,3\n1,nan\n");
  guessed.close();
  QString error;
  ASSERT_TRUE(window.open(guessed.fileName(), error)) << error.toStdString();
  EXPECT_THAT(window.howRead(), testing::Contains(testing::StartsWith("guessed    ")));
  EXPECT_THAT(window.howRead(), testing::Contains(testing::HasSubstr("1 run: ")));
  notes = child<QPushButton>("3 notes on reading");
  ASSERT_NE(notes, nullptr) << testing::PrintToString(window.howRead());
  EXPECT_TRUE(notes->isVisible());
  ASSERT_TRUE(window.open(file("scan.csv"), error)) << error.toStdString();
  EXPECT_FALSE(notes->isVisible());
}

TEST_F(CompositeWindowTest, AnEmptyDragClearsTheHighlightAsWell)
{
  drag(2, 0.3, 0.8);
  ASSERT_NE(window.plot()->plotData->GetColumnByName("vtkRemainderSelection"), nullptr);
  drag(2.5, 0.3, 0.8); // between two times
  EXPECT_EQ(status(), "40 runs, 11 times");
  EXPECT_EQ(window.plot()->plotData->GetColumnByName("vtkRemainderSelection"), nullptr);
  EXPECT_TRUE(window.plot()->ksStatistics.empty());
}

TEST_F(CompositeWindowTest, TheButtonClearsTheSelection)
{
  drag(2, 0.3, 0.8);
  QTest::mouseClick(child<QPushButton>("Clear selection"), Qt::LeftButton);
  settle();
  EXPECT_EQ(status(), "40 runs, 11 times");
  drag(3, 0.3, 0.8);
  EXPECT_NE(status().find("pass"), std::string::npos);
}

TEST_F(CompositeWindowTest, AnotherOutputKeepsTheSelection)
{
  drag(2, 0.3, 0.8);
  const std::string before = status();
  auto* outputs = window.findChild<QComboBox*>();
  ASSERT_EQ(outputs->count(), 2);
  outputs->setCurrentIndex(1);
  settle();
  EXPECT_EQ(window.plot()->chartXY->GetAxis(vtkAxis::LEFT)->GetTitle(), "B");
  EXPECT_EQ(status(), before);
  // A place on the second output joins the one on the first.
  drag(7, 0.05, 0.6, Qt::ControlModifier);
  int both = 0;
  for (int r = 0; r < runs; ++r)
    both +=
        scattered(0, r) >= 0.3 && scattered(0, r) <= 0.8 && scattered(1, r) >= 0.05 && scattered(1, r) <= 0.6;
  EXPECT_NE(status().find(std::to_string(both) + " runs pass"), std::string::npos) << status();
}

TEST_F(CompositeWindowTest, WhatIsUnderThePointerIsNotToldInPicturesNorOfAFormerOutput)
{
  vtkTooltipItem* box = vtkChartXY::SafeDownCast(window.plot()->chartXY)->GetTooltip();
  vtkTooltipItem* small =
      vtkChartXY::SafeDownCast(window.plot()->chartMatrix->GetChart({1, 0}))->GetTooltip();
  box->SetVisible(true);
  small->SetVisible(true);
  QString error;
  ASSERT_TRUE(window.savePicture(file("hover.png"), error)) << error.toStdString();
  EXPECT_FALSE(box->GetVisible());
  EXPECT_FALSE(small->GetVisible());
  box->SetVisible(true);
  window.findChild<QComboBox*>()->setCurrentIndex(1);
  EXPECT_FALSE(vtkChartXY::SafeDownCast(window.plot()->chartXY)->GetTooltip()->GetVisible());
}

TEST_F(CompositeWindowTest, SwitchesReachTheView)
{
  drag(2, 0.3, 0.8);
  PlotMetaData const& settings = *window.plot()->metaData;
  child<QCheckBox>("Densities")->click();
  child<QCheckBox>("Common density scale")->click();
  child<QCheckBox>("Quartile bands")->click();
  child<QCheckBox>("Log parameter axes")->click();
  settle();
  EXPECT_TRUE(settings.getUseDensity() && settings.getCommonDensityScale() && settings.getShowQuantiles() &&
              settings.getLogParameterAxes());
  EXPECT_EQ(window.plot()->chartXY->GetNumberOfPlots(), 4); // three bands and the runs
  EXPECT_EQ(app::runLines(*window.plot())->GetDensityColors(), vtkPlotLineSet::DENSITY_LOGARITHMIC);
  child<QCheckBox>("Plain lines")->click();
  settle();
  EXPECT_EQ(app::runLines(*window.plot())->GetDensityColors(), vtkPlotLineSet::DENSITY_OFF);
  EXPECT_EQ(std::string(window.plot()->chartMatrix->GetChart({0, 0})->GetTitle()).substr(0, 2), "d ")
      << "the small charts keep their numbers";
  child<QCheckBox>("Points, not lines")->click();
  settle();
  EXPECT_FALSE(settings.getPlotLine());
}

TEST_F(CompositeWindowTest, AThresholdRegroupsTheGrid)
{
  drag(2, 0.3, 0.8);
  for (auto* box : window.findChildren<QDoubleSpinBox*>())
    if (box->value() == 0.1) box->setValue(0.0);
  for (auto* box : window.findChildren<QDoubleSpinBox*>())
    if (box->value() == 0.05) box->setValue(1.0);
  settle();
  EXPECT_EQ(window.plot()->chartMatrix->GetSize(), vtkVector2i(4, 4)); // all six parameters count
  EXPECT_EQ(window.plot()->shownParameters().size(), 6u);
  EXPECT_NE(status().find("6 of 6 parameters differ"), std::string::npos) << status();
}

TEST_F(CompositeWindowTest, SavesPictures)
{
  QString error;
  ASSERT_TRUE(window.savePicture(file("view.png"), error)) << error.toStdString();
  const QImage picture(file("view.png"));
  EXPECT_GT(picture.width(), 500);
  ASSERT_TRUE(window.savePicture(file("view.pdf"), error)) << error.toStdString();
  QFile pdf(file("view.pdf"));
  ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
  EXPECT_EQ(pdf.read(5), "%PDF-");
  EXPECT_FALSE(window.savePicture(file("view.bmp"), error));
  EXPECT_NE(error.toStdString().find(".png or .pdf"), std::string::npos);
  EXPECT_FALSE(window.savePicture("/no/such/folder/view.png", error));
}

TEST_F(CompositeWindowTest, ABadFileLeavesThePresentScan)
{
  QFile bad(file("bad.csv"));
  ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
  bad.write("\"Molecule: A\",\": Time [s]\",\": Run Index\",\"Parameter: k1\"\n1,0,0,2\n1,x,0,2\n");
  bad.close();
  QString error;
  EXPECT_FALSE(window.open(file("bad.csv"), error));
  EXPECT_NE(error.toStdString().find("bad.csv:3: column 2"), std::string::npos) << error.toStdString();
  EXPECT_EQ(status(), "40 runs, 11 times");
  drag(2, 0.3, 0.8);
  EXPECT_NE(status().find("pass"), std::string::npos);
}

TEST_F(CompositeWindowTest, AnOutputMayHaveTheNameOfATime)
{
  QFile scan(file("timer.csv"));
  ASSERT_TRUE(scan.open(QIODevice::WriteOnly));
  QByteArray text = "Values[TimeIndex],time,run,k1,k2\n";
  for (int run = 0; run < 20; ++run)
    for (int time = 0; time < 5; ++time)
      text += QByteArray::number(run * time) + ',' + QByteArray::number(time) + ',' +
              QByteArray::number(run) + ',' + QByteArray::number(0.5 * run) + ',' +
              QByteArray::number(run % 3) + '\n';
  scan.write(text);
  scan.close();
  QString error;
  ASSERT_TRUE(window.open(file("timer.csv"), error)) << error.toStdString();
  EXPECT_EQ(status(), "20 runs, 5 times");
  drag(2, 4.5, 21);
  EXPECT_NE(status().find("8 runs pass"), std::string::npos) << status();
  EXPECT_EQ(window.plot()->metaData->yLabel, "Values[TimeIndex]");
}

TEST_F(CompositeWindowTest, AnotherScanReplacesThePresentOne)
{
  drag(2, 0.3, 0.8);
  test::ScanShape shape;
  shape.runs = 5;
  shape.times = 4;
  shape.parameters = 2;
  writeTable(test::makeScan(shape), file("other.csv").toStdString());
  QString error;
  ASSERT_TRUE(window.open(file("other.csv"), error)) << error.toStdString();
  settle();
  EXPECT_EQ(status(), "5 runs, 4 times");
  EXPECT_EQ(window.findChild<QComboBox*>()->count(), 1);
}

} // namespace
} // namespace runsieve::app
