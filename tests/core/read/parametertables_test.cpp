// Parameters of runs from files beside a scan.
#include "ScanTexts.h"

#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace runsieve::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using Values = std::vector<double>;

SmallScan const small;

/// The small scan, one file per run, without its parameter, and a table of parameters.
class RunsInAFolder : public testing::Test
{
protected:
  RunsInAFolder() { write({"run_1.csv", "run_2.csv", "run_3.csv", "run_4.csv"}); }

  void write(std::vector<std::string> const& names)
  {
    for (std::size_t i = 0; i < names.size(); ++i)
      writeTo(folder, names[i], small.fileOf(static_cast<int>(i), false));
  }

  ScanFile with(std::string const& table, std::string const& name = "parameters.csv")
  {
    writeTo(folder, name, table);
    return readAll(folder);
  }

  std::string complaintOf(std::string const& table)
  {
    try {
      (void)with(table);
      return "nothing";
    } catch (ScanError const& error) {
      return error.what();
    }
  }

  TempFolder folder;
};

void expectValues(ScanFile const& file)
{
  ASSERT_NO_THROW(file.scan.check());
  EXPECT_EQ(parameterOf(file.scan, "k").values, (Values{0.5, 0.75, 1, 1.25}));
}

TEST_F(RunsInAFolder, ATableIsJoinedByItsKeyAndNotByOrder)
{
  for (std::string const name : {"parameters.csv", "params.csv", "parameters.tsv", "params.txt"}) {
    ScanFile const file = with("run,k,g\n3,1,30\n1,0.5,10\n4,1.25,40\n2,0.75,20\n", name);
    expectValues(file);
    EXPECT_EQ(parameterOf(file.scan, "g").values, (Values{10, 20, 30, 40}));
    EXPECT_TRUE(tells(file.report, name + ", whose rows have their run in column \"run\""));
    EXPECT_TRUE(tells(file.report, "the file was found by its name"));
    EXPECT_EQ(roleOf(file.report, "k"), "parameter");
    std::filesystem::remove(folder.file(name));
  }
}

TEST_F(RunsInAFolder, KeysAreComparedAsNumbers)
{
  expectValues(with("id,k\n003,1\n1.0,0.5\n4e0,1.25\n+2,0.75\n"));
}

TEST(ParameterTables, NumbersOfFilesWithLeadingZerosAreKeysAsWell)
{
  for (std::string const keys : {"007,008", "7,8"}) {
    TempFolder folder;
    (void)folder.write("time,A\n0,1\n1,2\n", "run_007.csv");
    (void)folder.write("time,A\n0,1\n1,3\n", "run_008.csv");
    std::size_t const comma = keys.find(',');
    (void)folder.write("run,k\n" + keys.substr(comma + 1) + ",80\n" + keys.substr(0, comma) + ",70\n",
                       "parameters.csv");
    EXPECT_EQ(parameterOf(readAll(folder).scan, "k").values, (Values{70, 80}));
  }
}

TEST(ParameterTables, TextsAreKeysAndParameters)
{
  TempFolder folder;
  (void)folder.write("time,A\n0,1\n1,2\n", "WT.csv");
  (void)folder.write("time,A\n0,1\n1,3\n", "mutant.csv");
  (void)folder.write("name;medium;k\nmutant;rich;2\nWT;poor;1\n", "parameters.csv");
  ScanFile const file = readAll(folder);
  EXPECT_THAT(keysOf(file.scan), ElementsAre("WT", "mutant"));
  EXPECT_THAT(parameterOf(file.scan, "medium").texts, ElementsAre("poor", "rich"));
  EXPECT_EQ(parameterOf(file.scan, "k").values, (Values{1, 2}));
  EXPECT_TRUE(tells(file.report, "its values are those of the runs"));
}

TEST_F(RunsInAFolder, ATableOfTextsOnlyIsJoined)
{
  ScanFile const file = with("run,strain\n4,d\n3,c\n2,b\n1,a\n");
  EXPECT_THAT(parameterOf(file.scan, "strain").texts, ElementsAre("a", "b", "c", "d"));
}

