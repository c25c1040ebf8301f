// One scan, written as simulators, data frames and spreadsheets write it.
#include "ScanTexts.h"

#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Values = std::vector<double>;

SmallScan const small;

/// Names of the columns of a text; an empty one is not in it.
struct Names
{
  std::string a = "A";
  std::string b = "B";
  std::string k = "k";
};

void expectSmallScan(ScanFile const& file, Names const& names = {}, double tolerance = 0.0)
{
  Scan const& scan = file.scan;
  ASSERT_NO_THROW(scan.check());
  ASSERT_EQ(scan.times.size(), small.times.size());
  for (std::size_t i = 0; i < small.times.size(); ++i) EXPECT_NEAR(scan.times[i], small.times[i], tolerance);
  ASSERT_EQ(scan.runs.size(), 4u);
  for (ScanRun const& run : scan.runs) EXPECT_EQ(run.status, RunStatus::Complete);
  ASSERT_EQ(scan.outputs.size(), names.b.empty() ? 1u : 2u);
  for (std::size_t run = 0; run < 4; ++run)
    for (std::size_t i = 0; i < small.times.size(); ++i) {
      int const r = static_cast<int>(run);
      EXPECT_NEAR(valuesOf(scan, names.a, run)[i], small.a(r, small.times[i]), tolerance);
      if (!names.b.empty())
        EXPECT_NEAR(valuesOf(scan, names.b, run)[i], small.b(r, small.times[i]), tolerance);
    }
  if (names.k.empty()) {
    EXPECT_TRUE(scan.parameters.empty());
    return;
  }
  ASSERT_EQ(scan.parameters.size(), 1u);
  EXPECT_EQ(parameterOf(scan, names.k).values, (Values{small.k(0), small.k(1), small.k(2), small.k(3)}));
}

std::string line(int run, double time, std::string const& delimiter, bool withRun = true)
{
  Values values = {time, small.a(run, time), small.b(run, time), small.k(run)};
  if (withRun) values.insert(values.begin(), run);
  return joined(values, delimiter);
}

std::string rows(std::string const& delimiter, bool withRun = true)
{
  return small.rows([&](int run, double time) { return line(run, time, delimiter, withRun); });
}

std::string withDecimalComma(std::string text)
{
  std::replace(text.begin(), text.end(), '.', ',');
  return text;
}

TEST(Dialects, ACopasiScanHasTabsABlankLineBetweenRunsAndNoRunColumn)
{
  std::string const text =
      "# Time\t[A]\tValues[B]\tValues[k].InitialValue\t\n" +
      small.rows([](int run, double time) { return line(run, time, "\t", false) + '\t'; }, "\n");
  for (std::string const name : {"scan.csv", "scan.txt", "scan"}) {
    ScanFile const file = readString(text, {}, name);
    expectSmallScan(file, {"[A]", "Values[B]", "Values[k].InitialValue"});
    EXPECT_THAT(keysOf(file.scan), ElementsAre("0", "1", "2", "3"));
    EXPECT_TRUE(tells(file.report, "runs are split at blank lines"));
    EXPECT_EQ(file.scan.outputs[0].label.unit, "") << "brackets belong to the name";
    EXPECT_EQ(file.report.format, "tab separated text");
  }
}

TEST(Dialects, BlankLinesDivideRunsEvenWhereTimeGoesOn)
{
  Scan const scan = readString("Time\tA\n0\t1\n1\t2\n\n2\t3\n3\t4\n", {}).scan;
  EXPECT_EQ(scan.runs.size(), 2u);
}

TEST(Dialects, LinesOfTextBeforeAReportAreSkippedAndCounted)
{
  ScanFile const file =
      readString("COPASI report\nModel: insulin\n\nTime\t[A]\t(R).Flux\tk\n" + rows("\t", false));
  expectSmallScan(file, {"[A]", "(R).Flux", "k"});
  EXPECT_TRUE(tells(file.report, "skipped 2 lines of text before the table"));
}

TEST(Dialects, AHeldConcentrationStaysAnOutput)
{
  ScanFile const file = readString("Time,[X],[Y],[X]_0\n0,5,1,5\n1,5,2,5\n0,6,1,6\n1,6,3,6\n");
  EXPECT_EQ(roleOf(file.report, "[X]"), "output");
  EXPECT_EQ(roleOf(file.report, "[X]_0"), "parameter");
}

TEST(Dialects, NamesStandBehindAHashOrNot)
{
  for (std::string const mark : {"", "#", "# ", "#  "})
    expectSmallScan(readString(mark + "time,[A],[B],k\n" + rows(",", false)), {"[A]", "[B]", "k"});
}

TEST(Dialects, ATableWithoutNamesTakesGivenOnes)
{
  ReadOptions options;
  options.names = {"run", "time", "A", "B", "k"};
  expectSmallScan(readString(rows(","), options));
  EXPECT_THROW((void)readString(rows(",")), ScanError);
  options.names.pop_back();
  EXPECT_THROW((void)readString(rows(","), options), ScanError);
}

TEST(Dialects, GivenNamesTakeThePlaceOfThoseInTheFile)
{
  ReadOptions options;
  options.names = {"run", "time", "A", "B", "k"};
  ScanFile const file = readString("r,clock,x,y,z\n" + rows(","), options);
  expectSmallScan(file);
  EXPECT_TRUE(tells(file.report, "column names was passed over"));
}

TEST(Dialects, AnIndexColumnIsNoPartOfTheScan)
{
  for (std::string const name : {"", "index", "Unnamed: 0"}) {
    int number = 0;
    ScanFile const file = readString(name + ",run,time,A,B,k\n" + small.rows([&](int run, double time) {
      return std::to_string(number++) + ',' + line(run, time, ",");
    }));
    expectSmallScan(file);
    EXPECT_EQ(roleOf(file.report, name), "ignored");
  }
}

TEST(Dialects, RowNamesWithoutAHeaderAreLeftOut)
{
  int number = 0;
  ScanFile const file =
      readString("\"run\" \"time\" \"A\" \"B\" \"k\"\n" + small.rows([&](int run, double time) {
        return '"' + std::to_string(++number) + "\" " + line(run, time, " ");
      }));
  expectSmallScan(file);
  EXPECT_TRUE(tells(file.report, "the first field of each row is a row name"));
}

TEST(Dialects, WholeNumbersThatAreRoundedAreTold)
{
  std::string const text = "run,time,A,seed\n1,0,1,12345678901234567890\n1,1,2,12345678901234567890\n";
  EXPECT_TRUE(tells(readString(text).report, "whole numbers of \"seed\" were rounded"));
  EXPECT_TRUE(tells(readString("time;A\n0;+9007199254740993\n1;0,5\n").report, "were rounded"));
  EXPECT_FALSE(
      tells(readString("time,A\n0,9007199254740994\n1,9007199254740992\n2,1.5e300\n").report, "rounded"))
      << "a double holds these";
}

