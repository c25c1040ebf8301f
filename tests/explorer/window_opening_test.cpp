#include "FilesScene.h"

#include "app/explorer/session/Autosave.h"
#include "app/explorer/session/ErrorDialog.h"
#include "app/explorer/session/RecentFiles.h"
#include "app/explorer/window/OpenWindows.h"
#include "app/explorer/window/RecentMenu.h"
#include "app/explorer/window/StartPage.h"

#include <gmock/gmock.h>

#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// The windows that were opened beside that of the scene, in their order.
std::vector<app::ExplorerWindow*> otherWindows(app::ExplorerWindow const* known)
{
  std::vector<app::ExplorerWindow*> found;
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* one = qobject_cast<app::ExplorerWindow*>(widget); one && one != known) found.push_back(one);
  return found;
}

/// Closes them whatever happens.
struct OtherWindows
{
  app::ExplorerWindow const* known;

  ~OtherWindows() { qDeleteAll(otherWindows(known)); }
  [[nodiscard]] QStringList titles() const
  {
    QStringList titles;
    for (auto* one : otherWindows(known)) titles << one->files().title();
    titles.sort();
    return titles;
  }
  [[nodiscard]] bool settle() const
  {
    return waitFor([this] {
      auto const all = otherWindows(known);
      return std::all_of(all.begin(), all.end(), [](auto* one) { return one->isSettled(); });
    });
  }
};

/// What windows that crashed have left.
struct RecoveryScene : FilesScene
{
  QString left; ///< of "scan.csv", with a gate
  OtherWindows others{nullptr};

  void SetUp() override
  {
    FilesScene::SetUp();
    others.known = window.get();
    for (auto const& former : app::recoverableSessions()) app::discardRecoverable(former);
    writeScan(*lineScan(12), file("b.csv").toStdString());
    left = leave("scan.csv");
  }
  void TearDown() override
  {
    for (auto const& former : app::recoverableSessions()) app::discardRecoverable(former);
  }

  /// \return where it is
  QString leave(char const* scan)
  {
    EXPECT_TRUE(openLines(scan));
    drawGate();
    const QString place = QFileInfo(app::Autosave(document()).path()).absolutePath();
    QDir().mkpath(place);
    const QString path = place + '/' + scan + ".sieve";
    EXPECT_TRUE(window->files().saveTo(path));
    document().close();
    return path;
  }
  /// The window that was opened first.
  [[nodiscard]] app::ExplorerWindow& first() const { return *otherWindows(window.get()).at(0); }
};

TEST_F(RecoveryScene, WhatACrashHasLeftOpensIfTheUserWantsIt)
{
  NextMessage asked(QMessageBox::Open);
  app::openWindows({});
  EXPECT_EQ(asked.text, "Runsieve ended unexpectedly. Do you want to go on where you were?");
  EXPECT_THAT(asked.more.toStdString(), HasSubstr(file("scan.csv").toStdString()));
  ASSERT_TRUE(others.settle());
  ASSERT_EQ(others.titles(), QStringList{"scan.csv"});
  EXPECT_EQ(first().document().state().gates.size(), 1u);
}

TEST_F(RecoveryScene, WhatIsOpenAgainIsLostNeitherByClosingNorByAnotherCrash)
{
  {
    NextMessage asked(QMessageBox::Open);
    app::openWindows({});
  }
  ASSERT_TRUE(others.settle());
  EXPECT_TRUE(QFileInfo::exists(left)) << "a crash now would lose it";
  EXPECT_TRUE(app::recoverableSessions().empty()) << "its window lives";
  {
    NextMessage asked(QMessageBox::Cancel);
    EXPECT_FALSE(first().close());
    EXPECT_TRUE(asked.seen()) << "it is saved nowhere";
    NextFile place("");
    EXPECT_FALSE(first().files().save());
    EXPECT_TRUE(place.seen()) << "nor has it a place";
  }
  NextMessage asked(QMessageBox::Discard);
  EXPECT_TRUE(first().close());
  EXPECT_TRUE(asked.seen());
  EXPECT_TRUE(waitFor([this] { return !QFileInfo::exists(left); }));
}

TEST_F(RecoveryScene, WhatCannotBeOpenedIsOfferedAgain)
{
  ASSERT_TRUE(QFile::remove(file("scan.csv")));
  NextMessage asked(QMessageBox::Open);
  NextDialogOf<app::ErrorDialog> told([](app::ErrorDialog& dialog) { dialog.accept(); });
  app::openWindows({});
  ASSERT_TRUE(waitFor([&] { return told.seen(); }));
  EXPECT_EQ(app::recoverableSessions().size(), 1u);
}