TEST_F(RunsInAFolder, ATableMayHaveAColumnPerRun)
{
  ScanFile const file = with("parameterId,unit,3,1,4,2\nk,1/s,1,0.5,1.25,0.75\ng,,30,10,40,20\ns,,c,a,d,b\n");
  expectValues(file);
  EXPECT_EQ(parameterOf(file.scan, "g").values, (Values{10, 20, 30, 40}));
  EXPECT_EQ(parameterOf(file.scan, "k").label.unit, "1/s");
  EXPECT_THAT(parameterOf(file.scan, "s").texts, ElementsAre("a", "b", "c", "d"));
  EXPECT_TRUE(tells(file.report, "its first column names parameters"));
}

TEST_F(RunsInAFolder, RunsAndRowsWithoutAnotherAreTold)
{
  ScanFile const file = with("run,k\n3,1\n1,0.5\n17,9\n18,9\n");
  Values const values = parameterOf(file.scan, "k").values;
  EXPECT_EQ(values[0], 0.5);
  EXPECT_TRUE(std::isnan(values[1]));
  EXPECT_EQ(values[2], 1);
  EXPECT_TRUE(std::isnan(values[3]));
  EXPECT_TRUE(tells(file.report, "2 runs are not in"));
  EXPECT_TRUE(tells(file.report, "parameters.csv: 2, 4"));
  EXPECT_TRUE(tells(file.report, "belong to no run: 17, 18"));
}

TEST_F(RunsInAFolder, OnlyTheFirstOfManySurplusKeysAreNamed)
{
  std::string table = "run,k\n";
  for (int i = 1; i <= 54; ++i) table += std::to_string(i) + ",7\n";
  ScanFile const file = with(table);
  EXPECT_TRUE(tells(file.report, "50 keys of"));
  EXPECT_TRUE(tells(file.report, "23, 24 and 30 more"));
}

TEST_F(RunsInAFolder, AKeyThatStandsTwiceIsAnError)
{
  EXPECT_THAT(complaintOf("run,k\n1,1\n2,2\n3,3\n4,4\n03,5\n"),
              HasSubstr("parameters.csv:6: column 1 (\"run\"): run \"3\" stands twice"));
}

TEST_F(RunsInAFolder, ARowWithoutAKeyIsAnError)
{
  EXPECT_THAT(complaintOf("run,k\n1,1\n,2\n"),
              HasSubstr("parameters.csv:3: column 1 (\"run\"): expected the key"));
}

TEST_F(RunsInAFolder, ATableWithoutAKeyIsRefusedThoughItHasARowForEachRun)
{
  EXPECT_THAT(complaintOf("k,g\n0.5,10\n0.75,20\n1,30\n1.25,40\n"),
              AllOf(HasSubstr("parameters.csv:1: no column tells which run a row belongs to"),
                    HasSubstr("their order proves nothing"), HasSubstr("add a column named \"run\"")));
}

TEST_F(RunsInAFolder, AForeignTableThatWasFoundByItselfIsPassedOver)
{
  ScanFile const file = with("k,g\n0.5,10\n0.75,20\n");
  EXPECT_TRUE(file.scan.parameters.empty());
  EXPECT_TRUE(tells(file.report, "parameters.csv was passed over"));
  ReadOptions options;
  options.parametersFile = "parameters.csv";
  EXPECT_THROW((void)readAll(folder, options), ScanError) << "one that is named is not";
}

TEST_F(RunsInAFolder, AListForASingleRunIsPassedOverEvenWithALineForEachRun)
{
  ScanFile const file = with("k 1\ng 2\nh 3\ni 4\nj 5\n", "parameters.txt");
  EXPECT_TRUE(file.scan.parameters.empty());
  EXPECT_TRUE(tells(file.report, "it lists the parameters of a single run"));
}