TEST(Dialects, NumbersOfSeveralCountriesAreToldAsAGuess)
{
  EXPECT_TRUE(tells(readString("run;time;A;k\n1;0;1.234;1,5\n1;1;2.345;1,5\n").report,
                    "numbers have a decimal point, and \"1,5\" is a text"));
  EXPECT_TRUE(
      tells(readString("time;A\n0;1.000\n1;12.500\n").report, "the point of \"1.000\" is a decimal sign"));
  EXPECT_FALSE(tells(readString("time;A\n0;1.000\n1;12.5\n").report, "decimal sign"));
  EXPECT_FALSE(tells(readString("time;A\n0;1.e12\n1;12.500\n").report, "decimal sign"));
  EXPECT_FALSE(tells(readString("time,A\n0,1.000\n1,1.500\n").report, "decimal sign"));
}

TEST(Dialects, ARunThatWasFoundByItsNumbersIsAGuess)
{
  ReadReport const report =
      readString("entry,k,time,A\n1,7,0,1\n1,7,1,2\n2,9,0,1\n2,9,1,4\n3,8,0,2\n3,8,1,2\n").report;
  auto const found = std::find_if(report.findings.begin(), report.findings.end(),
                                  [](Finding const& f) { return f.what == "column \"entry\" is the run"; });
  ASSERT_NE(found, report.findings.end());
  EXPECT_TRUE(found->guess);
}

TEST(Dialects, LineEndsOfWindowsAreNoPartOfTheLastCell)
{
  ScanFile const file = readString(
      "run,time,A,strain\r\n1,0,1,wt\r\n1,1,2,wt\r\n2,0,1,\"A 3\"\r\n2,1,2,\"A 3\"\r\n3,0,1,x\r\n3,1,5,x");
  ASSERT_EQ(file.scan.parameters.size(), 1u);
  EXPECT_EQ(file.scan.parameters[0].texts, (std::vector<std::string>{"wt", "A 3", "x"}));
}

TEST(Dialects, WhatIsLeftOutMayHoldAnything)
{
  ScanFile const file = readString("run time A\n\"row one\" 0 0 1\n\"row two\" 0 1 2\nx 1 0 3\ny 1 1 4\n");
  EXPECT_EQ(valuesOf(file.scan, "A", 1), (Values{3, 4}));
  ReadOptions options;
  options.ignore = {"note"};
  for (std::string const delimiter : {" ", ",", "\t"}) {
    std::string const d = delimiter;
    std::string const text = "run" + d + "note" + d + "time" + d + "A\n0" + d + "abc" + d + "0" + d + "1\n0" +
                             d + "x\"y\"" + d + "1" + d + "2\n";
    EXPECT_EQ(valuesOf(readString(text, options).scan, "A", 0), (Values{1, 2}));
  }
}

TEST(Dialects, QuotedNamesAndNumbersAndAByteOrderMark)
{
  std::string const text =
      "\xEF\xBB\xBF\"run\",\"time\",\"A\",\"B, the \"\"second\"\"\",\"k\"\n" +
      small.rows([](int run, double time) { return '"' + line(run, time, "\",\"") + '"'; });
  expectSmallScan(readString(text), {"A", "B, the \"second\"", "k"});
}

TEST(Dialects, WordsForNoValueAreMissing)
{
  for (std::string const word : {"", "NA", "NaN", "None", "null", "n/a", "-"}) {
    ReadOptions options;
    if (word == "-") options.missing = {"-"};
    ScanFile const file =
        readString("run,time,A,k\n0,0,1,\n0,1," + word + ",\n0,2,3,\n1,0,4,7\n1,1,5,7\n1,2,6,7\n", options);
    EXPECT_TRUE(std::isnan(valuesOf(file.scan, "A", 0)[1])) << word;
    EXPECT_EQ(file.scan.runs[0].status, RunStatus::Failed);
    EXPECT_EQ(file.scan.runs[1].status, RunStatus::Complete);
    EXPECT_TRUE(std::isnan(parameterOf(file.scan, "k").values[0]));
    EXPECT_TRUE(tells(file.report, "1 failed run")) << word;
    if (word != "NaN") EXPECT_TRUE(tells(file.report, "1 missing value")) << word;
  }
}

TEST(Dialects, ANumberCanMeanNoValueHoweverItIsWritten)
{
  ReadOptions options;
  options.missing = {"-999", "7e0"};
  ScanFile const file = readString("run,time,A,k\n0,0,-999.0,7.00\n0,1,-9.99e2,7.00\n0,2,\"-999\",7.00\n"
                                   "1,0,4,-998\n1,1, -999 ,-998\n1,2,6,-998\n",
                                   options);
  for (double const value : valuesOf(file.scan, "A", 0)) EXPECT_TRUE(std::isnan(value));
  EXPECT_TRUE(std::isnan(valuesOf(file.scan, "A", 1)[1]));
  EXPECT_EQ(file.scan.runs[1].status, RunStatus::Failed);
  EXPECT_TRUE(std::isnan(parameterOf(file.scan, "k").values[0]));
  EXPECT_EQ(parameterOf(file.scan, "k").values[1], -998);
  EXPECT_TRUE(tells(file.report, "4 missing values among the outputs"));
  EXPECT_TRUE(tells(file.report, "what an option says"));

  options.missing = {"-999,5"};
  EXPECT_TRUE(std::isnan(valuesOf(readString("time;A\n0;1,5\n1;-999,50\n", options).scan, "A", 0)[1]));
}

TEST(Dialects, NoValueKeepsNoTraceInTheScan)
{
  Scan const scan = readString("run,time,A\n0,0,1\n0,1,\n1,0,2\n1,1,3\n").scan;
  double const value = valuesOf(scan, "A", 0)[1];
  double const nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(std::memcmp(&value, &nan, sizeof nan), 0);
}

TEST(Dialects, TextsNameRunsAndParameters)
{
  ScanFile const file = readString("id,time,A,B,k,strain\n" + small.rows([](int run, double time) {
    return "WT_00" + std::to_string(run) + ',' + line(run, time, ",", false) +
           (run % 2 == 0 ? ",wild type" : ",\"mu,t\"");
  }));
  EXPECT_THAT(keysOf(file.scan), ElementsAre("WT_000", "WT_001", "WT_002", "WT_003"));
  ScanParameter const& strain = parameterOf(file.scan, "strain");
  EXPECT_THAT(strain.texts, ElementsAre("wild type", "mu,t"));
  EXPECT_THAT(strain.values, ElementsAre(0, 1, 0, 1));
  EXPECT_TRUE(tells(file.report, "parameter \"strain\" is text"));
}

