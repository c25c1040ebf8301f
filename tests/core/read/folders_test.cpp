// Scans of several files.
#include "ScanTexts.h"

#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace runsieve::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Values = std::vector<double>;

SmallScan const small;

std::string complaintOf(TempFolder const& folder, ReadOptions const& options = {})
{
  try {
    (void)readAll(folder, options);
    return "nothing";
  } catch (ScanError const& error) {
    return error.what();
  }
}

/// \param runs which run of the small scan each run of the scan is
void expectRuns(Scan const& scan, std::vector<int> const& runs = {0, 1, 2, 3})
{
  ASSERT_NO_THROW(scan.check());
  EXPECT_EQ(scan.times, small.times);
  ASSERT_EQ(scan.runs.size(), runs.size());
  ASSERT_EQ(scan.outputs.size(), 2u);
  ASSERT_EQ(scan.parameters.size(), 1u);
  for (std::size_t i = 0; i < runs.size(); ++i) {
    EXPECT_EQ(scan.runs[i].status, RunStatus::Complete);
    EXPECT_EQ(parameterOf(scan, "k").values[i], small.k(runs[i]));
    for (std::size_t t = 0; t < small.times.size(); ++t) {
      EXPECT_EQ(valuesOf(scan, "A", i)[t], small.a(runs[i], small.times[t]));
      EXPECT_EQ(valuesOf(scan, "B", i)[t], small.b(runs[i], small.times[t]));
    }
  }
}

void writeRuns(TempFolder const& folder, std::vector<std::string> const& names)
{
  for (std::size_t i = 0; i < names.size(); ++i) writeTo(folder, names[i], small.fileOf(static_cast<int>(i)));
}

TEST(Folders, EachFileIsARun)
{
  TempFolder folder;
  writeRuns(folder, {"run_0.csv", "run_1.csv", "run_2.csv", "run_3.csv"});
  ScanFile const file = readAll(folder);
  expectRuns(file.scan);
  EXPECT_THAT(keysOf(file.scan), ElementsAre("0", "1", "2", "3"));
  EXPECT_EQ(file.report.format, "4 files of comma separated text");
  EXPECT_TRUE(tells(file.report, "runs are named by their files: \"0\" is run_0.csv"));
  EXPECT_EQ(roleOf(file.report, "k"), "parameter") << "it is constant within every file";
  EXPECT_EQ(roleOf(file.report, "run"), "run");
}

TEST(Folders, ASlashBehindTheFolderIsOfNoConcern)
{
  TempFolder folder;
  writeRuns(folder, {"1", "2", "3", "4"});
  EXPECT_THAT(keysOf(readScan(folder.file("")).scan), ElementsAre("1", "2", "3", "4"));
}

TEST(Folders, LeadingZerosAreNoPartOfTheKey)
{
  TempFolder folder;
  writeRuns(folder, {"run_007.csv", "run_008.csv", "run_009.csv", "run_010.csv"});
  EXPECT_THAT(keysOf(readAll(folder).scan), ElementsAre("7", "8", "9", "10"));
}

TEST(Folders, LeadingZerosStayWhereTheyTellRunsApart)
{
  TempFolder folder;
  writeRuns(folder, {"run_07.csv", "run_7.csv", "run_8.csv", "run_9.csv"});
  EXPECT_THAT(keysOf(readAll(folder).scan), ElementsAre("07", "7", "8", "9"));
}

TEST(Folders, RunsStandInTheOrderOfTheirNumbers)
{
  TempFolder folder;
  writeRuns(folder, {"run10.csv", "run9.csv", "run100.csv", "run2.csv"});
  Scan const scan = readAll(folder).scan;
  EXPECT_THAT(keysOf(scan), ElementsAre("2", "9", "10", "100"));
  expectRuns(scan, {3, 1, 0, 2});
}

TEST(Folders, TextsNameRuns)
{
  TempFolder folder;
  writeRuns(folder, {"model_WT_out.csv", "model_WX_out.csv", "model_knock out_out.csv", "model_a.b_out.csv"});
  EXPECT_THAT(keysOf(readAll(folder).scan), ElementsAre("WT", "WX", "a.b", "knock out"))
      << "names are not cut within a word";
}

