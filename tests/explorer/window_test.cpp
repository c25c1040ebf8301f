#include "WindowScene.h"

#include "app/composite/CompositeWindow.h"
#include "app/explorer/session/ErrorDialog.h"
#include "app/explorer/window/ActionTable.h"
#include "app/explorer/window/Appearance.h"
#include "app/explorer/window/CommandSearch.h"
#include "app/explorer/window/Plots.h"
#include "app/explorer/window/StartPage.h"
#include "app/store/StoredPlot.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QDockWidget>
#include <QDropEvent>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSet>
#include <QTableView>
#include <QTimer>

#include <map>
#include <set>

namespace runsieve::test {
namespace {

/// Closes the next dialog and keeps what it says.
struct NextDialog
{
  NextDialog()
  {
    QObject::connect(&timer, &QTimer::timeout, [this] {
      QWidget* dialog = QApplication::activeModalWidget();
      if (!dialog) return;
      if (auto* box = qobject_cast<QMessageBox*>(dialog)) text = box->text();
      if (auto* error = qobject_cast<app::ErrorDialog*>(dialog)) text = error->details();
      seen = true;
      timer.stop();
      dialog->close();
    });
    timer.start(20);
  }

  QTimer timer;
  QString text;
  bool seen = false;
};

TEST(ActionTable, EachActionHasItsOwnNameAndNoTwoShareAKey)
{
  std::set<std::string> ids;
  std::map<std::string, std::string> keys;
  for (app::ActionEntry const& entry : app::actionTable()) {
    EXPECT_TRUE(ids.insert(entry.id).second) << entry.id;
    EXPECT_GT(std::string(entry.hint).size(), 10u) << entry.id;
    for (QString const& key : QString(entry.shortcut).split("; ")) {
      if (key.isEmpty()) continue;
      EXPECT_FALSE(QKeySequence::fromString(key, QKeySequence::PortableText).isEmpty()) << entry.id;
      auto const [place, isNew] = keys.emplace(key.toStdString(), entry.id);
      EXPECT_TRUE(isNew) << entry.id << " and " << place->second;
    }
  }
}

TEST(ActionTable, NoTwoEntriesOfAMenuShareALetter)
{
  std::map<std::string, std::map<QChar, std::string>> letters;
  for (app::ActionEntry const& entry : app::actionTable()) {
    const QString text = entry.text;
    const int at = text.indexOf('&');
    ASSERT_GE(at, 0) << entry.id;
    auto const [place, isNew] = letters[entry.menu].emplace(text[at + 1].toLower(), entry.id);
    EXPECT_TRUE(isNew) << entry.id << " and " << place->second;
  }
}

TEST_F(WindowScene, StartsEmptyAndOffersAWayIn)
{
  EXPECT_FALSE(document().isOpen());
  auto* start = window->findChild<app::StartPage*>();
  ASSERT_NE(start, nullptr);
  EXPECT_TRUE(start->isVisible());
  EXPECT_EQ(window->runs().view(), nullptr);
}

TEST_F(WindowScene, AFileIsReadBesideTheInterfaceAndShown)
{
  ASSERT_TRUE(openLines());
  EXPECT_EQ(document().scan().runs.size(), 40u);
  EXPECT_EQ(window->statusText(), "40 runs, 11 times");
  EXPECT_TRUE(view().isVisible());
  EXPECT_THAT(window->windowTitle().toStdString(), testing::StartsWith("scan.csv"));
}

TEST_F(WindowScene, KeysGoToTheChartOfAScanThatHasOpened)
{
  ASSERT_TRUE(openLines());
  EXPECT_EQ(window->focusWidget(), &view());
}

TEST_F(WindowScene, SelectingAGateMovesNothing)
{
  ASSERT_TRUE(openLines());
  Gate gate = gateOnA(0.2, 0.8);
  gate.span = GateSpan{1.6, 4.4};
  document().change("Gate", [&](app::State& state) { state.gates.push_back({"one", gate, true}); });
  document().selectGate(std::nullopt);
  QApplication::processEvents();
  const QRectF before = view().frame().plot();
  document().selectGate(0);
  QApplication::processEvents();
  QApplication::processEvents();
  EXPECT_EQ(view().frame().plot(), before);
}

TEST_F(WindowScene, AFileThatCannotBeReadIsToldAndLeavesWhatIsOpen)
{
  ASSERT_TRUE(openLines());
  QFile bad(file("bad.csv"));
  ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
  bad.write("nothing of use\n");
  bad.close();
  NextDialog dialog;
  window->open(file("bad.csv"));
  ASSERT_TRUE(waitFor([&] { return dialog.seen; }));
  EXPECT_THAT(dialog.text.toStdString(), testing::HasSubstr("bad.csv"));
  EXPECT_EQ(document().scan().runs.size(), 40u);
  EXPECT_THAT(window->windowTitle().toStdString(), testing::StartsWith("scan.csv"));
}

TEST_F(WindowScene, TheExampleIsSimulatedOnTheSpot)
{
  trigger("file.example");
  ASSERT_TRUE(waitFor([this] { return document().isOpen(); }, 60'000));
  EXPECT_EQ(document().scan().runs.size(), 1000u);
}

TEST_F(WindowScene, AFileThatIsDroppedOpens)
{
  writeScan(*lineScan(), file("dropped.csv").toStdString());
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(file("dropped.csv"))});
  QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.get(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent event(QPointF(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.get(), &event);
  EXPECT_TRUE(waitFor([this] { return document().isOpen(); }));
}

TEST_F(WindowScene, TheStatusTellsWhatPassesAndHowManyParametersDiffer)
{
  ASSERT_TRUE(openLines());
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.999));
  ASSERT_TRUE(settle());
  EXPECT_EQ(window->statusText(),
            QString("40 runs, 11 times   |   %1 runs pass   |   1 of 6 parameters differ")
                .arg(document().passing().count()));
}

TEST_F(WindowScene, TheMenuNamesWhatIsTakenBack)
{
  ASSERT_TRUE(openLines());
  EXPECT_FALSE(window->actions().at("edit.undo")->isEnabled());
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9));
  EXPECT_EQ(window->actions().at("edit.undo")->text(), QString("&Undo Draw gate"));
  trigger("edit.undo");
  EXPECT_TRUE(document().state().gates.empty());
  EXPECT_EQ(window->actions().at("edit.redo")->text(), QString("&Redo Draw gate"));
  trigger("edit.redo");
  EXPECT_EQ(document().state().gates.size(), 1u);
}

