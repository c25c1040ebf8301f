#include "support/TableBuilder.h"
#include "support/WidgetWindow.h"

#include <vtkCallbackCommand.h>
#include <vtkCommand.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkSelection.h>

#include <QApplication>
#include <QMouseEvent>

#include <utility>

namespace runsieve::test {
namespace {

struct MouseTest : WidgetWindow
{
  void SetUp() override
  {
    widget.plotContainer->setPlotData(makeTable({{"x", {0, 1, 2, 3}}, {"y", {0, 1, 2, 3}}}));
    widget.plotContainer->metaData->yColumns = {1};
    widget.plotContainer->redraw();
    showWindow();
  }

  void send(QEvent::Type type, QPoint position, Qt::MouseButton button)
  {
    Qt::MouseButtons const held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent event(type, position, widget.mapToGlobal(position),
                      type == QEvent::MouseMove ? Qt::NoButton : button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
    QApplication::processEvents();
  }

  void drag(QEvent::Type begin)
  {
    send(QEvent::MouseMove, {85, 25}, Qt::NoButton);
    send(begin, {85, 25}, Qt::RightButton);
    send(QEvent::MouseMove, {200, 150}, Qt::RightButton);
    send(QEvent::MouseMove, {375, 255}, Qt::RightButton);
    send(QEvent::MouseButtonRelease, {375, 255}, Qt::RightButton);
  }

  int selectedRows()
  {
    auto flags = vtkSmartPointer<vtkIntArray>::Take(widget.plotContainer->getCurrentSelection());
    int rows = 0;
    for (vtkIdType i = 0; flags && i < flags->GetNumberOfTuples(); ++i) rows += flags->GetValue(i);
    return rows;
  }
};

TEST_F(MouseTest, ADragSelectsPoints)
{
  ASSERT_EQ(selectedRows(), 0);
  drag(QEvent::MouseButtonPress);
  EXPECT_GE(selectedRows(), 2);
}

// Quick users begin a drag with what Qt takes for a double click.
TEST_F(MouseTest, ADragBegunByADoubleClickSelectsAsWell)
{
  drag(QEvent::MouseButtonDblClick);
  EXPECT_GE(selectedRows(), 2);
}

TEST_F(MouseTest, ADoubleClickReachesTheChartsAsAPress)
{
  int presses = 0;
  int doubleClicks = 0;
  auto count = [](vtkObject*, unsigned long, void* counter, void*) { ++*static_cast<int*>(counter); };
  for (auto [event, counter] : {std::pair(vtkCommand::RightButtonPressEvent, &presses),
                                std::pair(vtkCommand::RightButtonDoubleClickEvent, &doubleClicks)}) {
    vtkNew<vtkCallbackCommand> command;
    command->SetCallback(count);
    command->SetClientData(counter);
    widget.interactor()->AddObserver(event, command);
  }
  send(QEvent::MouseButtonDblClick, {200, 150}, Qt::RightButton);
  send(QEvent::MouseButtonRelease, {200, 150}, Qt::RightButton);
  EXPECT_EQ(presses, 1);
  EXPECT_EQ(doubleClicks, 0);
}

TEST_F(MouseTest, AClickOnAPointLeavesTheSelectionAlone)
{
  drag(QEvent::MouseButtonPress);
  int const rows = selectedRows();
  for (int x = 90; x < 375; x += 15)
    for (int y = 25; y < 255; y += 15) {
      send(QEvent::MouseButtonPress, {x, y}, Qt::RightButton);
      send(QEvent::MouseButtonRelease, {x, y}, Qt::RightButton);
    }
  EXPECT_EQ(selectedRows(), rows);
  auto* selection = widget.plotContainer->annotationLink->GetCurrentSelection();
  EXPECT_EQ(selection->GetNumberOfNodes(), 1u);
}

} // namespace
} // namespace runsieve::test