TEST(Dialects, TextsAreTheSameWhicheverThreadFindsThem)
{
  std::string text = "id,time,A,strain\n";
  for (int run = 0; run < 80000; ++run)
    for (int i = 0; i < 4; ++i)
      text += "run number " + std::to_string(run) + ',' + std::to_string(i) + ',' + std::to_string(run * i) +
              ",strain " + std::to_string(run % 5) + '\n';
  ASSERT_GT(text.size(), std::size_t(8) << 20);
  ReadOptions options;
  options.threads = 4;
  Scan const scan = readString(text, options).scan;
  ASSERT_EQ(scan.runs.size(), 80000u);
  EXPECT_EQ(scan.runs[79999].key, "run number 79999");
  EXPECT_EQ(parameterOf(scan, "strain").texts.size(), 5u);
  for (std::size_t run = 0; run < scan.runs.size(); ++run)
    ASSERT_EQ(parameterOf(scan, "strain").values[run], static_cast<double>(run % 5));
}

TEST(Dialects, MeltedTablesBecomeColumns)
{
  std::string const text = "id,time,variable,value,k\n" + small.rows([](int run, double time) {
    std::string const key = plain(run) + ',' + plain(time);
    return key + ",A," + plain(small.a(run, time)) + ',' + plain(small.k(run)) + '\n' + key + ",B," +
           plain(small.b(run, time)) + ',' + plain(small.k(run));
  });
  ScanFile const file = readString(text);
  expectSmallScan(file);
  EXPECT_TRUE(tells(file.report, "each row holds one value of one output"));
  EXPECT_THAT([&] { (void)readString(text + "0,0,A,7,0.5\n"); },
              testing::ThrowsMessage<ScanError>(HasSubstr("a second value of \"A\" at time 0")));
}

TEST(Dialects, AMeltedOutputThatNeverChangesStaysOne)
{
  Scan const scan = readString("run,time,variable,value\n0,0,A,1\n0,1,A,1\n1,0,A,1\n1,1,A,1\n").scan;
  EXPECT_EQ(valuesOf(scan, "A", 1), (Values{1, 1}));
}

TEST(Dialects, ARowPerRunWithTimesInTheNames)
{
  for (std::string const mark : {"@", "_t", " @t=", "_t="}) {
    std::string text = "run,k";
    for (std::string const output : {"A", "B"})
      for (double const time : small.times) text += ',' + output + mark + plain(time);
    for (int run = 0; run < 4; ++run) {
      text += '\n' + plain(run) + ',' + plain(small.k(run));
      for (double const time : small.times) text += ',' + plain(small.a(run, time));
      for (double const time : small.times) text += ',' + plain(small.b(run, time));
    }
    ScanFile const file = readString(text + '\n');
    expectSmallScan(file);
    EXPECT_TRUE(tells(file.report, "each row is a run"));
  }
}

TEST(Dialects, ARowPerRunWithTimesAsNames)
{
  std::string text = "k";
  for (double const time : small.times) text += ',' + plain(time);
  for (int run = 0; run < 4; ++run) {
    text += '\n' + plain(small.k(run));
    for (double const time : small.times) text += ',' + plain(small.a(run, time));
  }
  expectSmallScan(readString(text), {"value", "", "k"});
  ReadOptions options;
  options.outputs = {"A"};
  expectSmallScan(readString(text, options), {"A", "", "k"});
}

TEST(Dialects, AColumnPerRunBesideOneOfTime)
{
  for (std::string const name : {"run ", "sim_", "Replicate#", "trajectory-", ""}) {
    std::string text = "time";
    for (int run = 0; run < 4; ++run) text += ',' + name + std::to_string(run + 1);
    for (double const time : small.times) {
      text += '\n' + plain(time);
      for (int run = 0; run < 4; ++run) text += ',' + plain(small.a(run, time));
    }
    ScanFile const file = readString(text);
    expectSmallScan(file, {"value", "", ""});
    EXPECT_THAT(keysOf(file.scan), ElementsAre("1", "2", "3", "4"));
    EXPECT_TRUE(tells(file.report, "are 4 runs")) << name;
  }
}

TEST(Dialects, ColumnsPerRunAndOutput)
{
  std::string text = "time";
  for (int run = 0; run < 4; ++run) text += ",A run " + std::to_string(run) + ",B run " + std::to_string(run);
  for (double const time : small.times) {
    text += '\n' + plain(time);
    for (int run = 0; run < 4; ++run)
      text += ',' + plain(small.a(run, time)) + ',' + plain(small.b(run, time));
  }
  expectSmallScan(readString(text), {"A", "B", ""});
}

TEST(Dialects, NumberedOutputsAreNoRuns)
{
  Scan const scan = readString("time,S1,S2,S3\n0,1,2,3\n1,2,3,4\n").scan;
  EXPECT_EQ(scan.runs.size(), 1u);
  EXPECT_EQ(scan.outputs.size(), 3u);
}

TEST(Dialects, SpreadsheetsHaveSemicolonsDecimalCommasAndUnits)
{
  ScanFile const file = readString("run;time;A;B;k\n" + withDecimalComma(rows(";")));
  expectSmallScan(file);
  EXPECT_TRUE(tells(file.report, "decimal comma"));
  ScanFile const units = readString("run;time;A;B;k\n;min;nM;[nM];1/min\n" + withDecimalComma(rows(";")));
  expectSmallScan(units);
  EXPECT_EQ(units.scan.time.unit, "min");
  EXPECT_EQ(units.scan.outputs[1].label.unit, "nM");
  EXPECT_EQ(units.scan.parameters[0].label.unit, "1/min");
  EXPECT_TRUE(tells(units.report, "line 2 holds the units"));
}

TEST(Dialects, TheDecimalSignCanBeGiven)
{
  ReadOptions options;
  options.decimal = ',';
  EXPECT_EQ(valuesOf(readString("time;A\n0;1,5\n1;2\n", options).scan, "A", 0), (Values{1.5, 2}));
  options.decimal = '.';
  EXPECT_THROW((void)readString("time;A\n0;1,5\n1;2\n", options), ScanError);
}

TEST(Dialects, Utf16InBothByteOrders)
{
  std::string const text = "run\ttime\tA\tB\tk\r\n" + rows("\t");
  std::string little = "\xFF\xFE";
  std::string big = "\xFE\xFF";
  for (char const c : text) {
    little += {c, '\0'};
    big += {'\0', c};
  }
  for (std::string const& content : {little, big}) {
    ScanFile const file = readString(content);
    expectSmallScan(file);
    EXPECT_TRUE(tells(file.report, "converted from UTF-16"));
  }
}

TEST(Dialects, Latin1IsConvertedAndTold)
{
  ScanFile const file = readString("run,time,\xB5"
                                   "A,B,k\n" +
                                   rows(","));
  expectSmallScan(file, {"\xC2\xB5"
                         "A",
                         "B", "k"});
  EXPECT_TRUE(tells(file.report, "Latin-1"));
}