TEST(Folders, NumbersInNamesAreNotCut)
{
  TempFolder folder;
  writeRuns(folder, {"k_0.25.csv", "k_0.5.csv", "k_0.125.csv", "k_0.75.csv"});
  EXPECT_THAT(keysOf(readAll(folder).scan), ElementsAre("0.5", "0.25", "0.75", "0.125"));
}

TEST(Folders, NumbersMayTakeThePlaceOfTheEnding)
{
  TempFolder folder;
  writeRuns(folder, {"out.1", "out.2", "out.3", "out.10"});
  EXPECT_THAT(keysOf(readAll(folder).scan), ElementsAre("1", "2", "3", "10"));
}

TEST(Folders, ATreeHasAFolderPerRun)
{
  TempFolder folder;
  writeRuns(folder, {"realization-0/simulation.csv", "realization-1/simulation.csv",
                     "realization-2/simulation.csv", "realization-12/simulation.csv"});
  Scan const scan = readAll(folder).scan;
  expectRuns(scan);
  EXPECT_THAT(keysOf(scan), ElementsAre("0", "1", "2", "12"));
}

TEST(Folders, FoldersWithinFoldersGiveKeysOfSeveralParts)
{
  TempFolder folder;
  writeRuns(folder, {"realization-0/iter-1/s.csv", "realization-0/iter-03/s.csv",
                     "realization-12/iter-1/s.csv", "realization-12/iter-03/s.csv"});
  Scan const scan = readAll(folder).scan;
  expectRuns(scan);
  EXPECT_THAT(keysOf(scan), ElementsAre("0/1", "0/3", "12/1", "12/3"));
}

TEST(Folders, ALevelThatIsTheSameEverywhereIsNoPartOfTheKey)
{
  TempFolder folder;
  writeRuns(folder, {"r-0/iter-5/s_0.csv", "r-1/iter-5/s_1.csv", "r-2/iter-5/s_2.csv", "r-3/iter-5/s_3.csv"});
  EXPECT_THAT(keysOf(readAll(folder).scan), ElementsAre("0", "1", "2", "3"));
}

TEST(Folders, FilesAtDifferentDepthsHaveTheirPathsForKeys)
{
  TempFolder folder;
  writeRuns(folder, {"1.csv", "2.csv", "more/1.csv", "more/2.csv"});
  EXPECT_THAT(keysOf(readAll(folder).scan), ElementsAre("1", "2", "more/1", "more/2"));
}

TEST(Folders, RunsOfAFileAreNamedByFileAndRun)
{
  TempFolder folder;
  std::string const first = "time,A,B,k\n" + small.fileOf(0).substr(11) + small.fileOf(1).substr(11);
  std::string second = "run,time,A,B,k\n";
  for (int run : {2, 3})
    for (double const time : small.times)
      second += plain(run + 5) + ',' +
                joined({time, small.a(run, time), small.b(run, time), small.k(run)}, ",") + '\n';
  writeTo(folder, "part_1.csv", first);
  writeTo(folder, "part_2.csv", second);
  ScanFile const file = readAll(folder);
  expectRuns(file.scan);
  EXPECT_THAT(keysOf(file.scan), ElementsAre("1/0", "1/1", "2/7", "2/8"));
  EXPECT_TRUE(tells(file.report, "in part_1.csv: runs are split where time restarts"));
  EXPECT_TRUE(tells(file.report, "the run column of 1 file only tells apart the runs of that file"));
}

TEST(Folders, AFileOfOneRunHasTheKeyOfTheFileWhateverItsRunColumnSays)
{
  TempFolder folder;
  for (int run = 0; run < 3; ++run)
    writeTo(folder, "r" + std::to_string(run + 4) + ".csv", "run,time,A\n0,0,1\n0,1," + std::to_string(run));
  ScanFile const file = readAll(folder);
  EXPECT_THAT(keysOf(file.scan), ElementsAre("4", "5", "6"));
  EXPECT_TRUE(file.scan.parameters.empty());
}

TEST(Folders, RowsOfAFileMayStandInAnyOrder)
{
  TempFolder folder;
  writeTo(folder, "r1.csv", "run,time,A\n1,1,3\n0,0,1\n1,0,2\n0,1,9\n");
  writeTo(folder, "r2.csv", "run,time,A\n0,0,5\n0,1,6\n");
  Scan const scan = readAll(folder).scan;
  EXPECT_THAT(keysOf(scan), ElementsAre("1/0", "1/1", "2"));
  EXPECT_EQ(valuesOf(scan, "A", 0), (Values{1, 9}));
  EXPECT_EQ(valuesOf(scan, "A", 1), (Values{2, 3}));
  EXPECT_EQ(valuesOf(scan, "A", 2), (Values{5, 6}));
}

