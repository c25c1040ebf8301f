#include <runsieve/core/read/NpzReader.h>

#include "support/ScanOfFile.h"
#include "support/TempFile.h"
#include "support/ZipBytes.h"
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace runsieve::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsNan;
using Numbers = std::vector<double>;
using Files = std::vector<std::pair<std::string, std::string>>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

ScanFile readFiles(Files const& files, ReadOptions const& options = {})
{
  Files named;
  for (auto const& [name, content] : files) named.emplace_back(name + ".npy", content);
  return readNpz("scan.npz", zipOf(named), options);
}

std::string faultOf(Files const& files, ReadOptions const& options = {})
{
  return scanFault([&] { (void)readFiles(files, options); });
}

/// 2 runs x 3 times x 2 outputs, with the value 100 run + 10 time + output.
const Numbers cube = {0, 1, 10, 11, 20, 21, 100, 101, 110, 111, 120, 121};
const Numbers outputOfRun1 = {101, 111, 121}; // the second output

Numbers counted(std::size_t number)
{
  Numbers values(number);
  for (std::size_t i = 0; i < number; ++i) values[i] = static_cast<double>(i);
  return values;
}

TEST(Npy, AnArrayOfThreeAxesIsRunsTimesOutputs)
{
  ReadOptions options;
  options.names = {"A", "B"};
  const ScanFile file = readNpy("dir/scan.npy", npy({2, 3, 2}, cube), options);
  EXPECT_EQ(file.report.format, "NumPy array");
  EXPECT_THAT(file.scan.times, ElementsAre(0, 1, 2));
  EXPECT_THAT(keysOf(file.scan), ElementsAre("1", "2"));
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("A", "B"));
  EXPECT_EQ(valuesOf(file.scan, "B", 1), outputOfRun1);
  EXPECT_EQ(file.scan.runs[0].status, RunStatus::Complete);
  EXPECT_THAT(guessesOf(file.report), Contains("the times are 0, 1, 2 ..."));
  EXPECT_THAT(guessesOf(file.report), Contains("the axes of the values are runs x times x outputs"));
  EXPECT_THAT(rolesOf(file.report), ElementsAre("scan: output"));
}

TEST(Npy, AnArrayOfTwoAxesIsOneOutput)
{
  const ScanFile file = readNpy("dir/ATP.npy", npy({2, 3}, {1, 2, 3, 4, 5, nan}), {});
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("ATP"));
  EXPECT_THAT(valuesOf(file.scan, "ATP", 1), ElementsAre(4, 5, IsNan()));
  EXPECT_EQ(file.scan.runs[1].status, RunStatus::Short);
  EXPECT_EQ(file.scan.runs[1].end, 2u);
}

TEST(Npy, ANumberCanMeanNoValue)
{
  ReadOptions options;
  options.missing = {"-999"};
  const ScanFile file = readNpy("ATP.npy", npy({2, 3}, {1, 2, 3, 4, 5, -999}), options);
  EXPECT_THAT(valuesOf(file.scan, "ATP", 1), ElementsAre(4, 5, IsNan()));
  EXPECT_EQ(file.scan.runs[1].status, RunStatus::Short);
}

TEST(Npy, ANumberCanMeanNoValueAlsoWhereItIsStoredIn32Bits)
{
  ReadOptions options;
  options.missing = {"-99.9", "1e20"};
  const std::vector<float> values = {1, 2, 3, 4, 1e20F, -99.9F};
  const ScanFile single = readNpy("ATP.npy", npy("<f4", {2, 3}, bytesOf(values)), options);
  EXPECT_THAT(valuesOf(single.scan, "ATP", 1), ElementsAre(4, IsNan(), IsNan()));
  EXPECT_THAT(findingsOf(single.report), Contains("2 values are missing"));
  const ScanFile wide = readNpy("ATP.npy", npy({2, 3}, {1, 2, 3, 4, -99.9F, -99.9}), options);
  EXPECT_THAT(valuesOf(wide.scan, "ATP", 1), ElementsAre(4, -99.9F, IsNan()));
}

