#include "support/MetaMethods.h"
#include "support/ScanBuilder.h"
#include "support/TableBuilder.h"
#include "support/WidgetWindow.h"

#include <gmock/gmock.h>
#include <vtkChartXY.h>
#include <vtkPlot.h>
#include <vtkRenderWindow.h>
#include <vtkRenderWindowInteractor.h>

#include <QApplication>
#include <QFile>
#include <QPointer>
#include <QTemporaryDir>

#include <memory>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

using VtkPlotWidgetTest = WidgetWindow;

TEST_F(VtkPlotWidgetTest, ANewWidgetShowsSampleCurves)
{
  ASSERT_NE(widget.plotContainer, nullptr);
  EXPECT_EQ(widget.plotContainer->parent(), &widget);
  ASSERT_EQ(scene()->GetNumberOfItems(), 1u);
  EXPECT_EQ(scene()->GetItem(0), widget.plotContainer->getItem());
  EXPECT_EQ(widget.plotContainer->chartXY->GetTitle(), "Example Plot");
  EXPECT_EQ(widget.plotContainer->chartXY->GetPlot(0)->GetInput(), widget.plotContainer->plotData.Get());
  EXPECT_FALSE(widget.plotContainer->metaData->signalsBlocked());
}

TEST_F(VtkPlotWidgetTest, WidgetAndViewShareWindowAndInteractor)
{
  EXPECT_EQ(widget.view->GetRenderWindow(), widget.renderWindow());
  EXPECT_EQ(widget.view->GetInteractor(), widget.interactor());
  EXPECT_NE(widget.interactor(), nullptr);
  EXPECT_TRUE(widget.renderWindow()->GetLineSmoothing());
}

TEST_F(VtkPlotWidgetTest, TheCurvesReachTheScreen)
{
  showWindow();
  QImage const picture = widget.grabFramebuffer();
  int dark = 0;
  int light = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) (qGray(picture.pixel(x, y)) < 64 ? dark : light) += 1;
  EXPECT_GT(dark, 100) << "axes, text and points";
  EXPECT_GT(light, dark) << "on a light ground";
}

TEST_F(VtkPlotWidgetTest, AfterAStyleChangeTheOldChartStaysUntilItIsExchanged)
{
  auto* former = scene()->GetItem(0);
  widget.plotContainer->metaData->zColumns = {2};
  widget.plotContainer->setPlotStyle(scatterPlot3D);
  widget.updatePlot(false);
  ASSERT_EQ(scene()->GetNumberOfItems(), 1u);
  EXPECT_EQ(scene()->GetItem(0), former);
  widget.updatePlot();
  ASSERT_EQ(scene()->GetNumberOfItems(), 1u);
  EXPECT_EQ(scene()->GetItem(0), widget.plotContainer->chartXYZ.Get());
}

TEST_F(VtkPlotWidgetTest, ShowsAnotherPlotAndKeepsTheFormerAlive)
{
  QPointer<PlotContainer> former = widget.plotContainer;
  QObject host;
  auto* other = new PlotContainer(&host);
  other->setPlotData(makeTable({{"a", {1, 2}}, {"b", {3, 4}}}));
  widget.setPlotContainer(other);
  EXPECT_EQ(widget.plotContainer, other);
  ASSERT_EQ(scene()->GetNumberOfItems(), 1u);
  EXPECT_EQ(scene()->GetItem(0), other->getItem());
  EXPECT_EQ(other->chartXY->GetPlot(0)->GetInput(), other->plotData.Get()) << "drawn at once";
  EXPECT_EQ(other->parent(), &host);
  ASSERT_FALSE(former.isNull());
  EXPECT_EQ(former->parent(), &widget);
  EXPECT_EQ(former->getItem()->GetScene(), nullptr);
}

TEST_F(VtkPlotWidgetTest, TheFormerPlotHasLostItsScene)
{
  PlotContainer* former = widget.plotContainer;
  PlotContainer other(nullptr);
  widget.setPlotContainer(&other);
  testing::internal::CaptureStdout();
  former->redraw();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "void PlotContainer::redraw(): invalid scene\n");
  widget.setPlotContainer(former);
  EXPECT_EQ(scene()->GetItem(0), former->getItem());
  EXPECT_FALSE(former->metaData->signalsBlocked());
}

