#include <runsieve/core/read/ImportFile.h>

#include "support/ScanOfFile.h"
#include "support/TempFile.h"

#include <runsieve/core/read/ReadScan.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace runsieve::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Optional;

struct ImportFile : testing::Test
{
  TempFolder folder;

  ReadOptions optionsOf(std::string const& json, ReadOptions const& own = {}) const
  {
    return withImportFile(folder.write(json, "scan.csv.import.json"), own);
  }
  std::string faultOf(std::string const& json) const
  {
    return scanFault([&] { (void)optionsOf(json); });
  }
};

TEST_F(ImportFile, SetsEveryOption)
{
  ReadOptions const options = optionsOf(R"({"time": "t", "run": "id", "parameter": ["k", "m"], "output": "A",
    "ignore": "note", "missing": ["-", "?"], "names": ["id", "t"], "decimal": ",", "delimiter": "tab",
    "dataset": "/a/b", "parameters": "p.csv", "exact_times": true})");
  EXPECT_EQ(options.time, "t");
  EXPECT_EQ(options.run, "id");
  EXPECT_THAT(options.parameters, Optional(ElementsAre("k", "m")));
  EXPECT_THAT(options.outputs, ElementsAre("A"));
  EXPECT_THAT(options.ignore, ElementsAre("note"));
  EXPECT_THAT(options.missing, ElementsAre("-", "?"));
  EXPECT_THAT(options.names, ElementsAre("id", "t"));
  EXPECT_EQ(options.decimal, ',');
  EXPECT_EQ(options.delimiter, '\t');
  EXPECT_EQ(options.dataset, "/a/b");
  EXPECT_EQ(options.parametersFile, "p.csv");
  EXPECT_TRUE(options.exactTimes);
}

TEST_F(ImportFile, NumbersCanMeanNoValue)
{
  EXPECT_THAT(optionsOf(R"({"missing": -999})").missing, ElementsAre("-999"));
  EXPECT_THAT(optionsOf(R"({"missing": [1.5, "-"]})").missing, ElementsAre("1.5", "-"));
  EXPECT_THAT(faultOf(R"({"missing": [true]})"), HasSubstr("a value of another type is expected"));
}

TEST_F(ImportFile, NumbersMeanNoValueInFilesWithADecimalCommaToo)
{
  (void)folder.write(R"({"missing": -99.9})", "scan.import.json");
  ScanFile const file = readScan(folder.write("run;time;A\n1;0;1,5\n1;1;-99,9\n2;0;1,5\n2;1;2,5\n"));
  EXPECT_EQ(file.scan.runs[0].end, 1u);
  EXPECT_EQ(file.scan.runs[1].end, 2u);
}

TEST_F(ImportFile, OfAFolderIsFoundWhateverSlashesEndItsPath)
{
  std::filesystem::create_directory(folder.file("runs"));
  std::string const path = folder.write("{}", "runs.import.json");
  for (char const* const slashes : {"", "/", "//"})
    EXPECT_EQ(importFileOf(folder.file("runs") + slashes), path) << slashes;
}

TEST_F(ImportFile, UnderstandsTheNamesOfSieveFiles)
{
  ReadOptions const options = optionsOf(
      R"({"parameters": ["k"], "outputs": ["A", "B"], "parameters_file": "p.csv", "delimiter": "blank"})");
  EXPECT_THAT(options.parameters, Optional(ElementsAre("k")));
  EXPECT_THAT(options.outputs, ElementsAre("A", "B"));
  EXPECT_EQ(options.parametersFile, "p.csv");
  EXPECT_EQ(options.delimiter, ' ');
}