TEST_F(RecoveryScene, WhatIsDamagedSinceItWasFoundIsTold)
{
  const auto found = app::recoverableSessions();
  ASSERT_EQ(found.size(), 1u);
  ASSERT_TRUE(QFile::resize(left, 10));
  NextDialogOf<app::ErrorDialog> told([](app::ErrorDialog& dialog) { dialog.accept(); });
  window->files().recover(found[0]);
  EXPECT_TRUE(told.seen());
  EXPECT_FALSE(window->files().isBusy());
}

TEST_F(RecoveryScene, WhatIsDiscardedIsGone)
{
  NextMessage asked(QMessageBox::Discard);
  app::openWindows({});
  EXPECT_FALSE(QFileInfo::exists(left));
  EXPECT_FALSE(first().files().isBusy());
}

TEST_F(RecoveryScene, WithoutADecisionItIsAskedAgain)
{
  {
    NextMessage asked(QMessageBox::Cancel);
    app::openWindows({});
    EXPECT_EQ(asked.chosen, "&Later");
    EXPECT_EQ(asked.tip, "Ask again at the next start");
  }
  EXPECT_TRUE(QFileInfo::exists(left));
  {
    NextMessage asked(QMessageBox::Discard);
    app::openWindows({});
    EXPECT_TRUE(asked.seen());
  }
  app::openWindows({});
  EXPECT_EQ(otherWindows(window.get()).size(), 3u) << "nothing is left, and nothing is asked";
}

TEST_F(RecoveryScene, WorkOfEachWindowHasAWindowAgain)
{
  leave("second.csv");
  NextMessage one(QMessageBox::Open);
  NextMessage two(QMessageBox::Open);
  app::openWindows({file("b.csv")});
  EXPECT_TRUE(one.seen() && two.seen());
  ASSERT_TRUE(others.settle());
  EXPECT_EQ(others.titles(), (QStringList{"b.csv", "scan.csv", "second.csv"}));
}

TEST_F(RecoveryScene, OfSeveralTheUserMayDiscardSome)
{
  const QString second = leave("second.csv");
  NextMessage one(QMessageBox::Discard);
  NextMessage two(QMessageBox::Open);
  app::openWindows({});
  ASSERT_TRUE(two.seen());
  ASSERT_TRUE(others.settle());
  const bool isSecondGone = one.more.contains("second.csv");
  EXPECT_EQ(others.titles(), QStringList{isSecondGone ? "scan.csv" : "second.csv"});
  EXPECT_FALSE(QFileInfo::exists(isSecondGone ? second : left));
  EXPECT_TRUE(QFileInfo::exists(isSecondGone ? left : second));
}

TEST_F(RecoveryScene, WhoDoesNotDecideIsNotAskedOnButKeepsWhatWasChosenBefore)
{
  leave("second.csv");
  NextMessage one(QMessageBox::Open);
  NextMessage two(QMessageBox::Cancel);
  app::openWindows({});
  ASSERT_TRUE(two.seen());
  ASSERT_TRUE(others.settle());
  EXPECT_EQ(others.titles(), QStringList{one.more.contains("second.csv") ? "second.csv" : "scan.csv"});
  EXPECT_EQ(app::recoverableSessions().size(), 1u);
}

TEST_F(RecoveryScene, RecoveredWorkHasAWindowOfItsOwnBesideTheFileOfTheCommand)
{
  NextMessage asked(QMessageBox::Open);
  app::openWindows({file("b.csv")});
  EXPECT_TRUE(asked.seen());
  ASSERT_TRUE(others.settle());
  EXPECT_EQ(others.titles(), (QStringList{"b.csv", "scan.csv"}));
  for (auto* one : otherWindows(window.get()))
    EXPECT_EQ(one->document().state().gates.size(), one->files().title() == "scan.csv" ? 1u : 0u);
}

TEST_F(RecoveryScene, AFileThatIsInRecoveredWorkIsNotOpenedTwice)
{
  NextMessage asked(QMessageBox::Open);
  app::openWindows({file("scan.csv")});
  ASSERT_TRUE(others.settle());
  EXPECT_EQ(others.titles(), QStringList{"scan.csv"});
}

