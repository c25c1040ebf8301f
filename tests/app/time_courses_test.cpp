#include "support/PlotParts.h"
#include "time_courses/TimeCourseWindow.h"
#include <runsieve/widgets/LinePlotWidget.h>
#include <runsieve/widgets/PlotSelector.h>
#include <runsieve/widgets/VtkPlotWidget.h>

#include <gtest/gtest.h>
#include <vtkAxis.h>
#include <vtkChart.h>

#include <QDoubleSpinBox>
#include <QImage>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>

#include <algorithm>
#include <map>
#include <set>

namespace runsieve::test {
namespace {

/// The example as a person uses it.
struct TimeCourses : testing::Test
{
  time_courses::TimeCourseWindow window;
  Ui_LinePlotWidgetClass& ui = window.panel->ui;

  void SetUp() override
  {
    window.resize(900, 600);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  }

  static void click(QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

  void clickItem(QString const& name, Qt::KeyboardModifiers keys = Qt::NoModifier)
  {
    auto const found = ui.selector->findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(found.size(), 1);
    ui.selector->scrollToItem(found.front());
    QTest::mouseClick(ui.selector->viewport(), Qt::LeftButton, keys,
                      ui.selector->visualItemRect(found.front()).center());
  }

  vtkChart* chart() { return ui.plotter->plotContainer->chartXY; }

  /// Colours on show that are no shade of grey, with at least a line's worth of pixels.
  int strongColors()
  {
    QTest::qWait(50);
    const QImage frame = ui.plotter->grabFramebuffer().convertToFormat(QImage::Format_RGB32);
    std::map<QRgb, int> counts;
    for (int y = 0; y < frame.height(); ++y)
      for (int x = 0; x < frame.width(); ++x) {
        const QColor color = frame.pixelColor(x, y);
        if (color.saturation() > 100) ++counts[color.rgb()];
      }
    return static_cast<int>(
        std::count_if(counts.begin(), counts.end(), [](auto const& c) { return c.second > 100; }));
  }
};

TEST_F(TimeCourses, BeginsWithTheNotice)
{
  EXPECT_EQ(ui.stackedWidget->currentWidget(), ui.page_no_data);
  const QImage page = ui.page_no_data->grab().toImage();
  std::set<QRgb> colors;
  for (int x = 0; x < page.width(); ++x) colors.insert(page.pixel(x, page.height() / 2));
  EXPECT_GT(colors.size(), 1U) << "the line through the middle shows the text";
}

TEST_F(TimeCourses, ShowsWhatIsClicked)
{
  click(window.simulateButton);
  EXPECT_EQ(ui.stackedWidget->currentWidget(), static_cast<QWidget*>(ui.plotter));
  EXPECT_EQ(chart()->GetNumberOfPlots(), 0);
  ui.selector->expandAll();
  clickItem("LacI");
  EXPECT_EQ(chart()->GetNumberOfPlots(), 1);
  const int one = strongColors();
  EXPECT_GE(one, 1) << "the curve is on the screen without a further move of the mouse";
  clickItem("cI", Qt::ControlModifier);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 2);
  EXPECT_GT(strongColors(), one);
  clickItem("mRNA of cI");
  EXPECT_EQ(chart()->GetNumberOfPlots(), 1);
}

TEST_F(TimeCourses, LegendAndLogScaleFollowTheirButtons)
{
  click(window.simulateButton);
  ui.selector->expandAll();
  clickItem("TetR");
  click(ui.showLegend);
  EXPECT_TRUE(chart()->GetShowLegend());
  EXPECT_EQ(ui.showLegend->text(), "Hide the Legend");
  click(ui.logSButton);
  EXPECT_TRUE(chart()->GetAxis(vtkAxis::LEFT)->GetLogScale());
  EXPECT_EQ(ui.logSButton->text(), "Use Linear Scale");
}

TEST_F(TimeCourses, ASecondSimulationKeepsTheCurrentItem)
{
  click(window.simulateButton);
  ui.selector->expandAll();
  clickItem("cI");
  window.halfRepression->setValue(400.0);
  click(window.simulateButton);
  ASSERT_NE(ui.selector->currentItem(), nullptr);
  EXPECT_EQ(ui.selector->currentItem()->text(0), "cI");
  EXPECT_EQ(chart()->GetNumberOfPlots(), 1);
}

TEST_F(TimeCourses, RemovedDataLeaveTheNotice)
{
  click(window.simulateButton);
  click(window.removeButton);
  EXPECT_EQ(ui.stackedWidget->currentWidget(), ui.page_no_data);
  EXPECT_EQ(ui.selector->topLevelItemCount(), 0);
}

TEST(RepressilatorTest, StrongRepressionOscillates)
{
  time_courses::TimeCourses courses;
  const LinePlotData data = courses.data();
  std::vector<double> const& cI = *data.series.at({Kestrane::Molecule, "cI"});
  ASSERT_EQ(cI.size(), data.times->size());
  int turns = 0;
  for (std::size_t i = 101; i + 1 < cI.size(); ++i) turns += cI[i] > cI[i - 1] && cI[i] > cI[i + 1] ? 1 : 0;
  EXPECT_GE(turns, 3) << "maxima after 200 min";
}

} // namespace
} // namespace runsieve::test