TEST(Folders, ColumnsAreFoundByName)
{
  TempFolder folder;
  writeTo(folder, "r1.csv", "time,A,B\n0,1,2\n1,3,4\n");
  writeTo(folder, "r2.csv", "B;A;Time\n20;10;0\n40;30;1\n");
  Scan const scan = readAll(folder).scan;
  EXPECT_EQ(valuesOf(scan, "A", 1), (Values{10, 30}));
  EXPECT_EQ(valuesOf(scan, "B", 1), (Values{20, 40}));
}

TEST(Folders, ColumnsThatOnlySomeFilesHaveAreLeftOutAndTold)
{
  TempFolder folder;
  writeTo(folder, "r1.csv", "time,A,B\n0,1,2\n1,3,4\n");
  writeTo(folder, "r2.csv", "time,A,C\n0,1,2\n1,5,4\n");
  ScanFile const file = readAll(folder);
  ASSERT_EQ(file.scan.outputs.size(), 1u);
  EXPECT_EQ(valuesOf(file.scan, "A", 1), (Values{1, 5}));
  EXPECT_TRUE(tells(file.report, "columns that not all files have were left out: \"B\", \"C\""));
}

TEST(Folders, FilesWithoutACommonOutputAreNoScan)
{
  TempFolder folder;
  writeTo(folder, "r1.csv", "time,A\n0,1\n1,3\n");
  writeTo(folder, "r2.csv", "time,B\n0,1\n1,5\n");
  EXPECT_THAT(complaintOf(folder), HasSubstr("the files have no column in common besides the time"));
}

TEST(Folders, FilesMustAgreeInUnits)
{
  TempFolder folder;
  writeTo(folder, "r1.csv", "time (s),A\n0,1\n1,3\n");
  writeTo(folder, "r2.csv", "time (min),A\n0,1\n1,5\n");
  EXPECT_THAT(complaintOf(folder),
              AllOf(HasSubstr("r2.csv:1: column 1"), HasSubstr("the unit is \"min\", but \"s\" in"),
                    HasSubstr("r1.csv")));
}

TEST(Folders, FilesMayHaveTimesOfTheirOwn)
{
  TempFolder folder;
  writeTo(folder, "r1.csv", "time,A\n0,0\n1,10\n2,20\n");
  writeTo(folder, "r2.csv", "time,A\n0,0\n0.5,50\n1,100\n2,200\n");
  ReadOptions exact;
  exact.exactTimes = true;
  Scan const gaps = readAll(folder, exact).scan;
  EXPECT_EQ(gaps.times, (Values{0, 0.5, 1, 2}));
  EXPECT_TRUE(std::isnan(valuesOf(gaps, "A", 0)[1]));
  ScanFile const file = readAll(folder);
  EXPECT_NO_THROW(file.scan.check());
  std::size_t const last = file.scan.times.size() - 1;
  EXPECT_EQ(valuesOf(file.scan, "A", 0)[last], 20);
  EXPECT_EQ(valuesOf(file.scan, "A", 1)[last], 200);
}

// A byte of this character is that of a line end.
TEST(Folders, LongFilesInUtf16AreJudgedByWholeLines)
{
  TempFolder folder;
  for (bool const littleEnd : {true, false}) {
    std::string text = littleEnd ? "\xff\xfe" : "\xfe\xff";
    auto const add = [&](char high, char low) {
      text += littleEnd ? std::string{low, high} : std::string{high, low};
    };
    for (char const c : std::string("strain,time,A\n")) add(0, c);
    for (int row = 0; row < 60000; ++row) {
      add('\x01', '\n');
      for (char const c : ',' + std::to_string(row) + ',' + std::to_string(row % 10) + ".25\n") add(0, c);
    }
    ASSERT_GT(text.size(), std::size_t(1) << 20);
    for (char const* const name : {"r1.csv", "r2.csv"}) (void)folder.write(text, name);
    Scan const scan = readAll(folder).scan;
    EXPECT_EQ(scan.runs.size(), 2u);
    EXPECT_EQ(scan.times.size(), 60000u);
    EXPECT_EQ(parameterOf(scan, "strain").texts, (std::vector<std::string>{"\u010a"}));
  }
}

