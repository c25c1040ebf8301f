#include "SessionScene.h"

#include "app/cli/GatedScan.h"
#include "app/explorer/runs/RunsZoom.h"
#include "app/explorer/session/RecentFiles.h"
#include "app/explorer/session/SessionZoom.h"
#include "support/WorkingFolder.h"

#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/sieve/Fingerprint.h>

#include <gmock/gmock.h>

#include <QSettings>

#include <limits>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

bool same(app::TypedRange const& a, app::TypedRange const& b)
{
  return a.low == b.low && a.high == b.high;
}

void expectSame(app::State const& a, app::State const& b)
{
  ASSERT_EQ(a.gates.size(), b.gates.size());
  for (std::size_t i = 0; i < a.gates.size(); ++i) {
    EXPECT_EQ(a.gates[i].name, b.gates[i].name);
    EXPECT_EQ(a.gates[i].gate, b.gates[i].gate);
    EXPECT_EQ(a.gates[i].on, b.gates[i].on);
  }
  EXPECT_EQ(a.join, b.join);
  ASSERT_EQ(a.sets.size(), b.sets.size());
  for (std::size_t i = 0; i < a.sets.size(); ++i) {
    EXPECT_EQ(a.sets[i].name, b.sets[i].name);
    EXPECT_EQ(a.sets[i].runs, b.sets[i].runs);
    EXPECT_EQ(a.sets[i].color, b.sets[i].color);
    EXPECT_EQ(a.sets[i].shown, b.sets[i].shown);
    EXPECT_EQ(a.sets[i].origin, b.sets[i].origin);
  }
  EXPECT_EQ(a.method.thresholds.largestP, b.method.thresholds.largestP);
  EXPECT_EQ(a.method.thresholds.smallestD, b.method.thresholds.smallestD);
  EXPECT_EQ(a.method.adjustment, b.method.adjustment);
  EXPECT_EQ(a.method.permutations, b.method.permutations);
  EXPECT_EQ(a.method.mostPermutations, b.method.mostPermutations);
  EXPECT_EQ(a.method.seed, b.method.seed);
  EXPECT_EQ(a.method.gatesTried, b.method.gatesTried);
  EXPECT_EQ(a.view.outputs, b.view.outputs);
  EXPECT_EQ(a.view.logOutputs, b.view.logOutputs);
  ASSERT_EQ(a.view.outputRanges.size(), b.view.outputRanges.size());
  for (auto const& [output, range] : a.view.outputRanges)
    EXPECT_TRUE(same(range, b.view.outputRanges.at(output)));
  ASSERT_EQ(a.view.timeRange.has_value(), b.view.timeRange.has_value());
  if (a.view.timeRange) {
    EXPECT_TRUE(same(*a.view.timeRange, *b.view.timeRange));
  }
  EXPECT_EQ(a.view.runsLook, b.view.runsLook);
  EXPECT_EQ(a.view.focus, b.view.focus);
  EXPECT_EQ(a.view.parameterLook, b.view.parameterLook);
  EXPECT_EQ(a.view.logParameters, b.view.logParameters);
}

TEST_F(SessionScene, EverythingComesBack)
{
  openData();
  makeWork();
  const app::State before = document.state();
  const RunSet passing = document.passing();
  const QString path = folder.filePath("work.sieve");
  app::writeSession(path, app::sessionOf(document));
  document.close();
  openSession(path);
  expectSame(document.state(), before);
  EXPECT_EQ(document.passing(), passing);
  EXPECT_THAT(document.pinnedRuns(), ElementsAre(4, 5, 9));
  EXPECT_THAT(notes, IsEmpty());
  EXPECT_THAT(differences, IsEmpty());
  EXPECT_FALSE(document.undoStack().canUndo());
}

TEST_F(SessionScene, PinnedRunsKeepTheirColours)
{
  openData();
  document.pin({9});
  document.pin({4, 9});
  const QString path = folder.filePath("work.sieve");
  app::writeSession(path, app::sessionOf(document));
  document.close();
  openSession(path);
  EXPECT_THAT(document.pins().inOrder(), ElementsAre(9, 4));
}