TEST(Npz, StatesOfASolverCouldBeRuns)
{
  const Files solution = {{"t", npy({3}, {0, 1, 2})}, {"y", npy({2, 3}, {1, 2, 3, 4, 5, 6})}};
  const ScanFile runs = readFiles(solution);
  EXPECT_EQ(runs.scan.runs.size(), 2u);
  EXPECT_THAT(guessesOf(runs.report), Contains("the axes of the values are runs x times"));
  ReadOptions options;
  options.names = {"A", "B"};
  const ScanFile states = readFiles(solution, options);
  EXPECT_EQ(states.scan.runs.size(), 1u);
  EXPECT_THAT(valuesOf(states.scan, "B", 0), ElementsAre(4, 5, 6));
}

TEST(Npz, ARowOrAColumnIsAVector)
{
  EXPECT_THAT(faultOf({{"block0", npy({3, 2}, {1, 2, 3, 4, 5, 6})}, {"block1", npy({3, 1}, {1, 2, 3})}}),
              HasSubstr("arrays of different shapes could hold the values"))
      << "nothing tells that one of them is no output";
  const ScanFile file = readFiles({{"values", npy({2, 3, 2}, cube)},
                                   {"time", npy({3, 1}, {0, 1, 5})},
                                   {"k", npy({1, 2}, {7, 8})},
                                   {"run", npy({2, 1}, {4, 3})}});
  EXPECT_THAT(file.scan.times, ElementsAre(0, 1, 5));
  EXPECT_THAT(file.scan.parameters.front().values, ElementsAre(7, 8));
  EXPECT_THAT(keysOf(file.scan), ElementsAre("4", "3"));
}

TEST(Npy, OutputsWithoutNamesAreCounted)
{
  const ScanFile file = readNpy("a.npy", npy({2, 3, 2}, cube), {});
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("output 1", "output 2"));
  EXPECT_THAT(guessesOf(file.report), Contains(HasSubstr("\"output 1\"")));
}

TEST(Npy, AColumnOfTheTimeByItsNameIsTheTime)
{
  ReadOptions options;
  options.names = {"time", "A"};
  const ScanFile file = readNpy("a.npy", npy({2, 3, 2}, {0, 1, 0.5, 2, 1, 3, 0, 4, 0.5, 5, 1, 6}), options);
  EXPECT_THAT(file.scan.times, ElementsAre(0, 0.5, 1));
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("A"));
  EXPECT_THAT(valuesOf(file.scan, "A", 1), ElementsAre(4, 5, 6));
}

TEST(Npy, WhatIsNoScanIsRefused)
{
  const auto fault = [](std::string const& bytes, ReadOptions const& options = {}) {
    return scanFault([&] { (void)readNpy("a.npy", bytes, options); });
  };
  EXPECT_THAT(fault(npy({3}, {1, 2, 3})), HasSubstr("a.npy: holds no values of a scan"));
  EXPECT_THAT(fault(npy({1, 1, 1, 1}, {1})), HasSubstr("holds no values of a scan"));
  EXPECT_THAT(fault(npy({0, 3, 2}, {})), HasSubstr("is empty"));
  EXPECT_THAT(fault(npyTexts({"a"})), HasSubstr("holds no values of a scan"));
  ReadOptions options;
  options.names = {"A", "B", "C", "D"};
  EXPECT_THAT(fault(npy({2, 3, 2}, cube), options), HasSubstr("4 names are given for 2 outputs"));
  options.names = {"A", "A"};
  EXPECT_THAT(fault(npy({2, 3, 2}, cube), options),
              HasSubstr("two outputs are named \"A\"; names must differ"));
}

