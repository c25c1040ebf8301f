#include "app/cli/OutputFiles.h"

#include "app/cli/CommandLine.h"
#include "support/TempFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace runsieve::test {
namespace {

using namespace app;
using testing::HasSubstr;

struct OutputFiles : testing::Test
{
  TempFolder folder;
  std::string scan = folder.write("run,time,A,k\n0,0,1,1\n0,1,2,1\n1,0,3,2\n1,1,4,2\n");
  std::string const gate = "A @ 1 in 3..";

  template <class Arguments>
  static std::string faultOf(int (*run)(Arguments const&), std::vector<std::string> const& words)
  {
    try {
      (void)run(std::get<Arguments>(parseCommandLine(words)));
    } catch (UsageError const& error) {
      return error.what();
    }
    return "";
  }
};

TEST_F(OutputFiles, NeverTakeThePlaceOfTheScanThatIsRead)
{
  std::string const content = TempFolder::contentOf(scan);
  std::filesystem::create_symlink(scan, folder.file("link.csv"));
  for (std::string const& output : {scan, folder.file("link.csv")}) {
    EXPECT_THAT(faultOf(runSelect, {"select", scan, "-g", gate, "-o", output}),
                HasSubstr("is the file that is read"));
    EXPECT_THAT(faultOf(runSelect, {"select", scan, "-g", gate, "--format", "scan", "-o", output}),
                HasSubstr("is the file that is read"));
    EXPECT_THAT(faultOf(runRank, {"rank", scan, "-g", gate, "--save-sieve", output}),
                HasSubstr("is the file that is read"));
    EXPECT_THAT(faultOf(runCluster, {"cluster", scan, "-o", output}), HasSubstr("is the file that is read"));
    EXPECT_THAT(faultOf(runConvert, {"convert", scan, output}), HasSubstr("is the file that is read"));
  }
  std::filesystem::rename(scan, folder.file("scan.png"));
  EXPECT_THAT(faultOf(runRender, {"render", folder.file("scan.png"), "-o", folder.file("scan.png")}),
              HasSubstr("render: "));
  EXPECT_EQ(TempFolder::contentOf(folder.file("scan.png")), content);
}

TEST_F(OutputFiles, NeverTakeThePlaceOfTheTableOfParameters)
{
  std::string const table = folder.write("run,m\n0,1\n1,2\n", "doses.csv");
  EXPECT_THAT(faultOf(runSelect, {"select", scan, "--parameters", table, "-g", gate, "-o", table}),
              HasSubstr("doses.csv is the file that is read"));
}

TEST_F(OutputFiles, NeverTakeThePlaceOfTheSieveFileThatIsRead)
{
  std::string const sieve = folder.file("sieve.json");
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(faultOf(runSelect, {"select", scan, "-g", gate, "--save-sieve", sieve}), "");
  std::string const content = TempFolder::contentOf(sieve);
  EXPECT_THAT(faultOf(runSelect, {"select", scan, "--sieve", sieve, "-o", sieve}),
              HasSubstr("sieve.json is the file that is read"));
  EXPECT_THAT(faultOf(runBox, {"box", scan, "--sieve", sieve, "--save-sieve", sieve}),
              HasSubstr("sieve.json is the file that is read"))
      << "the gates of the box are others";
  EXPECT_EQ(TempFolder::contentOf(sieve), content);
  EXPECT_EQ(
      faultOf(runSelect, {"select", scan, "--sieve", sieve, "-g", "A @ 0 in 0..", "--save-sieve", sieve}), "")
      << "it keeps its gates";
  EXPECT_NE(TempFolder::contentOf(sieve), content);
  (void)testing::internal::GetCapturedStdout();
  (void)testing::internal::GetCapturedStderr();
}

TEST_F(OutputFiles, NeverTakeThePlaceOfATableThatTheSieveFileNames)
{
  std::string const table = folder.write("run,m\n0,1\n1,2\n", "doses.csv");
  std::string const sieve = folder.file("sieve.json");
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(faultOf(runSelect, {"select", scan, "--parameters", table, "-g", gate, "--save-sieve", sieve}),
            "");
  (void)testing::internal::GetCapturedStdout();
  (void)testing::internal::GetCapturedStderr();
  EXPECT_THAT(faultOf(runSelect, {"select", scan, "--sieve", sieve, "-o", table}),
              HasSubstr("doses.csv is the file that is read"));
}

TEST_F(OutputFiles, AreNotWrittenTwice)
{
  std::string const output = folder.file("both.json");
  EXPECT_THAT(faultOf(runSelect, {"select", scan, "-g", gate, "-o", output, "--save-sieve", output}),
              HasSubstr("both.json would be written twice"));
  EXPECT_FALSE(std::filesystem::exists(output));
}

TEST_F(OutputFiles, StandardOutputIsNoFile)
{
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(faultOf(runSelect, {"select", scan, "-g", gate, "-o", "-"}), "");
  (void)testing::internal::GetCapturedStdout();
  (void)testing::internal::GetCapturedStderr();
}

TEST_F(OutputFiles, PicturesAreRefusedByTheirNamesBeforeTheScanIsRead)
{
  EXPECT_THAT(faultOf(runRender, {"render", "none.csv", "-o", "x.jpg"}),
              HasSubstr("must end in .png or .pdf"));
  EXPECT_TRUE(isPictureName("a.PNG"));
  EXPECT_TRUE(isPictureName("a.pdf"));
  EXPECT_FALSE(isPictureName("png"));
}

} // namespace
} // namespace runsieve::test
