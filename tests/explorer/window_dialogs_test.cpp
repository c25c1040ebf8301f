#include "Dialogs.h"
#include "WindowScene.h"

#include "app/explorer/figure/ExportDialog.h"
#include "app/explorer/window/ActionTable.h"
#include "app/explorer/window/Appearance.h"
#include "app/explorer/window/CommandSearch.h"
#include "app/explorer/window/FigureOf.h"
#include "app/explorer/window/Icons.h"
#include "app/explorer/window/LimitsDialog.h"
#include "app/explorer/window/MethodDialog.h"
#include "app/explorer/window/StartPage.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyleOptionButton>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>

#include <set>

namespace runsieve::test {
namespace {

using testing::HasSubstr;

/// A dialog of axis limits or of the method on a scan of lines.
struct DialogScene : DocumentScene
{
  app::RunsZoom zoom{document};

  static QLineEdit& field(QDialog const& dialog, QString const& name)
  {
    for (QLineEdit* edit : dialog.findChildren<QLineEdit*>())
      if (edit->accessibleName() == name) return *edit;
    throw std::logic_error("no field " + name.toStdString());
  }
  static QPushButton& button(QDialog const& dialog, QDialogButtonBox::StandardButton which)
  {
    return *dialog.findChild<QDialogButtonBox*>()->button(which);
  }
  static void press(QDialog const& dialog, QDialogButtonBox::StandardButton which = QDialogButtonBox::Ok)
  {
    button(dialog, which).click();
  }
  void limits(std::function<void(QDialog&)> const& answer)
  {
    NextDialogOf<QDialog> next(answer);
    app::editLimits(document, zoom, nullptr);
    EXPECT_TRUE(next.seen());
  }
  void method(std::function<void(QDialog&)> const& answer)
  {
    NextDialogOf<QDialog> next(answer);
    app::editMethod(document, nullptr);
    EXPECT_TRUE(next.seen());
  }
  [[nodiscard]] app::ViewState const& view() const { return document.state().view; }
};

TEST_F(DialogScene, LimitsAreThoseOfAllValuesUnlessTheyAreTyped)
{
  document.change("Show", [](app::State& state) { state.view.outputs = {0, 1}; });
  limits([this](QDialog& dialog) {
    EXPECT_EQ(field(dialog, "Low end of Time").placeholderText(), "0");
    EXPECT_EQ(field(dialog, "High end of Time").placeholderText(), "10");
    EXPECT_EQ(field(dialog, "Low end of Time").text(), "");
    EXPECT_FALSE(field(dialog, "High end of B").placeholderText().isEmpty());
    field(dialog, "Low end of Time").setText("2.5");
    field(dialog, "Low end of B").setText("-1");
    field(dialog, "High end of B").setText("0.5");
    press(dialog);
  });
  ASSERT_TRUE(view().timeRange);
  EXPECT_EQ(*view().timeRange, (app::TypedRange{2.5, 10.0})) << "an empty end is that of all times";
  ASSERT_EQ(view().outputRanges.size(), 1u);
  EXPECT_EQ(view().outputRanges.at(1), (app::TypedRange{-1.0, 0.5}));
  EXPECT_EQ(document.undoStack().undoText(), "Axis limits");
  limits([this](QDialog& dialog) {
    EXPECT_EQ(field(dialog, "Low end of Time").text(), "2.5");
    EXPECT_EQ(field(dialog, "High end of Time").text(), "10");
    EXPECT_EQ(field(dialog, "High end of B").text(), "0.5");
    EXPECT_EQ(field(dialog, "Low end of A").text(), "");
    field(dialog, "Low end of B").clear();
    field(dialog, "High end of B").clear();
    press(dialog);
  });
  EXPECT_TRUE(view().outputRanges.empty());
  EXPECT_TRUE(view().timeRange);
}

TEST_F(DialogScene, LimitsThatMakeNoAxisCannotBeTaken)
{
  limits([this](QDialog& dialog) {
    QLineEdit& low = field(dialog, "Low end of Time");
    QLineEdit& high = field(dialog, "High end of Time");
    QPushButton& ok = button(dialog, QDialogButtonBox::Ok);
    EXPECT_TRUE(ok.isEnabled());
    for (auto const& [from, to] : {std::pair{"5", "5"},
                                   {"6", "5"},
                                   {"x", ""},
                                   {"", "x"},
                                   {"", "0"},
                                   {"10", ""},
                                   {"nan", ""},
                                   {"", "inf"}}) {
      low.setText(from);
      high.setText(to);
      EXPECT_FALSE(ok.isEnabled()) << from << " to " << to;
    }
    low.setText("4");
    high.setText("5");
    EXPECT_TRUE(ok.isEnabled());
    field(dialog, "High end of A").setText("x");
    EXPECT_FALSE(ok.isEnabled()) << "each axis counts";
    press(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_FALSE(view().timeRange);
  EXPECT_EQ(document.undoStack().count(), 0);
}

TEST_F(DialogScene, ItIsToldWhyLimitsMakeNoAxis)
{
  limits([](QDialog& dialog) {
    QLabel* message = nullptr;
    for (QLabel* each : dialog.findChildren<QLabel*>())
      if (each->accessibleName() == "Error") message = each;
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(message->text().isEmpty());
    QTest::keyClicks(&field(dialog, "Low end of Time"), "200");
    QTest::keyClicks(&field(dialog, "High end of Time"), "100");
    EXPECT_EQ(message->text(), "Low end of Time: 200 is not below 100, the high end");
    QTest::keyClicks(&field(dialog, "High end of Time"), "x");
    EXPECT_EQ(message->text(), "High end of Time: \"100x\" is no number");
    press(dialog, QDialogButtonBox::Reset);
    EXPECT_TRUE(message->text().isEmpty());
    press(dialog, QDialogButtonBox::Cancel);
  });
}

TEST_F(DialogScene, AFigureIsOfWhatIsZoomedInOn)
{
  zoom.show(app::AxisMap(2.0, 4.0), 0, app::AxisMap(0.25, 0.5));
  const app::FigureContent content = app::figureOf(document, zoom);
  EXPECT_EQ(content.time, zoom.time());
  EXPECT_EQ(content.values.at(0), zoom.value(0));
  NextDialogOf<app::ExportDialog> next([](app::ExportDialog& dialog) { dialog.reject(); });
  app::exportFigure(document, zoom, nullptr);
  EXPECT_TRUE(next.seen());
}

TEST(Appearance, BoxesToTickHaveSidesThatAreSeenInTheDark)
{
  useTestSettings();
  const app::Appearance before = app::chosenAppearance();
  app::chooseAppearance(app::Appearance::Dark);
  {
    QCheckBox box("Log");
    box.adjustSize();
    QStyleOptionButton option;
    option.initFrom(&box);
    const QRect side = box.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &box);
    const QImage shot = box.grab().toImage();
    const int ground = box.palette().color(QPalette::Window).lightness();
    EXPECT_GT(shot.pixelColor(side.left(), side.center().y()).lightness(), ground + 60);
  }
  app::chooseAppearance(before);
}

TEST(Appearance, TheButtonForMoreToolsIsSeenInTheDark)
{
  useTestSettings();
  const app::Appearance before = app::chosenAppearance();
  app::chooseAppearance(app::Appearance::Dark);
  const QImage arrow = QApplication::style()
                           ->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton)
                           .pixmap(32, 32)
                           .toImage();
  int lightest = 0;
  for (int y = 0; y < arrow.height(); ++y)
    for (int x = 0; x < arrow.width(); ++x)
      if (arrow.pixelColor(x, y).alpha() > 200)
        lightest = std::max(lightest, arrow.pixelColor(x, y).lightness());
  EXPECT_GT(lightest, QApplication::palette().color(QPalette::Window).lightness() + 60);
  for (int tip : {14, 24}) EXPECT_GT(arrow.pixelColor(tip, 16).alpha(), 200) << "two that point to the right";
  for (int back : {7, 17}) EXPECT_LT(arrow.pixelColor(back, 16).alpha(), 50);
  app::chooseAppearance(before);
}

TEST_F(DialogScene, ResetClearsAllLimits)
{
  document.change("Limits", [](app::State& state) {
    state.view.timeRange = app::TypedRange{1.0, 2.0};
    state.view.outputRanges[0] = {0.1, 0.2};
  });
  limits([this](QDialog& dialog) {
    press(dialog, QDialogButtonBox::Reset);
    EXPECT_EQ(field(dialog, "High end of A").text(), "");
    press(dialog);
  });
  EXPECT_FALSE(view().timeRange);
  EXPECT_TRUE(view().outputRanges.empty());
}

TEST_F(DialogScene, LimitsOfALogarithmicAxisAreOfItsOwn)
{
  document.change("Log", [](app::State& state) {
    state.view.outputs = {1};
    state.view.logOutputs[1] = true;
  });
  limits([this](QDialog& dialog) {
    EXPECT_GT(field(dialog, "Low end of B").placeholderText().toDouble(), 0.0) << "B begins at 0";
    press(dialog, QDialogButtonBox::Cancel);
  });
}

TEST_F(DialogScene, AScanThatOpensMeanwhileEndsDialogsOnTheFormer)
{
  document.change("Show", [](app::State& state) { state.view.outputs = {0, 1}; });
  bool ended = false;
  limits([&](QDialog& dialog) {
    QObject::connect(&dialog, &QDialog::rejected, [&] { ended = true; });
    field(dialog, "High end of B").setText("0.5");
    document.open(lineScan(3, 1), {});
  });
  EXPECT_TRUE(ended);
  EXPECT_TRUE(view().outputRanges.empty());
  ended = false;
  method([&](QDialog& dialog) {
    QObject::connect(&dialog, &QDialog::rejected, [&] { ended = true; });
    document.open(lineScan(3, 1), {});
  });
  EXPECT_TRUE(ended);
}

TEST_F(DialogScene, TheMethodIsTakenFromItsFields)
{
  method([](QDialog& dialog) {
    auto const shares = dialog.findChildren<QDoubleSpinBox*>();
    ASSERT_EQ(shares.size(), 2);
    EXPECT_EQ(shares[0]->value(), ComparisonMethod().thresholds.largestP);
    EXPECT_EQ(shares[1]->value(), ComparisonMethod().thresholds.smallestD);
    for (QDoubleSpinBox* share : shares) {
      EXPECT_EQ(share->minimum(), 0.0);
      EXPECT_EQ(share->maximum(), 1.0);
      EXPECT_FALSE(share->toolTip().isEmpty());
    }
    shares[0]->setValue(0.01);
    shares[1]->setValue(0.3);
    auto* adjustment = dialog.findChild<QComboBox*>();
    EXPECT_EQ(adjustment->currentText(), "Permutation (maxT)");
    adjustment->setCurrentIndex(adjustment->findText("Benjamini and Hochberg"));
    auto const counts = dialog.findChildren<QSpinBox*>();
    ASSERT_EQ(counts.size(), 3);
    EXPECT_EQ(counts[0]->value(), 1000);
    EXPECT_EQ(counts[1]->value(), 1);
    EXPECT_EQ(counts[2]->value(), 1);
    counts[0]->setValue(20'000);
    counts[1]->setValue(7);
    counts[2]->setValue(3);
    press(dialog);
  });
  ComparisonMethod const& taken = document.state().method;
  EXPECT_EQ(taken.thresholds.largestP, 0.01);
  EXPECT_EQ(taken.thresholds.smallestD, 0.3);
  EXPECT_EQ(taken.adjustment, Adjustment::BenjaminiHochberg);
  EXPECT_EQ(taken.permutations, 20'000u);
  EXPECT_EQ(taken.mostPermutations, 20'000u) << "no fewer at most than at first";
  EXPECT_EQ(taken.seed, 7u);
  EXPECT_EQ(taken.gatesTried, 3u);
  EXPECT_EQ(document.undoStack().undoText(), "Change method");
}

TEST_F(DialogScene, AMethodThatIsNotChangedStaysToTheLastDigit)
{
  document.change("Method", [](app::State& state) {
    state.method.thresholds = {1.5e-7, 0.123456789};
    state.method.adjustment = Adjustment::Holm;
    state.method.permutations = 0;
    state.method.seed = 18446744073709551615u;
    state.method.gatesTried = 2;
  });
  const int steps = document.undoStack().count();
  method([](QDialog& dialog) { press(dialog); });
  EXPECT_EQ(document.undoStack().count(), steps);
  EXPECT_EQ(document.state().method.thresholds.largestP, 1.5e-7);
  EXPECT_EQ(document.state().method.seed, 18446744073709551615u);
}

TEST_F(DialogScene, ACancelledMethodIsNotTaken)
{
  method([](QDialog& dialog) {
    dialog.findChildren<QDoubleSpinBox*>()[0]->setValue(0.01);
    press(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_EQ(document.undoStack().count(), 0);
}

TEST(StartPage, OffersFilesThatWereOpenedBefore)
{
  useTestSettings();
  QTemporaryDir folder;
  const QString path = folder.filePath("a & <b>.csv");
  QFile(path).open(QIODevice::WriteOnly);
  app::StartPage page;
  page.show();
  QSignalSpy wanted(&page, &app::StartPage::fileWanted);
  auto const links = [&] {
    QList<QPushButton*> found;
    for (QPushButton* each : page.findChildren<QPushButton*>())
      if (each->isFlat()) found << each;
    return found;
  };
  EXPECT_TRUE(links().isEmpty());
  page.setRecent({path, folder.filePath("gone.csv")});
  ASSERT_EQ(links().size(), 2);
  EXPECT_EQ(links()[0]->text(), "a && <b>.csv");
  EXPECT_TRUE(links()[0]->isEnabled());
  EXPECT_FALSE(links()[1]->isEnabled()) << "it is not there";
  links()[0]->click();
  ASSERT_EQ(wanted.count(), 1);
  EXPECT_EQ(wanted[0][0].toString(), path);
  page.setRecent({path});
  EXPECT_EQ(links().size(), 1) << "former links are gone";
  page.setRecent({});
  EXPECT_TRUE(links().isEmpty());
}

TEST(StartPage, OffersToOpenAScanAndToTryTheExample)
{
  app::StartPage page;
  QSignalSpy open(&page, &app::StartPage::openWanted);
  QSignalSpy example(&page, &app::StartPage::exampleWanted);
  for (QPushButton* each : page.findChildren<QPushButton*>()) each->click();
  EXPECT_EQ(open.count(), 1);
  EXPECT_EQ(example.count(), 1);
}

TEST_F(WindowScene, TheStartPageScrollsInALowWindow)
{
  app::StartPage page;
  QStringList files;
  for (int i = 0; i < 10; ++i) files << file(QString("scan%1.csv").arg(i).toUtf8().constData());
  page.setRecent(files);
  page.resize(500, 300);
  page.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&page));
  for (QWidget* each : page.findChildren<QWidget*>()) {
    if (!qobject_cast<QLabel*>(each) && !qobject_cast<QPushButton*>(each)) continue;
    const int needed =
        each->hasHeightForWidth() ? each->heightForWidth(each->width()) : each->sizeHint().height();
    EXPECT_GE(each->height(), needed);
  }
  auto* scroll = page.findChild<QScrollArea*>();
  ASSERT_NE(scroll, nullptr);
  EXPECT_GT(scroll->verticalScrollBar()->maximum(), 0);
}

TEST_F(WindowScene, RecentFilesOpenFromTheStartPage)
{
  ASSERT_TRUE(openLines());
  window = std::make_unique<app::ExplorerWindow>();
  window->show();
  QPushButton* link = nullptr;
  for (QPushButton* each : window->findChild<app::StartPage*>()->findChildren<QPushButton*>())
    if (each->text() == "scan.csv") link = each;
  ASSERT_NE(link, nullptr);
  link->click();
  EXPECT_TRUE(waitFor([this] { return document().isOpen(); }));
}

TEST_F(WindowScene, WithoutAScanOnlyWhatNeedsNoneCanBeDone)
{
  std::set<std::string> enabled;
  for (app::ActionEntry const& entry : app::actionTable())
    if (window->actions().at(entry.id)->isEnabled()) enabled.insert(entry.id);
  for (char const* id :
       {"file.reread",  "file.reading", "file.save",      "file.saveas", "file.figure", "file.runs",
        "file.plot",    "file.command", "edit.undo",      "edit.redo",   "gate.new",    "gate.edit",
        "gate.toggle",  "gate.negate",  "gate.delete",    "gate.clear",  "kind.all",    "kind.ever",
        "kind.never",   "kind.crosses", "view.addoutput", "view.limits", "zoom.reset",  "zoom.back",
        "zoom.forward", "pins.clear",   "view.composite", "method.edit", "set.keep",    "set.type",
        "set.file",     "set.cluster",  "set.failed"})
    EXPECT_EQ(enabled.count(id), 0u) << id;
  for (char const* id : {"file.open", "file.folder", "file.example", "file.window", "file.close", "file.quit",
                         "edit.commands", "help.guide", "help.keys", "help.about", "theme.dark"})
    EXPECT_EQ(enabled.count(id), 1u) << id;
  EXPECT_EQ(window->windowTitle(), "Runsieve");
}

TEST_F(WindowScene, WithAScanAllCanBeDoneThatHasSomethingToWorkOn)
{
  ASSERT_TRUE(openLines());
  auto const disabled = [this] {
    std::set<std::string> ids;
    for (app::ActionEntry const& entry : app::actionTable())
      if (!window->actions().at(entry.id)->isEnabled()) ids.insert(entry.id);
    return ids;
  };
  EXPECT_THAT(disabled(),
              testing::ElementsAre("edit.redo", "edit.undo", "gate.clear", "gate.delete", "gate.edit",
                                   "gate.negate", "gate.toggle", "kind.all", "kind.crosses", "kind.ever",
                                   "kind.never", "pins.clear", "zoom.back", "zoom.forward"));
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9));
  document().pin({1});
  window->runs().zoom().show(app::AxisMap(1.0, 2.0), 0, std::nullopt);
  EXPECT_THAT(disabled(), testing::ElementsAre("edit.redo", "zoom.forward"));
  trigger("zoom.back");
  trigger("edit.undo");
  trigger("pins.clear");
  EXPECT_TRUE(document().pinnedRuns().empty());
  EXPECT_EQ(disabled().count("zoom.forward"), 0u);
  EXPECT_EQ(disabled().count("edit.redo"), 0u);
  EXPECT_EQ(disabled().count("pins.clear"), 1u);
}

TEST_F(WindowScene, OnlyGatesOnValuesAtTimesHaveAKindToChoose)
{
  ASSERT_TRUE(openLines());
  Gate gate;
  gate.column = "k1";
  gate.range = {0.2, 0.8};
  document().change("Add", [&](app::State& state) {
    state.gates.push_back({"parameter", gate, true});
    state.gates.push_back({"output", gateOnA(0.2, 0.8), true});
    state.gates.push_back({"largest", gateOnA(0.2, 0.8), true});
    state.gates[2].gate.kind = GateKind::Max;
  });
  document().selectGate(0);
  EXPECT_FALSE(window->actions().at("kind.ever")->isEnabled());
  document().selectGate(2);
  EXPECT_FALSE(window->actions().at("kind.ever")->isEnabled());
  document().selectGate(1);
  EXPECT_TRUE(window->actions().at("kind.ever")->isEnabled());
  trigger("kind.crosses");
  EXPECT_EQ(document().state().gates[1].gate.kind, GateKind::Crosses);
  trigger("kind.all");
  EXPECT_EQ(document().state().gates[1].gate.kind, GateKind::Inside);
  trigger("gate.clear");
  EXPECT_TRUE(document().state().gates.empty());
  EXPECT_EQ(document().undoStack().undoText(), "Delete all gates");
}

TEST_F(WindowScene, EachChoiceOfTheMenusIsTaken)
{
  ASSERT_TRUE(openLines());
  trigger("look.lines");
  EXPECT_EQ(document().state().view.runsLook, app::RunsLook::Lines);
  trigger("look.density");
  EXPECT_EQ(document().state().view.runsLook, app::RunsLook::Density);
  trigger("focus.hidden");
  EXPECT_EQ(document().state().view.focus, app::Focus::Hidden);
  trigger("focus.all");
  EXPECT_EQ(document().state().view.focus, app::Focus::All);
  trigger("parameters.scatter");
  EXPECT_EQ(document().state().view.parameterLook, app::ParameterLook::Scatter);
  EXPECT_TRUE(window->actions().at("parameters.scatter")->isChecked());
  trigger("parameters.densities");
  EXPECT_EQ(document().state().view.parameterLook, app::ParameterLook::Densities);
  trigger("parameters.curves");
  EXPECT_EQ(document().state().view.parameterLook, app::ParameterLook::Curves);
  trigger("join.any");
  trigger("join.all");
  EXPECT_EQ(document().state().join, GateJoin::All);
  EXPECT_TRUE(window->actions().at("join.all")->isChecked());
  EXPECT_FALSE(window->actions().at("join.any")->isChecked());
  trigger("view.addoutput");
  EXPECT_EQ(document().state().view.outputs.size(), 2u);
}

TEST_F(WindowScene, TheToolIsChosenInTheToolbar)
{
  ASSERT_TRUE(openLines());
  EXPECT_TRUE(window->actions().at("tool.gate")->isChecked());
  trigger("tool.zoom");
  Mouse(view()).drag(at(2.0, 0.2), at(8.0, 0.8));
  EXPECT_FALSE(window->runs().zoom().isAll());
  trigger("zoom.reset");
  EXPECT_TRUE(window->runs().zoom().isAll());
  trigger("tool.pan");
  EXPECT_FALSE(window->actions().at("tool.zoom")->isChecked()) << "one of them";
  Mouse(view()).drag(at(2.0, 0.2), at(3.0, 0.2));
  EXPECT_NEAR(window->runs().zoom().time().low(), -1.0, 0.01);
  EXPECT_TRUE(document().state().gates.empty());
  trigger("zoom.reset");
  trigger("tool.gate");
  Mouse(view()).drag(at(2.0, 0.2), at(8.0, 0.8));
  EXPECT_EQ(document().state().gates.size(), 1u);
}

TEST_F(WindowScene, MenusAndToolbarAreThoseOfTheTable)
{
  QStringList menus;
  for (QAction* action : window->menuBar()->actions()) menus << action->text();
  EXPECT_EQ(menus, (QStringList{"&File", "&Edit", "&Gates", "&View", "&Parameters", "&Sets", "&Help"}));
  QStringList tools;
  for (QAction* action : window->actions().toolbar()->actions())
    tools << (action->isSeparator() ? QString("|") : action->iconText());
  EXPECT_EQ(tools,
            (QStringList{"Open", "Save session", "Export figure", "|", "Undo", "Redo", "|", "Draw gates",
                         "Pan", "Zoom into a rectangle", "|", "Add an output", "Show everything"}));
  QStringList edits;
  for (QAction* action : window->actions().menu("&Edit")->actions())
    edits << (action->isSeparator() ? QString("|") : action->objectName());
  EXPECT_EQ(edits, (QStringList{"edit.undo", "edit.redo", "|", "edit.commands"}));
  EXPECT_FALSE(window->actions().at("file.open")->isCheckable());
  EXPECT_TRUE(window->actions().at("tool.gate")->isCheckable());
  EXPECT_EQ(window->actions().at("edit.redo")->shortcuts().size(), 2);
  EXPECT_EQ(window->actions().at("file.open")->toolTip(), "Open a file with a scan, or a sieve (Ctrl+O)");
  EXPECT_EQ(window->actions().at("help.about")->toolTip(), "Versions and licences");
  EXPECT_THROW((void)window->actions().at("no.such"), std::logic_error);
}

TEST_F(WindowScene, TheCommandOfThePictureIsCopied)
{
  ASSERT_TRUE(openLines());
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9));
  window->runs().zoom().show(app::AxisMap(1.0, 5.0), 0, std::nullopt);
  trigger("file.command");
  const std::string copied = QGuiApplication::clipboard()->text().toStdString();
  EXPECT_THAT(copied, HasSubstr("runsieve rank " + file("scan.csv").toStdString()));
  EXPECT_THAT(copied, HasSubstr("--time-range 1..5"));
  EXPECT_EQ(window->statusText(), "Copied: the commands of this table and this picture");
}

TEST_F(WindowScene, PanesAreHiddenUntilThereIsAScan)
{
  auto const docks = window->findChildren<QDockWidget*>();
  ASSERT_EQ(docks.size(), 5);
  for (QDockWidget* dock : docks) EXPECT_TRUE(dock->isHidden()) << dock->objectName().toStdString();
  ASSERT_TRUE(openLines());
  for (QDockWidget* dock : docks) EXPECT_FALSE(dock->isHidden()) << dock->objectName().toStdString();
  for (char const* front : {"gates", "parameters"})
    EXPECT_TRUE(waitFor([&] { return !window->findChild<QDockWidget*>(front)->visibleRegion().isEmpty(); }))
        << front << " is in front of those that share its place";
  document().close();
  for (QDockWidget* dock : docks) EXPECT_TRUE(dock->isHidden()) << dock->objectName().toStdString();
}

TEST_F(WindowScene, PanesStandWhereTheyWereLeftAndComeBackToTheirFirstPlaces)
{
  ASSERT_TRUE(openLines());
  auto const dock = [this](char const* name) { return window->findChild<QDockWidget*>(name); };
  window->addDockWidget(Qt::LeftDockWidgetArea, dock("gates"));
  dock("runs")->hide();
  document().close();
  window->close();
  window = std::make_unique<app::ExplorerWindow>();
  window->resize(1200, 850);
  window->show();
  ASSERT_TRUE(openLines());
  EXPECT_EQ(window->dockWidgetArea(dock("gates")), Qt::LeftDockWidgetArea);
  EXPECT_TRUE(dock("runs")->isHidden());
  dock("sets")->setFloating(true);
  trigger("view.docks");
  EXPECT_EQ(window->dockWidgetArea(dock("gates")), Qt::BottomDockWidgetArea);
  EXPECT_EQ(window->dockWidgetArea(dock("parameters")), Qt::RightDockWidgetArea);
  EXPECT_FALSE(dock("runs")->isHidden());
  EXPECT_FALSE(dock("sets")->isFloating());
  EXPECT_TRUE(window->tabifiedDockWidgets(dock("gates")).contains(dock("sets")));
  EXPECT_TRUE(window->tabifiedDockWidgets(dock("parameters")).contains(dock("runs")));
  EXPECT_GT(view().width(), window->width() / 3) << "the runs keep the largest part";
}

TEST_F(WindowScene, PanesHaveAMenu)
{
  QMenu const* panes = nullptr;
  for (QAction* action : window->actions().menu("&View")->actions())
    if (action->menu() && action->text() == "&Panes") panes = action->menu();
  ASSERT_NE(panes, nullptr);
  QStringList names;
  for (QAction* action : panes->actions()) names << action->text();
  EXPECT_EQ(names, (QStringList{"Gates", "Sets", "Parameters", "Table", "Runs"}));
}

TEST_F(WindowScene, TheHelpNamesEachCommandItsKeysAndWhatTheMouseDoes)
{
  trigger("help.keys");
  auto* text = window->findChild<QTextBrowser*>();
  ASSERT_NE(text, nullptr);
  const QString shown = text->toPlainText();
  for (app::ActionEntry const& entry : app::actionTable()) {
    EXPECT_TRUE(shown.contains(QString(entry.text).remove('&').remove("..."))) << entry.id;
    EXPECT_TRUE(shown.contains(entry.hint)) << entry.id;
  }
  EXPECT_TRUE(shown.contains("Ctrl+Shift+Z, Ctrl+Y"));
  EXPECT_TRUE(shown.contains("drag with the right button"));
  EXPECT_FALSE(shown.contains("&"));
  auto* dialog = qobject_cast<QDialog*>(text->window());
  ASSERT_NE(dialog, nullptr);
  EXPECT_FALSE(dialog->isModal()) << "it stays open beside the work";
  dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Close)->click();
  EXPECT_TRUE(waitFor([this] { return !window->findChild<QTextBrowser*>(); }));
}

TEST_F(WindowScene, TheGuideOpensAndAboutTellsTheVersions)
{
  trigger("help.guide");
  auto* text = window->findChild<QTextBrowser*>();
  ASSERT_NE(text, nullptr);
  EXPECT_GT(text->toPlainText().size(), 1000);
  NextMessage about(QMessageBox::Ok);
  trigger("help.about");
  EXPECT_TRUE(about.seen());
  EXPECT_THAT(about.more.toStdString(), HasSubstr(qVersion()));
  EXPECT_THAT(about.text.toStdString(), HasSubstr("Runsieve"));
}

struct SearchScene : WindowScene
{
  std::unique_ptr<app::CommandSearch> search;
  QLineEdit* words = nullptr;
  QListWidget* found = nullptr;