TEST_F(WindowScene, TheSelectedGateIsSwitchedInvertedAndDeletedFromTheMenu)
{
  ASSERT_TRUE(openLines());
  EXPECT_FALSE(window->actions().at("gate.delete")->isEnabled());
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9));
  const std::size_t passing = document().passing().count();
  trigger("gate.negate");
  EXPECT_EQ(document().passing().count(), 40u - passing);
  trigger("gate.toggle");
  EXPECT_EQ(document().passing().count(), 40u);
  trigger("gate.delete");
  EXPECT_TRUE(document().state().gates.empty());
  EXPECT_EQ(document().undoStack().count(), 4);
}

TEST_F(WindowScene, AGateAsksForAllForSomeOrForNoValue)
{
  ASSERT_TRUE(openLines());
  EXPECT_FALSE(window->actions().at("kind.ever")->isEnabled());
  document().change("Show output", [](app::State& state) { state.view.outputs = {1}; });
  ASSERT_TRUE(settle());
  Mouse(view()).drag(at(2.0, 0.05), at(8.0, 0.5));
  auto const passing = [this](char const* action) {
    trigger(action);
    return document().passing().count();
  };
  EXPECT_TRUE(window->actions().at("kind.all")->isChecked());
  const std::size_t all = document().passing().count();
  const std::size_t ever = passing("kind.ever");
  EXPECT_GT(ever, all);
  EXPECT_EQ(passing("kind.never"), 40u - ever);
  EXPECT_GE(passing("kind.crosses"), ever);
  trigger("edit.undo");
  EXPECT_TRUE(window->actions().at("kind.never")->isChecked());
}