TEST_F(ImportFile, GivesWayToWhatIsSetAlready)
{
  ReadOptions own;
  own.time = "T";
  own.parameters = std::vector<std::string>();
  own.outputs = {"B"};
  own.decimal = '.';
  own.exactTimes = true;
  ReadOptions const options = optionsOf(
      R"({"time": "t", "parameter": "k", "output": "A", "decimal": ",", "exact_times": false, "run": "id"})",
      own);
  EXPECT_EQ(options.time, "T");
  EXPECT_THAT(options.parameters, Optional(ElementsAre())) << "none is a choice, too";
  EXPECT_THAT(options.outputs, ElementsAre("B"));
  EXPECT_EQ(options.decimal, '.');
  EXPECT_TRUE(options.exactTimes);
  EXPECT_EQ(options.run, "id");
}

TEST_F(ImportFile, AFaultNamesFileAndMember)
{
  EXPECT_THAT(faultOf(R"({"tme": "t"})"),
              AllOf(HasSubstr("scan.csv.import.json: option \"tme\": there is no such option"),
                    HasSubstr("exact_times")));
  EXPECT_THAT(faultOf(R"({"time": 5})"), HasSubstr("option \"time\": a value of another type is expected"));
  EXPECT_THAT(faultOf(R"({"names": [1]})"), HasSubstr("option \"names\": a value of another type"));
  EXPECT_THAT(faultOf(R"({"exact_times": "yes"})"),
              HasSubstr("option \"exact_times\": a value of another type"));
  EXPECT_THAT(faultOf(R"({"delimiter": "tabs"})"), HasSubstr("a single character, \"tab\" or \"blank\""));
  for (char const* const noObject : {"", "[]", "{", "5", "{\"time\": \"t\"} x"})
    EXPECT_THAT(faultOf(noObject), HasSubstr("expected a JSON object of reading options")) << noObject;
}

TEST_F(ImportFile, StandsBesideTheScanUnderItsNameOrThatWithoutTheEnding)
{
  std::string const scan = folder.write("1,0,5\n1,1,6\n2,0,5\n2,1,8\n");
  EXPECT_EQ(importFileOf(scan), "");
  std::string const shorter = folder.write(R"({"names": ["run", "time", "A"]})", "scan.import.json");
  EXPECT_EQ(importFileOf(scan), shorter);
  std::string const longer = folder.write(R"({"names": ["run", "time", "B"]})", "scan.csv.import.json");
  EXPECT_EQ(importFileOf(scan), longer) << "the closer name comes first";
  ScanFile const file = readScan(scan);
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("B"));
  EXPECT_THAT(findingsOf(file.report), Contains("options were taken from " + longer));
}

TEST_F(ImportFile, IsOneOfTheFilesOfItsScanAsAreTablesOfParameters)
{
  std::string const scan = folder.write("run,time,A\n1,0,5\n1,1,6\n2,0,5\n2,1,8\n");
  EXPECT_THAT(filesOfScan(scan), ElementsAre(scan));
  std::string const found = folder.write("run,k\n1,5\n2,6\n", "parameters.csv");
  EXPECT_THAT(filesOfScan(scan), ElementsAre(scan, found));
  std::string const named = folder.write("run,k\n1,5\n2,6\n", "doses.csv");
  ReadOptions options;
  options.parametersFile = "doses.csv";
  EXPECT_THAT(filesOfScan(scan, options), ElementsAre(scan, named)) << "another one is not looked for";
  std::string const import = folder.write(R"({"parameters_file": "doses.csv"})", "scan.csv.import.json");
  EXPECT_THAT(filesOfScan(scan), ElementsAre(scan, import, named));
  (void)folder.write("{", "scan.csv.import.json");
  EXPECT_THAT(filesOfScan(scan), ElementsAre(scan, import, found)) << "damaged by now";
}

TEST(FilesOfScan, OfAFolderAreThoseOfItsRuns)
{
  TempFolder folder;
  std::string const first = folder.write("time,A\n0,5\n1,6\n", "1.csv");
  (void)folder.write("a picture", "figure.png");
  std::string const all = std::filesystem::path(first).parent_path().string();
  EXPECT_THAT(filesOfScan(all), ElementsAre(all, first));
  EXPECT_THAT(filesOfScan(all + "/gone"), ElementsAre(all + "/gone"));
}

} // namespace
} // namespace runsieve::test