TEST_F(SessionScene, ReadOptionsComeBackAndAreUsed)
{
  app::Session session = sessionOfData();
  session.read.ignore = {"B"};
  loader.open(session, data);
  ASSERT_TRUE(waitFor([this] { return opened == 1; }));
  const QString path = folder.filePath("work.sieve");
  app::writeSession(path, app::sessionOf(document));
  document.close();
  openSession(path);
  EXPECT_EQ(document.scan().outputs.size(), 1u);
}

TEST_F(SessionScene, ATableOfParametersIsFoundFromAnyFolderAndWhereItWasMovedTo)
{
  write(folder.filePath("table.csv"), "run,g\n1,10\n2,20\n3,30\n");
  write(data, "run,time,A\n1,0,1\n1,1,2\n2,0,2\n2,1,3\n3,0,4\n3,1,5\n");
  const QString path = folder.filePath("work.sieve");
  {
    const WorkingFolder here(folder.path().toStdString());
    app::Session session;
    session.read.parametersFile = "table.csv";
    loader.open(session, "scan.csv");
    ASSERT_TRUE(waitFor([this] { return opened == 1; }));
    ASSERT_EQ(document.scan().parameters.size(), 1u);
    app::writeSession(path, app::sessionOf(document));
    EXPECT_EQ(app::sessionOf(document).read.parametersFile, folder.filePath("table.csv").toStdString());
  }
  document.close();
  const WorkingFolder elsewhere("/");
  openSession(path);
  EXPECT_EQ(document.scan().parameters.size(), 1u);
  document.close();
  const QTemporaryDir other;
  for (char const* name : {"scan.csv", "table.csv", "work.sieve"})
    ASSERT_TRUE(QFile::rename(folder.filePath(name), other.filePath(name)));
  openSession(other.filePath("work.sieve"));
  EXPECT_EQ(document.scan().parameters.size(), 1u);
}

TEST_F(SessionScene, TheZoomComesBack)
{
  openData();
  app::RunsZoom zoom(document);
  zoom.show(app::AxisMap(2.0, 5.0), 0, app::AxisMap(0.25, 0.5));
  app::Session session = app::sessionOf(document);
  app::keepZoom(zoom, document, session);
  const QString path = folder.filePath("work.sieve");
  app::writeSession(path, session);
  zoom.reset();
  app::showZoom(app::readSession(path), document, zoom);
  EXPECT_EQ(zoom.time(), app::AxisMap(2.0, 5.0));
  EXPECT_EQ(zoom.value(0), app::AxisMap(0.25, 0.5));
}

TEST_F(SessionScene, RunsOfSetsAreKeptAsRanges)
{
  openData();
  RunSet runs(40, true);
  runs.set(9, false);
  const auto keys = app::keysOf(runs, document.scan());
  ASSERT_EQ(keys.size(), 2u);
  EXPECT_EQ(std::get<RunNumbers>(keys[0]).last, 9);
  EXPECT_EQ(std::get<RunNumbers>(keys[1]).first, 11);
  EXPECT_EQ(app::runsOf(keys, document.scan()), runs);
}

TEST(SessionKeys, OfAnyFormComeBack)
{
  Scan scan;
  scan.times = {0.0};
  for (char const* key : {"007", "7", "8", "-1", "WT 3", "9223372036854775807", "92233720368547758070", "10"})
    scan.runs.push_back({key, RunStatus::Complete, 1});
  for (unsigned mask = 0; mask < 256; ++mask) {
    RunSet runs(8);
    for (std::size_t run = 0; run < 8; ++run) runs.set(run, (mask >> run) & 1u);
    EXPECT_EQ(app::runsOf(app::keysOf(runs, scan), scan), runs) << mask;
  }
}

TEST_F(SessionScene, TheCommandLineAppliesTheGatesThatAreOn)
{
  openData();
  makeWork();
  const QString path = folder.filePath("work.sieve");
  app::writeSession(path, app::sessionOf(document));
  app::SieveArguments arguments;
  arguments.file = data.toStdString();
  arguments.sieve = path.toStdString();
  const app::GatedScan gated = app::openGated(arguments);
  EXPECT_EQ(gated.gates.size(), 2u);
  EXPECT_EQ(gated.passed.runs, document.passing());
  EXPECT_EQ(gated.method.adjustment, Adjustment::Holm);
  EXPECT_EQ(gated.method.thresholds.smallestD, 0.25);
  EXPECT_THAT(gated.notes, IsEmpty());
}