TEST(Dialects, BlanksPipesAndOtherDividers)
{
  expectSmallScan(readString("  run   time  A\t B  k  \n" + small.rows([](int run, double time) {
    return "   " + line(run, time, " \t ") + "  ";
  })));
  expectSmallScan(readString("run|time|A|B|k\n" + rows("|")));
  ReadOptions options;
  options.delimiter = '~';
  expectSmallScan(readString("run~time~A~B~k\n" + rows("~"), options));
}

TEST(Dialects, CommentsStandAnywhere)
{
  for (std::string const mark : {"#", "%", "//", "  #"}) {
    ScanFile const file = readString(mark + " one\n" + mark + " two\nrun,time,A,B,k\n" + rows(",") + mark +
                                     " end, of, it, all, now\n");
    expectSmallScan(file);
    EXPECT_TRUE(tells(file.report, "passed over 1 comment"));
  }
}

TEST(Dialects, TablesOfRuleBasedModels)
{
  expectSmallScan(readString("#        time           A   B    k\n" + small.rows([](int run, double time) {
    return "  " + line(run, time, "   ", false);
  }),
                             {}, "model.gdat"));
  ScanFile const ends =
      readString("#  k    A     B\n  0.5   1e0   2\n  0.75   3   4.0e+00\n", {}, "model.scan");
  EXPECT_EQ(parameterOf(ends.scan, "k").values, (Values{0.5, 0.75}));
  EXPECT_EQ(ends.scan.times, Values{0});
  EXPECT_EQ(valuesOf(ends.scan, "B", 1), Values{4});
  EXPECT_TRUE(tells(ends.report, "each row is a run with one time"));
}

TEST(Dialects, RunsWithoutTimesKeepTheirNames)
{
  ReadOptions options;
  options.outputs = {"Y"};
  for (std::string const first : {"1", "r1"}) {
    ScanFile const file = readString("run,a,b,Y\n" + first + ",0.1,2,1\nr2,0.2,2,2\nr3,0.3,1,3\n", options);
    EXPECT_EQ(file.scan.times, Values{0});
    EXPECT_EQ(file.scan.runs[0].key, first);
    EXPECT_EQ(file.scan.runs[2].key, "r3");
    EXPECT_EQ(parameterOf(file.scan, "b").values, (Values{2, 2, 1}));
    EXPECT_EQ(valuesOf(file.scan, "Y", 1), Values{2});
    EXPECT_TRUE(tells(file.report, "each row is a run with one time"));
  }
  EXPECT_THROW((void)readString("run,a,Y\n1,0.1,1\n1,0.1,2\n2,0.3,3\n", options), ScanError)
      << "a time course whose time has another name";
}

TEST(Dialects, InfinitiesAndExponentsOfOldCLibraries)
{
  Scan const scan =
      readString("time,S1,S2,S3\n0,INF,-INF,1.4274e-007\n1,1.#INF,-1.#INF,1.#QNAN\n2,1,2,-1.#IND\n").scan;
  double const infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(valuesOf(scan, "S1", 0), (Values{infinity, infinity, 1}));
  EXPECT_EQ(valuesOf(scan, "S2", 0), (Values{-infinity, -infinity, 2}));
  EXPECT_EQ(valuesOf(scan, "S3", 0)[0], 1.4274e-7);
  EXPECT_TRUE(std::isnan(valuesOf(scan, "S3", 0)[1]));
  EXPECT_EQ(scan.runs[0].status, RunStatus::Failed);
}

TEST(Dialects, RunColumnsOfAnyNameAreNoParameters)
{
  for (std::string const name : {"sample", "replicate", "ID", "Run #", "iteration", "whatever", "run no"})
    for (int const first : {0, 1}) {
      ScanFile const file = readString(name + ",time,A,B,k\n" + small.rows([&](int run, double time) {
        return std::to_string(run + first) + ',' + line(run, time, ",", false);
      }));
      expectSmallScan(file);
      EXPECT_EQ(roleOf(file.report, name), "run");
      EXPECT_EQ(file.scan.runs[0].key, std::to_string(first));
    }
}

TEST(Dialects, TheOnlyParameterStaysOneEvenIfItCounts)
{
  ScanFile const file = readString("time,A,k\n0,1,1\n1,2,1\n0,1,2\n1,3,2\n0,1,3\n1,4,3\n");
  EXPECT_EQ(roleOf(file.report, "k"), "parameter");
  EXPECT_EQ(file.scan.runs.size(), 3u);
}

TEST(Dialects, AConstantIsNoOtherParameter)
{
  ScanFile const file = readString("time,A,k,dose\n0,1,1,5\n1,2,1,5\n0,1,2,5\n1,3,2,5\n");
  EXPECT_EQ(roleOf(file.report, "k"), "parameter");
}

TEST(Dialects, TimesThatARunLacksAreTold)
{
  ScanFile const file = readString("run,time,A\n0,0,1\n0,1,2\n0,2,3\n1,0,4\n1,2,5\n");
  EXPECT_TRUE(tells(file.report, "1 run lacks times between its first and its last"));
  EXPECT_EQ(file.scan.runs[1].status, RunStatus::Failed);
  EXPECT_FALSE(tells(readString("run,time,A\n0,0,1\n0,1,2\n0,2,3\n1,0,4\n1,1,5\n").report, "lack"))
      << "a run that ends early lacks none in between";
}

TEST(Dialects, ANameLikeARunIsNoneIfTimesRepeatWithinIt)
{
  ScanFile const file = readString("time,A,cell\n0,1,7\n1,2,7\n0,1,7\n1,3,7\n");
  EXPECT_EQ(roleOf(file.report, "cell"), "parameter");
  EXPECT_EQ(file.scan.runs.size(), 2u);
}

TEST(Dialects, RowsAreTakenInAnyOrder)
{
  std::string reversed;
  for (int run = 3; run >= 0; --run)
    for (auto time = small.times.rbegin(); time != small.times.rend(); ++time)
      reversed += line(run, *time, ",") + '\n';
  ScanFile const file = readString("run,time,A,B,k\n" + reversed);
  expectSmallScan(file);
  EXPECT_TRUE(tells(file.report, "runs were put in the order of their numbers"));
  EXPECT_TRUE(tells(file.report, "rows were put in the order of time"));

  std::string byTime;
  for (double const time : small.times)
    for (int run = 0; run < 4; ++run) byTime += line(run, time, ",") + '\n';
  ScanFile const apart = readString("run,time,A,B,k\n" + byTime);
  expectSmallScan(apart);
  EXPECT_TRUE(tells(apart.report, "rows of a run that stood apart were put together"));
}

