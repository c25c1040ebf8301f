#include <runsieve/core/write/WriteScan.h>

#include "support/TempFile.h"

#include <runsieve/core/read/ReadScan.h>
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <limits>
#include <sstream>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

double const nan = std::numeric_limits<double>::quiet_NaN();

Scan oddScan()
{
  Scan scan;
  scan.time = {"Time", "min", "", ""};
  scan.times = {0, 0.1};
  scan.runs = {{"3", RunStatus::Complete, 2}, {"5", RunStatus::Complete, 2}, {"11", RunStatus::Complete, 2}};
  double* const a = scan.addOutput({"A", "", "", ""});
  double const values[] = {1.0 / 3.0, -0.0, 1e300, 5e-324, 100000000.0, nan};
  std::memcpy(a, values, sizeof values);
  double* const b = scan.addOutput({"B \"x\", y", "", "", "Complex"});
  std::fill_n(b, 6, 2.0);
  b[5] = nan;
  scan.parameters.push_back({{"k", "", "", ""}, {0.1, nan, -2}, {}});
  scan.parameters.push_back({{"strain", "", "", ""}, {1, 0, nan}, {"w,t", "mu\"t"}});
  scan.findStatus();
  return scan;
}

std::string textOf(Scan const& scan, RunSet const* runs = nullptr)
{
  std::ostringstream stream;
  writeScan(scan, stream, runs);
  return stream.str();
}

TEST(WriteScan, WritesNamesWithTypesAndShortNumbers)
{
  EXPECT_EQ(textOf(oddScan()),
            "\"Molecule: A\",\"Complex: B \"\"x\"\", y\",\": Time [min]\",\": Run Index\",\"Parameter: k\","
            "\"Parameter: strain\"\n"
            "0.3333333333333333,2,0,3,0.1,\"mu\"\"t\"\n"
            "-0,2,0.1,3,0.1,\"mu\"\"t\"\n"
            "1e+300,2,0,5,nan,\"w,t\"\n"
            "5e-324,2,0.1,5,nan,\"w,t\"\n"
            "100000000,2,0,11,-2,\"\"\n"
            "nan,nan,0.1,11,-2,\"\"\n");
}

TEST(WriteScan, TheSameScanIsReadAgain)
{
  TempFolder folder;
  Scan const scan = oddScan();
  writeScan(scan, folder.file("scan.csv"));
  Scan const back = readScan(folder.file("scan.csv")).scan;
  EXPECT_EQ(back.times, scan.times);
  EXPECT_EQ(back.time.unit, "min");
  ASSERT_EQ(back.runs.size(), 3u);
  for (std::size_t run = 0; run < 3; ++run) {
    EXPECT_EQ(back.runs[run].key, scan.runs[run].key);
    EXPECT_EQ(back.runs[run].status, scan.runs[run].status);
    EXPECT_EQ(back.runs[run].end, scan.runs[run].end);
  }
  EXPECT_EQ(std::memcmp(back.outputs[0].values.get(), scan.outputs[0].values.get(), 5 * sizeof(double)), 0);
  EXPECT_EQ(back.outputs[1].label.fullName(), scan.outputs[1].label.fullName());
  EXPECT_EQ(back.parameters[0].values[0], 0.1);
  EXPECT_EQ(back.parameters[1].texts[0], "mu\"t");
  EXPECT_TRUE(std::isnan(back.parameters[1].values[2]));
}

TEST(WriteScan, KeysThatAreNoNumbersAreText)
{
  Scan scan = oddScan();
  scan.runs[1].key = "run \"b\"";
  EXPECT_THAT(textOf(scan), HasSubstr(",0,\"3\",0.1,"));
  EXPECT_THAT(textOf(scan), HasSubstr(",\"run \"\"b\"\"\","));
}

Scan readAgain(Scan const& scan)
{
  TempFolder folder;
  return readScan(folder.write(textOf(scan))).scan;
}

TEST(WriteScan, TimesOfAnyNameAreReadAgain)
{
  for (char const* const name : {"clock", "step", "times", "timepoints", "[step]", "Value", "a [b", "Time"})
    for (char const* const unit : {"", "h", "[1]"}) {
      SCOPED_TRACE(std::string(name) + " in " + unit);
      Scan scan = oddScan();
      scan.time = {name, unit, "", ""};
      Scan const back = readAgain(scan);
      EXPECT_EQ(back.times, scan.times);
      EXPECT_EQ(back.time.unit, unit);
      EXPECT_EQ(back.time.name, name == std::string("[step]") && *unit == 0 ? "step" : name);
    }
}

TEST(WriteScan, ATimeWithoutANameOrWithThatOfTheRunsIsCalledTime)
{
  for (char const* const name : {"", " ", "Run Index"}) {
    Scan scan = oddScan();
    scan.time.name = name;
    EXPECT_EQ(readAgain(scan).time.name, "Time");
  }
}

std::vector<std::string> keysAgain(std::vector<std::string> const& keys)
{
  Scan scan = oddScan();
  for (std::size_t run = 0; run < 3; ++run) scan.runs[run].key = keys[run];
  Scan const back = readAgain(scan);
  std::vector<std::string> found;
  for (ScanRun const& run : back.runs) found.push_back(run.key);
  EXPECT_EQ(back.parameters[0].values[2], -2) << "the runs keep their order";
  return found;
}