TEST_F(SessionScene, SieveFilesOfTheFirstVersionAreSessions)
{
  const app::Session session = app::readSession(RUNSIEVE_SOURCE_DIR "/tests/core/sieve/v1/sieve.json");
  ASSERT_FALSE(session.gates.empty());
  EXPECT_EQ(session.gates[0].name, "Gate 1");
  EXPECT_TRUE(session.gates[0].on);
  EXPECT_THAT(session.sets, IsEmpty());
  EXPECT_EQ(session.path, "");
}

TEST_F(SessionScene, DataThatMovedWithTheirSessionAreFound)
{
  openData();
  makeWork();
  app::writeSession(folder.filePath("work.sieve"), app::sessionOf(document));
  document.close();
  const QString other = folder.filePath("moved");
  QDir().mkpath(other);
  QFile::rename(data, other + "/scan.csv");
  QFile::rename(folder.filePath("work.sieve"), other + "/work.sieve");
  openSession(other + "/work.sieve");
  EXPECT_EQ(document.state().gates.size(), 3u);
  EXPECT_EQ(QString::fromStdString(document.source().path), other + "/scan.csv");
}

TEST_F(SessionScene, DataThatAreGoneAreAskedFor)
{
  openData();
  makeWork();
  app::writeSession(folder.filePath("work.sieve"), app::sessionOf(document));
  document.close();
  QFile::rename(data, folder.filePath("renamed.csv"));
  loader.open(folder.filePath("work.sieve"));
  EXPECT_EQ(missing, QStringList(data));
  EXPECT_FALSE(document.isOpen());
  loader.useData(folder.filePath("renamed.csv"));
  ASSERT_TRUE(waitFor([this] { return opened == 1; }));
  EXPECT_EQ(document.state().gates.size(), 3u);
}

TEST_F(SessionScene, OtherDataAreToldAndTheGatesStay)
{
  openData();
  makeWork();
  app::writeSession(folder.filePath("work.sieve"), app::sessionOf(document));
  document.close();
  write(data, lineScanText(30, 0.25));
  openSession(folder.filePath("work.sieve"));
  EXPECT_EQ(document.state().gates.size(), 3u);
  const std::string told = differences.join('\n').toStdString();
  EXPECT_THAT(told, HasSubstr("the data differ"));
  EXPECT_THAT(told, HasSubstr("the scan has 30 runs; it had 40"));
}

TEST_F(SessionScene, WhatTheScanDoesNotHaveIsToldAndTheRestStays)
{
  openData();
  makeWork();
  app::Session session = app::sessionOf(document);
  session.view.outputs.push_back("gone");
  session.sets[0].runs.emplace_back("nobody");
  const auto restored = app::restoredOn(session, document.scan());
  EXPECT_THAT(restored.state.view.outputs, ElementsAre(1, 0));
  EXPECT_EQ(restored.state.sets[0].runs, document.state().sets[0].runs);
  const std::string told = restored.notes.join('\n').toStdString();
  EXPECT_THAT(told, HasSubstr("no output \"gone\""));
  EXPECT_THAT(told, HasSubstr("my, \"set\""));
}

TEST_F(SessionScene, PlacesGoByNamesWhenColumnsAreInAnotherOrder)
{
  openData();
  makeWork();
  app::Session session = app::sessionOf(document);
  session.read.outputs = {"A", "B"};
  write(data, lineScanText().replace("run,time,A,B,k0,k1,k2", "run,time,B,A,k2,k1,k0"));
  document.close();
  loader.open(session, data);
  ASSERT_TRUE(waitFor([this] { return opened == 1; }));
  Scan const& scan = document.scan();
  app::ViewState const& view = document.state().view;
  EXPECT_EQ(scan.outputs[view.outputs[0]].label.name, "B");
  EXPECT_TRUE(view.logOutputs.at(*scan.findOutput("B")));
  EXPECT_FALSE(view.logParameters.at(*scan.findParameter("k2")));
}