TEST_F(RunsInAFolder, AnyDamageOfATableIsToldOrHarmless)
{
  std::string const whole = "run,k,g\n3,1,x\n1,0.5,\"y\"\n4,1.25,z\n2,0.75,x\n";
  constexpr char alphabet[] = "0123456789.,;\t\n\r\"-+einfa \0\x80\xff";
  std::mt19937 random(5);
  int told = 0;
  for (int round = 0; round < 500; ++round) {
    std::string damaged = whole;
    for (int i = 1 + static_cast<int>(random() % 3); i > 0; --i)
      damaged[random() % damaged.size()] = alphabet[random() % (sizeof alphabet - 1)];
    try {
      ScanFile const file = with(damaged, round % 2 == 0 ? "parameters.csv" : "params.txt");
      ASSERT_NO_THROW(file.scan.check()) << damaged;
    } catch (ScanError const&) {
      ++told;
    }
    std::filesystem::remove(folder.file("parameters.csv"));
  }
  EXPECT_GT(told, 50);
  EXPECT_LT(told, 500);
}

TEST_F(RunsInAFolder, AnOptionNamesTheTable)
{
  writeTo(folder, "parameters.csv", "run,k\n1,9\n2,9\n3,9\n4,9\n");
  ReadOptions options;
  options.parametersFile = writeTo(folder, "doses.csv", "run,k\n3,1\n1,0.5\n4,1.25\n2,0.75\n");
  expectValues(readAll(folder, options));
  options.parametersFile = "doses.csv";
  expectValues(readAll(folder, options));
  options.parametersFile = "nowhere.csv";
  EXPECT_THAT([&] { (void)readAll(folder, options); },
              testing::ThrowsMessage<ScanError>(HasSubstr("nowhere.csv: no such file")));
}

TEST_F(RunsInAFolder, DamageOfATableIsTold)
{
  EXPECT_THAT(complaintOf("run,k\n1,1\n2,2,3\n3,3\n4,4\n"), HasSubstr("parameters.csv:3: 3 fields"));
}

TEST(ParameterTables, ATableLiesBesideTheFileOfAScan)
{
  TempFolder folder;
  std::string const scan = folder.write("sim,time,A\n7,0,1\n7,1,2\n9,0,1\n9,1,3\n");
  (void)folder.write("k\tsim\n90\t9\n70\t7\n", "params.tsv");
  ScanFile const file = readScan(scan);
  EXPECT_EQ(parameterOf(file.scan, "k").values, (Values{70, 90}));
}

TEST(ParameterTables, TheColumnNamedAsTheRunOfTheScanIsTheKey)
{
  TempFolder folder;
  std::string const scan = folder.write("cell line,time,A\n7,0,1\n7,1,2\n9,0,1\n9,1,3\n");
  (void)folder.write("id,k,cell line\n9,90,9\n7,70,7\n", "params.csv");
  ReadOptions options;
  options.run = "cell line";
  ScanFile const file = readScan(scan, options);
  EXPECT_EQ(parameterOf(file.scan, "k").values, (Values{70, 90}));
  EXPECT_EQ(parameterOf(file.scan, "id").values, (Values{7, 9}));
}

TEST(ParameterTables, TheImportFileNamesATableBesideIt)
{
  TempFolder folder;
  std::string const scan = folder.write("sim,time,A\n7,0,1\n7,1,2\n9,0,1\n9,1,3\n");
  (void)folder.write("sim,k\n9,90\n7,70\n", "doses.csv");
  (void)folder.write(R"({"parameters": "doses.csv"})", "scan.csv.import.json");
  EXPECT_EQ(parameterOf(readScan(scan).scan, "k").values, (Values{70, 90}));
}

TEST(ParameterTables, WhatTheScanHasAlreadyMustBeTheSame)
{
  TempFolder folder;
  std::string const scan = folder.write("sim,time,A,k,s\n7,0,1,70,a\n7,1,2,70,a\n9,0,1,90,b\n9,1,3,90,b\n");
  (void)folder.write("sim,Parameter: k,s\n9,90,b\n7,70,a\n", "parameters.csv");
  ScanFile const file = readScan(scan);
  EXPECT_EQ(file.scan.parameters.size(), 2u);
  EXPECT_TRUE(tells(file.report, "were not taken twice: \"k\", \"s\""));
  (void)folder.write("sim,k\n9,91\n7,70\n", "parameters.csv");
  EXPECT_THAT(
      [&] { (void)readScan(scan); },
      testing::ThrowsMessage<ScanError>(AllOf(HasSubstr("parameters.csv:2: column 2 (\"k\")"),
                                              HasSubstr("run 9 has \"91\" here, but \"90\" in the scan"))));
}