TEST_F(WindowScene, AClickWithTheRightButtonOnAGateOpensItsMenu)
{
  ASSERT_TRUE(openLines());
  Mouse(view()).drag(at(2.0, 0.2), at(4.0, 0.6));
  document().selectGate(std::nullopt);
  bool isThere = false;
  QTimer::singleShot(50, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    isThere = menu && menu->actions().contains(window->actions().at("gate.delete"));
    if (menu) menu->close();
  });
  Mouse(view()).click(at(3.0, 0.4), Qt::RightButton);
  EXPECT_TRUE(waitFor([&] { return isThere; }));
  EXPECT_EQ(document().selectedGate(), 0u);
  EXPECT_EQ(document().state().gates.size(), 1u);
}

TEST_F(WindowScene, ChecksFollowTheStateWhoeverChangesIt)
{
  ASSERT_TRUE(openLines());
  document().change("Focus", [](app::State& state) { state.view.focus = app::Focus::Hidden; });
  EXPECT_TRUE(window->actions().at("focus.hidden")->isChecked());
  trigger("focus.faded");
  EXPECT_EQ(document().state().view.focus, app::Focus::Faded);
  trigger("look.bands");
  EXPECT_EQ(document().state().view.runsLook, app::RunsLook::Bands);
  trigger("join.any");
  EXPECT_EQ(document().state().join, GateJoin::Any);
}

TEST_F(WindowScene, ACommandIsFoundByItsWordsAndTriggered)
{
  ASSERT_TRUE(openLines());
  app::CommandSearch search({window->actions().at("look.bands"), window->actions().at("focus.faded"),
                             window->actions().at("gate.delete")});
  search.show();
  auto* words = search.findChild<QLineEdit*>();
  auto* found = search.findChild<QListWidget*>();
  EXPECT_EQ(found->count(), 3);
  QTest::keyClicks(words, "runs QUART");
  ASSERT_EQ(found->count(), 1);
  QTest::keyClick(words, Qt::Key_Return);
  EXPECT_EQ(document().state().view.runsLook, app::RunsLook::Bands);
}

TEST_F(WindowScene, CommandsWhoseNamesHaveTheWordsComeFirst)
{
  app::CommandSearch search({window->actions().at("theme.desktop"), window->actions().at("theme.dark")});
  search.show();
  QTest::keyClicks(search.findChild<QLineEdit*>(), "dark");
  auto* found = search.findChild<QListWidget*>();
  ASSERT_EQ(found->count(), 2);
  EXPECT_EQ(found->item(0)->text().toStdString(), "Dark colours");
}

TEST_F(WindowScene, DarkColoursReachChartsAndAreRemembered)
{
  ASSERT_TRUE(openLines());
  const QPalette before = QApplication::palette();
  trigger("theme.dark");
  ASSERT_TRUE(settle());
  EXPECT_LT(view().grab().toImage().pixelColor(3, 3).lightness(), 60);
  EXPECT_EQ(app::chosenAppearance(), app::Appearance::Dark);
  EXPECT_TRUE(window->actions().at("theme.dark")->isChecked());
  trigger("theme.desktop");
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), before.color(QPalette::Window));
}

TEST_F(WindowScene, ACommandThatIsDisabledCannotBeChosen)
{
  ASSERT_TRUE(openLines());
  app::CommandSearch search({window->actions().at("gate.delete")});
  search.show();
  EXPECT_EQ(search.findChild<QListWidget*>()->currentItem(), nullptr);
  QTest::keyClick(search.findChild<QLineEdit*>(), Qt::Key_Return);
  EXPECT_TRUE(search.isVisible());
}

TEST_F(WindowScene, AStoredPlotOpensWithItsGates)
{
  ASSERT_TRUE(openLines());
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9));
  const RunSet passing = document().passing();
  ASSERT_TRUE(waitFor([this] { return window->isSettled(); }));
  window->storedPlots().write(file("plot.rsd"));
  ASSERT_TRUE(waitFor([this] { return !window->storedPlots().isBusy(); }));
  EXPECT_EQ(window->statusText().toStdString(), "Saved plot.rsd");
  document().close();
  window->open(file("plot.rsd"));
  ASSERT_TRUE(waitFor([this] { return document().isOpen(); }));
  EXPECT_EQ(document().state().gates.size(), 1u);
  EXPECT_EQ(document().passing(), passing);
}