TEST_F(SessionScene, RereadingKeepsGatesSetsAndView)
{
  openData();
  makeWork();
  const app::State before = document.state();
  write(data, lineScanText(50));
  loader.reread();
  ASSERT_TRUE(waitFor([this] { return opened == 1 && !loader.isBusy(); }));
  EXPECT_EQ(document.scan().runs.size(), 50u);
  EXPECT_EQ(document.state().gates.size(), before.gates.size());
  EXPECT_EQ(document.state().sets[0].runs.members(), before.sets[0].runs.members());
  EXPECT_EQ(document.state().view.outputs, before.view.outputs);
  EXPECT_THAT(document.pinnedRuns(), ElementsAre(4, 5, 9));
  EXPECT_THAT(differences, IsEmpty());
}

TEST_F(SessionScene, AFileThatCannotBeReadAgainLeavesWhatIsOpen)
{
  openData();
  makeWork();
  const app::State before = document.state();
  write(data, "no scan at all");
  loader.reread();
  ASSERT_TRUE(waitFor([this] { return !failures.isEmpty(); }));
  expectSame(document.state(), before);
  EXPECT_EQ(document.scan().runs.size(), 40u);
}

TEST_F(SessionScene, DamagedFilesAreToldInWordsAndChangeNothing)
{
  openData();
  makeWork();
  const QString good = folder.filePath("work.sieve");
  app::writeSession(good, app::sessionOf(document));
  const QByteArray text = read(good);
  const app::State before = document.state();
  const std::pair<QByteArray, QByteArray> damages[] = {
      {"\"version\": 1", "\"version\": 2"},
      {"\"place\": 1", "\"place\": -1"},
      {"\"name\": \"off\"", "\"name\": 5"},
      {"\"gates_off\": [", "\"gates_off\": 3, \"x\": ["},
      {"\"path\": \"scan.csv\"", "\"path\": 7"},
      {"\"runs_look\": \"whole_bands\"", "\"runs_look\": \"beads\""},
      {"\"focus\": \"faded\"", "\"focus\": 1"},
      {"\"parameter_look\": \"densities\"", "\"parameter_look\": null"},
      {"\"outputs\": [", "\"outputs\": 1, \"x\": ["},
      {"\"log_parameters\": {", "\"log_parameters\": true, \"x\": {"},
      {"\"color\": 3", "\"color\": -3"},
      {"\"shown\": false", "\"shown\": \"no\""},
      {"\"pinned\": [", "\"pinned\": [1.5,"},
      {"\"sets\": [", "\"sets\": [4,"},
      {"\"origin\": \"typed\"", "\"origin\": []"}};
  for (auto const& [from, to] : damages) {
    ASSERT_TRUE(text.contains(from)) << from.toStdString();
    QByteArray damaged = text;
    damaged.replace(damaged.indexOf(from), from.size(), to);
    const QString bad = folder.filePath("bad.sieve");
    write(bad, damaged);
    failures.clear();
    loader.open(bad);
    ASSERT_EQ(failures.size(), 1) << to.toStdString();
    EXPECT_THAT(failures[0].toStdString(), HasSubstr("bad.sieve")) << to.toStdString();
    EXPECT_GT(failures[0].size(), bad.size() + 15) << failures[0].toStdString();
    expectSame(document.state(), before);
  }
  EXPECT_EQ(opened, 0);
}

TEST_F(SessionScene, CutAnywhereAFileIsRefusedOrWhole)
{
  openData();
  makeWork();
  const QString good = folder.filePath("work.sieve");
  app::writeSession(good, app::sessionOf(document));
  const QByteArray text = read(good).trimmed();
  const QString bad = folder.filePath("bad.sieve");
  for (int size = 0; size < text.size(); size += 7) {
    write(bad, text.left(size));
    EXPECT_THROW((void)app::readSession(bad), ScanError) << size;
  }
}

TEST_F(SessionScene, SessionsAreKnownByHowTheyBeginOrByTheirEnding)
{
  openData();
  app::writeSession(folder.filePath("a"), app::sessionOf(document));
  EXPECT_TRUE(app::isSessionFile(folder.filePath("a")));
  EXPECT_FALSE(app::isSessionFile(data));
  write(folder.filePath("cut.sieve"), "{\"format\":");
  EXPECT_TRUE(app::isSessionFile(folder.filePath("cut.sieve"))) << "damaged, and still no scan";
  EXPECT_FALSE(app::isSessionFile(folder.path()));
  EXPECT_FALSE(app::isSessionFile(folder.filePath("nothing")));
}

