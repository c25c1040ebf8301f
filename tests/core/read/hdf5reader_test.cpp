#include <runsieve/core/read/Hdf5Reader.h>

#include "support/Hdf5Content.h"
#include "support/NpyBytes.h"
#include "support/ScanOfFile.h"
#include "support/TempFile.h"
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <sys/wait.h>

namespace runsieve::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsNan;
using Numbers = std::vector<double>;
using Fill = std::function<void(Hdf5Content&)>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// 2 runs x 3 times x 2 outputs, with the value 100 run + 10 time + output.
const Numbers cube = {0, 1, 10, 11, 20, 21, 100, 101, 110, 111, 120, 121};
const Numbers outputOfRun1 = {101, 111, 121}; // the second output

struct Hdf5Test : testing::Test
{
  TempFolder folder;
  std::string path = folder.file("scan.h5");

  ~Hdf5Test() override
  {
    EXPECT_EQ(H5Fget_obj_count(static_cast<hid_t>(H5F_OBJ_ALL), H5F_OBJ_ALL), 0) << "left open";
  }

  ScanFile read(Fill const& fill, ReadOptions const& options = {})
  {
    {
      Hdf5Content content(path);
      fill(content);
    }
    return readHdf5(path, options);
  }

  std::string faultOf(Fill const& fill, ReadOptions const& options = {})
  {
    return scanFault([&] { (void)read(fill, options); });
  }

  static ReadOptions withDataSet(std::string const& name)
  {
    ReadOptions options;
    options.dataset = name;
    return options;
  }
};

/// A report of two repeats and three times.
void writeReport(Hdf5Content& content, std::string const& path, bool variable = true)
{
  content.numbers(path, {3, 2, 3}, {0, 1, 2, 0, 1, 2, 1, 2, 3, 4, 5, 6, 7, nan, nan, 8, nan, nan});
  content.textAttribute(path, "_type", "sedml:Report", variable);
  content.textAttribute(path, "uri", path, variable);
  content.textAttribute(path, "sedmlId", "report", variable);
  content.attribute(path, "sedmlDataSetIds", {"d0", "d1", "d2"}, variable);
  content.attribute(path, "sedmlDataSetLabels", {"Time", "[S1]", "k1"}, variable);
  content.attribute(path, "sedmlDataSetDataTypes", {"float64", "float64", "float64"}, variable);
  content.attribute(path, "sedmlDataSetShapes", {"2,3", "2,3", "2"}, variable);
}

TEST_F(Hdf5Test, IsKnownByItsFirstBytesAlsoBehindOthers)
{
  {
    Hdf5Content content(path, 2048);
  }
  const std::string bytes = TempFolder::contentOf(path);
  EXPECT_TRUE(isHdf5(bytes.substr(0, 4096)));
  EXPECT_TRUE(isHdf5(bytes.substr(2048)));
  EXPECT_FALSE(isHdf5(bytes.substr(0, 2048)));
  EXPECT_FALSE(isHdf5(bytes.substr(1)));
  EXPECT_FALSE(isHdf5(""));
}

TEST_F(Hdf5Test, AReportOfRepeatsIsAScan)
{
  for (bool variable : {true, false}) {
    const ScanFile file =
        read([&](Hdf5Content& content) { writeReport(content, "sim.sedml/report", variable); });
    EXPECT_EQ(file.report.format, "HDF5, report of SED-ML");
    EXPECT_EQ(file.scan.time.name, "Time");
    EXPECT_THAT(file.scan.times, ElementsAre(0, 1, 2));
    EXPECT_THAT(keysOf(file.scan), ElementsAre("1", "2"));
    EXPECT_THAT(outputsOf(file.scan), ElementsAre("[S1]"));
    EXPECT_THAT(valuesOf(file.scan, "[S1]", 1), ElementsAre(4, 5, 6));
    EXPECT_THAT(parametersOf(file.scan), ElementsAre("k1")) << "one value per run, padded";
    EXPECT_THAT(file.scan.parameters.front().values, ElementsAre(7, 8));
    EXPECT_THAT(rolesOf(file.report), ElementsAre("Time: time", "[S1]: output", "k1: parameter"));
    EXPECT_THAT(guessesOf(file.report), IsEmpty());
  }
}