TEST_F(WindowScene, EndsWithAnyPageOfTheParametersInFront)
{
  for (char const* page : {"page.charts", "page.pairs", "page.box", "page.parallel", "page.stability"}) {
    ASSERT_TRUE(openLines());
    Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9));
    trigger(page);
    document().change("More", [](app::State& state) { state.gates[0].gate.range.low = 0.6; });
    window = std::make_unique<app::ExplorerWindow>(); // under way or not, what the page computes ends
    window->show();
  }
}

TEST_F(WindowScene, APlotThatCannotBeSavedIsTold)
{
  ASSERT_TRUE(openLines());
  NextDialog dialog;
  window->storedPlots().write(file("no such folder/plot.rsd"));
  ASSERT_TRUE(waitFor([&] { return dialog.seen; }));
  EXPECT_THAT(dialog.text.toStdString(), testing::HasSubstr("could not be saved"));
}

TEST_F(WindowScene, APlotIsAsItWasWhenItWasAskedFor)
{
  ASSERT_TRUE(openLines());
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9));
  const RunSet passing = document().passing();
  window->storedPlots().write(file("plot.rsd"));
  document().change("Clear", [](app::State& state) { state.gates.clear(); });
  window->storedPlots().write(file("other.rsd"));
  EXPECT_THAT(window->statusText().toStdString(), testing::HasSubstr("nothing has been begun"));
  ASSERT_TRUE(waitFor([this] { return !window->storedPlots().isBusy(); }));
  EXPECT_FALSE(QFile::exists(file("other.rsd")));
  window->open(file("plot.rsd"));
  ASSERT_TRUE(waitFor([this] { return document().state().gates.size() == 1u; }));
  EXPECT_EQ(document().passing(), passing);
}

TEST_F(WindowScene, TheCompositeViewHasAWindowOfItsOwn)
{
  ASSERT_TRUE(openLines());
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9));
  trigger("view.composite");
  app::CompositeWindow* composite = nullptr;
  ASSERT_TRUE(
      waitFor([&] { return (composite = window->findChild<app::CompositeWindow*>()) && composite->plot(); }));
  EXPECT_TRUE(composite->isVisible());
  EXPECT_THAT(composite->windowTitle().toStdString(), testing::StartsWith("scan.csv"));
  EXPECT_THAT(composite->statusText().toStdString(),
              testing::HasSubstr(std::to_string(document().passing().count()) + " runs pass"));
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  composite->close();
}

TEST_F(WindowScene, TheSelectionOfAPlotWithoutGatesIsAGateOnItsRuns)
{
  ASSERT_TRUE(openLines());
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9));
  const RunSet passing = document().passing();
  app::StoredPlot plot = app::plotOf(document())();
  plot.gates.clear();
  writePlot(plot, file("plot.rsd").toStdString());
  document().close();
  window->open(file("plot.rsd"));
  ASSERT_TRUE(waitFor([this] { return document().isOpen(); }));
  ASSERT_EQ(document().state().gates.size(), 1u);
  EXPECT_EQ(document().state().gates[0].gate.kind, GateKind::Runs);
  EXPECT_EQ(document().passing(), passing);
}

