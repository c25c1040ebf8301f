#include "Dialogs.h"
#include "SessionScene.h"

#include "app/explorer/session/Autosave.h"
#include "app/explorer/session/ChangedFileBar.h"
#include "app/explorer/session/ErrorDialog.h"
#include "app/explorer/session/FileWatch.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QDateTime>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QTextDocument>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct AutosaveScene : SessionScene
{
  AutosaveScene()
  {
    for (auto const& left : app::recoverableSessions()) app::discardRecoverable(left);
  }
};

TEST_F(AutosaveScene, ChangesAreKeptInAFileThatGoesAtACleanEnd)
{
  QString path;
  {
    app::Autosave autosave(document);
    autosave.setDelay(10);
    path = autosave.path();
    openData();
    QTest::qWait(50);
    EXPECT_FALSE(QFile::exists(path)) << "nothing has been changed";
    makeWork();
    ASSERT_TRUE(waitFor([&] { return QFile::exists(path); }));
    EXPECT_EQ(app::readSession(path).gates.size(), 3u);
    EXPECT_EQ(app::readSession(path).path, data.toStdString());
    EXPECT_THAT(app::recoverableSessions(), IsEmpty()) << "its window lives";
  }
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_THAT(app::recoverableSessions(), IsEmpty());
}

TEST_F(AutosaveScene, TheFirstChangeIsKeptAsWell)
{
  app::Autosave autosave(document);
  autosave.setDelay(10);
  openData();
  document.change("Draw gate", [](app::State& state) { state.gates = {{"a", gateOnA(0.5, 1.0), true}}; });
  ASSERT_TRUE(waitFor([&] { return QFile::exists(autosave.path()); }, 3000));
  EXPECT_EQ(app::readSession(autosave.path()).gates.size(), 1u);
  document.undoStack().undo();
  ASSERT_TRUE(waitFor([&] { return app::readSession(autosave.path()).gates.empty(); }, 3000))
      << "nor does it come back after it was taken back";
}

TEST_F(AutosaveScene, WhatACrashLeavesIsFoundAndComesBack)
{
  openData();
  makeWork();
  QString left;
  {
    app::Autosave autosave(document);
    autosave.setDelay(10);
    document.pin({1});
    ASSERT_TRUE(waitFor([&] { return QFile::exists(autosave.path()); }));
    // What a process that is gone leaves: the file, without anybody who holds its lock.
    left = QFileInfo(autosave.path()).absolutePath() + "/left.sieve";
    QFile::copy(autosave.path(), left);
  }
  const auto found = app::recoverableSessions();
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].path, left);
  EXPECT_EQ(found[0].data, data);
  document.close();
  openSession(found[0].path);
  EXPECT_EQ(document.state().gates.size(), 3u);
  EXPECT_THAT(document.pinnedRuns(), ElementsAre(1));
  app::discardRecoverable(found[0]);
  EXPECT_THAT(app::recoverableSessions(), IsEmpty());
}

TEST_F(AutosaveScene, DamagedFilesAreNotOffered)
{
  app::Autosave autosave(document);
  QDir().mkpath(QFileInfo(autosave.path()).absolutePath());
  const QString bad = QFileInfo(autosave.path()).absolutePath() + "/bad.sieve";
  write(bad, "{");
  EXPECT_THAT(app::recoverableSessions(), IsEmpty());
  QFile::remove(bad);
}

TEST_F(AutosaveScene, AnotherScanStartsAnew)
{
  app::Autosave autosave(document);
  autosave.setDelay(10);
  openData();
  makeWork();
  ASSERT_TRUE(waitFor([&] { return QFile::exists(autosave.path()); }));
  document.close();
  EXPECT_FALSE(QFile::exists(autosave.path()));
}