  void open(QStringList const& ids)
  {
    QList<QAction*> actions;
    for (QString const& id : ids) actions << window->actions().at(id.toUtf8());
    search = std::make_unique<app::CommandSearch>(actions);
    search->show();
    words = search->findChild<QLineEdit*>();
    found = search->findChild<QListWidget*>();
  }
};

TEST_F(SearchScene, TheListIsWalkedThroughWhileWordsAreTyped)
{
  QStringList ids;
  for (app::ActionEntry const& entry : app::actionTable())
    if (QString(entry.id).startsWith("theme.") || QString(entry.id).startsWith("help.")) ids << entry.id;
  for (int i = 0; i < 3; ++i) ids += ids.mid(0, 6);
  open(ids);
  ASSERT_GT(found->count(), 20);
  auto const press = [this](Qt::Key key) {
    QTest::keyClick(words, key);
    return found->currentRow();
  };
  EXPECT_EQ(found->currentRow(), 0);
  EXPECT_EQ(press(Qt::Key_Up), 0);
  EXPECT_EQ(press(Qt::Key_Down), 1);
  EXPECT_EQ(press(Qt::Key_Down), 2);
  EXPECT_EQ(press(Qt::Key_Up), 1);
  EXPECT_EQ(press(Qt::Key_PageDown), 11);
  EXPECT_EQ(press(Qt::Key_PageDown), 21);
  EXPECT_EQ(press(Qt::Key_PageDown), found->count() - 1);
  EXPECT_EQ(press(Qt::Key_PageUp), found->count() - 11);
}

TEST_F(SearchScene, CommandsAreNamedWithTheirKeysAndThoseThatCannotBeDoneAreNotChosen)
{
  open({"edit.undo", "file.open", "help.about"});
  EXPECT_EQ(found->item(0)->text(), "Undo   (Ctrl+Z)");
  EXPECT_EQ(found->item(1)->text(), "Open   (Ctrl+O)");
  EXPECT_EQ(found->item(2)->text(), "About Runsieve");
  EXPECT_EQ(found->item(1)->toolTip(), window->actions().at("file.open")->statusTip());
  EXPECT_EQ(found->currentRow(), 1) << "there is nothing to take back";
  EXPECT_EQ(found->item(0)->flags(), Qt::NoItemFlags);
  QTest::keyClicks(words, "no such thing");
  EXPECT_EQ(found->count(), 0);
  QTest::keyClick(words, Qt::Key_Down);
  QTest::keyClick(words, Qt::Key_Return);
  EXPECT_TRUE(search->isVisible());
}

TEST_F(SearchScene, AChosenCommandClosesTheSearch)
{
  trigger("theme.desktop");
  open({"theme.light"});
  const QPalette before = QApplication::palette();
  QTest::keyClick(words, Qt::Key_Return);
  EXPECT_FALSE(search->isVisible());
  EXPECT_EQ(app::chosenAppearance(), app::Appearance::Light);
  trigger("theme.desktop");
  EXPECT_EQ(app::chosenAppearance(), app::Appearance::Desktop);
  EXPECT_EQ(QApplication::palette().color(QPalette::Base), before.color(QPalette::Base));
}

TEST_F(SearchScene, TheMenuSearchesAllCommands)
{
  bool all = false;
  NextDialogOf<app::CommandSearch> next([&](app::CommandSearch& dialog) {
    all = dialog.findChild<QListWidget*>()->count() == static_cast<int>(app::actionTable().size());
    dialog.reject();
  });
  trigger("edit.commands");
  EXPECT_TRUE(all);
}

TEST(Appearance, TextsStandOutInLightAndDark)
{
  useTestSettings();
  const QPalette before = QApplication::palette();
  app::applyChosenAppearance();
  for (app::Appearance appearance : {app::Appearance::Light, app::Appearance::Dark}) {
    app::chooseAppearance(appearance);
    const QPalette palette = QApplication::palette();
    const bool dark = appearance == app::Appearance::Dark;
    EXPECT_EQ(palette.color(QPalette::Window).lightness() < 128, dark);
    EXPECT_EQ(palette.color(QPalette::Base).lightness() < 128, dark);
    auto const contrast = [&](QPalette::ColorRole text, QPalette::ColorRole ground,
                              QPalette::ColorGroup group = QPalette::Active) {
      return std::abs(palette.color(group, text).lightness() - palette.color(group, ground).lightness());
    };
    for (auto const& [text, ground] : {std::pair{QPalette::WindowText, QPalette::Window},
                                       {QPalette::Text, QPalette::Base},
                                       {QPalette::ButtonText, QPalette::Button},
                                       {QPalette::HighlightedText, QPalette::Highlight},
                                       {QPalette::ToolTipText, QPalette::ToolTipBase},
                                       {QPalette::Text, QPalette::AlternateBase}})
      EXPECT_GT(contrast(text, ground), 100) << text << " dark " << dark;
    EXPECT_GT(contrast(QPalette::PlaceholderText, QPalette::Base), 50);
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
      EXPECT_LT(contrast(role, QPalette::Window, QPalette::Disabled), contrast(role, QPalette::Window) - 20)
          << "what cannot be used is paler";
    EXPECT_EQ(app::chosenAppearance(), appearance) << "it is remembered";
  }
  app::chooseAppearance(app::Appearance::Desktop);
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), before.color(QPalette::Window));
}