TEST(WriteScan, NamesOfRunsStayAsTheyAre)
{
  EXPECT_THAT(keysAgain({"1", "01", "1.0"}), ElementsAre("1", "01", "1.0"));
  EXPECT_THAT(keysAgain({"k_0.10", "1e3", "0.10"}), ElementsAre("k_0.10", "1e3", "0.10"));
  EXPECT_THAT(keysAgain({"none", "NA", "nan"}), ElementsAre("none", "NA", "nan"));
  EXPECT_THAT(keysAgain({"9007199254740993", "9007199254740992", "+1"}),
              ElementsAre("9007199254740993", "9007199254740992", "+1"));
  EXPECT_THAT(keysAgain({"3", "1", "2"}), ElementsAre("3", "1", "2"));
}

TEST(WriteScan, TextsThatLookLikeNumbersOrNoValueStayTexts)
{
  Scan scan = oddScan();
  scan.parameters[1] = {{"strain", "", "", ""}, {0, 1, 2}, {"01", "1", "NA"}};
  scan.parameters.push_back({{"one", "", "", ""}, {0, 0, nan}, {"1"}});
  Scan const back = readAgain(scan);
  ASSERT_TRUE(back.parameters[1].isText());
  EXPECT_EQ(back.parameters[1].texts, scan.parameters[1].texts);
  EXPECT_EQ(back.parameters[1].values, scan.parameters[1].values);
  EXPECT_THAT(back.parameters[2].texts, ElementsAre("1"));
  EXPECT_TRUE(std::isnan(back.parameters[2].values[2]));
}

TEST(WriteScan, WhatNoFieldCanHoldIsRefusedWithItsName)
{
  auto const refusal = [](std::function<void(Scan&)> const& change) -> std::string {
    Scan scan = oddScan();
    change(scan);
    TempFolder folder;
    try {
      writeScan(scan, folder.file("scan.csv"));
    } catch (ScanError const& error) {
      EXPECT_EQ(folder.fileCount(), 0u);
      return error.what();
    }
    return "written";
  };
  EXPECT_THAT(refusal([](Scan& scan) { scan.runs[1].key = "b\nc"; }),
              HasSubstr("scan.csv: the name of a run, \"b\\x0ac\", has a line end"));
  EXPECT_THAT(refusal([](Scan& scan) { scan.runs[1].key = " "; }), HasSubstr("a run without a name"));
  EXPECT_THAT(refusal([](Scan& scan) { scan.outputs[0].label.name = "A\r"; }),
              HasSubstr("the name of an output, \"A\\x0d\""));
  EXPECT_THAT(refusal([](Scan& scan) { scan.parameters[0].label.name = "k\n"; }),
              HasSubstr("the name of a parameter, \"k\\x0a\""));
  EXPECT_THAT(refusal([](Scan& scan) { scan.parameters[1].texts[0] += '\0'; }),
              HasSubstr("the value of strain, \"w,t\\x00\""));
  EXPECT_THAT(refusal([](Scan& scan) { scan.time.unit = "m\nin"; }), HasSubstr("the unit of the time"));
  EXPECT_EQ(refusal([](Scan& scan) { scan.runs[1].key = "b\tc\x1b"; }), "written");
}

TEST(WriteScan, BelowTheNamesOnlyRowsStandSoThatAnyProgramReadsThem)
{
  Scan scan = oddScan();
  scan.outputs[1].label.unit = "nM";
  scan.parameters[0].label.unit = "1/s";
  std::string const text = textOf(scan);
  EXPECT_EQ(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')), 1 + scan.rows());
  EXPECT_EQ(text.find("nM"), std::string::npos);
  EXPECT_EQ(readAgain(scan).time.unit, "min");
}

TEST(WriteScan, AFailureThatValuesDontShowIsWritten)
{
  Scan scan = oddScan();
  EXPECT_EQ(textOf(scan).find("status"), std::string::npos);
  scan.runs[0].status = RunStatus::Failed;
  std::string const text = textOf(scan);
  EXPECT_THAT(text, HasSubstr(",\"status\"\n"));
  EXPECT_THAT(text, HasSubstr("\"mu\"\"t\",\"failed\"\n"));
  EXPECT_THAT(text, HasSubstr("\"w,t\",\"ok\"\n"));
  TempFolder folder;
  Scan const back = readScan(folder.write(text)).scan;
  EXPECT_EQ(back.runs[0].status, RunStatus::Failed);
  EXPECT_EQ(back.runs[1].status, RunStatus::Complete);
  EXPECT_EQ(back.parameters.size(), 2u);
}

TEST(WriteScan, SomeRunsAreAScanToo)
{
  Scan const scan = oddScan();
  RunSet runs(3);
  runs.set(0);
  runs.set(2);
  Scan const some = subsetOf(scan, runs);
  ASSERT_NO_THROW(some.check());
  EXPECT_EQ(some.runs[1].key, "11");
  EXPECT_EQ(some.runs[1].status, RunStatus::Short);
  EXPECT_EQ(some.valuesOf(0, 1)[0], 100000000.0);
  EXPECT_THAT(some.parameters[0].values, ElementsAre(0.1, -2));
  EXPECT_EQ(textOf(scan, &runs), textOf(some));
}

TEST(WriteScan, AStreamThatFailsIsTold)
{
  std::ostringstream stream;
  stream.setstate(std::ios::badbit);
  EXPECT_THROW(writeScan(oddScan(), stream), ScanError);
  TempFolder folder;
  EXPECT_THROW(writeScan(oddScan(), folder.file("none/scan.csv")), ScanError);
  EXPECT_EQ(folder.fileCount(), 0u);
}

} // namespace
} // namespace runsieve::test