TEST(Npz, ArraysAreKnownByTheirNames)
{
  const ScanFile file = readFiles({{"time", npy({3}, {0, 0.5, 2})},
                                   {"values", npy({2, 3, 2}, cube)},
                                   {"names", npyTexts({"A", "B"})},
                                   {"parameters", npy({2, 3}, {1, 2, 3, 4, 5, 6})},
                                   {"param_names", npyTexts({"k1", "k2", "Vmax"})},
                                   {"ids", npyTexts({"WT", "KO"})},
                                   {"seed", npy("<i4", {2}, bytesOf(std::vector<std::int32_t>{7, 8}))},
                                   {"strain", npyTexts({"wild", ""})},
                                   {"version", npy({}, {1})}});
  const Scan& scan = file.scan;
  EXPECT_THAT(scan.times, ElementsAre(0, 0.5, 2));
  EXPECT_EQ(scan.time.name, "Time");
  EXPECT_THAT(outputsOf(scan), ElementsAre("A", "B"));
  EXPECT_EQ(valuesOf(scan, "B", 1), outputOfRun1);
  EXPECT_THAT(keysOf(scan), ElementsAre("WT", "KO"));
  EXPECT_THAT(parametersOf(scan), ElementsAre("k1", "k2", "Vmax", "seed", "strain"));
  EXPECT_THAT(scan.parameters[2].values, ElementsAre(3, 6));
  EXPECT_THAT(scan.parameters[3].values, ElementsAre(7, 8));
  EXPECT_THAT(scan.parameters[4].texts, ElementsAre("wild"));
  EXPECT_THAT(scan.parameters[4].values, ElementsAre(0, IsNan()));
  EXPECT_THAT(rolesOf(file.report), ElementsAre("time: time", "values: output", "names: ignored",
                                                "parameters: parameter", "param_names: ignored", "ids: run",
                                                "seed: parameter", "strain: parameter", "version: ignored"));
  EXPECT_THAT(guessesOf(file.report), ElementsAre("the axes of the values are runs x times x outputs"))
      << "there are two runs and two outputs";
}

TEST(Npz, TheTimeIsCalledTimeWhereItsNameIsOneOfTheUsual)
{
  const std::pair<std::string, std::string> values = {"A", npy({2, 3}, {1, 2, 3, 4, 5, 6})};
  for (char const* const name : {"t", "times", "TimePoints"})
    EXPECT_EQ(readFiles({values, {name, npy({3}, {0, 1, 2})}}).scan.time.name, "Time");
  EXPECT_EQ(readFiles({values}).scan.time.name, "Time");
  ReadOptions options;
  options.time = "clock";
  EXPECT_EQ(readFiles({values, {"clock", npy({3}, {0, 1, 2})}}, options).scan.time.name, "clock");
}

TEST(Npz, AnOutputMayBeCalledXAmongOthersOfItsShape)
{
  const Files outputs = {
      {"time", npy({4}, counted(4))}, {"x", npy({5, 4}, counted(20))}, {"y", npy({5, 4}, counted(20))}};
  EXPECT_THAT(outputsOf(readFiles(outputs).scan), ElementsAre("x", "y"));
  Files parameters = outputs;
  parameters.emplace_back("x_names", npyTexts({"a", "b", "c", "d"}));
  const ScanFile file = readFiles(parameters);
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("y"));
  EXPECT_THAT(parametersOf(file.scan), ElementsAre("a", "b", "c", "d"));
}

TEST(Npz, SeveralArraysOfRunsAndTimesAreOutputs)
{
  const ScanFile file = readFiles({{"ATP", npy({2, 3}, {1, 2, 3, 4, 5, 6})},
                                   {"ADP", npy({2, 3}, {7, 8, 9, 10, 11, 12})},
                                   {"t", npy({3}, {0, 1, 2})},
                                   {"theta", npy({2, 2}, {1, 2, 3, 4})}});
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("ATP", "ADP"));
  EXPECT_THAT(valuesOf(file.scan, "ADP", 1), ElementsAre(10, 11, 12));
  EXPECT_THAT(parametersOf(file.scan), ElementsAre("parameter 1", "parameter 2"));
  EXPECT_THAT(guessesOf(file.report), Contains(HasSubstr("the parameters are called")));
}

TEST(Npz, LengthsTellAxesInAnotherOrder)
{
  // 3 times x 2 outputs x 4 runs, with the value 100 run + 10 time + output.
  Numbers values;
  for (int time = 0; time < 3; ++time)
    for (int output = 0; output < 2; ++output)
      for (int run = 0; run < 4; ++run) values.push_back(100 * run + 10 * time + output);
  const Files files = {
      {"x_all", npy({3, 2, 4}, values)}, {"time", npy({3}, counted(3))}, {"names", npyTexts({"A", "B"})}};
  const ScanFile file = readFiles(files);
  EXPECT_EQ(file.scan.runs.size(), 4u);
  EXPECT_EQ(valuesOf(file.scan, "B", 1), outputOfRun1);
  EXPECT_THAT(findingsOf(file.report), Contains("the axes of the values are times x outputs x runs"));
  EXPECT_THAT(
      readFiles({{"v", npy({1, 3, 4}, counted(12))}, files[1], {"species", npyTexts({"A", "B", "C", "D"})}})
          .report,
      testing::ResultOf(guessesOf, IsEmpty()));
  EXPECT_THAT(faultOf({files[0], files[1]}),
              HasSubstr("in more than one way; save the values as runs x times"));
}

