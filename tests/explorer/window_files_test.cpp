#include "FilesScene.h"

#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/session/ChangedFileBar.h"
#include "app/explorer/session/ErrorDialog.h"
#include "app/explorer/session/RecentFiles.h"
#include "app/explorer/session/SessionFile.h"
#include "app/explorer/sets/SetsPane.h"
#include "app/explorer/tables/ParameterTable.h"
#include "app/explorer/tables/RunTable.h"
#include "app/explorer/window/Plots.h"

#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QToolButton>

namespace runsieve::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

QByteArray bytesOf(QString const& path)
{
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

TEST_F(FilesScene, TheFirstSaveAsksForAPlaceAndTheNextOnesDoNot)
{
  ASSERT_TRUE(openLines());
  drawGate();
  {
    NextFile asked(file("work"));
    trigger("file.save");
    EXPECT_TRUE(asked.seen());
    EXPECT_TRUE(asked.proposed.endsWith("scan.sieve")) << asked.proposed.toStdString();
  }
  EXPECT_TRUE(QFileInfo::exists(file("work.sieve"))) << "with the ending of its kind";
  EXPECT_EQ(title(), "work.sieve - Runsieve");
  EXPECT_EQ(window->statusText(), "Saved: " + file("work.sieve"));
  EXPECT_TRUE(document().undoStack().isClean());
  EXPECT_EQ(app::RecentFiles::list().first(), file("work.sieve"));
  trigger("gate.delete");
  trigger("file.save");
  EXPECT_TRUE(app::readSession(file("work.sieve")).gates.empty());
}

TEST_F(FilesScene, ANameThatGetsAnEndingIsNoWayToWriteOverAFileUnasked)
{
  ASSERT_TRUE(openLines());
  QFile other(file("work.sieve"));
  ASSERT_TRUE(other.open(QIODevice::WriteOnly) && other.write("of somebody else") > 0);
  other.close();
  NextDialogOf<QFileDialog> place([this](QFileDialog& dialog) {
    dialog.selectFile(file("work"));
    NextMessage asked(QMessageBox::No);
    QMetaObject::invokeMethod(&dialog, "accept");
    EXPECT_TRUE(asked.seen());
    EXPECT_TRUE(dialog.isVisible()) << "for another name";
    dialog.reject();
  });
  trigger("file.saveas");
  EXPECT_TRUE(place.seen());
  EXPECT_EQ(bytesOf(other.fileName()), "of somebody else");
}

TEST_F(FilesScene, SaveAsAsksAgainAndProposesTheFormerPlace)
{
  ASSERT_TRUE(openLines());
  ASSERT_TRUE(window->files().saveTo(file("a.sieve")));
  NextFile asked(file("b.json"));
  trigger("file.saveas");
  EXPECT_TRUE(asked.proposed.endsWith("a.sieve")) << asked.proposed.toStdString();
  EXPECT_TRUE(QFileInfo::exists(file("b.json"))) << "an ending that was typed stays";
  EXPECT_EQ(title(), "b.json - Runsieve");
}

TEST_F(FilesScene, SavingIsGivenUpWithTheDialog)
{
  ASSERT_TRUE(openLines());
  drawGate();
  NextFile asked("");
  EXPECT_FALSE(window->files().save());
  EXPECT_TRUE(asked.seen());
  EXPECT_FALSE(document().undoStack().isClean());
  EXPECT_EQ(title(), "scan.csv - Runsieve");
}

TEST_F(FilesScene, NothingIsSavedWithoutAScan)
{
  EXPECT_FALSE(window->files().save());
  EXPECT_EQ(window->files().title(), "");
}

TEST_F(FilesScene, ASessionThatCannotBeWrittenIsTold)
{
  ASSERT_TRUE(openLines());
  drawGate();
  QString told;
  NextDialogOf<app::ErrorDialog> next([&](app::ErrorDialog& dialog) {
    told = dialog.details();
    dialog.accept();
  });
  EXPECT_FALSE(window->files().saveTo("/nowhere/at/all.sieve"));
  EXPECT_THAT(told.toStdString(), HasSubstr("The session could not be saved"));
  EXPECT_THAT(told.toStdString(), HasSubstr("The folder is not there"));
  EXPECT_THAT(told.toStdString(), testing::Not(HasSubstr("moved or renamed")));
  EXPECT_EQ(title(), "scan.csv - Runsieve");
  EXPECT_FALSE(document().undoStack().isClean());
}

/// A scan that is open, and what nobody may write over.
struct ReadFilesScene : FilesScene
{
  QByteArray before;

  void SetUp() override
  {
    FilesScene::SetUp();
    ASSERT_TRUE(openLines());
    drawGate();
    ASSERT_TRUE(settle());
    before = bytesOf(file("scan.csv"));
  }
  void TearDown() override { EXPECT_EQ(bytesOf(file("scan.csv")), before) << "the scan is as it was"; }
};

TEST_F(ReadFilesScene, PassingRunsAreNotWrittenOverTheScanTheyAreOf)
{
  NextMessage replace(QMessageBox::Yes);
  NextFile place(file("scan.csv"));
  QString told;
  QTimer later;
  QObject::connect(&later, &QTimer::timeout, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->text().contains("could not be written")) return;
    told = box->informativeText();
    box->close();
  });
  later.start(10);
  trigger("file.runs");
  EXPECT_TRUE(replace.seen()) << "that a file is replaced is asked as well";
  EXPECT_THAT(told.toStdString(), HasSubstr("is the file that is read"));
  EXPECT_TRUE(settle());
}