TEST_F(VtkPlotWidgetTest, TakesAPlotOutOfAnotherWidget)
{
  VtkPlotWidget second;
  PlotContainer* moved = widget.plotContainer;
  second.setPlotContainer(moved);
  EXPECT_EQ(scene()->GetNumberOfItems(), 0u);
  EXPECT_EQ(second.view->GetScene()->GetItem(0), moved->getItem());
  moved->setParent(&second);
}

TEST_F(VtkPlotWidgetTest, NoPlotIsIgnored)
{
  PlotContainer* former = widget.plotContainer;
  widget.setPlotContainer(nullptr);
  EXPECT_EQ(widget.plotContainer, former);
  EXPECT_EQ(scene()->GetNumberOfItems(), 1u);
}

TEST_F(VtkPlotWidgetTest, SurvivesAHostThatDeletesItsPlotFirst)
{
  showWindow();
  auto other = std::make_unique<PlotContainer>(nullptr);
  other->example();
  widget.setPlotContainer(other.get());
  other.reset();
  QTemporaryDir folder;
  widget.updatePlot(true);
  widget.updatePlot(false);
  widget.printPlot(folder.filePath("gone.pdf"));
  EXPECT_FALSE(QFile::exists(folder.filePath("gone.pdf")));
  PlotContainer next(nullptr);
  widget.setPlotContainer(&next);
  EXPECT_EQ(scene()->GetItem(0), next.getItem());
  widget.setPlotContainer(new PlotContainer(&widget));
}

TEST(VtkPlotWidgetLifetimeTest, APlotOutlivesItsWidgetWithoutAScene)
{
  PlotContainer plot(nullptr);
  plot.setPlotData(makeTable({{"a", {1, 2}}, {"b", {3, 4}}, {"c", {5, 6}}}));
  {
    VtkPlotWidget widget;
    widget.setPlotContainer(&plot);
    plot.setPlotStyle(scatterPlotMatrixStyle); // redrawn, yet never brought into the scene's list
  }
  EXPECT_EQ(plot.getItem()->GetScene(), nullptr);
  testing::internal::CaptureStdout();
  plot.redraw();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "void PlotContainer::redraw(): invalid scene\n");
}

TEST(VtkPlotWidgetLifetimeTest, APlotDiesWithTheWidgetThatMadeIt)
{
  auto widget = std::make_unique<VtkPlotWidget>();
  QPointer<PlotContainer> plot = widget->plotContainer;
  widget.reset();
  EXPECT_TRUE(plot.isNull());
}

TEST(VtkPlotWidgetLifetimeTest, ManyWidgetsComeAndGo)
{
  int const before = QApplication::allWidgets().size();
  QPointer<PlotContainer> former;
  for (int i = 0; i < 20; ++i) {
    VtkPlotWidget widget;
    EXPECT_TRUE(former.isNull()) << i << ": the plot of the widget before has gone with it";
    former = widget.plotContainer;
    widget.plotContainer->metaData->setPlotStyle(selectionCdfPlot);
    widget.plotContainer->setLinePlotTable(makeScan({}), false);
    widget.updatePlot(true);
    ASSERT_EQ(widget.view->GetScene()->GetNumberOfItems(), 1u) << i;
    EXPECT_EQ(widget.view->GetScene()->GetItem(0), widget.plotContainer->chartMatrix.Get()) << i;
    EXPECT_EQ(widget.plotContainer->plotData->GetNumberOfRows(), 9) << i;
    EXPECT_EQ(QApplication::allWidgets().size(), before + 1) << i;
  }
  EXPECT_EQ(QApplication::allWidgets().size(), before);
}

TEST(VtkPlotWidgetSlotsTest, HostsFindTheSlotsByTheirText)
{
  QMetaObject const& meta = VtkPlotWidget::staticMetaObject;
  EXPECT_THAT(metaMethods(meta), ElementsAre("slot updatePlot(bool clear)", "slot updatePlot()"));
  EXPECT_EQ(meta.indexOfSlot("updatePlot(bool)"), meta.methodOffset());
  EXPECT_EQ(meta.indexOfSlot("updatePlot()"), meta.methodOffset() + 1);
}

} // namespace
} // namespace runsieve::test