TEST_F(AutosaveScene, WhatWindowsKnowIsKeptWithIt)
{
  app::Autosave autosave(document, [](app::Session& session) {
    session.view.zoomedTime = app::TypedRange{1.0, 2.0};
  });
  autosave.setDelay(10);
  openData();
  makeWork();
  ASSERT_TRUE(waitFor([&] { return QFile::exists(autosave.path()); }));
  EXPECT_EQ(app::readSession(autosave.path()).view.zoomedTime->high, 2.0);
}

struct WatchScene : SessionScene
{
  app::FileWatch watch{document};
  QStringList told;

  WatchScene()
  {
    watch.setPatience(30);
    QObject::connect(&watch, &app::FileWatch::changedOnDisk, &document,
                     [this](QString const& path) { told << path; });
  }
};

TEST_F(WatchScene, AFileThatIsWrittenAnewIsToldOnce)
{
  openData();
  write(data, lineScanText(41));
  ASSERT_TRUE(waitFor([this] { return !told.isEmpty(); }));
  QTest::qWait(200);
  EXPECT_EQ(told, QStringList(data));
}

TEST_F(WatchScene, AFileThatIsReplacedIsToldEachTime)
{
  openData();
  for (int i = 1; i <= 2; ++i) {
    write(folder.filePath("new"), lineScanText(40 + static_cast<std::size_t>(i)));
    ASSERT_EQ(std::rename(folder.filePath("new").toUtf8(), data.toUtf8()), 0);
    ASSERT_TRUE(waitFor([&] { return told.size() == i; })) << i;
  }
}

TEST_F(WatchScene, AFileThatIsGoneIsToldOnceUntilItComesBack)
{
  openData();
  QStringList gone;
  QObject::connect(&watch, &app::FileWatch::goneFromDisk, &document,
                   [&](QString const& path) { gone << path; });
  ASSERT_TRUE(QFile::rename(data, folder.filePath("away")));
  ASSERT_TRUE(waitFor([&] { return !gone.isEmpty(); }));
  write(folder.filePath("other"), "x");
  QTest::qWait(200);
  EXPECT_EQ(gone, QStringList(data));
  EXPECT_THAT(told, IsEmpty());
  ASSERT_TRUE(QFile::rename(folder.filePath("away"), data));
  QTest::qWait(200);
  EXPECT_THAT(told, IsEmpty()) << "it is the one that was read";
  ASSERT_TRUE(QFile::remove(data));
  ASSERT_TRUE(waitFor([&] { return gone.size() == 2; }));
}