TEST(Dialects, TheLastOfTwoRowsAtAnEventCounts)
{
  for (std::string const text : {"time,A\n0,1\n1,2\n1,3\n2,4\n", "run,time,A\n7,0,1\n7,1,2\n7,1,3\n7,2,4\n",
                                 "sample,time,A\n7,0,1\n7,1,2\n7,1,3\n7,2,4\n"})
    for (bool const exact : {false, true}) {
      ReadOptions options;
      options.exactTimes = exact;
      ScanFile const file = readString(text, options);
      ASSERT_EQ(file.scan.runs.size(), 1u) << text;
      EXPECT_EQ(file.scan.times, (Values{0, 1, 2}));
      EXPECT_EQ(valuesOf(file.scan, "A", 0), (Values{1, 3, 4}));
      EXPECT_TRUE(tells(file.report, "1 row was left out, as the next row of the run has the same time"));
      EXPECT_FALSE(tells(file.report, "in the order of time"));
    }
}

TEST(Dialects, EventsInSeveralRunsBeginNoRuns)
{
  std::string const rows = "0\t1\n1\t2\n1\t3\n2\t4\n";
  for (std::string const between : {"", "\n"}) {
    ScanFile const file = readString("# Time\t[A]\n" + rows + between + rows + between + "2\t5\n3\t6\n");
    ASSERT_EQ(file.scan.runs.size(), between.empty() ? 2u : 3u);
    EXPECT_EQ(valuesOf(file.scan, "[A]", 0)[1], 3);
    EXPECT_EQ(valuesOf(file.scan, "[A]", 1)[1], 3);
  }
  ScanFile const joined = readString("run,time,A\n2,0,1\n1,1,2\n1,1,3\n1,0,4\n2,1,5\n2,1,6\n");
  EXPECT_EQ(valuesOf(joined.scan, "A", 0), (Values{4, 3}));
  EXPECT_EQ(valuesOf(joined.scan, "A", 1), (Values{1, 6}));
  EXPECT_TRUE(tells(joined.report, "2 rows were left out"));
}

TEST(Dialects, RunsOfOneTimeEachAreNoEvents)
{
  ReadOptions options;
  options.outputs = {"A"};
  EXPECT_EQ(readString("time,A,k\n10,1,1\n10,2,2\n10,3,3\n", options).scan.runs.size(), 3u);
  EXPECT_THAT([&] { (void)readString("run,time,A\n1,10,1\n1,10,2\n1,10,3\n"); },
              testing::ThrowsMessage<ScanError>(HasSubstr("time 10 stands twice in run 1")));
}

TEST(Dialects, ATableInTheOrderOfTimeHasRunsByTheirParameters)
{
  ScanFile const file = readString("time,k,m,A\n0,1,1,5\n0,1,2,6\n0,2,2,7\n1,1,1,8\n1,1,2,9\n1,2,2,10\n");
  ASSERT_EQ(file.scan.runs.size(), 3u);
  EXPECT_EQ(valuesOf(file.scan, "A", 1), (Values{6, 9}));
  EXPECT_EQ(parameterOf(file.scan, "m").values, (Values{1, 2, 2}));
  EXPECT_TRUE(tells(file.report, "each time has a row for each of 3 runs"));
  for (std::string const text :
       {"time,k,A\n0,1,5\n0,2,6\n0,2,7\n1,1,8\n1,2,9\n1,2,10\n",
        "time,k,A\n0,1,5\n0,2,6\n0,3,7\n1,1,8\n1,3,9\n", "time,k,A\n0,1,5\n0,2,6\n1,2,7\n1,1,8\n"})
    EXPECT_THAT([&] { (void)readString(text); },
                testing::ThrowsMessage<ScanError>(HasSubstr("name the one that does with --run")))
        << text;
}

TEST(Dialects, TimeMayFallWithinRunsWithoutARunColumn)
{
  std::string text;
  for (int run = 0; run < 4; ++run)
    for (auto time = small.times.rbegin(); time != small.times.rend(); ++time)
      text += line(run, *time, ",", false) + '\n';
  ScanFile const file = readString("time,A,B,k\n" + text);
  expectSmallScan(file);
  EXPECT_TRUE(tells(file.report, "rows were put in the order of time"));
}

TEST(Dialects, GridsThatAreEqualUpToRoundingAreOne)
{
  ScanFile const file = readString("run,time,A,B,k\n" + small.rows([](int run, double time) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", time * (1 + 1e-12 * run));
    return plain(run) + ',' + text + ',' +
           joined({small.a(run, time), small.b(run, time), small.k(run)}, ",");
  }));
  expectSmallScan(file);
  EXPECT_TRUE(tells(file.report, "times that differ by rounding are one"));
}

TEST(Dialects, OtherGridsAreInterpolatedWithinEachRunsSpan)
{
  std::string const text =
      "run,time,A\n0,0,0\n0,1,10\n0,2,20\n1,0,0\n1,0.5,5\n1,2,50\n2,0,1\n2,1,2\n2,2,3\n3,0,1\n3,1.5,4\n";
  ScanFile const file = readString(text);
  EXPECT_EQ(file.scan.times, (Values{0, 1, 2})) << "half of the runs share it";
  EXPECT_EQ(valuesOf(file.scan, "A", 1), (Values{0, 20, 50}));
  EXPECT_EQ(valuesOf(file.scan, "A", 3)[1], 3.0);
  EXPECT_TRUE(std::isnan(valuesOf(file.scan, "A", 3)[2])) << "no value is made up behind its last sample";
  EXPECT_EQ(file.scan.runs[3].status, RunStatus::Short);
  EXPECT_EQ(file.scan.runs[3].end, 2u);
  EXPECT_TRUE(tells(file.report, "2 runs of 4 were interpolated linearly onto 3 common times"));

  ReadOptions exact;
  exact.exactTimes = true;
  ScanFile const kept = readString(text, exact);
  EXPECT_EQ(kept.scan.times, (Values{0, 0.5, 1, 1.5, 2}));
  EXPECT_EQ(valuesOf(kept.scan, "A", 1)[1], 5.0);
  EXPECT_TRUE(std::isnan(valuesOf(kept.scan, "A", 0)[1]));
}

TEST(Dialects, OfTwoTimesThatAreOneOnTheExactGridTheLastCounts)
{
  ReadOptions exact;
  exact.exactTimes = true;
  Scan const scan = readString("run,time,A\n1,0,0\n1,1,10\n1,1.0000000001,11\n1,2,20\n1,3,30\n"
                               "2,0,1\n2,0.5,2\n2,1,3\n2,2,4\n2,3,5\n",
                               exact)
                        .scan;
  EXPECT_EQ(scan.times, (Values{0, 0.5, 1, 2, 3}));
  Values const first = valuesOf(scan, "A", 0);
  EXPECT_TRUE(std::isnan(first[1]));
  EXPECT_EQ((Values{first[0], first[2], first[3], first[4]}), (Values{0, 11, 20, 30}));
  EXPECT_EQ(valuesOf(scan, "A", 1), (Values{1, 2, 3, 4, 5}));
}