TEST_F(SessionScene, RecentFilesAreTenThatExistTheNewestFirst)
{
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
  app::RecentFiles::clear();
  for (int i = 0; i < 12; ++i) {
    write(folder.filePath(QString::number(i)), "x");
    app::RecentFiles::add(folder.filePath(QString::number(i)));
  }
  app::RecentFiles::add(folder.filePath("5"));
  QFile::remove(folder.filePath("11"));
  const QStringList files = app::RecentFiles::list();
  EXPECT_EQ(files.size(), 10);
  EXPECT_EQ(files[0], folder.filePath("5"));
  EXPECT_EQ(files[1], folder.filePath("10"));
  EXPECT_EQ(files.count(folder.filePath("5")), 1);
}

TEST_F(SessionScene, OnlyWhatIsZoomedIsKeptAsAZoom)
{
  openData();
  document.change("Show", [](app::State& state) { state.view.outputs = {0, 1}; });
  app::RunsZoom zoom(document);
  app::Session session = app::sessionOf(document);
  session.view.zoomedTime = app::TypedRange{1.0, 2.0};
  session.view.zoomedValues["A"] = {1.0, 2.0};
  app::keepZoom(zoom, document, session);
  EXPECT_FALSE(session.view.zoomedTime) << "all is shown";
  EXPECT_TRUE(session.view.zoomedValues.empty());
  zoom.show(std::nullopt, 1, app::AxisMap(0.25, 0.5));
  app::keepZoom(zoom, document, session);
  EXPECT_EQ(session.view.zoomedTime->high, 10.0);
  EXPECT_EQ(session.view.zoomedValues.at("B").high, 0.5);
  EXPECT_EQ(session.view.zoomedValues.size(), 2u);
}

TEST_F(SessionScene, AZoomOfWhatIsGoneIsLeftOut)
{
  openData();
  app::RunsZoom zoom(document);
  app::Session session;
  session.view.zoomedValues["gone"] = {1.0, 2.0};
  app::showZoom(session, document, zoom);
  EXPECT_TRUE(zoom.isAll());
  session.view.zoomedValues["B"] = {0.25, 0.5};
  app::showZoom(session, document, zoom);
  EXPECT_EQ(zoom.value(1), app::AxisMap(0.25, 0.5));
  EXPECT_EQ(zoom.time(), app::AxisMap(0.0, 10.0));
  document.close();
  app::showZoom(session, document, zoom);
}

TEST_F(SessionScene, InfiniteLimitsAndWordsForEachLookComeBack)
{
  openData();
  app::Session session = app::sessionOf(document);
  const double infinity = std::numeric_limits<double>::infinity();
  session.view.outputRanges = {{"A", {-infinity, 2.0}}, {"B", {0.5, infinity}}};
  const QString path = folder.filePath("work.sieve");
  for (auto look :
       {app::RunsLook::Density, app::RunsLook::Lines, app::RunsLook::Bands, app::RunsLook::WholeBands})
    for (auto focus : {app::Focus::All, app::Focus::Faded, app::Focus::Hidden})
      for (auto parameters :
           {app::ParameterLook::Curves, app::ParameterLook::Densities, app::ParameterLook::Scatter}) {
        session.view.runsLook = look;
        session.view.focus = focus;
        session.view.parameterLook = parameters;
        app::writeSession(path, session);
        const app::SessionView view = app::readSession(path).view;
        EXPECT_EQ(view.runsLook, look);
        EXPECT_EQ(view.focus, focus);
        EXPECT_EQ(view.parameterLook, parameters);
        EXPECT_EQ(view.outputRanges.at("A").low, -infinity);
        EXPECT_EQ(view.outputRanges.at("B").high, infinity);
      }
}