TEST(ParameterTables, ParametersThatAreNamedByOptionAreNotLookedForElsewhere)
{
  TempFolder folder;
  std::string const scan = folder.write("sim,time,A,k\n7,0,1,70\n7,1,2,70\n9,0,1,90\n9,1,3,90\n");
  (void)folder.write("sim,g\n9,91\n7,70\n", "parameters.csv");
  ReadOptions options;
  options.parameters = std::vector<std::string>{"k"};
  EXPECT_EQ(readScan(scan, options).scan.parameters.size(), 1u);
}

TEST(ParameterTables, LiesAboveTheFoldersOfTheRuns)
{
  TempFolder folder;
  for (int run = 0; run < 4; ++run)
    writeTo(folder, "realization-" + std::to_string(run) + "/out.csv", small.fileOf(run, false));
  (void)folder.write("realization,k\n3,1.25\n2,1\n1,0.75\n0,0.5\n", "parameters.csv");
  expectValues(readAll(folder));
}

TEST(ParameterTables, EachRunMayHaveAListInItsFolder)
{
  for (std::string const divider : {" ", "=", " = ", ": ", "\t", "  ", ","}) {
    TempFolder folder;
    for (int run = 0; run < 4; ++run) {
      std::string const place = "realization-" + std::to_string(run) + "/iter-0/";
      writeTo(folder, place + "out.csv", small.fileOf(run, false));
      writeTo(folder, place + "parameters.txt",
              "# drawn\n\nk" + divider + plain(small.k(run)) + " # per s\nstrain" + divider + "s" +
                  std::to_string(run % 2) + "\r\n");
    }
    ScanFile const file = readAll(folder);
    expectValues(file);
    EXPECT_EQ(parameterOf(file.scan, "strain").values, (Values{0, 1, 0, 1})) << divider;
    EXPECT_TRUE(tells(file.report, "the parameters of 4 files were read from lists"));
  }
}

TEST(ParameterTables, RunsWithoutAListAndGapsInListsAreTold)
{
  TempFolder folder;
  for (int run = 0; run < 4; ++run) {
    std::string const place = "r" + std::to_string(run) + '/';
    writeTo(folder, place + "out.csv", small.fileOf(run, false));
    if (run != 2) writeTo(folder, place + "parameters.txt", run == 1 ? "k 1\n" : "g 2\nk 1\n");
  }
  ScanFile const file = readAll(folder);
  EXPECT_TRUE(tells(file.report, "runs without a list of parameters: 2"));
  EXPECT_TRUE(tells(file.report, "without a value in some lists: \"g\""));
  EXPECT_TRUE(std::isnan(parameterOf(file.scan, "k").values[2]));
  EXPECT_TRUE(std::isnan(parameterOf(file.scan, "g").values[1]));
  EXPECT_EQ(parameterOf(file.scan, "g").values[3], 2);
}

TEST(ParameterTables, FaultsOfListsAreTold)
{
  TempFolder folder;
  auto const complaint = [&](std::string const& list) -> std::string {
    for (int run = 0; run < 2; ++run) {
      writeTo(folder, "r" + std::to_string(run) + "/out.csv", small.fileOf(run));
      writeTo(folder, "r" + std::to_string(run) + "/parameters.txt", run == 1 ? list : "g 1\n");
    }
    try {
      (void)readAll(folder);
      return "nothing";
    } catch (ScanError const& error) {
      return error.what();
    }
  };
  EXPECT_THAT(complaint("g 1\ng 2\n"), HasSubstr("r1/parameters.txt:2: parameter \"g\" stands twice"));
  EXPECT_THAT(complaint("run,k,g\n0,1,2\n"), HasSubstr("r1/parameters.txt: expected lines \"NAME VALUE\""));
  EXPECT_THAT(complaint("g\n"), HasSubstr("expected lines"));
  EXPECT_THAT(complaint(""), HasSubstr("expected lines"));
  EXPECT_THAT(complaint(std::string("g\0 1\n", 5)), HasSubstr("r1/parameters.txt:1: binary data"));
  EXPECT_THAT(complaint("# k of the file\nk 99\n"),
              HasSubstr("r1/parameters.txt:2: run 1 has \"99\" here, but \"0.75\" in the scan"));
  EXPECT_EQ(complaint("k 0.75\n"), "nothing");
}