/// Pixels of an icon that are drawn on.
int inkOf(QImage const& image)
{
  int ink = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) ink += image.pixelColor(x, y).alpha() > 100 ? 1 : 0;
  return ink;
}

TEST(Icons, OfTheToolbarAreDrawnAndDiffer)
{
  std::vector<QImage> seen;
  for (app::ActionEntry const& entry : app::actionTable()) {
    const QIcon icon = app::iconOf(entry.id);
    if (!entry.inToolbar) {
      EXPECT_TRUE(icon.isNull()) << entry.id;
      continue;
    }
    ASSERT_FALSE(icon.isNull()) << entry.id;
    const QImage image = icon.pixmap(48, 48).toImage().convertToFormat(QImage::Format_ARGB32);
    EXPECT_GT(inkOf(image), 100) << entry.id;
    EXPECT_LT(inkOf(image), image.width() * image.height() / 2) << entry.id;
    for (int i = 0; i < image.width(); ++i) {
      EXPECT_EQ(image.pixelColor(i, 0).alpha(), 0) << entry.id << " is not cut off";
      EXPECT_EQ(image.pixelColor(i, image.height() - 1).alpha(), 0) << entry.id;
      EXPECT_EQ(image.pixelColor(0, i).alpha(), 0) << entry.id;
      EXPECT_EQ(image.pixelColor(image.width() - 1, i).alpha(), 0) << entry.id;
    }
    for (QImage const& other : seen) EXPECT_NE(image, other) << entry.id;
    seen.push_back(image);
  }
  EXPECT_EQ(seen.size(), 10u);
}