TEST(Folders, AFileThatEndsEarlyIsAShortRun)
{
  TempFolder folder;
  for (int run = 0; run < 4; ++run) writeTo(folder, "r" + std::to_string(run) + ".csv", small.fileOf(run));
  std::string text = small.fileOf(2);
  text.pop_back();
  (void)folder.write(text.substr(0, text.rfind('\n') + 1), "r2.csv");
  Scan const scan = readAll(folder).scan;
  EXPECT_EQ(scan.runs[2].status, RunStatus::Short);
  EXPECT_EQ(scan.runs[2].end, small.times.size() - 1);
}

TEST(Folders, TextsOfFilesAreOneParameter)
{
  TempFolder folder;
  writeTo(folder, "r1.csv", "time,A,strain,mode\n0,1,wild,x\n1,3,wild,x\n");
  writeTo(folder, "r2.csv", "time,A,strain,mode\n0,1,mutant,x\n1,3,mutant,x\n");
  writeTo(folder, "r3.csv", "time,A,strain,mode\n0,1,wild,y\n1,3,wild,y\n");
  Scan const scan = readAll(folder).scan;
  EXPECT_THAT(parameterOf(scan, "strain").texts, ElementsAre("wild", "mutant"));
  EXPECT_EQ(parameterOf(scan, "strain").values, (Values{0, 1, 0}));
  EXPECT_EQ(parameterOf(scan, "mode").values, (Values{0, 0, 1}));
}

TEST(Folders, RowNumbersAreNoOutput)
{
  TempFolder folder;
  writeTo(folder, "r1.csv", "index,time,A\n0,0,1\n1,1,3\n");
  writeTo(folder, "r2.csv", "index,time,A\n0,0,1\n1,1,4\n");
  EXPECT_EQ(readAll(folder).scan.outputs.size(), 1u);
}

TEST(Folders, OptionsHoldForAllFiles)
{
  TempFolder folder;
  for (int i : {1, 2})
    writeTo(folder, "r" + std::to_string(i) + ".csv",
            "clock,nr,A,B,k\n0,5,1,2,7\n1,5,2,2,7\n0,6,1,3,8\n1,6," + std::to_string(i) + ",3,8\n");
  ReadOptions options;
  options.time = "clock";
  options.run = "nr";
  options.ignore = {"k"};
  options.outputs = {"B"};
  ScanFile const file = readAll(folder, options);
  EXPECT_THAT(keysOf(file.scan), ElementsAre("1/5", "1/6", "2/5", "2/6"));
  EXPECT_EQ(file.scan.outputs.size(), 2u);
  EXPECT_TRUE(file.scan.parameters.empty());
}

TEST(Folders, OtherFilesArePassedOverAndTold)
{
  TempFolder folder;
  writeRuns(folder, {"run_0.csv", "run_1.csv", "run_2.csv", "run_3.csv"});
  for (std::string const name : {"README", "README.md", "readme.txt", "model.json", ".hidden.csv", "log.txt"})
    (void)folder.write("Some prose, of no use.\nAnd more.\n", name);
  (void)folder.write("species,initial\nA,1\nB,2\n", "species.csv");
  fs::create_directory(folder.file(".cache"));
  (void)folder.write("time,A\n0,1\n1,2\n", ".cache/run_9.csv");
  ScanFile const file = readAll(folder);
  expectRuns(file.scan);
  for (std::string const name : {"README", "README.md", "readme.txt", "model.json", ".hidden.csv", "log.txt",
                                 "species.csv (no table with a time)", ".cache"})
    EXPECT_TRUE(tells(file.report, name)) << name;
  EXPECT_TRUE(tells(file.report, "passed over 8 files"));
}

TEST(Folders, OnlyTheFirstOfManyOtherFilesAreNamed)
{
  TempFolder folder;
  writeRuns(folder, {"run_0.csv", "run_1.csv", "run_2.csv", "run_3.csv"});
  for (int i = 0; i < 30; ++i) (void)folder.write("{}", "model" + std::to_string(i) + ".json");
  ScanFile const file = readAll(folder);
  EXPECT_TRUE(tells(file.report, "model19.json and 10 more"));
  EXPECT_FALSE(tells(file.report, "model20.json"));
}