TEST_F(Hdf5Test, ScalesTellWhichAxisIsTime)
{
  const ScanFile file = read([](Hdf5Content& content) {
    content.numbers("time", {2}, {0, 5});
    content.numbers("run", {2}, {1, 2});
    content.numbers("A", {2, 2}, {1, 2, 3, 4});
    content.scales("A", {"time", "run"});
  });
  EXPECT_THAT(valuesOf(file.scan, "A", 0), ElementsAre(1, 3));
  EXPECT_THAT(guessesOf(file.report), IsEmpty());
}

TEST_F(Hdf5Test, ATableForEachRunIsAScan)
{
  const ScanFile file = read([](Hdf5Content& content) {
    for (const std::string name : {"run_1", "run_2"}) {
      content.numbers(name, {2, 3}, {0, 1, nan, 1, name == "run_1" ? 5.0 : 6.0, 3});
      content.attribute(name, "columns", {"time", "A", "B"});
      content.numberAttribute(name, "k1", name == "run_1" ? 0.1 : 0.2);
    }
  });
  EXPECT_THAT(keysOf(file.scan), ElementsAre("1", "2"));
  EXPECT_THAT(file.scan.times, ElementsAre(0, 1));
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("A", "B"));
  EXPECT_THAT(valuesOf(file.scan, "A", 1), ElementsAre(1, 6));
  EXPECT_EQ(file.scan.runs[0].status, RunStatus::Failed) << "it has a NaN";
  EXPECT_THAT(parametersOf(file.scan), ElementsAre("k1"));
  EXPECT_THAT(file.scan.parameters.front().values, ElementsAre(0.1, 0.2));
  EXPECT_THAT(guessesOf(file.report), Contains(HasSubstr("each of 2 data sets is a run")));
}

TEST_F(Hdf5Test, ATableWithAColumnOfRunsIsAScan)
{
  const Fill fill = [](Hdf5Content& content) {
    content.numbers("scan", {4, 3}, {1, 0, 5, 1, 2, 6, 2, 0, 7, 2, 2, 8});
    content.attribute("scan", "columns", {"run", "time", "A"});
  };
  for (ReadOptions const& options : {ReadOptions(), withDataSet("scan")}) {
    const ScanFile file = read(fill, options);
    EXPECT_THAT(keysOf(file.scan), ElementsAre("1", "2"));
    EXPECT_THAT(file.scan.times, ElementsAre(0, 2));
    EXPECT_THAT(valuesOf(file.scan, "A", 1), ElementsAre(7, 8));
  }
}

TEST_F(Hdf5Test, AReportOfTwoAxesIsOneRunWhosePaddingIsCut)
{
  const ScanFile file = read([](Hdf5Content& content) {
    content.numbers("sim.sedml/r", {5, 4},
                    {0, 1, 2, nan, 1, 2, 3, 99, 4, 5, 99, 99, 1, 2, 3, 4, nan, nan, nan, nan});
    content.attribute("sim.sedml/r", "sedmlDataSetIds", {"data_set_time", "a", "b", "c", "d"});
    content.attribute("sim.sedml/r", "sedmlDataSetLabels", {"task time", "A", "B", "C", "D"});
    content.attribute("sim.sedml/r", "sedmlDataSetDataTypes",
                      {"float64", "int64", "float64", "float64", "__None__"});
    content.attribute("sim.sedml/r", "sedmlDataSetShapes", {"3", "3", "2", "4", ""});
  });
  EXPECT_THAT(file.scan.times, ElementsAre(0, 1, 2));
  EXPECT_EQ(file.scan.runs.size(), 1u);
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("A", "B"));
  EXPECT_THAT(valuesOf(file.scan, "A", 0), ElementsAre(1, 2, 3));
  EXPECT_THAT(valuesOf(file.scan, "B", 0), ElementsAre(4, 5, IsNan()));
  EXPECT_THAT(rolesOf(file.report),
              ElementsAre("task time: time", "A: output", "B: output", "C: ignored", "D: ignored"));
  EXPECT_THAT(file.report.columns[3].why, HasSubstr("it has 4 values, and the time 3"));
}