TEST_F(RecoveryScene, WithoutRecoveryTheFirstWindowTakesTheFile)
{
  NextMessage asked(QMessageBox::Discard);
  app::openWindows({file("b.csv")});
  ASSERT_TRUE(others.settle());
  EXPECT_EQ(others.titles(), QStringList{"b.csv"});
}

struct OpeningWindows : FilesScene
{
  OtherWindows others{nullptr};

  void SetUp() override
  {
    FilesScene::SetUp();
    others.known = window.get();
    for (auto const& former : app::recoverableSessions()) app::discardRecoverable(former);
    for (char const* name : {"a.csv", "b.csv"}) writeScan(*lineScan(12), file(name).toStdString());
  }
};

TEST_F(OpeningWindows, EachFileOfACommandHasAWindow)
{
  app::openWindows({file("a.csv"), file("b.csv")});
  EXPECT_EQ(otherWindows(window.get()).size(), 2u);
  ASSERT_TRUE(others.settle());
  EXPECT_EQ(others.titles(), (QStringList{"a.csv", "b.csv"}));
}

TEST_F(OpeningWindows, ACommandWithoutFilesHasAnEmptyWindow)
{
  app::openWindows({});
  ASSERT_EQ(otherWindows(window.get()).size(), 1u);
  EXPECT_FALSE(otherWindows(window.get())[0]->document().isOpen());
}

TEST_F(OpeningWindows, HowAFileIsReadGoesWithIt)
{
  ReadOptions options;
  options.ignore = {"B"};
  app::openWindows({file("a.csv")}, options);
  ASSERT_TRUE(others.settle());
  EXPECT_EQ(otherWindows(window.get())[0]->document().scan().outputs.size(), 1u);
}

