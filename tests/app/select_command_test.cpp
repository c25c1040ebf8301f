#include "app/cli/CommandLine.h"
#include "app/cli/Commands.h"

#include "support/TempFile.h"

#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/read/ReadScan.h>
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <stdexcept>

namespace runsieve::test {
namespace {

using namespace app;
using testing::ElementsAre;
using testing::HasSubstr;

struct SelectCommand : testing::Test
{
  TempFolder folder;
  std::string scan = folder.write("id,time,A,k,strain\n"
                                  "a,0,1,0.5,wt\na,1,2,0.5,wt\n"
                                  "b,0,1,1.5,\"mu,t\"\nb,1,5,1.5,\"mu,t\"\n"
                                  "c,0,1,,wt\nc,1,9,,wt\n"
                                  "d,0,1,3,wt\n");
  std::string out;
  std::string err;

  int run(std::vector<std::string> words)
  {
    words.insert(words.begin(), {"select", scan});
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    int status = -1;
    try {
      status = runSelect(std::get<SelectArguments>(parseCommandLine(words)));
    } catch (...) {
      out = testing::internal::GetCapturedStdout();
      err = testing::internal::GetCapturedStderr();
      throw;
    }
    out = testing::internal::GetCapturedStdout();
    err = testing::internal::GetCapturedStderr();
    return status;
  }

