#include "app/cli/CommandLine.h"
#include "app/cli/Commands.h"

#include "support/TempFile.h"
#include "SvgTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <QImage>

#include <filesystem>
#include <sstream>

namespace runsieve::test {
namespace {

using namespace app;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

struct StabilityCommand : testing::Test
{
  TempFolder folder;
  std::string scan = folder.write(scanText());
  std::string out;
  std::string err;

  /// The output follows k1; k2 is spread over the runs whatever the output.
  static std::string scanText()
  {
    std::string text = "run,time,A,k1,k2\n";
    for (int run = 0; run < 120; ++run)
      for (int time = 0; time < 2; ++time)
        text += std::to_string(run) + ',' + std::to_string(time) + ',' + std::to_string(run * (time + 1)) +
                ',' + std::to_string(run) + ',' + std::to_string(run * 77 % 120) + '\n';
    return text;
  }

  int run(std::vector<std::string> words)
  {
    words.insert(words.begin(), {"rank", scan, "-g", "A @ 0 in 80.."});
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    int status = -1;
    try {
      status = runRank(std::get<RankArguments>(parseCommandLine(words)));
    } catch (...) {
      out = testing::internal::GetCapturedStdout();
      err = testing::internal::GetCapturedStderr();
      throw;
    }
    out = testing::internal::GetCapturedStdout();
    err = testing::internal::GetCapturedStderr();
    return status;
  }
};

TEST_F(StabilityCommand, AddsIntervalAndTopToTheTableAndAnswersWhetherThereAreEnoughRuns)
{
  EXPECT_EQ(run({"--stability"}), 0);
  EXPECT_THAT(out, HasSubstr("|d| 95 %"));
  EXPECT_THAT(out, HasSubstr("confidence interval of |d|, from 1000 resamples of the runs (seed 1)"));
  EXPECT_THAT(out, HasSubstr("enough runs?  |d| in 200 samples"));
  EXPECT_THAT(out, HasSubstr("the significant parameter is beyond the noise floor already at"));
  std::istringstream lines(out);
  for (std::string line; std::getline(lines, line);)
    if (line.find("the significant parameter") == std::string::npos) {
      EXPECT_LE(line.size(), 110u) << line;
    }
}

TEST_F(StabilityCommand, TellsNothingOfStabilityUnlessAsked)
{
  run({});
  EXPECT_THAT(out, Not(HasSubstr("enough runs")));
  EXPECT_THAT(out, Not(HasSubstr("|d| 95 %")));
}

TEST_F(StabilityCommand, WritesAllNumbersAsJson)
{
  run({"--stability", "--top", "2", "--seed", "9", "--format", "json"});
  auto const report = nlohmann::json::parse(out);
  EXPECT_EQ(report["stability"]["top"], 2);
  EXPECT_EQ(report["stability"]["seed"], 9);
  EXPECT_EQ(report["stability"]["confidence"], 0.95);
  auto const first = report["parameters"][0];
  EXPECT_EQ(first["name"], "k1");
  EXPECT_LT(first["d_low"], first["d"]);
  EXPECT_EQ(first["d_high"], 1.0);
  EXPECT_EQ(first["top_share"], 1.0);
  EXPECT_EQ(report["parameters"][1]["top_share"], 1.0) << "both are among the top two";
  auto const enough = report["enough_runs"];
  EXPECT_EQ(enough["verdict"], "enough");
  ASSERT_EQ(enough["sizes"].size(), 4u);
  EXPECT_EQ(enough["sizes"][1]["share"], 0.25);
  EXPECT_EQ(enough["sizes"][1]["passing"], 10);
  EXPECT_EQ(enough["sizes"][3]["noise_floor"], report["method"]["noise_floor"]);
  EXPECT_EQ(enough["sizes"][3]["parameters"][0]["d_median"], 1.0);
  EXPECT_EQ(enough["sizes"][3]["parameters"][0]["beyond_noise"], true);
}

TEST_F(StabilityCommand, LeavesItsMembersOfJsonNullUnlessAsked)
{
  run({"--format", "json"});
  auto const report = nlohmann::json::parse(out);
  EXPECT_TRUE(report["enough_runs"].is_null());
  EXPECT_TRUE(report["stability"].is_null());
  EXPECT_TRUE(report["parameters"][0]["d_low"].is_null());
  EXPECT_TRUE(report["parameters"][0]["top_share"].is_null());
}

TEST_F(StabilityCommand, AppendsColumnsToCsvOnlyIfAsked)
{
  run({"--format", "csv"});
  std::string const plain = out.substr(0, out.find('\n'));
  EXPECT_THAT(plain, Not(HasSubstr("d_low")));
  run({"--stability", "--format", "csv"});
  EXPECT_THAT(out, StartsWith(plain + ",d_low,d_high,top_share,top,resamples\n"));
  EXPECT_THAT(out, HasSubstr(",1,1,1000\n"));
  EXPECT_THAT(err, HasSubstr("enough runs? enough for what was found"));
}

TEST_F(StabilityCommand, HasNothingToTellIfAllRunsPass)
{
  run({"-g", "k1 in 0..", "--any", "--stability"});
  EXPECT_THAT(out, HasSubstr("enough runs?  there is nothing to compare\n"));
  run({"-g", "k1 in 0..", "--any", "--stability", "--format", "json"});
  auto const report = nlohmann::json::parse(out);
  EXPECT_EQ(report["enough_runs"]["verdict"], "unknown");
  EXPECT_TRUE(report["parameters"][0]["d_high"].is_null());
}

TEST_F(StabilityCommand, RefusesOptionsThatNeedStabilityAndOtherPictures)
{
  EXPECT_THROW(run({"--top", "3"}), UsageError);
  EXPECT_THROW(run({"--stability-picture", "p.png"}), UsageError);
  EXPECT_THROW(run({"--stability", "--top", "0"}), UsageError);
  EXPECT_THROW(run({"--stability", "--stability-picture", folder.file("p.jpg")}), UsageError);
  EXPECT_THROW(
      run({"--stability", "--stability-picture", folder.file("p.png"), "--save-sieve", folder.file("p.png")}),
      UsageError);
}

TEST_F(StabilityCommand, DrawsAPicture)
{
  for (std::string const name : {"p.png", "p.svg", "p.pdf"}) {
    EXPECT_EQ(
        run({"--stability", "--stability-picture", folder.file(name), "--width", "300", "--height", "200"}),
        0);
    EXPECT_GT(std::filesystem::file_size(folder.file(name)), 2000u);
  }
  EXPECT_EQ(run({"-g", "k1 in 0..", "--any", "--stability", "--stability-picture", folder.file("empty.png")}),
            0)
      << "there is nothing to compare, which the picture says";
  EXPECT_EQ(QImage(QString::fromStdString(folder.file("p.png"))).size(), QSize(300, 200));
}

TEST_F(StabilityCommand, ThePictureTellsTheVerdictTheSizesAndTheParameters)
{
  run({"--stability", "--stability-picture", folder.file("p.svg")});
  auto const texts = svgTexts(folder.file("p.svg"));
  EXPECT_THAT(texts,
              Contains(StartsWith("Enough runs? enough for what was found: the significant parameter")));
  EXPECT_THAT(texts, Contains(StartsWith("magnitude of d: median and 5 % .. 95 % of 200 samples")));
  for (char const* text : {"k1", "k2 (n.s.)", "noise floor", "10 %", "25 %", "50 %", "all", "10 + 20",
                           "40 + 80", "share of the runs, passing + others"})
    EXPECT_THAT(texts, Contains(text));
  run({"-g", "k1 in 0..", "--any", "--stability", "--stability-picture", folder.file("p.svg")});
  EXPECT_THAT(svgTexts(folder.file("p.svg")), ElementsAre("Enough runs? there is nothing to compare"));
}

TEST_F(StabilityCommand, AVerdictThatIsLongStandsInSeveralLines)
{
  run({"--stability", "--stability-picture", folder.file("p.svg"), "--width", "300", "--height", "240"});
  std::string verdict;
  for (std::string const& text : svgTexts(folder.file("p.svg"))) {
    if (text.rfind("magnitude", 0) == 0) break;
    EXPECT_LT(text.size(), 80u);
    verdict += text + ' ';
  }
  EXPECT_THAT(verdict, HasSubstr("is beyond the noise floor already at"));
}

} // namespace
} // namespace runsieve::test