TEST(Npz, ArraysOfTimesAndRunsAreTurned)
{
  const ScanFile file = readFiles({{"A", npy({3, 2}, {1, 4, 2, 5, 3, 6})}, {"time", npy({3}, {0, 1, 2})}});
  EXPECT_EQ(file.scan.runs.size(), 2u);
  EXPECT_THAT(valuesOf(file.scan, "A", 1), ElementsAre(4, 5, 6));
  EXPECT_THAT(guessesOf(file.report), Contains("the axes of the values are times x runs"));
}

TEST(Npz, NamesMakeOneRunOfAnArrayOfTimesAndOutputs)
{
  const ScanFile file = readFiles({{"values", npy({3, 2}, {1, 4, 2, 5, 3, 6})},
                                   {"time", npy({3}, {0, 1, 2})},
                                   {"names", npyTexts({"A", "B"})}});
  ASSERT_EQ(file.scan.runs.size(), 1u);
  EXPECT_THAT(valuesOf(file.scan, "B", 0), ElementsAre(4, 5, 6));
}

TEST(Npz, EqualLengthsAreReadInTheUsualOrderAndToldAsAGuess)
{
  const ScanFile file = readFiles({{"A", npy({2, 2}, {1, 2, 3, 4})}, {"time", npy({2}, {0, 1})}});
  EXPECT_THAT(valuesOf(file.scan, "A", 0), ElementsAre(1, 2));
  EXPECT_THAT(guessesOf(file.report), Contains("the axes of the values are runs x times"));
}

TEST(Npz, RunsMayHaveTheirOwnTimesIfTheyAreTheSame)
{
  const auto times = [](Numbers const& values) {
    return Files{{"A", npy({2, 3}, {1, 2, 3, 4, 5, nan})}, {"time", npy({2, 3}, values)}};
  };
  EXPECT_THAT(readFiles(times({0, 1, 3, 0, 1 + 1e-12, nan})).scan.times, ElementsAre(0, 1, 3));
  EXPECT_THAT(
      faultOf(times({0, 1, 3, 0, 2, 3})),
      HasSubstr("the runs have different times: run 2 is at 2 where run 1 is at 1; save all runs on one"));
  EXPECT_THAT(faultOf(times({0, 2, 1, 0, 2, 1})), HasSubstr("does not rise at place 3, from 2 to 1"));
  EXPECT_THAT(faultOf(times({0, nan, 1, 0, 1, nan})), HasSubstr("missing or infinite at place 2"));
}

TEST(Npz, ArraysMayBeNamedInsteadOfFound)
{
  const Files files = {{"a", npy({2, 3, 2}, cube)},    {"b", npy({2, 3, 2}, Numbers(12, 1))},
                       {"clock", npy({3}, {5, 6, 7})}, {"who", npyTexts({"x", "y"})},
                       {"k", npy({2}, {1, 2})},        {"other", npy({2}, {1, 2})}};
  EXPECT_THAT(faultOf(files),
              HasSubstr("several arrays could hold the values: \"a\" (2 x 3 x 2), \"b\" (2 x 3 x 2)"));
  ReadOptions options;
  options.dataset = "a";
  options.time = "clock";
  options.run = "who";
  options.parameters = {"k"};
  options.ignore = {"b"};
  options.names = {"A", "B"};
  const ScanFile file = readFiles(files, options);
  EXPECT_THAT(file.scan.times, ElementsAre(5, 6, 7));
  EXPECT_THAT(keysOf(file.scan), ElementsAre("x", "y"));
  EXPECT_THAT(parametersOf(file.scan), ElementsAre("k"));
  EXPECT_EQ(valuesOf(file.scan, "B", 1), outputOfRun1);

  options.dataset = "c";
  EXPECT_THAT(faultOf(files, options), HasSubstr("there is no array \"c\"; there are \"a\", \"b\""));
  options.dataset = "a";
  options.parameters = {"k9"};
  EXPECT_THAT(faultOf(files, options), HasSubstr("there is no parameter \"k9\""));
  options.parameters.reset();
  options.time = "tick";
  EXPECT_THAT(faultOf(files, options), HasSubstr("there is no time \"tick\""));
  options.time.clear();
  options.run = "clock";
  EXPECT_THAT(faultOf(files, options), HasSubstr("are not one for each of 2 runs"));
}