TEST_F(ReadFilesScene, NoTableIsWrittenOverThemByWhateverName)
{
  ASSERT_TRUE(QFile::link(file("scan.csv"), file("link.csv")));
  auto* runs = window->findChild<app::RunTable*>();
  {
    NextMessage told(QMessageBox::Ok);
    runs->writeCsv(app::RunTable::Rows::Shown, file("link.csv"));
    EXPECT_THAT(told.more.toStdString(), HasSubstr("is the file that is read"));
  }
  {
    NextMessage told(QMessageBox::Ok);
    runs->writeScan(app::RunTable::Rows::Shown, file("scan.csv"));
    EXPECT_THAT(told.more.toStdString(), HasSubstr("is the file that is read"));
  }
  EXPECT_THROW(window->findChild<app::ParameterTable*>()->writeCsv(file("scan.csv")), ScanError);
  EXPECT_TRUE(settle());
}

TEST_F(ReadFilesScene, NeitherASessionNorAPlotIsWrittenOverThem)
{
  QStringList told;
  auto const tell = [&](app::ErrorDialog& dialog) {
    told << dialog.details();
    dialog.accept();
  };
  {
    NextDialogOf<app::ErrorDialog> next(tell);
    EXPECT_FALSE(window->files().saveTo(file("scan.csv")));
  }
  {
    NextDialogOf<app::ErrorDialog> next(tell);
    window->storedPlots().write(file("scan.csv"));
  }
  ASSERT_EQ(told.size(), 2);
  for (QString const& each : told) EXPECT_THAT(each.toStdString(), HasSubstr("is the file that is read"));
  EXPECT_TRUE(settle());
}

TEST_F(FilesScene, TheZoomIsSavedWithTheSession)
{
  ASSERT_TRUE(openLines());
  window->runs().zoom().show(app::AxisMap(2.0, 5.0), 0, std::nullopt);
  ASSERT_TRUE(window->files().saveTo(file("a.sieve")));
  EXPECT_EQ(app::readSession(file("a.sieve")).view.zoomedTime->low, 2.0);
}

TEST_F(FilesScene, AWindowWithoutWorkClosesAtOnce)
{
  EXPECT_TRUE(window->files().mayClose());
  ASSERT_TRUE(openLines());
  document().change("Focus", [](app::State& state) { state.view.focus = app::Focus::Faded; });
  EXPECT_TRUE(window->files().mayClose()) << "gates and sets are work, a view is not";
  drawGate();
  ASSERT_TRUE(window->files().saveTo(file("a.sieve")));
  EXPECT_TRUE(window->files().mayClose()) << "all is saved";
}