TEST_F(Hdf5Test, LabelsThatRepeatGiveWayToIds)
{
  const ScanFile file = read([](Hdf5Content& content) {
    content.numbers("r", {3, 2}, {0, 1, 2, 3, 4, 5});
    content.attribute("r", "sedmlDataSetIds", {"time", "a", "b"});
    content.attribute("r", "sedmlDataSetLabels", {"time", "A", "A"});
  });
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("a", "b"));
}

TEST_F(Hdf5Test, OneOfSeveralReportsIsNamed)
{
  const Fill two = [](Hdf5Content& content) {
    writeReport(content, "sim.sedml/r1");
    writeReport(content, "sim.sedml/r2");
    content.numbers("sim.sedml/plot", {2, 3}, Numbers(6));
    content.textAttribute("sim.sedml/plot", "_type", "sedml:Plot2D");
    content.attribute("sim.sedml/plot", "sedmlDataSetLabels", {"x", "y"});
  };
  EXPECT_THAT(faultOf(two),
              HasSubstr("scan.h5: holds several reports: \"sim.sedml/r1\" (3 x 2 x 3), \"sim.sedml/r2\" "
                        "(3 x 2 x 3); name one of them"));
  for (const char* name : {"sim.sedml/r2", "/sim.sedml/r2", "r2"})
    EXPECT_EQ(read(two, withDataSet(name)).scan.runs.size(), 2u) << name;
  EXPECT_THAT(faultOf(two, withDataSet("r3")), HasSubstr("there is no array \"r3\"; there are"));
  ReadOptions ignore;
  ignore.ignore = {"r1"};
  EXPECT_EQ(read(two, ignore).scan.runs.size(), 2u) << "a plot is no report";
}

TEST_F(Hdf5Test, ReportsThatAreNoScanAreRefused)
{
  const auto report = [](std::vector<std::size_t> const& shape, Numbers const& values,
                         std::vector<std::string> const& labels) -> Fill {
    return [=](Hdf5Content& content) {
      content.numbers("r", shape, values);
      content.attribute("r", "sedmlDataSetLabels", labels);
    };
  };
  EXPECT_THAT(faultOf(report({2, 2, 2, 3}, Numbers(24), {"time", "A"})),
              HasSubstr("is of nested repeats (2 x 2 x 2 x 3); save a report of one repeated task"));
  EXPECT_THAT(faultOf(report({2, 2, 2}, {0, 1, 0, 2, 1, 2, 3, 4}, {"time", "A"})),
              HasSubstr("the runs have different times: run 2 is at 2 where run 1 is at 1"));
  EXPECT_THAT(faultOf(report({2, 2}, {0, 1, 2, 3}, {"time", "A", "B"})),
              HasSubstr("has 2 data sets, but attributes for 3"));
  EXPECT_THAT(faultOf(report({2, 2}, {0, 1, 2, 3}, {"time 1", "time 2"})), HasSubstr("has several times"));
  EXPECT_THAT(faultOf(report({2, 2}, {nan, nan, 2, 3}, {"time", "A"})),
              HasSubstr("has no value of the time"));
  EXPECT_THAT(faultOf(report({1, 2}, {0, 1}, {"time"})), HasSubstr("one output at least"));
  EXPECT_THAT(faultOf(report({2, 0}, {}, {"time", "A"})), HasSubstr("is empty"));
  ReadOptions options;
  options.time = "B";
  EXPECT_THAT(faultOf(report({2, 2}, {0, 1, 2, 3}, {"time", "A"}), options),
              HasSubstr("has no data set \"B\""));
}