TEST(Npz, RunNamesThatRepeatAreNoKeys)
{
  const Files files = {{"A", npy({2, 3}, {1, 2, 3, 4, 5, 6})}, {"id", npyTexts({"x", "x"})}};
  const ScanFile file = readFiles(files);
  EXPECT_THAT(keysOf(file.scan), ElementsAre("1", "2"));
  EXPECT_THAT(findingsOf(file.report), Contains("the names of runs in \"id\" are not used"));
  ReadOptions options;
  options.run = "id";
  EXPECT_THAT(faultOf(files, options), HasSubstr("two runs have the name \"x\""));
}

TEST(Npz, ArraysThatAreNoNumbersAreIgnoredUnlessTheyAreAskedFor)
{
  const Files files = {
      {"A", npy({2, 3}, {1, 2, 3, 4, 5, 6})}, {"info", npy("|O", {}, "pickle")}, {"readme", "text"}};
  const ScanFile file = readFiles(files);
  EXPECT_THAT(rolesOf(file.report), ElementsAre("A: output", "info: ignored", "readme: ignored"));
  EXPECT_THAT(file.report.columns[1].why, HasSubstr("objects of Python"));
  ReadOptions options;
  options.dataset = "info";
  EXPECT_THAT(faultOf(files, options),
              HasSubstr("scan.npz: \"info\": the NumPy array holds objects of Python"));
  EXPECT_THAT(faultOf({files[1]}), HasSubstr("objects of Python; save it as plain numbers"));
}

TEST(Npz, LargeArraysAreReadInPieces)
{
  const std::size_t runs = 3000;
  const std::size_t times = 101;
  const std::size_t outputs = 7;
  const ScanFile file =
      readNpz("a.npz",
              zipOf({{"v.npy", npy({runs, times, outputs}, counted(runs * times * outputs))}},
                    ZipForm{true, false, "", 0}),
              {});
  for (std::size_t run : {std::size_t(0), std::size_t(1483), std::size_t(1484), runs - 1})
    for (std::size_t time : {std::size_t(0), times - 1})
      for (std::size_t output : {std::size_t(0), outputs - 1})
        ASSERT_EQ(file.scan.valuesOf(output, run)[time],
                  static_cast<double>((run * times + time) * outputs + output));
}

TEST(Npz, TheCallerHearsOfTheProgressAndMayStop)
{
  const Files files = {{"A", npy({2, 3}, counted(6))}, {"B", npy({2, 3}, counted(6))}};
  ReadOptions options;
  Numbers shares;
  options.progress = [&](double share) {
    shares.push_back(share);
    return true;
  };
  (void)readFiles(files, options);
  EXPECT_THAT(shares, ElementsAre(0.5, 1));
  options.progress = [](double) { return false; };
  EXPECT_THROW((void)readFiles(files, options), ReadCancelled);
}

TEST(Npz, EveryCutAndEveryDamagedByteIsAFaultOrAScan)
{
  for (bool deflate : {false, true})
    expectFaultOrScan(zipOf({{"v.npy", npy({2, 3, 2}, cube)},
                             {"time.npy", npy({3}, {0, 1, 2})},
                             {"names.npy", npyTexts({"A", "B"})}},
                            ZipForm{deflate, false, "", 0}),
                      [](std::string const& bytes) { return readNpz("a.npz", bytes, {}); });
  expectFaultOrScan(npy({2, 3, 2}, cube),
                    [](std::string const& bytes) { return readNpy("a.npy", bytes, {}); });
}

} // namespace
} // namespace runsieve::test