TEST_F(FilesScene, WorkThatIsNotSavedIsAskedForBeforeTheWindowCloses)
{
  ASSERT_TRUE(openLines());
  drawGate();
  {
    NextMessage asked(QMessageBox::Cancel);
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(asked.seen());
    EXPECT_THAT(asked.text.toStdString(), HasSubstr("save"));
    EXPECT_THAT(asked.more.toStdString(), HasSubstr("scan.csv"));
    EXPECT_TRUE(window->isVisible());
  }
  NextMessage asked(QMessageBox::Discard);
  EXPECT_TRUE(window->close());
  EXPECT_TRUE(asked.seen());
  EXPECT_FALSE(window->isVisible());
}

TEST_F(FilesScene, SavedOnTheWayOutTheWindowCloses)
{
  ASSERT_TRUE(openLines());
  ASSERT_TRUE(window->files().saveTo(file("a.sieve")));
  document().change("Set", [](app::State& state) {
    state.sets.push_back({"all", RunSet(40, true), 0, true, ""});
  });
  NextMessage asked(QMessageBox::Save);
  EXPECT_TRUE(window->close());
  EXPECT_TRUE(asked.seen()) << "a set is work as well";
  EXPECT_EQ(app::readSession(file("a.sieve")).sets.size(), 1u);
}

TEST_F(FilesScene, AWindowWhoseSavingIsGivenUpStaysOpen)
{
  ASSERT_TRUE(openLines());
  drawGate();
  NextMessage asked(QMessageBox::Save);
  NextFile place("");
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(place.seen());
}

TEST_F(FilesScene, DataThatAreGoneAreLookedFor)
{
  ASSERT_TRUE(openLines());
  drawGate();
  ASSERT_TRUE(window->files().saveTo(file("a.sieve")));
  document().close();
  ASSERT_TRUE(QFile::rename(file("scan.csv"), file("other.csv")));
  {
    NextMessage asked(QMessageBox::Cancel);
    window->open(file("a.sieve"));
    EXPECT_THAT(asked.text.toStdString(), HasSubstr(file("scan.csv").toStdString()));
    EXPECT_FALSE(window->files().isBusy());
  }
  NextMessage asked(QMessageBox::Open);
  NextFile chosen(file("other.csv"));
  window->open(file("a.sieve"));
  EXPECT_TRUE(chosen.seen());
  ASSERT_TRUE(waitFor([this] { return document().isOpen(); }));
  EXPECT_EQ(document().state().gates.size(), 1u);
  EXPECT_EQ(title(), "a.sieve - Runsieve");
}

TEST_F(FilesScene, OtherDataThanThoseOfTheSessionAreToldAsPlainText)
{
  ASSERT_TRUE(openLines());
  drawGate();
  ASSERT_TRUE(window->files().saveTo(file("a.sieve")));
  document().close();
  writeScan(*lineScan(30), file("scan.csv").toStdString());
  NextMessage told(QMessageBox::Ok);
  window->open(file("a.sieve"));
  ASSERT_TRUE(waitFor([&] { return told.seen(); }));
  EXPECT_THAT(told.text.toStdString(), HasSubstr("not those"));
  EXPECT_THAT(told.more.toStdString(), HasSubstr("30 runs"));
  EXPECT_EQ(document().state().gates.size(), 1u);
}

