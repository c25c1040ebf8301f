#include "support/LinePanel.h"
#include "support/MetaMethods.h"

#include <gmock/gmock.h>

#include <QGroupBox>
#include <QPointer>
#include <QSplitter>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace runsieve::test {
namespace {

using LinePlotWidgetTest = LinePanel;

TEST_F(LinePlotWidgetTest, ANewPanelShowsTheNotice)
{
  show();
  EXPECT_EQ(panel.ui.stackedWidget->currentWidget(), panel.ui.page_no_data);
  EXPECT_TRUE(panel.ui.label->isVisible());
  EXPECT_FALSE(panel.ui.plotter->isVisible());
  EXPECT_TRUE(panel.ui.label->text().contains("Simulation data not available"));
}

TEST_F(LinePlotWidgetTest, ANewPanelIsLinearAndHasNoLegend)
{
  EXPECT_EQ(panel.ui.exportButton->text(), "Export Plot");
  EXPECT_EQ(panel.ui.showLegend->text(), "Show the Legend");
  EXPECT_EQ(panel.ui.logSButton->text(), "Use Log Scale");
  EXPECT_FALSE(chart()->GetAxis(vtkAxis::LEFT)->GetLogScale());
  EXPECT_FALSE(chart()->GetShowLegend());
}

TEST_F(LinePlotWidgetTest, SampleCurvesStandBehindTheNotice)
{
  EXPECT_GT(plot().plotData->GetNumberOfRows(), 0);
  EXPECT_EQ(tree().topLevelItemCount(), 0);
}

TEST_F(LinePlotWidgetTest, ThePanelHasTheSizeAndTheStretchOfItsForm)
{
  EXPECT_EQ(panel.size(), QSize(1216, 884));
  EXPECT_EQ(panel.objectName(), "LinePlotWidgetClass");
  EXPECT_EQ(panel.ui.splitter->widget(0)->sizePolicy().horizontalStretch(), 3);
}

TEST_F(LinePlotWidgetTest, BelongsToItsParentAndTakesItsPartsAlong)
{
  auto parent = std::make_unique<QWidget>();
  auto* owned = new LinePlotWidget(parent.get());
  EXPECT_EQ(owned->parentWidget(), parent.get());
  EXPECT_FALSE(owned->isWindow());
  QPointer<QWidget> const part = owned->ui.plotter;
  parent.reset();
  EXPECT_TRUE(part.isNull());
}

TEST_F(LinePlotWidgetTest, SlotsStandInAFixedOrderAndThereAreNoSignals)
{
  EXPECT_THAT(metaMethods(LinePlotWidget::staticMetaObject),
              ElementsAre("slot toggleLegend()", "slot toggleLogScale()", "slot exportPlot()"));
}

TEST_F(LinePlotWidgetTest, DataBringThePlotAndFillTheTree)
{
  show();
  panel.setData(&data);
  EXPECT_EQ(panel.ui.stackedWidget->currentWidget(), panel.ui.plotter);
  EXPECT_TRUE(panel.ui.plotter->isVisible());
  ASSERT_EQ(tree().topLevelItemCount(), 2);
  EXPECT_EQ(tree().topLevelItem(0)->text(0), "Complex");
  EXPECT_EQ(tree().topLevelItem(1)->text(0), "Molecule");
  EXPECT_EQ(tree().topLevelItem(1)->childCount(), 2);
  EXPECT_THAT(columnNames(plot().plotData),
              UnorderedElementsAre("Time [s]", "Molecule: A", "Molecule: B", "Complex: C"));
}

TEST_F(LinePlotWidgetTest, DataShowNoCurveUntilOneIsChosen)
{
  panel.setData(&data);
  EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(LinePlotWidgetTest, AChosenItemIsACurve)
{
  panel.setData(&data);
  tree().setCurrentItem(item("B"));
  EXPECT_THAT(shown(), ElementsAre("Molecule: B"));
  item("C")->setSelected(true);
  EXPECT_THAT(shown(), UnorderedElementsAre("Molecule: B", "Complex: C"));
  tree().clearSelection();
  EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(LinePlotWidgetTest, ClicksInTheTreeChooseCurves)
{
  show();
  panel.setData(&data);
  tree().expandAll();
  auto click = [this](char const* name, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, keys, tree().visualItemRect(item(name)).center());
  };
  click("A");
  EXPECT_THAT(shown(), ElementsAre("Molecule: A"));
  click("C", Qt::ControlModifier);
  EXPECT_THAT(shown(), UnorderedElementsAre("Molecule: A", "Complex: C"));
  click("B");
  EXPECT_THAT(shown(), ElementsAre("Molecule: B"));
}

TEST_F(LinePlotWidgetTest, ThePlotCopiesTheData)
{
  panel.setData(&data);
  a[0] = 99;
  EXPECT_THAT(numbers(plot().plotData, "Molecule: A"), ElementsAre(5, 60, 700));
}

TEST_F(LinePlotWidgetTest, TheSameDataAgainKeepTheCurrentItemAndItsCurve)
{
  panel.setData(&data);
  tree().setCurrentItem(item("B"));
  b = {7, 7, 7};
  panel.setData(&data);
  ASSERT_TRUE(tree().currentItem());
  EXPECT_EQ(tree().currentItem()->text(0), "B");
  EXPECT_THAT(shown(), ElementsAre("Molecule: B"));
  EXPECT_EQ(chart()->GetPlot(0)->GetInput(), plot().plotData.Get());
  EXPECT_THAT(numbers(plot().plotData, "Molecule: B"), ElementsAre(7, 7, 7));
}

TEST_F(LinePlotWidgetTest, OtherDataLeaveNoCurveOfTheFormerOnes)
{
  panel.setData(&data);
  tree().setCurrentItem(item("B"));
  data.series.erase({Kestrane::Molecule, "B"});
  panel.setData(&data);
  EXPECT_EQ(tree().currentItem(), nullptr);
  EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(LinePlotWidgetTest, RemovedDataBringTheNoticeBackButStayInThePlot)
{
  show();
  panel.setData(&data);
  tree().setCurrentItem(item("B"));
  panel.removeData();
  EXPECT_EQ(panel.ui.stackedWidget->currentWidget(), panel.ui.page_no_data);
  EXPECT_TRUE(panel.ui.label->isVisible());
  EXPECT_EQ(tree().topLevelItemCount(), 0);
  EXPECT_THAT(shown(), IsEmpty());
  EXPECT_THAT(numbers(plot().plotData, "Molecule: B"), ElementsAre(8, 9, 10));
}

TEST_F(LinePlotWidgetTest, DataComeAndGo)
{
  for (int i = 0; i < 3; ++i) {
    panel.setData(&data);
    EXPECT_EQ(panel.ui.stackedWidget->currentWidget(), panel.ui.plotter) << i;
    panel.removeData();
    EXPECT_EQ(panel.ui.stackedWidget->currentWidget(), panel.ui.page_no_data) << i;
  }
}

TEST_F(LinePlotWidgetTest, APressOnTheScaleButtonMakesTheLeftAxisLogarithmic)
{
  show();
  panel.setData(&data);
  tree().setCurrentItem(item("A"));
  press(panel.ui.logSButton);
  EXPECT_EQ(panel.ui.logSButton->text(), "Use Linear Scale");
  EXPECT_TRUE(chart()->GetAxis(vtkAxis::LEFT)->GetLogScale());
  EXPECT_TRUE(chart()->GetAxis(vtkAxis::LEFT)->GetLogScaleActive());
  EXPECT_FALSE(chart()->GetAxis(vtkAxis::BOTTOM)->GetLogScale());
  release(panel.ui.logSButton);
  EXPECT_EQ(panel.ui.logSButton->text(), "Use Linear Scale") << "the release does nothing";
  press(panel.ui.logSButton);
  EXPECT_EQ(panel.ui.logSButton->text(), "Use Log Scale");
  EXPECT_FALSE(chart()->GetAxis(vtkAxis::LEFT)->GetLogScale());
  release(panel.ui.logSButton);
}

TEST_F(LinePlotWidgetTest, APressOnTheLegendButtonShowsTheLegend)
{
  show();
  panel.setData(&data);
  press(panel.ui.showLegend);
  EXPECT_EQ(panel.ui.showLegend->text(), "Hide the Legend");
  EXPECT_TRUE(chart()->GetShowLegend());
  release(panel.ui.showLegend);
  EXPECT_TRUE(chart()->GetShowLegend()) << "the release does nothing";
  press(panel.ui.showLegend);
  EXPECT_EQ(panel.ui.showLegend->text(), "Show the Legend");
  EXPECT_FALSE(chart()->GetShowLegend());
  release(panel.ui.showLegend);
}

TEST_F(LinePlotWidgetTest, HostsCanToggleToo)
{
  panel.toggleLegend();
  panel.toggleLogScale();
  EXPECT_EQ(panel.ui.showLegend->text(), "Hide the Legend");
  EXPECT_EQ(panel.ui.logSButton->text(), "Use Linear Scale");
}

TEST_F(LinePlotWidgetTest, NewDataKeepLegendAndScale)
{
  panel.toggleLegend();
  panel.toggleLogScale();
  panel.setData(&data);
  tree().setCurrentItem(item("A"));
  EXPECT_TRUE(chart()->GetShowLegend());
  EXPECT_TRUE(chart()->GetAxis(vtkAxis::LEFT)->GetLogScale());
  panel.removeData();
  panel.setData(&data);
  EXPECT_EQ(panel.ui.showLegend->text(), "Hide the Legend");
  EXPECT_EQ(panel.ui.logSButton->text(), "Use Linear Scale");
  EXPECT_TRUE(chart()->GetShowLegend());
}

TEST_F(LinePlotWidgetTest, TheTreeStaysWithThePlotOfTheStart)
{
  PlotContainer& first = plot();
  PlotContainer other(nullptr);
  panel.setData(&data);
  panel.ui.plotter->setPlotContainer(&other);
  auto const plots = other.chartXY->GetNumberOfPlots();
  tree().setCurrentItem(item("A"));
  EXPECT_EQ(first.chartXY->GetNumberOfPlots(), 1);
  EXPECT_EQ(other.chartXY->GetNumberOfPlots(), plots);
  panel.ui.plotter->setPlotContainer(&first);
}

TEST(LinePlotWidgetFunctionsTest, FileDialogsAreNotThoseOfTheDesktop)
{
  EXPECT_EQ(getFileDialogOption(), 16);
}

TEST(LinePlotWidgetFunctionsTest, TheWorkaroundDoesNothing)
{
  QWidget page;
  QGroupBox box("title", &page);
  box.setCheckable(true);
  box.setGeometry(10, 20, 300, 200);
  auto* button = new QPushButton("inside", &box);
  button->setGeometry(5, 6, 70, 80);
  QByteArray const sheet = box.styleSheet().toLatin1();
  auto const children = box.children();
  QT_BUG_26351_WORKAROUND(&box);
  QT_BUG_26351_WORKAROUND(nullptr);
  EXPECT_EQ(box.title(), "title");
  EXPECT_TRUE(box.isCheckable() && box.isChecked() && box.isEnabled());
  EXPECT_EQ(box.geometry(), QRect(10, 20, 300, 200));
  EXPECT_EQ(box.parentWidget(), &page);
  EXPECT_EQ(box.layout(), nullptr);
  EXPECT_EQ(box.children(), children);
  EXPECT_EQ(box.styleSheet().toLatin1(), sheet);
  EXPECT_EQ(button->geometry(), QRect(5, 6, 70, 80));
  EXPECT_FALSE(page.isVisible());
}

} // namespace
} // namespace runsieve::test