/// Drags it over a window and lets it go. \return whether the window would have it
bool drop(QMimeData const& data, QWidget& onto)
{
  QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QApplication::sendEvent(&onto, &enter);
  QDropEvent end(QPointF(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&onto, &end);
  return enter.isAccepted();
}

TEST_F(OpeningWindows, OnlyFilesAreTakenFromADrop)
{
  QMimeData text;
  text.setText("no file");
  EXPECT_FALSE(drop(text, *window));
  QMimeData link;
  link.setUrls({QUrl("https://example.org/scan.csv")});
  EXPECT_TRUE(drop(link, *window)) << "it may be of a file";
  EXPECT_FALSE(window->files().isBusy());
  EXPECT_TRUE(otherWindows(window.get()).empty());
}

TEST_F(OpeningWindows, OfSeveralFilesThatAreDroppedEachHasAWindow)
{
  QMimeData files;
  files.setUrls({QUrl("https://example.org/scan.csv"), QUrl::fromLocalFile(file("a.csv")),
                 QUrl::fromLocalFile(file("b.csv"))});
  EXPECT_TRUE(drop(files, *window));
  ASSERT_TRUE(settle() && others.settle());
  EXPECT_EQ(window->files().title(), "a.csv");
  EXPECT_EQ(others.titles(), QStringList{"b.csv"});
}

TEST_F(FilesScene, OpenedFilesAreRecentAndTheExampleIsNot)
{
  app::RecentFiles::clear();
  ASSERT_TRUE(openLines());
  EXPECT_EQ(app::RecentFiles::list(), QStringList{file("scan.csv")});
  trigger("file.example");
  ASSERT_TRUE(waitFor([this] { return document().scan().runs.size() == 1000u; }, 60'000));
  EXPECT_EQ(app::RecentFiles::list(), QStringList{file("scan.csv")});
  EXPECT_EQ(title(), "Example - Runsieve");
}

TEST_F(FilesScene, RecentFilesOfEqualNamesAreToldWithTheirFolders)
{
  EXPECT_EQ(app::RecentFiles::namesOf({"/a/scan.csv", "/b/fit.csv", "/b/c/scan.csv"}),
            (QStringList{"scan.csv (/a)", "fit.csv", "scan.csv (/b/c)"}));
}

struct RecentScene : FilesScene
{
  [[nodiscard]] app::RecentMenu& menu() { return *window->findChild<app::RecentMenu*>(); }
  /// What the menu shows when it opens.
  [[nodiscard]] QStringList shown()
  {
    Q_EMIT menu().aboutToShow();
    QStringList texts;
    for (QAction const* action : menu().actions())
      if (!action->isSeparator()) texts << action->text();
    return texts;
  }
};

TEST_F(RecentScene, AMenuOffersTheFilesThatWereOpenedLast)
{
  ASSERT_TRUE(openLines("first & last.csv"));
  ASSERT_TRUE(openLines("other.csv", 20));
  EXPECT_EQ(shown(), (QStringList{"other.csv", "first && last.csv", "Forget &these"}));
  EXPECT_THAT(menu().actions()[1]->toolTip().toStdString(), HasSubstr(folder.path().toStdString()));
  menu().actions()[1]->trigger();
  ASSERT_TRUE(waitFor([this] { return document().scan().runs.size() == 40u; }) && settle());
  EXPECT_EQ(shown().first(), "first && last.csv");
}

TEST_F(RecentScene, AFileIsReadAsItWasReadLast)
{
  ASSERT_TRUE(openLines("with.csv"));
  ReadOptions options;
  options.ignore = {"B"};
  window->open(file("with.csv"), options);
  ASSERT_TRUE(waitFor([this] { return document().scan().outputs.size() == 1u; }) && settle());
  ASSERT_TRUE(openLines("other.csv"));
  ASSERT_EQ(document().scan().outputs.size(), 2u);
  EXPECT_EQ(shown()[1], "with.csv");
  EXPECT_THAT(menu().actions()[1]->toolTip().toStdString(), HasSubstr("read with --ignore B"));
  EXPECT_THAT(menu().actions()[0]->toolTip().toStdString(), testing::Not(HasSubstr("read with")));
  menu().actions()[1]->trigger();
  ASSERT_TRUE(waitFor([this] { return document().scan().outputs.size() == 1u; }) && settle());
  document().close();
  window->findChild<app::StartPage*>()->setRecent({file("with.csv")});
  for (QPushButton* each : window->findChild<app::StartPage*>()->findChildren<QPushButton*>()) {
    if (each->text() != "with.csv") continue;
    EXPECT_THAT(each->toolTip().toStdString(), HasSubstr("read with --ignore B"));
    each->click();
  }
  ASSERT_TRUE(waitFor([this] { return document().isOpen(); }) && settle());
  EXPECT_EQ(document().scan().outputs.size(), 1u);
  window->open(file("with.csv"));
  ASSERT_TRUE(waitFor([this] { return document().scan().outputs.size() == 2u; }) && settle());
  EXPECT_TRUE(app::RecentFiles::optionsOf(file("with.csv")).ignore.empty()) << "the last time without";
}

TEST_F(RecentScene, HowFilesWereReadIsForgottenWithThemAndWithAnythingOdd)
{
  ReadOptions options;
  options.time = "t";
  app::RecentFiles::add(file("a.csv"), options);
  EXPECT_EQ(app::RecentFiles::optionsOf(file("a.csv")).time, "t");
  for (int i = 0; i < 2 * app::RecentFiles::most; ++i) app::RecentFiles::add(file("b") + QString::number(i));
  EXPECT_EQ(app::RecentFiles::optionsOf(file("a.csv")).time, "");
  app::RecentFiles::add(file("a.csv"), options);
  QSettings().setValue("recent/reading", QVariantMap{{file("a.csv"), "odd"}});
  EXPECT_EQ(app::RecentFiles::optionsOf(file("a.csv")).time, "");
  app::RecentFiles::add(file("a.csv"), options);
  app::RecentFiles::clear();
  EXPECT_EQ(app::RecentFiles::optionsOf(file("a.csv")).time, "");
}

TEST_F(RecentScene, TheMenuStandsInThatOfFilesAfterTheWaysToOpenOthers)
{
  QList<QAction*> const actions = window->actions().menu("&File")->actions();
  ASSERT_GT(actions.size(), 3);
  EXPECT_EQ(actions[1]->objectName(), "file.folder");
  EXPECT_EQ(actions[2]->menu(), &menu());
}

TEST_F(RecentScene, RecentFilesAreForgottenIfTheUserWantsIt)
{
  EXPECT_EQ(shown(), QStringList{"No file was opened yet"});
  EXPECT_FALSE(menu().actions()[0]->isEnabled());
  ASSERT_TRUE(openLines());
  EXPECT_EQ(shown().size(), 2);
  menu().actions().last()->trigger();
  EXPECT_TRUE(app::RecentFiles::list().isEmpty());
  EXPECT_EQ(shown(), QStringList{"No file was opened yet"});
}

} // namespace
} // namespace runsieve::test