TEST(Icons, OfUndoAndRedoAreMirrored)
{
  auto const imageOf = [](char const* id) {
    return app::iconOf(id).pixmap(48, 48).toImage().convertToFormat(QImage::Format_ARGB32);
  };
  const QImage undo = imageOf("edit.undo");
  const QImage redo = imageOf("edit.redo").mirrored(true, false);
  int apart = 0;
  for (int y = 0; y < undo.height(); ++y)
    for (int x = 0; x < undo.width(); ++x)
      apart += std::abs(undo.pixelColor(x, y).alpha() - redo.pixelColor(x, y).alpha()) > 100 ? 1 : 0;
  EXPECT_LT(apart, 20);
}

TEST(Icons, HaveTheColourOfTextsAndArePaleIfTheyCannotBeUsed)
{
  auto const colorOf = [](QIcon::Mode mode) {
    const QImage image = app::iconOf("tool.gate").pixmap(QSize(48, 48), mode).toImage();
    const double scale = image.width() / 24.0;
    return image.pixelColor(qRound(6 * scale), qRound(6 * scale));
  };
  const QPalette palette = QGuiApplication::palette();
  EXPECT_EQ(colorOf(QIcon::Normal), palette.color(QPalette::Active, QPalette::WindowText));
  EXPECT_EQ(colorOf(QIcon::Disabled), palette.color(QPalette::Disabled, QPalette::WindowText));
  EXPECT_FALSE(app::programIcon().isNull());
}