TEST(Dialects, TimesOfARunThatAreCloseStayApartWhereTheGridHasBoth)
{
  ReadOptions exact;
  exact.exactTimes = true;
  Scan const scan =
      readString("run,time,A\n1,0,0\n1,1,10\n1,1.0000000001,11\n1,2,20\n2,0,1\n2,1,3\n2,2,4\n", exact).scan;
  EXPECT_EQ(scan.times.size(), 4u);
  EXPECT_EQ(valuesOf(scan, "A", 0), (Values{0, 10, 11, 20}));
  EXPECT_EQ(valuesOf(scan, "A", 1)[1], 3);
  EXPECT_EQ(valuesOf(scan, "A", 1)[3], 4);
}

TEST(Dialects, QuotesTellTextsInTypedColumnsOnlyWhereNumbersHaveNone)
{
  std::string const names = "\"Molecule: A\",\": Time [s]\",\": Run Index\",\"Parameter: k\"\n";
  Scan const texts =
      readString(names + "1,0,\"01\",\"1\"\n2,1,\"01\",\"1\"\n3,0,\"1\",\"NA\"\n4,1,\"1\",\"NA\"\n").scan;
  EXPECT_EQ(keysOf(texts), (std::vector<std::string>{"01", "1"}));
  EXPECT_EQ(parameterOf(texts, "k").texts, (std::vector<std::string>{"1", "NA"}));
  Scan const numbers = readString(names + "\"1\",\"0\",\"1\",\"0.5\"\n\"2\",\"1\",\"1\",\"0.5\"\n\"3\",\"0\","
                                          "\"2\",\"NA\"\n\"4\",\"1\",\"2\",\"NA\"\n")
                           .scan;
  EXPECT_EQ(parameterOf(numbers, "k").values[0], 0.5);
  EXPECT_FALSE(parameterOf(numbers, "k").isText());
}

TEST(Dialects, ValuesInColumnsWithoutANameAreTold)
{
  std::string rows;
  for (int row = 0; row < 1000; ++row)
    rows += "1," + std::to_string(row) + ',' + std::to_string(row % 7) + ",\n";
  EXPECT_FALSE(tells(readString("run,time,A,\n" + rows).report, "was left out"));
  std::string const told = "column 4 was left out, though it holds values such as \"7\"; it has no name";
  EXPECT_TRUE(tells(readString("run,time,A,\n1,0,1,7\n1,1,2,8\n").report, told));
  EXPECT_TRUE(tells(readString("run,time,A,\r\n" + rows + "1,1000,1,7\r\n").report, told));
  EXPECT_TRUE(tells(readString("run,time,A\n" + rows + "1,1000,1,\"7\"\n").report, told));
  EXPECT_FALSE(tells(readString("run,time,A,\n" + rows + "1,1000,1,\" \"\r\n").report, "was left out,"));
  std::string many;
  for (int row = 0; row < 1000; ++row)
    many += "1," + std::to_string(row) + ',' + std::to_string(row % 7) + ",,\n";
  EXPECT_TRUE(tells(readString("run,time,A,,\n" + many + "1,1000,1,,7\n").report, "column 5 was left out"));
}

TEST(Dialects, AdaptiveStepsComeOntoEvenSteps)
{
  ScanFile const file =
      readString("run,time,A\n0,0,0\n0,0.3,3\n0,4,40\n1,0,0\n1,1,10\n1,4,40\n2,0,0\n2,2.5,25\n2,4,40\n");
  EXPECT_EQ(file.scan.times, (Values{0, 2, 4}));
  for (std::size_t run = 0; run < 3; ++run) EXPECT_EQ(valuesOf(file.scan, "A", run), (Values{0, 20, 40}));
}

/// Rows "run,time,A" with A = 10 time, at times that a solver took from `first` to the first behind `last`.
std::string solverRun(int run, double first, double step, double last)
{
  std::string text;
  double time = first;
  for (int i = 0; time < last + step; ++i, time = first + step * i)
    text += std::to_string(run) + ',' + plain(time) + ',' + plain(10 * time) + '\n';
  return text;
}

TEST(Dialects, RunsWhoseSolversEndWithinAStepOfEachOtherAreComplete)
{
  std::string text = "run,time,A\n";
  for (int run = 0; run < 40; ++run) text += solverRun(run, 0, 0.11 + 0.01 * run, 10);
  text += solverRun(40, 0, 0.11, 5);
  text += solverRun(41, 0, 0.5, 20);
  ScanFile const file = readString(text);
  EXPECT_GE(file.scan.times.back(), 10.0);
  EXPECT_LT(file.scan.times.back(), 10.1);
  for (std::size_t run = 0; run < 42; ++run)
    EXPECT_EQ(file.scan.runs[run].status, run == 40 ? RunStatus::Short : RunStatus::Complete) << run;
  EXPECT_NEAR(valuesOf(file.scan, "A", 41).back(), 10 * file.scan.times.back(), 1e-9);
  EXPECT_TRUE(tells(file.report, "the last at 20; not all runs reach them")) << "what is left out";
  EXPECT_TRUE(tells(file.report, "1 run ends early"));
}

TEST(Dialects, RunsThatBeginWithinAStepOfEachOtherAreComplete)
{
  std::string text = "run,time,A\n";
  for (int run = 0; run < 30; ++run) text += solverRun(run, 0.001 * run, 1, 18);
  ScanFile const file = readString(text);
  EXPECT_DOUBLE_EQ(file.scan.times.front(), 0.029);
  for (ScanRun const& run : file.scan.runs) EXPECT_EQ(run.status, RunStatus::Complete);
  EXPECT_TRUE(tells(file.report, "times before 0.029 were left out: 29 rows of 29 runs, the first at 0"));
}

TEST(Dialects, ARunThatBeginsWithinAStepOfASharedGridIsComplete)
{
  std::string text = "run,time,A\n";
  for (int run = 0; run < 3; ++run) text += solverRun(run, 0, 0.5, 10);
  text += solverRun(3, 0.25, 0.5, 10) + solverRun(4, 5.25, 0.5, 10);
  ScanFile const file = readString(text);
  EXPECT_EQ(file.scan.times.front(), 0.5);
  EXPECT_EQ(file.scan.runs[3].status, RunStatus::Complete);
  EXPECT_EQ(file.scan.runs[4].status, RunStatus::Failed);
  EXPECT_TRUE(tells(file.report, "1 run begins after the first common time"));
}