TEST_F(Hdf5Test, AnAxisOfLengthOneBetweenRepeatsAndTimesDoesNotCount)
{
  const ScanFile file = read([](Hdf5Content& content) {
    content.numbers("r", {2, 2, 1, 3}, {0, 1, 2, 0, 1, 2, 1, 2, 3, 4, 5, 6});
    content.attribute("r", "sedmlDataSetLabels", {"time", "A"});
    content.attribute("r", "sedmlDataSetShapes", {"2,1,3", "2, 1, 2"});
  });
  EXPECT_THAT(valuesOf(file.scan, "A", 1), ElementsAre(4, 5, IsNan()));
}

TEST_F(Hdf5Test, AReportWithoutATimeHasCountedOnes)
{
  const ScanFile file = read([](Hdf5Content& content) {
    content.numbers("r", {2, 2}, {5, 6, 7, 8});
    content.attribute("r", "sedmlDataSetLabels", {"A", "B"});
  });
  EXPECT_THAT(file.scan.times, ElementsAre(0, 1));
  EXPECT_THAT(guessesOf(file.report), ElementsAre("the times are 0, 1, 2 ..."));
}

TEST_F(Hdf5Test, TheOnlyDataSetOfThreeAxesHoldsTheValues)
{
  const ScanFile file = read([](Hdf5Content& content) {
    content.numbers("scan/values", {2, 3, 2}, cube, H5T_IEEE_F32BE);
    content.numbers("scan/time", {3}, {0, 0.5, 2});
    content.texts("scan/names", {"A", "B"}, false);
    content.numbers("scan/params", {2, 1}, {7, 8}, H5T_STD_I16BE);
    content.texts("scan/strain", {"wild", "mutant"});
    content.texts("scan/run", {"r1", "r2"});
    content.numbers("elsewhere/k", {2}, {1, 2});
  });
  EXPECT_EQ(file.report.format, "HDF5");
  EXPECT_THAT(file.scan.times, ElementsAre(0, 0.5, 2));
  EXPECT_THAT(keysOf(file.scan), ElementsAre("r1", "r2"));
  EXPECT_EQ(valuesOf(file.scan, "B", 1), outputOfRun1);
  EXPECT_THAT(parametersOf(file.scan), ElementsAre("parameter 1", "strain"));
  EXPECT_THAT(file.scan.parameters[0].values, ElementsAre(7, 8));
  EXPECT_THAT(file.scan.parameters[1].texts, ElementsAre("wild", "mutant"));
  EXPECT_THAT(rolesOf(file.report), Contains("elsewhere/k: ignored"));
}

TEST_F(Hdf5Test, AttributesNameOutputs)
{
  const ScanFile file = read([](Hdf5Content& content) {
    content.numbers("values", {2, 3, 2}, {0, 1, 10, 11, 20, 21, 0, 101, 10, 111, 20, 121});
    content.attribute("values", "columns", {"time", "\xCE\xB1"});
    content.textAttribute("values", "comment", "a text alone is no row of names");
  });
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("\xCE\xB1"));
  EXPECT_THAT(file.scan.times, ElementsAre(0, 10, 20));
  EXPECT_EQ(valuesOf(file.scan, "\xCE\xB1", 1), outputOfRun1);
}

TEST_F(Hdf5Test, DataSetsOfTwoAxesInOneGroupAreOutputs)
{
  const Fill fill = [](Hdf5Content& content) {
    content.numbers("s/A", {2, 2}, {1, 2, 3, 4});
    content.numbers("s/B", {2, 2}, {5, 6, 7, 8});
  };
  EXPECT_THAT(outputsOf(read(fill).scan), ElementsAre("A", "B"));
  EXPECT_THAT(outputsOf(read(fill, withDataSet("s/B")).scan), ElementsAre("B"));
  const Fill two = [&](Hdf5Content& content) {
    fill(content);
    content.numbers("u/A", {2, 2}, {1, 2, 3, 4});
  };
  EXPECT_THAT(faultOf(two), HasSubstr("data sets in several groups could hold the values"));
  EXPECT_THAT(faultOf(two, withDataSet("A")), HasSubstr("several arrays have the name \"A\""));
}

