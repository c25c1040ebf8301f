// What a user does in no order that means something: 500 actions, ten times. Nothing may crash, leak, or
// write a warning, and what is shown must stay what the state says.

#include "WindowScene.h"

#include "app/explorer/window/ActionTable.h"

#include <QApplication>
#include <QDialog>
#include <QDrag>
#include <QMenu>
#include <QTimer>

#include <random>
#include <set>

namespace runsieve::test {
namespace {

/// What Qt has to say while it lives.
class Messages
{
public:
  Messages() { former = qInstallMessageHandler(take); }
  ~Messages() { qInstallMessageHandler(former); }
  [[nodiscard]] static QStringList& all()
  {
    static QStringList list;
    return list;
  }

private:
  static void take(QtMsgType type, QMessageLogContext const&, QString const& text)
  {
    // What Qt says of a window system without a window manager is none of ours.
    if (type != QtDebugMsg && !text.contains("SetInputFocus") && !text.contains("QXcbWindow")) all() << text;
  }
  QtMessageHandler former;
};

/// Closes dialogs and menus, and ends drags between windows, as soon as they wait for somebody.
class Closer
{
public:
  Closer()
  {
    QObject::connect(&timer, &QTimer::timeout, [] {
      QDrag::cancel();
      if (QWidget* popup = QApplication::activePopupWidget())
        popup->close();
      else if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
        dialog->reject();
    });
    timer.start(1);
  }

private:
  QTimer timer;
};

/// Actions that end the test, or leave it.
std::set<std::string> const notHere = {"file.quit", "file.close", "file.window"};

class RandomActions : public WindowScene, public testing::WithParamInterface<unsigned>
{
protected:
  std::mt19937 random{GetParam()};

  std::size_t below(std::size_t count) { return random() % count; }
  double share() { return static_cast<double>(random() % 10'001) / 10'000.0; }

  /// A widget of the window that is there to be used, but no button that asks for a file.
  QWidget* anyWidget()
  {
    std::vector<QWidget*> there;
    for (QWidget* widget : window->findChildren<QWidget*>())
      if (widget->isVisible() && widget->isEnabled() && widget->width() > 4 && widget->height() > 4)
        there.push_back(widget);
    return there[below(there.size())];
  }

  QPointF placeIn(QWidget& widget) { return {share() * widget.width(), share() * widget.height()}; }

  void dragAnywhere()
  {
    QWidget* widget =
        below(3) == 0 || !window->runs().view() ? anyWidget() : &view(below(2) == 0 ? 0 : lastView());
    const Qt::MouseButton buttons[] = {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};
    const Qt::KeyboardModifiers modifiers[] = {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
    Mouse mouse(*widget);
    const QPointF from = placeIn(*widget);
    const QPointF to = placeIn(*widget);
    const QPointer<QWidget> alive(widget);
    mouse.press(from, buttons[below(3)], modifiers[below(3)]);
    for (int i = 1; i <= 4 && alive; ++i) mouse.move(from + (to - from) * i / 4.0);
    if (below(8) == 0 && alive) QTest::keyClick(widget, Qt::Key_Escape);
    if (alive) mouse.release(to);
  }

  std::size_t lastView()
  {
    std::size_t last = 0;
    while (window->runs().view(last + 1)) ++last;
    return last;
  }

  void triggerAnything()
  {
    auto const& table = app::actionTable();
    app::ActionEntry const& entry = table[below(table.size())];
    if (notHere.count(entry.id) == 0) window->actions().at(entry.id)->trigger();
  }

  void pressAnyKey()
  {
    const Qt::Key keys[] = {Qt::Key_0,    Qt::Key_Plus, Qt::Key_Minus, Qt::Key_Left,  Qt::Key_Right,
                            Qt::Key_Up,   Qt::Key_Down, Qt::Key_Tab,   Qt::Key_Space, Qt::Key_Escape,
                            Qt::Key_Home, Qt::Key_End,  Qt::Key_Return};
    QTest::keyClick(anyWidget(), keys[below(std::size(keys))]);
  }

  void step()
  {
    switch (below(12)) {
    case 0:
    case 1:
    case 2:
      dragAnywhere();
      break;
    case 3:
      Mouse(*anyWidget()).wheel({5.0, 5.0}, below(2) == 0 ? 1 : -2);
      break;
    case 4:
    case 5:
      triggerAnything();
      break;
    case 6:
      pressAnyKey();
      break;
    case 7:
      window->resize(500 + static_cast<int>(below(900)), 400 + static_cast<int>(below(600)));
      break;
    case 8:
      below(2) == 0 ? trigger("edit.undo") : trigger("edit.redo");
      break;
    case 9:
      if (below(4) == 0) window->open(file(below(2) == 0 ? "a.csv" : "b.csv"));
      break;
    case 10: {
      QWidget* widget = anyWidget();
      Mouse(*widget).move(placeIn(*widget));
      break;
    }
    default:
      QTest::qWait(static_cast<int>(below(15)));
    }
    QApplication::processEvents();
  }

  void check()
  {
    if (!document().isOpen()) return;
    const std::size_t runs = document().scan().runs.size();
    ASSERT_EQ(document().passing().runs(), runs);
    ASSERT_EQ(document().outcomes().size(), document().state().gates.size());
    ASSERT_FALSE(document().state().view.outputs.empty());
    for (std::size_t const run : document().pinnedRuns()) ASSERT_LT(run, runs);
    ASSERT_LT(document().selectedGate().value_or(0), document().state().gates.size() + 1);
    ASSERT_LT(document().hoveredRun().value_or(0), runs);
  }
};

TEST_P(RandomActions, LeaveTheWindowWhole)
{
  Messages::all().clear();
  const Messages messages;
  writeScan(*lineScan(150, 8), file("a.csv").toStdString());
  writeScan(*lineScan(30, 3), file("b.csv").toStdString());
  ASSERT_TRUE(openLines());
  const Closer closer;
  for (int i = 0; i < 500; ++i) {
    step();
    check();
    if (HasFatalFailure()) FAIL() << "after action " << i;
  }
  window->files().opening().cancel();
  EXPECT_TRUE(settle());
  EXPECT_TRUE(Messages::all().isEmpty()) << Messages::all().join('\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomActions, testing::Range(1u, 11u));

} // namespace
} // namespace runsieve::test