TEST(Dialects, RowsBehindACommonGridAreCounted)
{
  ScanFile const file =
      readString("run,time,A\n1,0,1\n1,1,2\n1,2,3\n2,0,1\n2,1,2\n2,2,3\n3,0,1\n3,0.5,2\n3,2,3\n3,4,99\n");
  EXPECT_EQ(file.scan.times, (Values{0, 1, 2}));
  EXPECT_TRUE(tells(file.report, "times after 2 were left out: 1 row of 1 run, the last at 4"));
}

TEST(Dialects, RunsThatStopAtManyTimesDoNotShortenTheOthers)
{
  std::string text = "run,time,A\n";
  for (int run = 0; run < 12; ++run) text += solverRun(run, 0, 0.1 + 0.001 * run, run < 8 ? 5 : 10);
  ScanFile const file = readString(text);
  EXPECT_GE(file.scan.times.back(), 10);
  EXPECT_EQ(file.scan.runs[0].status, RunStatus::Short);
  EXPECT_EQ(file.scan.runs[11].status, RunStatus::Complete);
}

TEST(Dialects, RunsThatEndEarlyAreKept)
{
  ScanFile const file = readString("run,time,A\n0,0,1\n0,1,2\n0,2,3\n1,0,4\n1,1,5\n2,0,6\n2,1,7\n2,2,8\n");
  EXPECT_EQ(file.scan.runs[1].status, RunStatus::Short);
  EXPECT_EQ(file.scan.runs[1].end, 2u);
  EXPECT_TRUE(std::isnan(valuesOf(file.scan, "A", 1)[2]));
  EXPECT_TRUE(tells(file.report, "1 run ends early"));
}

TEST(Dialects, OneLongRunAmongManyShortOnesIsRefused)
{
  std::string text = "run,time,A\n";
  for (int i = 0; i < 40000; ++i) text += "0," + std::to_string(i) + ',' + std::to_string(i % 7) + "\n";
  for (int i = 1; i < 40000; ++i) text += std::to_string(i) + ",0,2\n";
  EXPECT_THAT([&] { (void)readString(text); },
              testing::ThrowsMessage<ScanError>(HasSubstr("the runs have too different times")));
}

TEST(Dialects, AStatusColumnTellsWhichRunsFailed)
{
  for (auto const& [name, good, bad] :
       std::vector<std::array<std::string, 3>>{{"status", "ok", "failed"},
                                               {"success", "True", "False"},
                                               {"OK", "1", "0"},
                                               {"Status", "COMPLETED", "CVODE error -4"}}) {
    ScanFile const file = readString("run,time,A,B,k," + name + "\n" +
                                     small.rows([&, &good = good, &bad = bad](int run, double time) {
                                       return line(run, time, ",") + ',' + (run == 2 ? bad : good);
                                     }));
    EXPECT_EQ(roleOf(file.report, name), "status");
    for (std::size_t run = 0; run < 4; ++run)
      EXPECT_EQ(file.scan.runs[run].status, run == 2 ? RunStatus::Failed : RunStatus::Complete) << name;
    EXPECT_EQ(file.scan.parameters.size(), 1u);
  }
}

TEST(Dialects, CodesOfAStatusAreNotInterpreted)
{
  ScanFile const file = readString("run,time,A,status\n0,0,1,0\n0,1,2,0\n1,0,1,-4\n1,1,3,-4\n");
  EXPECT_EQ(file.scan.runs[1].status, RunStatus::Complete);
  EXPECT_EQ(roleOf(file.report, "status"), "parameter");
  EXPECT_TRUE(tells(file.report, "not taken for the status of runs"));
}

TEST(Dialects, AStatusMayStandInOneRowOfEachRun)
{
  for (std::string const text : {"run,time,A,k,status\n1,0,1,7,\n1,1,2,7,ok\n2,0,3,9,\n2,1,4,9,failed\n",
                                 "run,time,A,k,status\n1,0,1,7,ok\n1,1,2,7,\n2,0,3,9,failed\n2,1,4,9,\n"}) {
    ScanFile const file = readString(text);
    EXPECT_EQ(roleOf(file.report, "status"), "status");
    EXPECT_EQ(file.scan.runs[0].status, RunStatus::Complete);
    EXPECT_EQ(file.scan.runs[1].status, RunStatus::Failed);
  }
}

/// Whether something that holds the words is told as a guess.
bool guesses(ReadReport const& report, std::string const& words)
{
  ReadReport guesses;
  for (Finding const& finding : report.findings)
    if (finding.guess) guesses.findings.push_back(finding);
  return tells(guesses, words);
}

TEST(Dialects, ValuesThatDifferByRoundingWithinARunAreAParameter)
{
  ScanFile const file =
      readString("run,time,A,k\n1,0,1,0.1\n1,1,2,0.1\n2,0,1,0.3\n2,1,3,0.30000000000000004\n");
  EXPECT_EQ(parameterOf(file.scan, "k").values, (Values{0.1, 0.3}));
  EXPECT_TRUE(guesses(file.report, "its values within a run differ by rounding"));
  ReadOptions options;
  options.outputs = {"k"};
  EXPECT_EQ(readString("run,time,A,k\n1,0,1,1\n1,1,2,1.0000000001\n", options).scan.outputs.size(), 2u);
  options = {};
  options.parameters = {"k"};
  EXPECT_EQ(parameterOf(readString("run,time,A,k\n1,0,1,1\n1,1,2,1.0000000001\n", options).scan, "k").values,
            Values{1});
}

TEST(Dialects, AValueInTheFirstRowOfEachRunOnlyIsAParameter)
{
  ScanFile const file =
      readString("run,time,A,k,s\n1,0,1,7,WT\n1,1,2,,\n1,2,3,,\n2,0,3,9,KO\n2,1,4,,\n2,2,5,,\n");
  EXPECT_EQ(parameterOf(file.scan, "k").values, (Values{7, 9}));
  EXPECT_THAT(parameterOf(file.scan, "s").texts, ElementsAre("WT", "KO"));
  EXPECT_TRUE(guesses(file.report, "its value stands in the first row of each run"));
  EXPECT_EQ(roleOf(readString("run,time,A,k\n1,0,1,7\n1,1,2,\n2,0,3,9\n2,1,4,9\n").report, "k"), "output");
}

TEST(Dialects, AnOutputThatChangesInFewRunsIsToldAsAGuess)
{
  std::string text = "run,time,A,k\n";
  for (int run = 0; run < 60; ++run)
    for (int time = 0; time < 3; ++time)
      text += joined({1.0 * run, 1.0 * time, 1.0 * time, run == 7 && time == 2 ? 0.3 : 0.4}, ",") + '\n';
  ScanFile const file = readString(text);
  EXPECT_EQ(roleOf(file.report, "k"), "output");
  EXPECT_TRUE(guesses(file.report, "\"k\" is taken for an output: it changes within 1 of 60 runs"));
  EXPECT_FALSE(tells(file.report, "\"A\" is taken"));
}