  static std::vector<std::string> keysIn(std::string const& file)
  {
    std::vector<std::string> keys;
    for (ScanRun const& run : readScan(file).scan.runs) keys.push_back(run.key);
    return keys;
  }
};

TEST_F(SelectCommand, ListsTheRunsThatPassWithTheirParameters)
{
  EXPECT_EQ(run({"-g", "A @ 1 in 4.."}), 0);
  EXPECT_EQ(out, "run    status    k  strain\n"
                 "  b  complete  1.5    mu,t\n"
                 "  c  complete           wt\n");
  EXPECT_EQ(err, "gate   A @ 1 in 4..inf  2 left\n2 of 4 runs pass\n");
}

TEST_F(SelectCommand, TellsAfterEachGateHowManyAreLeft)
{
  run({"-g", "A @ 1 in 2..", "-g", "strain is wt", "-g", "k in ..1"});
  EXPECT_THAT(err, HasSubstr("A @ 1 in 2..inf  3 left\n"));
  EXPECT_THAT(err, HasSubstr("strain is wt     2 left\n"));
  EXPECT_THAT(err, HasSubstr("1 of 4 runs pass\n"));
}

TEST_F(SelectCommand, WritesCsvAndJsonByTheEndingOfTheFile)
{
  run({"-g", "A @ 1 in 4..", "-o", folder.file("runs.csv")});
  EXPECT_EQ(TempFolder::contentOf(folder.file("runs.csv")), "\"run\",\"status\",\"k\",\"strain\"\n"
                                                            "\"b\",\"complete\",1.5,\"mu,t\"\n"
                                                            "\"c\",\"complete\",,\"wt\"\n");
  EXPECT_THAT(out, HasSubstr("2 of 4 runs pass"));
  run({"-g", "A @ 1 in 4..", "-o", folder.file("runs.json")});
  auto const report = nlohmann::json::parse(TempFolder::contentOf(folder.file("runs.json")));
  EXPECT_EQ(report["runs"], 4);
  EXPECT_EQ(report["passing"], 2);
  EXPECT_EQ(report["gates"][0]["left"], 2);
  EXPECT_EQ(report["selected"][0]["run"], "b");
  EXPECT_EQ(report["selected"][0]["parameters"]["k"], 1.5);
  EXPECT_EQ(report["selected"][1]["parameters"]["strain"], "wt");
}

TEST_F(SelectCommand, MakesAScanOfTheseRunsOrOfTheOthers)
{
  run({"-g", "A @ 1 in 4..", "--format", "scan", "-o", folder.file("some.csv")});
  EXPECT_THAT(keysIn(folder.file("some.csv")), ElementsAre("b", "c"));
  ScanParameter const strain = readScan(folder.file("some.csv")).scan.parameters[1];
  EXPECT_THAT(strain.texts, ElementsAre("mu,t", "wt"));
  run({"-g", "A @ 1 in 4..", "--format", "scan", "--not", "-o", folder.file("some.csv")});
  EXPECT_THAT(keysIn(folder.file("some.csv")), ElementsAre("a", "d"));
  EXPECT_EQ(readScan(folder.file("some.csv")).scan.runs[1].status, RunStatus::Short);
  EXPECT_THROW(run({"-g", "A @ 1 in 40..", "--format", "scan"}), std::runtime_error);
}

TEST_F(SelectCommand, AsksForStatusAndRuns)
{
  run({"-g", "status short"});
  EXPECT_THAT(out, HasSubstr("  d   short  3"));
  run({"-g", "not runs a, b, c", "--format", "csv"});
  EXPECT_EQ(out, "\"run\",\"status\",\"k\",\"strain\"\n\"d\",\"short\",3,\"wt\"\n");
}

TEST_F(SelectCommand, AnyJoinsGatesByOr)
{
  run({"-g", "A @ 1 in 2..2", "-g", "k in 3..", "--any", "--format", "csv"});
  EXPECT_THAT(out, testing::AllOf(HasSubstr("\"a\""), HasSubstr("\"d\""), testing::Not(HasSubstr("\"b\""))));
  EXPECT_THAT(err, HasSubstr("2 of 4 runs pass"));
}

TEST_F(SelectCommand, NoRunThatPassesIsAnEmptyList)
{
  EXPECT_EQ(run({"-g", "A @ 1 in 40..", "--format", "csv"}), 0);
  EXPECT_EQ(out, "\"run\",\"status\",\"k\",\"strain\"\n");
  EXPECT_THAT(err, HasSubstr("0 of 4 runs pass"));
}

TEST_F(SelectCommand, ASieveFileReplaysGatesAndTellsOtherData)
{
  std::string const sieve = folder.file("sieve.json");
  run({"-g", "A @ 0.9 in 4..", "-g", "strain is wt", "--save-sieve", sieve});
  std::string const list = out;
  EXPECT_THAT(err, HasSubstr("(time 0.9 -> 1)"));
  run({"--sieve", sieve});
  EXPECT_EQ(out, list);
  EXPECT_THAT(err, testing::Not(HasSubstr("note")));
  scan = folder.write("id,time,A,k,strain\nc,0,1,7,wt\nc,1,9,7,wt\nd,0,1,3,wt\nd,1,8,3,wt\n", "other.csv");
  run({"--sieve", sieve});
  EXPECT_THAT(err, HasSubstr("note   "));
  EXPECT_THAT(err, HasSubstr("2 of 2 runs pass"));
}

TEST_F(SelectCommand, AnInfiniteParameterIsNoMissingOneInJson)
{
  scan =
      folder.write("id,time,A,k\na,0,1,inf\na,1,2,inf\nb,0,1,-inf\nb,1,5,-inf\nc,0,1,\nc,1,9,\n", "odd.csv");
  run({"-g", "A @ 1 in 0..", "--format", "json"});
  auto const selected = nlohmann::json::parse(out)["selected"];
  EXPECT_EQ(selected[0]["parameters"]["k"], "inf");
  EXPECT_EQ(selected[1]["parameters"]["k"], "-inf");
  EXPECT_TRUE(selected[2]["parameters"]["k"].is_null());
}

TEST_F(SelectCommand, GatesOfNamesThatAreNotAsciiAreAlignedAndHarmless)
{
  scan = folder.write(
      "id,time,\"\xc3\xa4\xc3\xb6\x1b[31m\",B,k\na,0,1,1,2\na,1,2,1,2\nb,0,1,2,3\nb,1,5,1,3\n", "odd.csv");
  run({"-g", "\xc3\xa4\xc3\xb6\x1b[31m @ 1 in 0..1", "-g", "B @ 1 in 0..1"});
  EXPECT_THAT(err, HasSubstr("gate   \xc3\xa4\xc3\xb6\\x1b[31m @ 1 in 0..1  0 left\n"));
  EXPECT_THAT(err, HasSubstr("gate   B @ 1 in 0..1" + std::string(9, ' ') + "  0 left\n"));
}

TEST_F(SelectCommand, TimesOutsideOfTheScanAreAnError)
{
  EXPECT_THROW(run({"-g", "A @ 7 in 0..1"}), GateError);
}

TEST_F(SelectCommand, NeedsAGate)
{
  EXPECT_THROW(run({}), UsageError);
}

} // namespace
} // namespace runsieve::test