TEST_F(Hdf5Test, AFilterThatIsNotInstalledIsNamed)
{
  constexpr H5Z_filter_t number = 31415;
  const H5Z_class2_t filter = {
      H5Z_CLASS_T_VERS,
      number,
      1,
      1,
      "of a laboratory",
      nullptr,
      nullptr,
      [](unsigned, std::size_t, unsigned const*, std::size_t bytes, std::size_t*, void**) { return bytes; }};
  ASSERT_GE(H5Zregister(&filter), 0);
  {
    Hdf5Content content(path);
    const hid_t creation = H5Pcreate(H5P_DATASET_CREATE);
    const hsize_t piece[] = {1, 3, 2};
    H5Pset_chunk(creation, 3, piece);
    H5Pset_filter(creation, number, H5Z_FLAG_MANDATORY, 0, nullptr);
    content.numbers("v", {2, 3, 2}, cube, H5T_NATIVE_DOUBLE, creation);
    H5Pclose(creation);
  }
  EXPECT_EQ(readHdf5(path, {}).scan.runs.size(), 2u);
  ASSERT_GE(H5Zunregister(number), 0);
  EXPECT_THAT(
      scanFault([&] { (void)readHdf5(path, {}); }),
      HasSubstr("it is compressed by a filter that is not installed (number 31415); save it with gzip"));
}

TEST_F(Hdf5Test, CompressedDataSetsAreReadInPieces)
{
  const std::size_t runs = 700;
  const std::size_t times = 601;
  const std::size_t outputs = 5;
  Numbers values(runs * times * outputs);
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<double>(i);
  const ScanFile file = read([&](Hdf5Content& content) {
    content.compressed("v", {runs, times, outputs}, {64, 100, 5}, values);
  });
  for (std::size_t run : {std::size_t(0), std::size_t(319), std::size_t(320), runs - 1})
    for (std::size_t time : {std::size_t(0), times - 1})
      for (std::size_t output : {std::size_t(0), outputs - 1})
        ASSERT_EQ(file.scan.valuesOf(output, run)[time],
                  static_cast<double>((run * times + time) * outputs + output));
}

TEST_F(Hdf5Test, ClaimsThatHardlyAnyBytesStandForAreRefused)
{
  const auto claim = [](std::vector<std::size_t> const& shape,
                        std::vector<std::size_t> const& piece) -> Fill {
    return [=](Hdf5Content& content) { content.compressed("v", shape, piece, {}); };
  };
  EXPECT_THAT(faultOf(claim({1000, 1000, 1000}, {10, 10, 10})), HasSubstr("of which hardly any are stored"));
  EXPECT_THAT(faultOf(claim({1000000, 1000000, 1000000}, {10, 10, 10})), HasSubstr("more than 64 GiB"));
  EXPECT_THAT(faultOf(claim({std::size_t(1) << 62, 16, 16}, {10, 10, 10})), HasSubstr("more than 64 GiB"));
  EXPECT_THAT(faultOf(claim({500, 500, 1}, {500, 500, 1})), HasSubstr("hardly any"));
}