TEST(Folders, ADamagedFileAmongManyIsNamed)
{
  for (int const damaged : {0, 150, 299}) {
    TempFolder folder;
    for (int i = 0; i < 300; ++i)
      (void)folder.write(small.fileOf(i % 4), "run_" + std::to_string(i) + ".csv");
    std::string const name = "run_" + std::to_string(damaged) + ".csv";
    std::string const whole = small.fileOf(1);
    (void)folder.write(whole.substr(0, whole.size() - 6), name);
    EXPECT_THAT(complaintOf(folder), AllOf(HasSubstr('/' + name + ":6: "), HasSubstr("cut off")));
    (void)folder.write("", name);
    EXPECT_THAT(complaintOf(folder), HasSubstr('/' + name + ": the file is empty"));
    (void)folder.write(std::string("\x7f"
                                   "ELF\0\0,",
                                   7),
                       name);
    EXPECT_THAT(complaintOf(folder), HasSubstr('/' + name + ":1: binary data"));
    (void)folder.write("time,A,B,k\n0,1,2,3\n1,x,2,3\n", name);
    EXPECT_THAT(complaintOf(folder),
                HasSubstr('/' + name + ":3: column 2 (\"A\"): expected a number, found \"x\""))
        << "found out when all files are together";
  }
}

TEST(Folders, ADamagedFileOfANameOfItsOwnIsNoOtherFile)
{
  TempFolder folder;
  (void)folder.write(small.fileOf(0), "WT.csv");
  (void)folder.write(small.fileOf(1), "mutant.csv");
  (void)folder.write("just words\n", "other.csv");
  EXPECT_THAT(complaintOf(folder), HasSubstr("/other.csv: the file has a header and no rows"));
}

TEST(Folders, TheFirstOfSeveralDamagedFilesIsTold)
{
  TempFolder folder;
  for (int i = 0; i < 100; ++i)
    (void)folder.write(i % 10 == 7 ? "time,A\n0,1\n1\n" : "time,A\n0,1\n1,2\n",
                       "run_" + std::to_string(i) + ".csv");
  ReadOptions options;
  options.threads = 4;
  for (int round = 0; round < 10; ++round)
    EXPECT_THAT(complaintOf(folder, options), HasSubstr("/run_7.csv:3: "));
}

TEST(Folders, ThreadsChangeNothing)
{
  TempFolder folder;
  for (int i = 0; i < 700; ++i)
    (void)folder.write("# made by hand\ntime,A,name\n0,1,n" + std::to_string(i % 7) + "\n1," +
                           std::to_string(i) + ",n" + std::to_string(i % 7) + "\n",
                       "run_" + std::to_string(i) + ".csv");
  ReadOptions one;
  one.threads = 1;
  ReadOptions four;
  four.threads = 4;
  ScanFile const a = readAll(folder, one);
  ScanFile const b = readAll(folder, four);
  EXPECT_EQ(a.scan.runs.size(), 700u);
  EXPECT_EQ(keysOf(a.scan), keysOf(b.scan));
  EXPECT_EQ(parameterOf(a.scan, "name").texts, parameterOf(b.scan, "name").texts);
  ASSERT_EQ(a.report.findings.size(), b.report.findings.size());
  for (std::size_t i = 0; i < a.report.findings.size(); ++i)
    EXPECT_EQ(a.report.findings[i].what, b.report.findings[i].what);
  for (std::size_t run = 0; run < 700; ++run) {
    EXPECT_EQ(valuesOf(a.scan, "A", run), (Values{1, static_cast<double>(run)}));
    EXPECT_EQ(valuesOf(b.scan, "A", run), valuesOf(a.scan, "A", run));
  }
}

TEST(Folders, FindingsOfManyFilesAreToldOnce)
{
  TempFolder folder;
  for (int i = 0; i < 50; ++i)
    (void)folder.write("Title\ntime,A\n0,1\n1," + std::to_string(i) + '\n',
                       "run_" + std::to_string(i) + ".csv");
  ScanFile const file = readAll(folder);
  EXPECT_TRUE(tells(file.report, "in all files: skipped 1 line of text"));
  EXPECT_LT(file.report.findings.size(), 10u);
}