TEST_F(WindowScene, ReadingCanBeGivenUp)
{
  writeScan(*lineScan(20'000), file("large.csv").toStdString());
  window->open(file("large.csv"));
  window->files().opening().cancel();
  ASSERT_TRUE(waitFor([this] { return !window->files().opening().isBusy(); }));
  EXPECT_FALSE(document().isOpen());
}

TEST_F(WindowScene, ClosingWhileAFileIsReadWaitsForNothing)
{
  writeScan(*lineScan(20'000), file("large.csv").toStdString());
  window->open(file("large.csv"));
  window.reset();
}

TEST_F(WindowScene, UndoInTheMiddleOfADragGivesOnlyTheDragUp)
{
  ASSERT_TRUE(openLines());
  document().change("Add gate", [](app::State& state) {
    state.gates = {{"Gate 1", gateOnA(0.3, 0.7), true}};
  });
  ASSERT_TRUE(settle());
  const std::size_t passing = document().passing().count();
  Mouse mouse(view());
  mouse.press(at(3.0, 0.5));
  mouse.move(at(3.0, 0.6));
  mouse.move(at(3.0, 0.7));
  ASSERT_TRUE(document().previewedGate());
  trigger("edit.undo");
  EXPECT_FALSE(document().previewedGate());
  mouse.move(at(3.0, 0.8));
  EXPECT_FALSE(document().previewedGate()) << "the drag is over";
  mouse.release(at(3.0, 0.8));
  ASSERT_EQ(document().state().gates.size(), 1u);
  EXPECT_EQ(document().state().gates[0].gate, gateOnA(0.3, 0.7));
  EXPECT_EQ(document().passing().count(), passing);
  trigger("edit.undo");
  EXPECT_TRUE(document().state().gates.empty());
}

TEST_F(WindowScene, AGateThatGoesAwayEndsADragOfIt)
{
  ASSERT_TRUE(openLines());
  document().change("Add gate", [](app::State& state) {
    state.gates = {{"Gate 1", gateOnA(0.3, 0.7), true}};
  });
  ASSERT_TRUE(settle());
  Mouse mouse(view());
  mouse.press(at(3.0, 0.5));
  trigger("edit.undo"); // before anything has moved
  EXPECT_TRUE(document().state().gates.empty());
  mouse.move(at(3.0, 0.6));
  mouse.move(at(3.0, 0.8));
  mouse.release(at(3.0, 0.8));
  EXPECT_TRUE(document().state().gates.empty());
  trigger("edit.redo");
  EXPECT_EQ(document().state().gates.size(), 1u);
}

TEST_F(WindowScene, AGateThatDoesNotFitTheDataIsToldInTheStatus)
{
  ASSERT_TRUE(openLines());
  Gate gone;
  gone.column = "nothing of that name";
  gone.range.low = 0.0;
  document().change("Add", [&](app::State& state) { state.gates = {{"Gate 7", gone, true}}; });
  ASSERT_TRUE(settle());
  EXPECT_THAT(window->statusText().toStdString(),
              testing::HasSubstr("Gate 7 does not fit the data: not counted"));
  document().change("Add", [&](app::State& state) { state.gates.push_back({"Gate 8", gone, true}); });
  ASSERT_TRUE(settle());
  EXPECT_THAT(window->statusText().toStdString(),
              testing::HasSubstr("2 gates do not fit the data: not counted"));
  document().change("Off", [](app::State& state) {
    for (app::NamedGate& gate : state.gates) gate.on = false;
  });
  ASSERT_TRUE(settle());
  EXPECT_EQ(window->statusText(), "40 runs, 11 times");
}

TEST_F(WindowScene, TablesHaveNothingWhereThereAreNoColumnsOrRows)
{
  ASSERT_TRUE(openLines());
  int tables = 0;
  for (auto* table : window->findChildren<QTableView*>()) {
    QAbstractItemModel const& model = *table->model();
    ++tables;
    for (int const section : {-1, model.columnCount(), 1000})
      for (Qt::ItemDataRole const role : {Qt::DisplayRole, Qt::ToolTipRole})
        EXPECT_FALSE(model.headerData(section, Qt::Horizontal, role).isValid())
            << table->accessibleName().toStdString() << " " << section;
    EXPECT_FALSE(model.data(QModelIndex()).isValid());
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 0);
  }
  EXPECT_GE(tables, 4);
}

TEST_F(WindowScene, TabLeadsOnlyToWhatIsSeenAndBackToWhereItBegan)
{
  ASSERT_TRUE(openLines());
  view().setFocus();
  QSet<QString> passed;
  bool isBack = false;
  constexpr int enough = 200;
  for (int i = 0; i < enough && !isBack; ++i) {
    QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    QWidget* here = window->focusWidget();
    ASSERT_NE(here, nullptr);
    isBack = here == &view();
    for (QWidget* widget = here; widget; widget = widget->parentWidget())
      if (auto* dock = qobject_cast<QDockWidget*>(widget)) {
        passed << dock->objectName();
        EXPECT_FALSE(dock->visibleRegion().isEmpty()) << dock->objectName().toStdString();
      }
  }
  EXPECT_TRUE(isBack);
  EXPECT_EQ(passed, (QSet<QString>{"parameters", "gates"}));
}

} // namespace
} // namespace runsieve::test