TEST_F(Hdf5Test, WhatIsNoScanIsRefused)
{
  EXPECT_THAT(faultOf([](Hdf5Content&) {}), HasSubstr("holds no values of a scan"));
  EXPECT_THAT(
      faultOf([](Hdf5Content& content) {
        content.numbers("a/v", {2, 3, 2}, cube);
        content.numbers("b/v", {2, 3, 2}, cube);
      }),
      HasSubstr(
          "several data sets could hold the values: \"a/v\" (2 x 3 x 2), \"b/v\" (2 x 3 x 2); name one"));
  EXPECT_THAT(faultOf([](Hdf5Content& content) {
                const hid_t record = H5Tcreate(H5T_COMPOUND, 16);
                H5Tinsert(record, "a", 0, H5T_NATIVE_DOUBLE);
                content.numbers("v", {2, 3, 2}, {}, record);
                H5Tclose(record);
              }),
              HasSubstr("\"v\": it holds records of several fields; save it as plain numbers"));
  EXPECT_THAT(scanFault([&] { (void)readHdf5(folder.write("time,run"), {}); }), HasSubstr("is no HDF5 file"));
  EXPECT_THAT(scanFault([&] { (void)readHdf5(folder.file("none"), {}); }), HasSubstr("no such file"));
  EXPECT_THAT(scanFault([&] { (void)readHdf5(folder.file(""), {}); }), HasSubstr("is a directory"));
}

TEST_F(Hdf5Test, OtherFilesAreNotReadForValues)
{
  const std::string other = folder.write(std::string(96, 'x'), "other");
  EXPECT_THAT(faultOf([&](Hdf5Content& content) {
                const hid_t creation = H5Pcreate(H5P_DATASET_CREATE);
                H5Pset_external(creation, other.c_str(), 0, 96);
                content.numbers("v", {2, 3, 2}, {}, H5T_NATIVE_DOUBLE, creation);
                H5Pclose(creation);
              }),
              HasSubstr("its values lie in other files"));
  EXPECT_THAT(faultOf([&](Hdf5Content& content) {
                H5Lcreate_external("other.h5", "/v", content.id(), "v", H5P_DEFAULT, H5P_DEFAULT);
                H5Lcreate_soft("/nowhere", content.id(), "soft", H5P_DEFAULT, H5P_DEFAULT);
              }),
              HasSubstr("holds no values of a scan"));
}

TEST_F(Hdf5Test, TheLibraryKeepsQuietOnlyMeanwhile)
{
  static int calls = 0;
  const auto print = [](hid_t, void*) -> herr_t { return ++calls, 0; };
  H5E_auto2_t former = nullptr;
  void* formerData = nullptr;
  H5Eget_auto2(H5E_DEFAULT, &former, &formerData);
  H5Eset_auto2(H5E_DEFAULT, print, &calls);
  std::string bytes;
  {
    Hdf5Content content(path);
    content.numbers("v", {2, 3, 2}, cube);
  }
  bytes = TempFolder::contentOf(path);
  EXPECT_NE(scanFault([&] { (void)readHdf5(folder.write(bytes.substr(0, bytes.size() / 2)), {}); }), "");
  EXPECT_EQ(calls, 0);
  H5E_auto2_t now = nullptr;
  void* data = nullptr;
  H5Eget_auto2(H5E_DEFAULT, &now, &data);
  EXPECT_TRUE(now == static_cast<H5E_auto2_t>(print) && data == &calls);
  H5Eset_auto2(H5E_DEFAULT, former, formerData);
}