TEST_F(WatchScene, OtherFilesAndFilesOfFormerScansAreNotTold)
{
  openData();
  write(folder.filePath("other"), "x");
  QTest::qWait(200);
  EXPECT_THAT(told, IsEmpty());
  document.close();
  write(data, lineScanText(41));
  QTest::qWait(200);
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(WatchScene, WhatHasBeenReadAgainIsNotTold)
{
  openData();
  write(data, lineScanText(41));
  ASSERT_TRUE(waitFor([this] { return told.size() == 1; }));
  loader.reread();
  ASSERT_TRUE(waitFor([this] { return document.scan().runs.size() == 41u; }));
  QTest::qWait(200);
  EXPECT_EQ(told.size(), 1);
}

TEST(ChangedFileBar, TellsAndGoesWithEitherButton)
{
  app::ChangedFileBar bar;
  bar.resize(500, 40);
  EXPECT_TRUE(bar.isHidden());
  int wanted = 0;
  QObject::connect(&bar, &app::ChangedFileBar::rereadWanted, &bar, [&] { ++wanted; });
  auto const press = [&](char const* text) {
    for (auto* button : bar.findChildren<QPushButton*>())
      if (button->text() == text) QTest::mouseClick(button, Qt::LeftButton);
  };
  bar.tell("/data/<b>scan<i>.csv");
  EXPECT_TRUE(bar.isVisible());
  EXPECT_EQ(bar.findChild<QLabel*>()->text(), "<b>scan<i>.csv has changed on disk.");
  press("Ignore");
  EXPECT_TRUE(bar.isHidden());
  EXPECT_EQ(wanted, 0);
  bar.tell("/data/scan.csv");
  press("Reread");
  EXPECT_TRUE(bar.isHidden());
  EXPECT_EQ(wanted, 1);
}

TEST(ErrorDialog, ShowsPlainTextAndCopiesAllOfIt)
{
  app::ErrorDialog dialog({"The scan could not be opened", "<b>x</b>.csv: No such file", "Look again."});
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  QStringList texts;
  for (auto* label : dialog.findChildren<QLabel*>()) texts << label->text();
  EXPECT_TRUE(texts.contains("<b>x</b>.csv: No such file"));
  for (auto* button : dialog.findChildren<QPushButton*>())
    if (button->text().contains("Copy")) QTest::mouseClick(button, Qt::LeftButton);
  const std::string copied = QApplication::clipboard()->text().toStdString();
  EXPECT_THAT(copied, HasSubstr("<b>x</b>.csv: No such file"));
  EXPECT_THAT(copied, HasSubstr("Look again."));
  EXPECT_THAT(copied, HasSubstr("runsieve "));
}

TEST(ErrorDialog, KnowsAdviceOnWhatOftenHappens)
{
  EXPECT_THAT(app::adviceOn("x: Permission denied").toStdString(), HasSubstr("another place"));
  EXPECT_TRUE(app::adviceOn("something new").isEmpty());
}

TEST(ChangedFileBar, CutsALongNameAndShowsAllOfItInATooltip)
{
  app::ChangedFileBar bar;
  bar.resize(420, 40);
  const QString path = "/data/a & b" + QString(200, 'x') + "_end.csv";
  bar.tell(path);
  bar.resize(600, 40);
  QLabel const* text = bar.findChild<QLabel*>();
  EXPECT_TRUE(text->text().startsWith("a & b"));
  EXPECT_TRUE(text->text().endsWith("_end.csv has changed on disk."));
  EXPECT_TRUE(text->text().contains(QString::fromUtf8("\u2026")));
  const int narrow = text->text().size();
  EXPECT_TRUE(text->toolTip().contains("/data/a &amp; b")) << "as rich text, so that it reads a & b";
  EXPECT_TRUE(Qt::mightBeRichText(text->toolTip()));
  bar.resize(900, 40);
  EXPECT_GT(text->text().size(), narrow) << "with more room more of it";
}

TEST(ErrorDialog, AddsAdviceIfThereIsSome)
{
  auto const labels = [](QString const& advice) {
    const app::ErrorDialog dialog({"Summary", "message", advice});
    return dialog.findChildren<QLabel*>().size();
  };
  EXPECT_EQ(labels("Try again."), labels("") + 1);
  std::string told;
  NextDialogOf<app::ErrorDialog> next([&](app::ErrorDialog& dialog) {
    told = dialog.details().toStdString();
    EXPECT_TRUE(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isDefault());
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
  });
  app::ErrorDialog::tell(nullptr, "The scan could not be opened", "x.csv: no such file or directory");
  EXPECT_THAT(told, HasSubstr("The scan could not be opened\nx.csv: no such file"));
  EXPECT_THAT(told, HasSubstr("moved or renamed")) << "whatever the case of its letters";
}

TEST(ErrorDialog, KnowsAdviceOnEachOfTheseErrors)
{
  for (char const* message :
       {"a: No such file or directory", "a: Permission denied", "a: No space left on device",
        "not enough memory", "a sieve of version 7", "this is no JSON"})
    EXPECT_FALSE(app::adviceOn(message).isEmpty()) << message;
}

TEST(ErrorDialog, LongMessagesScrollAndLeaveRoomOnTheScreen)
{
  app::ErrorDialog dialog({"Summary", QString("many words ").repeated(2000), ""});
  dialog.show();
  EXPECT_LT(dialog.height(), 480);
  app::ErrorDialog brief({"Summary", "one line", ""});
  brief.show();
  EXPECT_LT(brief.height(), dialog.height());
}

TEST_F(AutosaveScene, WhatIsOpenedAndOnlyLookedAtIsNotKept)
{
  app::Autosave autosave(document);
  autosave.setDelay(10);
  openData();
  document.hover(3);
  document.selectGate(std::nullopt);
  QTest::qWait(60);
  EXPECT_FALSE(QFile::exists(autosave.path()));
  document.pin({3});
  ASSERT_TRUE(waitFor([&] { return QFile::exists(autosave.path()); })) << "a pinned run is work";
}

TEST_F(AutosaveScene, WorkThatIsTakenBackIsKeptAsItIsThen)
{
  app::Autosave autosave(document);
  autosave.setDelay(10);
  openData();
  makeWork();
  auto const keptGates = [&] {
    try {
      return app::readSession(autosave.path()).gates.size();
    } catch (std::exception const&) {
      return std::size_t(99); // not yet written
    }
  };
  ASSERT_TRUE(waitFor([&] { return keptGates() == 3u; }));
  document.pin({});
  document.undoStack().undo();
  EXPECT_TRUE(waitFor([&] { return keptGates() == 0u; }));
}

TEST_F(AutosaveScene, AScanThatIsFromNoFileIsNotKept)
{
  app::Autosave autosave(document);
  autosave.setDelay(10);
  document.open(lineScan(), {});
  document.change("Add", [](app::State& state) { state.gates.push_back({"g", gateOnA(0.5, 1.0), true}); });
  QTest::qWait(60);
  EXPECT_FALSE(QFile::exists(autosave.path())) << "nothing could be read again";
}

TEST_F(AutosaveScene, TheNewestIsOfferedFirst)
{
  openData();
  const QString place = QFileInfo(app::Autosave(document).path()).absolutePath();
  QDir().mkpath(place);
  for (char const* name : {"new", "old"}) {
    const QString path = place + '/' + name + ".sieve";
    app::writeSession(path, app::sessionOf(document));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const int day = QString(name) == "new" ? 20 : 10;
    ASSERT_TRUE(
        file.setFileTime(QDateTime(QDate(2020, 1, day), QTime(12, 0)), QFileDevice::FileModificationTime));
  }
  const auto found = app::recoverableSessions();
  ASSERT_EQ(found.size(), 2u);
  EXPECT_TRUE(found[0].path.endsWith("new.sieve"));
  EXPECT_EQ(found[0].savedAt.date().day(), 20);
  EXPECT_TRUE(found[1].path.endsWith("old.sieve"));
}

TEST_F(WatchScene, ATableOfParametersBesideTheScanIsWatchedToo)
{
  const QString table = folder.filePath("parameters.csv");
  write(table, "run,k\n1,2\n");
  app::ScanSource source;
  source.path = data.toStdString();
  source.read.parametersFile = "parameters.csv";
  document.open(lineScan(), source);
  write(table, "run,k\n1,2\n2,3\n");
  ASSERT_TRUE(waitFor([this] { return !told.isEmpty(); }));
  EXPECT_EQ(told, QStringList(data));
}

TEST_F(WatchScene, AFolderWithAFileForEachRunIsWatched)
{
  const QString runs = folder.filePath("runs");
  QDir().mkpath(runs);
  write(runs + "/1.csv", "time,A\n0,1\n");
  app::ScanSource source;
  source.path = runs.toStdString();
  document.open(lineScan(), source);
  write(runs + "/2.csv", "time,A\n0,2\n");
  ASSERT_TRUE(waitFor([this] { return !told.isEmpty(); }));
  EXPECT_EQ(told, QStringList(runs));
}

TEST_F(WatchScene, AFileThatIsGoneIsNotToldUntilItIsBack)
{
  openData();
  const QByteArray text = read(data);
  QFile::remove(data);
  QTest::qWait(200);
  EXPECT_THAT(told, IsEmpty());
  write(data, text + "\n");
  EXPECT_TRUE(waitFor([this] { return !told.isEmpty(); }));
}

} // namespace
} // namespace runsieve::test