TEST(ParameterTables, AListLiesBesideTheFileOfOneRun)
{
  TempFolder folder;
  std::string const scan = folder.write("time,A\n0,1\n1,2\n");
  (void)folder.write("k 3\nvolume 2\n", "parameters.txt");
  Scan const read = readScan(scan).scan;
  EXPECT_EQ(parameterOf(read, "k").values, (Values{3}));
  EXPECT_EQ(parameterOf(read, "volume").values, (Values{2}));
}

TEST_F(RunsInAFolder, FilesThatHoldNoTableArePassedOverUnlessAskedFor)
{
  for (char const* const text : {"", "\n\n", "These runs were made on Monday.\nNobody knows why.\n",
                                 "run,k\n", "k1 0.5\n", "a b c\n1 2 3\n4 5\n", "# only this\n", "a\rb\n"}) {
    SCOPED_TRACE(text);
    writeTo(folder, "parameters.txt", text);
    ScanFile const file = readAll(folder);
    EXPECT_EQ(file.scan.runs.size(), 4u);
    EXPECT_TRUE(file.scan.parameters.empty());
    EXPECT_TRUE(tells(file.report, "parameters.txt was passed over"));
    ReadOptions asked;
    asked.parametersFile = "parameters.txt";
    EXPECT_THROW((void)readAll(folder, asked), ScanError);
  }
  EXPECT_TRUE(tells(readAll(folder).report, "carriage return")) << "the reason is told";
}

TEST(ParameterTables, AListOfOneLineIsThatOfTheOnlyRun)
{
  TempFolder folder;
  writeTo(folder, "parameters.txt", "k1 0.5\n");
  ScanFile const file = readScan(folder.write("time,A\n0,1\n1,2\n"));
  EXPECT_EQ(parameterOf(file.scan, "k1").values[0], 0.5);
}

TEST(ParameterCopies, AreToldAndKept)
{
  std::string text = "run,time,A,X,LOG10_X,DOWN,Y,S,C,GAP\n";
  Values const x = {10, 1000, 1, 100};
  Values const y = {1, 2, 3, 5};
  for (int run = 0; run < 4; ++run)
    for (int time = 0; time < 2; ++time)
      text += joined({double(run), double(time), double(run * time), x[run], std::log10(x[run]), -3 * x[run],
                      y[run]},
                     ",") +
              ",t" + std::to_string(run) + ",7," + (run == 0 ? "" : plain(x[run])) + '\n';
  ScanFile const file = readString(text);
  EXPECT_EQ(file.scan.parameters.size(), 7u);
  EXPECT_TRUE(tells(file.report, "LOG10_X is a monotone copy of X: both give the same test"));
  EXPECT_TRUE(tells(file.report, "DOWN is a monotone copy of X: both give the same test"));
  for (std::string const other : {"Y", "S", "C", "GAP"})
    EXPECT_FALSE(tells(file.report, other + " is a monotone copy")) << other;
}

TEST(ParameterCopies, TiesMustBeTies)
{
  ScanFile const file = readString("run,time,A,X,U,V\n0,0,1,1,1,4\n0,1,2,1,1,4\n1,0,1,1,2,4\n1,1,2,1,2,4\n"
                                   "2,0,1,3,3,0\n2,1,2,3,3,0\n");
  EXPECT_FALSE(tells(file.report, "U is a monotone copy"));
  EXPECT_TRUE(tells(file.report, "V is a monotone copy of X"));
}

TEST(ParameterCopies, TwoRunsProveNothing)
{
  ScanFile const file = readString("run,time,A,X,U\n0,0,1,1,1\n0,1,2,1,1\n1,0,1,2,2\n1,1,2,2,2\n");
  EXPECT_FALSE(tells(file.report, "monotone copy"));
}

} // namespace
} // namespace runsieve::test