TEST_F(FilesScene, ASessionThatIsDamagedIsTold)
{
  for (char const* text : {"{\"format\": \"runsieve sieve\", ", "{\"format\":", "", "\x01\x02"}) {
    QFile bad(file("bad.sieve"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write(text);
    bad.close();
    QString told;
    NextDialogOf<app::ErrorDialog> next([&](app::ErrorDialog& dialog) {
      told = dialog.details();
      dialog.accept();
    });
    window->open(file("bad.sieve"));
    EXPECT_THAT(told.toStdString(), HasSubstr("The session could not be opened")) << text;
    EXPECT_THAT(told.toStdString(), HasSubstr("The session is damaged")) << text;
    EXPECT_FALSE(document().isOpen());
  }
}

TEST_F(FilesScene, WhatASessionHasAndTheScanHasNotIsToldInABox)
{
  ASSERT_TRUE(openLines());
  ASSERT_TRUE(window->files().saveTo(file("a.sieve")));
  app::Session session = app::readSession(file("a.sieve"));
  session.view.outputs.push_back("gone");
  app::writeSession(file("a.sieve"), session);
  NextMessage told(QMessageBox::Ok);
  window->open(file("a.sieve"));
  ASSERT_TRUE(waitFor([&] { return told.seen(); }));
  EXPECT_THAT(told.more.toStdString(), HasSubstr("no output &quot;gone&quot;"));
}

TEST_F(FilesScene, AFileAndAFolderAreChosenInDialogs)
{
  writeScan(*lineScan(), file("chosen.csv").toStdString());
  {
    NextFile asked("");
    trigger("file.open");
    EXPECT_TRUE(asked.seen());
    EXPECT_FALSE(window->files().isBusy()) << "given up";
  }
  {
    NextFile asked(file("chosen.csv"));
    trigger("file.open");
    EXPECT_TRUE(asked.seen());
  }
  ASSERT_TRUE(waitFor([this] { return document().isOpen(); }));
  EXPECT_EQ(title(), "chosen.csv - Runsieve");
  NextFile asked("");
  trigger("file.folder");
  EXPECT_TRUE(asked.seen());
}

TEST_F(FilesScene, AnotherScanIsNoMoreTheSessionOfTheFormer)
{
  ASSERT_TRUE(openLines());
  ASSERT_TRUE(window->files().saveTo(file("a.sieve")));
  ASSERT_TRUE(openLines("other.csv", 20));
  NextFile asked("");
  EXPECT_FALSE(window->files().save());
  EXPECT_TRUE(asked.seen()) << "it would overwrite the work on another scan";
}

TEST_F(FilesScene, RereadingKeepsGatesAndZoom)
{
  ASSERT_TRUE(openLines());
  drawGate();
  window->runs().zoom().show(app::AxisMap(2.0, 5.0), 0, std::nullopt);
  QSignalSpy told(&window->files(), &app::Files::told);
  writeScan(*lineScan(50), file("scan.csv").toStdString());
  trigger("file.reread");
  ASSERT_TRUE(waitFor([this] { return document().scan().runs.size() == 50u; }));
  EXPECT_EQ(document().state().gates.size(), 1u);
  EXPECT_EQ(window->runs().zoom().time(), app::AxisMap(2.0, 5.0));
  ASSERT_TRUE(settle());
  EXPECT_EQ(told.last()[0], "The scan was read again; former steps cannot be undone");
  EXPECT_EQ(title(), "scan.csv - Runsieve");
}

TEST_F(FilesScene, WhatIsChangedWhileAScanIsReadAgainIsKept)
{
  ASSERT_TRUE(openLines());
  writeScan(*lineScan(50), file("scan.csv").toStdString());
  QSignalSpy told(&window->files(), &app::Files::told);
  trigger("file.reread");
  ASSERT_TRUE(window->files().isReading());
  keepSomething();
  window->runs().zoom().show(app::AxisMap(2.0, 5.0), 0, std::nullopt);
  ASSERT_TRUE(waitFor([this] { return document().scan().runs.size() == 50u; }));
  ASSERT_EQ(document().state().gates.size(), 1u);
  EXPECT_EQ(document().state().gates[0].name, "Gate 1");
  EXPECT_EQ(window->runs().zoom().time(), app::AxisMap(2.0, 5.0));
  EXPECT_FALSE(document().undoStack().isClean()) << "it is saved nowhere";
  ASSERT_TRUE(settle());
  EXPECT_EQ(told.last()[0], "The scan was read again; former steps cannot be undone");
}

TEST_F(FilesScene, AScanThatIsGoneCannotBeReadAgainAndStaysOpen)
{
  ASSERT_TRUE(openLines());
  drawGate();
  ASSERT_TRUE(QFile::remove(file("scan.csv")));
  QString told;
  NextDialogOf<app::ErrorDialog> next([&](app::ErrorDialog& dialog) {
    told = dialog.details();
    dialog.accept();
  });
  trigger("file.reread");
  ASSERT_TRUE(waitFor([&] { return next.seen() && !window->files().isBusy(); }));
  EXPECT_THAT(told.toStdString(), HasSubstr("The scan could not be read again"));
  EXPECT_THAT(told.toStdString(), testing::Not(HasSubstr("session")));
  EXPECT_EQ(document().state().gates.size(), 1u);
}

TEST_F(FilesScene, WorkThatIsNotSavedIsAskedForAfterRereadingAsWell)
{
  ASSERT_TRUE(openLines());
  drawGate();
  writeScan(*lineScan(50), file("scan.csv").toStdString());
  trigger("file.reread");
  ASSERT_TRUE(waitFor([this] { return document().scan().runs.size() == 50u; }));
  NextMessage asked(QMessageBox::Cancel);
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(asked.seen());
}

TEST_F(FilesScene, ABarTellsOfAFileThatHasChangedUntilItIsReread)
{
  ASSERT_TRUE(openLines());
  auto* bar = window->findChild<app::ChangedFileBar*>();
  EXPECT_FALSE(bar->isVisible());
  Q_EMIT window->files().changedOnDisk(file("scan.csv"));
  EXPECT_TRUE(bar->isVisible());
  writeScan(*lineScan(50), file("scan.csv").toStdString());
  Q_EMIT bar->rereadWanted();
  ASSERT_TRUE(waitFor([this] { return document().scan().runs.size() == 50u; }));
  EXPECT_FALSE(bar->isVisible());
}

TEST_F(FilesScene, ABarTellsOfAFileThatIsGoneAndDoesNotOfferToReadIt)
{
  ASSERT_TRUE(openLines());
  auto* bar = window->findChild<app::ChangedFileBar*>();
  ASSERT_TRUE(QFile::rename(file("scan.csv"), file("away.csv")));
  ASSERT_TRUE(waitFor([&] { return bar->isVisible(); }));
  EXPECT_THAT(bar->findChild<QLabel*>()->text().toStdString(), HasSubstr("is not there any more"));
  for (auto* each : bar->findChildren<QPushButton*>())
    EXPECT_EQ(each->isVisible(), each->text() == "Ignore") << each->text().toStdString();
  ASSERT_TRUE(QFile::rename(file("away.csv"), file("scan.csv")));
  EXPECT_TRUE(waitFor([&] { return !bar->isVisible(); })) << "it is as it was";
}

TEST_F(FilesScene, TheStatusShowsHowFarReadingIsAndGivesItUp)
{
  auto* bar = window->statusBar()->findChild<QProgressBar*>();
  QToolButton* cancel = nullptr;
  for (QToolButton* each : window->statusBar()->findChildren<QToolButton*>())
    if (each->text() == "Cancel") cancel = each;
  ASSERT_NE(cancel, nullptr);
  EXPECT_FALSE(bar->isVisible());
  EXPECT_FALSE(cancel->isVisible());
  EXPECT_EQ(window->statusText(), "Open a scan: File, Open (Ctrl+O)");
  writeScan(*lineScan(20'000), file("large.csv").toStdString());
  window->open(file("large.csv"));
  EXPECT_TRUE(bar->isVisible());
  EXPECT_TRUE(cancel->isVisible());
  EXPECT_EQ(bar->value(), 0);
  EXPECT_EQ(window->statusText(), "Reading large.csv ...");
  Q_EMIT window->files().progressed(0.5);
  EXPECT_EQ(bar->value(), bar->maximum() / 2);
  cancel->click();
  ASSERT_TRUE(waitFor([this] { return !window->files().isBusy(); }));
  EXPECT_FALSE(bar->isVisible());
  EXPECT_FALSE(cancel->isVisible());
  EXPECT_FALSE(document().isOpen());
  EXPECT_EQ(window->statusText(), "Open a scan: File, Open (Ctrl+O)");
}

TEST_F(FilesScene, NothingIsToldToBeReadOnceASessionIsOpen)
{
  ASSERT_TRUE(openLines("scan.csv", 2000)); // whose comparison with the session takes a while
  drawGate();
  ASSERT_TRUE(window->files().saveTo(file("a.sieve")));
  document().close();
  window->open(file("a.sieve"));
  auto* bar = window->statusBar()->findChild<QProgressBar*>();
  EXPECT_TRUE(bar->isVisible());
  ASSERT_TRUE(waitFor([this] { return document().isOpen(); }) && settle());
  EXPECT_FALSE(bar->isVisible());
  for (QToolButton* each : window->statusBar()->findChildren<QToolButton*>())
    EXPECT_FALSE(each->isVisible()) << each->text().toStdString();
  EXPECT_THAT(window->statusText().toStdString(), HasSubstr("11 times"));
}

TEST_F(FilesScene, RunsThatAreNotCompleteAreToldInTheStatus)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 1.0};
  for (int run = 0; run < 4; ++run)
    scan->runs.push_back({std::to_string(run), run == 0 ? RunStatus::Failed : RunStatus::Complete, 2});
  std::fill_n(scan->addOutput({"A", "", "", ""}), 8, 0.5);
  document().open(scan, {});
  EXPECT_EQ(window->statusText(), "4 runs, 2 times   |   1 run not complete, not compared");
}

TEST_F(FilesScene, ThatThereIsNothingToCompareIsToldInTheStatus)
{
  ASSERT_TRUE(openLines());
  document().change("Gate", [](app::State& state) { state.gates = {{"a", gateOnA(5.0, 6.0), true}}; });
  ASSERT_TRUE(settle());
  EXPECT_EQ(window->statusText(), "40 runs, 11 times   |   0 runs pass   |   nothing to compare");
  EXPECT_THAT(window->findChild<app::ParameterTable*>()->remarks().toStdString(),
              HasSubstr("no run passes: there is nothing to compare"));
  auto const scan = lineScan();
  for (ScanRun& run : const_cast<Scan&>(*scan).runs) run.status = RunStatus::Short;
  app::State gated;
  gated.gates = {{"a", gateOnA(0.5, 1.0), true}};
  document().open(scan, {}, gated);
  ASSERT_TRUE(settle());
  EXPECT_THAT(window->statusText().toStdString(), HasSubstr("no run is complete: none is compared"));
  EXPECT_THAT(window->statusText().toStdString(), testing::Not(HasSubstr("parameters differ")));
  EXPECT_EQ(headline(app::numbersOf(document(), 0)).toStdString(), "has no complete run");
}

TEST_F(FilesScene, WhatIsToldForAMomentGivesWayToTheScan)
{
  ASSERT_TRUE(openLines());
  Q_EMIT window->runs().told("for a moment");
  EXPECT_EQ(window->statusText(), "for a moment");
  Q_EMIT window->runs().told("");
  EXPECT_EQ(window->statusText(), "40 runs, 11 times");
}

TEST_F(FilesScene, WhatSetsTellIsInTheStatusAsTheirPaneMayBeHidden)
{
  ASSERT_TRUE(openLines());
  EXPECT_TRUE(window->sets().visibleRegion().isEmpty()) << "it stands behind the gates";
  trigger("set.failed");
  EXPECT_EQ(window->statusText(), "All runs are complete.");
  QFile list(file("runs.txt"));
  ASSERT_TRUE(list.open(QIODevice::WriteOnly));
  list.write("3\n7\nnope\n");
  list.close();
  window->sets().readFile(file("runs.txt"));
  EXPECT_EQ(window->statusText(), "2 runs from runs.txt. The scan has no runs \"nope\".");
}

TEST_F(FilesScene, GroupingShowsItsProgressWhereverThePaneOfSetsStands)
{
  ASSERT_TRUE(openLines("scan.csv", 400));
  ASSERT_TRUE(window->sets().visibleRegion().isEmpty());
  window->sets().cluster({0, ClusterMode::Curves, 3});
  ASSERT_TRUE(waitFor([this] { return !window->sets().visibleRegion().isEmpty(); }));
  EXPECT_TRUE(settle());
}

TEST_F(FilesScene, TipsOfCommandsGiveTheStatusBack)
{
  ASSERT_TRUE(openLines());
  auto const showTip = [this] {
    QStatusTipEvent tip(window->actions().at("file.open")->statusTip());
    QApplication::sendEvent(window.get(), &tip);
    EXPECT_FALSE(window->statusBar()->currentMessage().isEmpty());
  };
  showTip();
  drawGate();
  EXPECT_TRUE(window->statusBar()->currentMessage().isEmpty()) << "there is something new to tell";
  ASSERT_TRUE(settle());
  showTip();
  EXPECT_TRUE(waitFor([this] { return window->statusBar()->currentMessage().isEmpty(); }))
      << "it does not stay for ever";
}

TEST_F(FilesScene, NotesOnReadingAreOfferedWhereThereAreSome)
{
  auto const noted = [this] {
    for (QPushButton* each : window->statusBar()->findChildren<QPushButton*>())
      if (each->isVisible() && each->text().contains("on reading")) return each;
    return static_cast<QPushButton*>(nullptr);
  };
  QFile text(file("gaps.csv"));
  ASSERT_TRUE(text.open(QIODevice::WriteOnly));
  text.write("run,time,A,k\n1,0,1,5\n1,1,2,5\n2,0,,6\n2,1,4,6\n3,0,1,7\n3,1,3,7\n");
  text.close();
  window->open(file("gaps.csv"));
  ASSERT_TRUE(waitFor([this] { return document().isOpen(); }));
  ASSERT_NE(noted(), nullptr);
  NextMessage told(QMessageBox::Ok);
  noted()->click();
  EXPECT_TRUE(told.seen());
  EXPECT_FALSE(told.text.isEmpty());
  document().close();
  EXPECT_EQ(noted(), nullptr);
}

TEST_F(FilesScene, WorkIsAskedForBeforeAnotherScanTakesItsPlace)
{
  ASSERT_TRUE(openLines());
  keepSomething();
  const QString other = file("other.csv");
  writeScan(*lineScan(20), other.toStdString());
  {
    NextMessage asked(QMessageBox::Cancel);
    window->open(other);
    EXPECT_TRUE(asked.seen());
    EXPECT_EQ(asked.text, "Do you want to save gates, sets and view?");
  }
  EXPECT_FALSE(window->files().isReading());
  EXPECT_EQ(document().state().gates.size(), 1u);
  {
    NextMessage asked(QMessageBox::Cancel);
    trigger("file.example");
    EXPECT_TRUE(asked.seen());
    EXPECT_FALSE(window->files().isReading());
  }
  NextMessage asked(QMessageBox::Discard);
  window->open(other);
  ASSERT_TRUE(
      waitFor([this] { return !window->files().isReading() && document().scan().runs.size() == 20; }));
  EXPECT_TRUE(asked.seen());
  EXPECT_TRUE(document().state().gates.empty());
}

TEST_F(FilesScene, WorkThatIsDoneWhileAFileIsReadIsAskedForToo)
{
  ASSERT_TRUE(openLines());
  const QString other = file("other.csv");
  writeScan(*lineScan(20), other.toStdString());
  window->open(other); // nothing would be lost yet
  keepSomething();
  NextMessage asked(QMessageBox::Cancel);
  ASSERT_TRUE(waitFor([&] { return asked.seen() && !window->files().isReading(); }));
  EXPECT_EQ(document().scan().runs.size(), 40u) << "what was read is given up";
  EXPECT_EQ(document().state().gates.size(), 1u);
  EXPECT_THAT(title(), StartsWith("scan.csv"));
}

TEST_F(FilesScene, ASessionTakesTheWorkOfAnotherOnlyIfItMay)
{
  ASSERT_TRUE(openLines());
  keepSomething();
  ASSERT_TRUE(window->files().saveTo(file("first.sieve")));
  document().change("More", [](app::State& state) { state.gates.push_back(state.gates.front()); });
  {
    NextMessage asked(QMessageBox::Cancel);
    window->open(file("first.sieve"));
    EXPECT_TRUE(asked.seen());
  }
  EXPECT_EQ(document().state().gates.size(), 2u);
  NextMessage asked(QMessageBox::Discard);
  window->open(file("first.sieve"));
  ASSERT_TRUE(waitFor([this] { return !window->files().isBusy() && document().state().gates.size() == 1; }));
}

TEST_F(FilesScene, ASessionThatIsOpenedTellsNothingOfRereading)
{
  ASSERT_TRUE(openLines());
  ASSERT_TRUE(window->files().saveTo(file("plain.sieve")));
  document().change("Look", [](app::State& state) { state.view.runsLook = app::RunsLook::Lines; });
  window->files().reread();
  ASSERT_TRUE(waitFor([this] { return !window->files().isBusy(); }));
  EXPECT_THAT(window->statusText().toStdString(), HasSubstr("read again"));
  window->open(file("plain.sieve"));
  ASSERT_TRUE(waitFor([this] { return !window->files().isBusy(); }) && settle());
  EXPECT_THAT(window->statusText().toStdString(), testing::Not(HasSubstr("read again")));
}

TEST_F(FilesScene, ClosingGivesUpWhatIsBeingRead)
{
  ASSERT_TRUE(openLines());
  const QString other = file("other.csv");
  writeScan(*lineScan(20), other.toStdString());
  window->open(other);
  keepSomething();
  ASSERT_TRUE(window->files().isReading());
  NextMessage asked(QMessageBox::Cancel);
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(asked.seen());
  EXPECT_FALSE(window->files().isReading());
  QTest::qWait(50);
  EXPECT_EQ(document().scan().runs.size(), 40u);
}

TEST_F(FilesScene, ASessionThatSomebodyElseHasSavedIsNotReplacedUnasked)
{
  ASSERT_TRUE(openLines());
  keepSomething();
  const QString path = file("shared.sieve");
  ASSERT_TRUE(window->files().saveTo(path));
  ASSERT_TRUE(window->files().saveTo(path)) << "its own";
  QFile theirs(path);
  ASSERT_TRUE(theirs.open(QIODevice::Append));
  theirs.write("\n");
  theirs.close();
  {
    NextMessage asked(QMessageBox::Cancel);
    EXPECT_FALSE(window->files().saveTo(path));
    EXPECT_TRUE(asked.seen());
    EXPECT_THAT(asked.text.toStdString(), StartsWith("shared.sieve has changed since"));
    EXPECT_EQ(asked.usual, "Cancel");
  }
  {
    NextMessage asked(QMessageBox::Save);
    EXPECT_TRUE(window->files().saveTo(path));
    EXPECT_TRUE(asked.seen());
  }
  EXPECT_TRUE(window->files().saveTo(path)) << "nobody is asked again";
  const QString copy = file("copy.sieve");
  ASSERT_TRUE(QFile::copy(path, copy));
  window->open(copy);
  ASSERT_TRUE(waitFor([&] { return title() == "copy.sieve - Runsieve" && !window->files().isBusy(); }));
  ASSERT_TRUE(QFile::resize(copy, QFile(copy).size() - 1));
  {
    NextMessage asked(QMessageBox::Cancel);
    EXPECT_FALSE(window->files().saveTo(copy));
    EXPECT_TRUE(asked.seen()) << "also one that was only opened";
  }
  ASSERT_TRUE(QFile::remove(path));
  EXPECT_TRUE(window->files().saveTo(path)) << "one that is gone is written anew";
}

TEST_F(FilesScene, TheTitleTellsTheFolder)
{
  ASSERT_TRUE(openLines());
  EXPECT_EQ(window->windowTitle(), QString("scan.csv (%1) - Runsieve").arg(QDir(folder.path()).dirName()));
}

} // namespace
} // namespace runsieve::test