TEST_F(SessionScene, LimitsThatMakeNoAxisAreRefused)
{
  openData();
  makeWork();
  const QString good = folder.filePath("work.sieve");
  app::writeSession(good, app::sessionOf(document));
  QByteArray text = read(good);
  const QByteArray from = "\"time_range\": [";
  ASSERT_TRUE(text.contains(from));
  for (char const* range : {"3, 3", "4, 3", "1", "1, 2, 3", "\"x\", 2"}) {
    QByteArray damaged = text;
    const int at = damaged.indexOf(from) + from.size();
    damaged.replace(at, damaged.indexOf(']', at) - at, range);
    write(folder.filePath("bad.sieve"), damaged);
    EXPECT_THROW((void)app::readSession(folder.filePath("bad.sieve")), ScanError) << range;
  }
}

TEST_F(SessionScene, ThresholdsThatAreNoSharesAreNotTaken)
{
  openData();
  app::Session session = app::sessionOf(document);
  const QString path = folder.filePath("work.sieve");
  session.method.thresholds = {0.0, 1.0};
  app::writeSession(path, session);
  EXPECT_EQ(app::readSession(path).method.thresholds.largestP, 0.0);
  EXPECT_EQ(app::readSession(path).method.thresholds.smallestD, 1.0);
}

TEST_F(SessionScene, GatesThatAreOffKeepTheirPlaces)
{
  openData();
  app::Session session = app::sessionOf(document);
  const QString path = folder.filePath("work.sieve");
  for (unsigned on = 0; on < 16; ++on) {
    session.gates.clear();
    for (unsigned i = 0; i < 4; ++i)
      session.gates.push_back({"g" + std::to_string(i), gateOnA(0.1 * i, 1.0), (on >> i & 1u) != 0});
    app::writeSession(path, session);
    const app::Session read = app::readSession(path);
    ASSERT_EQ(read.gates.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(read.gates[i].name, session.gates[i].name) << on;
      EXPECT_EQ(read.gates[i].on, session.gates[i].on) << on;
      EXPECT_EQ(read.gates[i].gate, session.gates[i].gate) << on;
    }
  }
}

TEST_F(SessionScene, DataBesideTheSessionComeFirstThenThoseWhereTheyWereThenThoseOfTheirName)
{
  const QString other = folder.filePath("other");
  QDir().mkpath(other);
  app::Session session;
  const QString path = other + "/work.sieve";
  session.path = data.toStdString();
  session.nearPath = "near.csv";
  EXPECT_EQ(app::dataOf(session, path), data);
  write(other + "/near.csv", "x");
  EXPECT_EQ(app::dataOf(session, path), other + "/near.csv");
  QFile::remove(other + "/near.csv");
  write(other + "/scan.csv", "x");
  EXPECT_EQ(app::dataOf(session, path), data);
  QFile::remove(data);
  EXPECT_EQ(app::dataOf(session, path), other + "/scan.csv");
  QFile::remove(other + "/scan.csv");
  EXPECT_EQ(app::dataOf(session, path), "");
  EXPECT_EQ(app::dataOf({}, path), "");
}

TEST_F(SessionScene, CountsOfASessionAreThoseOfTheGatesThatAreOn)
{
  openData();
  makeWork();
  const app::Session session = app::sessionOf(document);
  EXPECT_EQ(session.counts.runs, 40u);
  EXPECT_EQ(session.counts.passing, document.passing().count());
  EXPECT_THAT(session.counts.afterGate,
              ElementsAre(document.outcomes()[0].left, document.outcomes()[2].left));
}

TEST_F(SessionScene, DataAreOnlyUsedForASessionThatWaitsForThem)
{
  loader.useData(data);
  EXPECT_FALSE(loader.isBusy());
  loader.reread();
  EXPECT_FALSE(loader.isBusy()) << "nothing is open";
}

TEST_F(SessionScene, KeysThatAreGoneAreTold)
{
  openData();
  std::vector<RunKey> absent = {RunKey("before")};
  const std::vector<RunKey> keys = {RunNumbers{3, 5}, std::string("nobody"), RunNumbers{100, 200},
                                    std::string("7"), RunNumbers{38, 45},    RunNumbers{-2, 2}};
  const RunSet runs = app::runsOf(keys, document.scan(), &absent);
  EXPECT_THAT(runs.members(), ElementsAre(0u, 1u, 2u, 3u, 4u, 6u, 37u, 38u, 39u));
  EXPECT_THAT(absent, ElementsAre(RunKey("nobody"), RunKey(RunNumbers{100, 200}), RunKey(RunNumbers{41, 45}),
                                  RunKey(RunNumbers{-2, 0})));
  EXPECT_EQ(app::countOf(absent), 1u + 101u + 5u + 3u);
}