TEST(Dialects, AParameterThatCouldBeAConstantOutputIsToldAsAGuess)
{
  EXPECT_TRUE(guesses(readString("run,time,A,C\n1,0,1,5\n1,1,2,5\n2,0,1,6\n2,1,3,6\n").report,
                      "\"C\" is taken for a parameter"));
  std::string const rows = "1,0,1,5,1\n1,1,2,5,2\n1,2,4,5,3\n2,0,1,6,1\n2,1,3,6,2\n";
  EXPECT_TRUE(guesses(readString("run,time,A,C,B\n" + rows).report, "though between outputs"));
  EXPECT_FALSE(tells(readString("run,time,A,Parameter: C,B\n" + rows).report, "is taken for a parameter"));
  EXPECT_FALSE(tells(readString("run,time,A,B,k\n" + rows, {}).report, "though of two rows"));
}

TEST(Dialects, ALastFieldThatMayBeCutIsTold)
{
  std::string const text = "run,time,A,k\n1,0,1,0.15\n1,1,2,0.15\n2,0,3,0.25\n2,1,4,0.2";
  EXPECT_TRUE(guesses(readString(text).report, "its last field is \"0.2\", and \"0.25\" above it"));
  EXPECT_FALSE(tells(readString(text + "5").report, "cut off"));
  EXPECT_FALSE(tells(readString(text + "\n").report, "cut off"));
  EXPECT_TRUE(guesses(readString("time A\n0 15\n1 1").report, "cut off"));
}

TEST(Dialects, EmptyColumnsAndRowsOfASpreadsheetAreLeftOut)
{
  for (std::string const d : {",", ";"}) {
    ScanFile const file =
        readString("run" + d + "time" + d + "A" + d + "B" + d + "k" + d + d + d + '\n' +
                   small.rows([&](int run, double time) { return line(run, time, d) + d + d + d; }) + d + d +
                   d + d + d + d + d + '\n');
    expectSmallScan(file);
    EXPECT_TRUE(tells(file.report, "3 columns at the end were left out"));
  }
  EXPECT_THAT([] { (void)readString("time,A,,\n0,1,,\n1,2,7,\n"); },
              testing::ThrowsMessage<ScanError>(HasSubstr("column 3: the column has no name")));
}

TEST(Dialects, ATableOfSettingsAboveTheScanIsSkipped)
{
  std::string const settings =
      "\"Results\"\n\"min-x\",\"max-x\",\"min-y\",\"max-y\"\n\"-25\",\"25\",\"-25\",\"25\"\n";
  ScanFile const file = readString(
      settings + "\"[run number]\",\"k\",\"[step]\",\"A\",\"B\"\n" + small.rows([](int run, double time) {
        return '"' +
               joined({1.0 * run, small.k(run), time, small.a(run, time), small.b(run, time)}, "\",\"") + '"';
      }));
  expectSmallScan(file);
  EXPECT_EQ(file.scan.time.name, "step");
  EXPECT_TRUE(tells(file.report, "skipped 3 lines of text before the table"));
}

TEST(Dialects, SteadyStatesNeedNamedOutputs)
{
  std::string const text = "# Values[k1]\tValues[k2]\t[A]_ss\n0.7\t1.6\t0.4\n1.1\t1.8\t0.6\n";
  EXPECT_THAT([&] { (void)readString(text); }, testing::ThrowsMessage<ScanError>(HasSubstr(
                                                   "with --output if each row is a run without time")));
  ReadOptions options;
  options.outputs = {"[A]_ss"};
  ScanFile const file = readString(text, options);
  EXPECT_EQ(valuesOf(file.scan, "[A]_ss", 1), Values{0.6});
  EXPECT_EQ(parameterOf(file.scan, "Values[k2]").values, (Values{1.6, 1.8}));
}

TEST(Dialects, AnyNameOfAnOutputWillDo)
{
  ScanFile const file =
      readString("run,time,Values[k1],Period of A,B Index\n0,0,1,2,3\n0,1,2,3,4\n1,0,1,2,3\n1,1,5,6,7\n");
  EXPECT_EQ(file.scan.outputs.size(), 3u);
  EXPECT_EQ(file.scan.findOutput("Values[k1]"), 0u);
}

TEST(Dialects, ADelimiterAtTheEndOfLinesMakesNoColumn)
{
  expectSmallScan(readString("run,time,A,B,k,\n" +
                             small.rows([](int run, double time) { return line(run, time, ",") + ','; })));
  expectSmallScan(readString("run,time,A,B,k\n" +
                             small.rows([](int run, double time) { return line(run, time, ",") + ','; })));
}

TEST(Dialects, AHeaderThatIsRepeatedDividesRuns)
{
  Scan const scan = readString("Time,A\n0,1\n1,2\nTime,A\n0,3\n1,4\n").scan;
  EXPECT_EQ(scan.runs.size(), 2u);
}

TEST(Dialects, GuessesAreOverriddenByOptions)
{
  std::string const text = "time,sample,A,dose\n0,3,1,5\n1,3,2,5\n0,4,1,5\n1,4,7,5\n";
  ReadOptions options;
  options.parameters = {"sample"};
  ScanFile const sample = readString(text, options);
  EXPECT_EQ(parameterOf(sample.scan, "sample").values, (Values{3, 4}));
  EXPECT_EQ(roleOf(sample.report, "dose"), "output");
  options = {};
  options.outputs = {"dose"};
  EXPECT_EQ(readString(text, options).scan.outputs.size(), 2u);
  options = {};
  options.ignore = {"dose"};
  EXPECT_TRUE(readString(text, options).scan.parameters.empty());
  options = {};
  options.ignore = {"nothing"};
  EXPECT_THAT([&] { (void)readString(text, options); },
              testing::ThrowsMessage<ScanError>(
                  HasSubstr("no column is named \"nothing\"; there are \"time\", \"sample\"")));
}

TEST(Dialects, ProgressIsToldAndReadingCanBeStopped)
{
  std::string text = "run,time,A\n";
  for (int i = 0; i < 1500000; ++i)
    text += std::to_string(i / 10) + ',' + std::to_string(i % 10) + ",1." + std::to_string(i % 7) + '\n';
  for (unsigned const threads : {1u, 3u}) {
    ReadOptions options;
    options.threads = threads;
    std::vector<double> shares;
    options.progress = [&](double share) {
      shares.push_back(share);
      return true;
    };
    EXPECT_EQ(readString(text, options).scan.runs.size(), 150000u);
    ASSERT_FALSE(shares.empty()); // how many there are is a matter of the machine and of what else it does
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
    EXPECT_LE(shares.back(), 1.0);
    options.progress = [](double) { return false; };
    EXPECT_THROW((void)readString(text, options), ReadCancelled);
  }
}

} // namespace
} // namespace runsieve::test