TEST(Folders, ProgressIsToldAndCanStop)
{
  TempFolder folder;
  for (int i = 0; i < 600; ++i) (void)folder.write(small.fileOf(i % 4), "run_" + std::to_string(i) + ".csv");
  ReadOptions options;
  Values told;
  options.progress = [&](double share) {
    told.push_back(share);
    return true;
  };
  (void)readAll(folder, options);
  ASSERT_GE(told.size(), 3u);
  EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
  EXPECT_EQ(told.back(), 1.0);
  options.progress = [](double) { return false; };
  EXPECT_THROW((void)readAll(folder, options), ReadCancelled);
}

TEST(Folders, LinksAreFollowedOnce)
{
  TempFolder folder;
  writeRuns(folder, {"a/run_0.csv", "a/run_1.csv", "a/run_2.csv"});
  TempFolder elsewhere;
  writeTo(elsewhere, "run_3.csv", small.fileOf(3));
  fs::create_directory_symlink(folder.file(""), folder.file("a/loop"));
  fs::create_directory_symlink("a", folder.file("again"));
  fs::create_symlink("run_2.csv", folder.file("a/run_9.csv"));
  fs::create_symlink(elsewhere.file("run_3.csv"), folder.file("a/run_3.csv"));
  ScanFile const file = readAll(folder);
  expectRuns(file.scan);
  EXPECT_TRUE(tells(file.report, "a/loop (a link to a folder that is read already)"));
  EXPECT_TRUE(tells(file.report, "again (a link to a folder that is read already)"));
  EXPECT_TRUE(tells(file.report, "a/run_9.csv (a link to a file that is read already)"));
}

TEST(Folders, AFileThatCannotBeReadIsNamed)
{
  TempFolder folder;
  writeRuns(folder, {"run_0.csv", "run_1.csv", "run_2.csv"});
  fs::create_symlink("nowhere", folder.file("run_3.csv"));
  EXPECT_THAT(complaintOf(folder), HasSubstr("/run_3.csv: no such file"));
  fs::remove(folder.file("run_3.csv"));
  fs::create_symlink("run_3.csv", folder.file("run_3.csv"));
  EXPECT_THAT(complaintOf(folder), HasSubstr("/run_3.csv: cannot be opened"));
}

TEST(Folders, AnEmptyFolderIsTold)
{
  TempFolder folder;
  EXPECT_THAT(complaintOf(folder), HasSubstr("no scan was found in this folder: expected text files"));
  (void)folder.write("{}", "model.json");
  EXPECT_THAT(complaintOf(folder), HasSubstr("passed over: model.json"));
  fs::create_directory(folder.file("empty"));
  EXPECT_THAT(complaintOf(folder), HasSubstr("no scan was found"));
}

TEST(Folders, FoldersAreNotFollowedWithoutEnd)
{
  TempFolder folder;
  std::string path;
  for (int i = 0; i < 60; ++i) path += "d/";
  writeTo(folder, path + "run.csv", small.fileOf(0));
  EXPECT_THAT(complaintOf(folder), HasSubstr("folders lie within each other"));
}

TEST(Folders, AFolderWithOneFileIsThatFile)
{
  TempFolder folder;
  (void)folder.write("run,time,A\n3,0,1\n3,1,2\n8,0,1\n8,1,7\n", "scan.csv");
  ScanFile const file = readAll(folder);
  EXPECT_THAT(keysOf(file.scan), ElementsAre("3", "8"));
  EXPECT_TRUE(tells(file.report, "the one scan file of the folder is scan.csv"));
}

TEST(Folders, NamesOfFilesMayHoldAnyBytes)
{
  TempFolder folder;
  writeRuns(folder, {"a\nb.csv", "\xE4.csv", "c,\"d.csv", "e f.csv"});
  (void)folder.write("{}", "line\nend.json");
  ScanFile const file = readAll(folder);
  EXPECT_THAT(keysOf(file.scan), testing::UnorderedElementsAre("a\nb", "\xC3\xA4", "c,\"d", "e f"));
  for (Finding const& finding : file.report.findings) EXPECT_THAT(finding.what, Not(HasSubstr("\n")));
}

TEST(Folders, RunsThatWouldHaveOneKeyAreTold)
{
  TempFolder folder;
  writeTo(folder, "a.csv", "run,time,A\nb,0,1\nb,1,2\nc,0,1\nc,1,7\n");
  writeTo(folder, "a/b.csv", "time,A\n0,1\n1,2\n");
  EXPECT_THAT(complaintOf(folder), HasSubstr("two runs would be named \"a/b\""));
}

} // namespace
} // namespace runsieve::test