TEST_F(SessionScene, TheLargestNumbersAreKeysLikeOthers)
{
  constexpr long long last = std::numeric_limits<long long>::max();
  auto scan = lineScan(3);
  const_cast<Scan&>(*scan).runs[1].key = std::to_string(last);
  std::vector<RunKey> absent;
  EXPECT_THAT(app::runsOf({RunNumbers{last - 1, last}}, *scan, &absent).members(), ElementsAre(1u));
  EXPECT_THAT(absent, ElementsAre(RunKey(RunNumbers{last - 1, last - 1})));
  EXPECT_THAT(app::runsOf({RunNumbers{5, 2}}, *scan, &absent).members(), IsEmpty());
  EXPECT_THAT(absent, IsEmpty()) << "a range without numbers";
}

TEST_F(SessionScene, SetsOutliveDataThatLackTheirRunsForAWhile)
{
  write(data, lineScanText(50));
  openData();
  document.change("Keep", [this](app::State& state) {
    RunSet runs(document.scan().runs.size());
    for (std::size_t run : {3, 28, 29, 30, 44}) runs.set(run);
    state.sets = {{"high end", runs, 0, true, "typed"}};
  });
  document.pin({3, 44});
  write(data, lineScanText(30)); // as while it is being written anew
  loader.reread();
  ASSERT_TRUE(waitFor([this] { return opened == 1 && !loader.isBusy(); }));
  EXPECT_THAT(document.state().sets[0].runs.members(), ElementsAre(3u, 28u, 29u));
  EXPECT_EQ(app::countOf(document.state().sets[0].absent), 2u);
  const std::string told = differences.join('\n').toStdString();
  EXPECT_THAT(told, HasSubstr("3 of the 5 runs of the set \"high end\""));
  EXPECT_THAT(told, HasSubstr("pinned runs that the scan does not have: 1"));

  app::Session const session = app::sessionOf(document);
  EXPECT_THAT(session.sets[0].runs, ElementsAre(RunKey(RunNumbers{4, 4}), RunKey(RunNumbers{29, 30}),
                                                RunKey(RunNumbers{31, 31}), RunKey(RunNumbers{45, 45})))
      << "saved with all its runs";
  write(data, lineScanText(50));
  loader.reread();
  ASSERT_TRUE(waitFor([this] { return opened == 2 && !loader.isBusy(); }));
  EXPECT_THAT(document.state().sets[0].runs.members(), ElementsAre(3u, 28u, 29u, 30u, 44u));
  EXPECT_THAT(document.state().sets[0].absent, IsEmpty());
}

TEST_F(SessionScene, AGateThatNoLongerFitsIsTold)
{
  openData();
  document.change("Gates", [](app::State& state) {
    Gate gone;
    gone.column = "k1";
    gone.range.low = 0.2;
    state.gates = {{"Gate 1", gateOnA(0.1, 0.9), true}, {"Gate 2", gone, true}, {"off", gone, false}};
  });
  write(data, lineScanText().replace("k1", "q1"));
  loader.reread();
  ASSERT_TRUE(waitFor([this] { return opened == 1 && !loader.isBusy(); }));
  EXPECT_THAT(differences,
              ElementsAre(QString("the gate \"Gate 2\" does not fit the scan and asks for nothing")));
}

TEST_F(SessionScene, DifferencesNameGatesAsTheListDoes)
{
  openData();
  document.change("Gates", [](app::State& state) {
    state.gates = {{"first", gateOnA(0.1, 0.2), false}, {"second", gateOnA(0.3, 1.0), true}};
  });
  const QString path = folder.filePath("s.sieve");
  app::writeSession(path, app::sessionOf(document));
  write(data, lineScanText(20));
  document.close();
  openSession(path);
  EXPECT_THAT(differences.join('\n').toStdString(), HasSubstr("after \"second\", A @"));
}

} // namespace
} // namespace runsieve::test