TEST_F(Hdf5Test, SeveralThreadsMayRead)
{
  (void)read([](Hdf5Content& content) { writeReport(content, "sim.sedml/report"); });
  std::vector<std::thread> threads;
  std::vector<std::size_t> runs(4, 0);
  for (std::size_t& number : runs)
    threads.emplace_back([&] {
      for (int i = 0; i < 20; ++i) number += readHdf5(path, {}).scan.runs.size();
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(runs, ElementsAre(40, 40, 40, 40));
}

TEST_F(Hdf5Test, TheCallerMayStop)
{
  ReadOptions options;
  options.progress = [](double) { return false; };
  EXPECT_THROW((void)read([](Hdf5Content& content) { writeReport(content, "r"); }, options), ReadCancelled);
  EXPECT_THROW((void)read(
                   [](Hdf5Content& content) {
                     content.numbers("v", {2, 3, 2}, cube);
                   },
                   options),
               ReadCancelled);
}

/// A small file of the newest form, or of the oldest, whose parts lie between many zeros.
std::string smallFile(std::string const& path, bool compact, bool report)
{
  {
    Hdf5Content content(path, 0, compact);
    if (report) {
      writeReport(content, "r", false);
    } else {
      content.compressed("values", {2, 3, 2}, {1, 3, 2}, cube);
      content.texts("names", {"A", "B"}, false);
    }
  }
  return TempFolder::contentOf(path);
}

TEST_F(Hdf5Test, EveryCutAndEveryDamagedByteIsAFaultOrAScan)
{
  for (const bool report : {true, false}) {
    const std::string whole = smallFile(path, true, report);
    ASSERT_LT(whole.size(), 2500u);
    expectFaultOrScan(
        whole, [&](std::string const& bytes) { return readHdf5(folder.write(bytes, "damaged.h5"), {}); },
        {0xFF});
  }
}

TEST_F(Hdf5Test, ReferencesBeyondTheTextsOfTheFileAreAFault)
{
  {
    Hdf5Content content(path);
    writeReport(content, "r");
  }
  // A text of any length is told by the place of a heap in the file and a number in it, which the library
  // believes.
  std::string bytes = TempFolder::contentOf(path);
  const std::string heap = bytesOf(static_cast<std::uint64_t>(bytes.find("GCOL")));
  int references = 0;
  for (std::size_t at = bytes.find(heap); at != std::string::npos;
       at = bytes.find(heap, at + 1), ++references)
    bytes.replace(at + heap.size(), 4, bytesOf(std::uint32_t(0x7FFFFFFF)));
  EXPECT_EQ(references, 3 + 4 * 3);
  EXPECT_THAT(scanFault([&] { (void)readHdf5(folder.write(bytes, "damaged.h5"), {}); }),
              HasSubstr("is damaged"));
}

TEST_F(Hdf5Test, TextsThatAllLieInOnePlaceAreAFault)
{
  constexpr std::size_t runs = 2000;
  constexpr std::uint32_t longest = 100000;
  {
    Hdf5Content content(path);
    std::vector<std::string> names(runs, "x");
    names.front() = std::string(longest, 'y');
    content.texts("run", names);
    content.numbers("time", {2}, {0, 1});
    content.numbers("A", {runs, 2}, Numbers(2 * runs, 1.0));
  }
  std::string bytes = TempFolder::contentOf(path);
  constexpr std::size_t referenceBytes = 16; // length, place of the heap, number in it
  std::size_t at = bytes.find(bytesOf(longest));
  while (bytes.compare(at + referenceBytes, 4, bytesOf(std::uint32_t(1))) != 0) {
    at = bytes.find(bytesOf(longest), at + 1);
    ASSERT_NE(at, std::string::npos);
  }
  for (std::size_t run = 1; run < runs; ++run)
    bytes.replace(at + run * referenceBytes, referenceBytes, bytes.substr(at, referenceBytes));
  EXPECT_THAT(scanFault([&] { (void)readHdf5(folder.write(bytes, "damaged.h5"), {}); }),
              HasSubstr("the values of \"run\" cannot be read; the file is damaged"));
}

TEST_F(Hdf5Test, NumbersOf32BitsCanMeanNoValue)
{
  ReadOptions options;
  options.missing = {"-99.9"};
  const ScanFile file = read(
      [](Hdf5Content& content) {
        content.numbers("A", {2, 2}, {1, 2, 3, -99.9}, H5T_NATIVE_FLOAT);
      },
      options);
  EXPECT_THAT(valuesOf(file.scan, "A", 1), ElementsAre(3, IsNan()));
}

TEST_F(Hdf5Test, ReadingLeavesNoProcessesBehind)
{
  (void)read([](Hdf5Content& content) { writeReport(content, "r"); });
  ReadOptions options;
  options.progress = [](double) { return false; };
  EXPECT_THROW((void)readHdf5(path, options), ReadCancelled);
  options.progress = [](double) -> bool { throw std::runtime_error("of the host"); };
  EXPECT_THROW((void)readHdf5(path, options), std::runtime_error);
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

} // namespace
} // namespace runsieve::test