TEST_F(WindowScene, TheMenuOfAGateOffersWhatCanBeDoneWithItAndHowItAsks)
{
  ASSERT_TRUE(openLines());
  Mouse(view()).drag(at(2.0, 0.2), at(4.0, 0.6));
  QStringList entries;
  QTimer::singleShot(0, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* action : menu->actions())
      if (!action->isSeparator()) entries << action->objectName();
    menu->close();
  });
  Q_EMIT window->runs().gateMenuWanted({100, 100});
  EXPECT_EQ(entries, (QStringList{"gate.edit", "gate.toggle", "gate.negate", "gate.delete", "kind.all",
                                  "kind.ever", "kind.never", "kind.crosses"}));
}

TEST_F(WindowScene, ANewWindowHasTheSizeOfTheLastOne)
{
  window->resize(900, 640);
  QApplication::processEvents();
  window->close();
  const std::unique_ptr<app::ExplorerWindow> next(app::newExplorerWindow());
  EXPECT_TRUE(next->isVisible());
  EXPECT_EQ(next->size(), QSize(900, 640));
  EXPECT_FALSE(next->document().isOpen());
}

TEST_F(WindowScene, BandsOfWholeRunsAreALookOfTheMenu)
{
  ASSERT_TRUE(openLines());
  trigger("look.wholebands");
  EXPECT_EQ(document().state().view.runsLook, app::RunsLook::WholeBands);
  EXPECT_TRUE(window->actions().at("look.wholebands")->isChecked());
  EXPECT_FALSE(window->actions().at("look.density")->isChecked());
}

} // namespace
} // namespace runsieve::test
