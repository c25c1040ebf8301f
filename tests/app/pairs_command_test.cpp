#include "app/cli/CommandLine.h"
#include "app/cli/Commands.h"

#include "core/inference/UniformDraws.h"
#include "support/TempFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <QImage>

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace runsieve::test {
namespace {

using namespace app;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// A scan of 200 runs with A = x + y, and z, which has no part in it.
struct PairsCommand : testing::Test
{
  TempFolder folder;
  std::string scan = folder.write(content());
  std::string out;
  std::string err;

  static std::string content(std::string const& more = "")
  {
    const std::vector<Column> drawn = uniformColumns(3, 200, 1);
    std::ostringstream text;
    text << "id,time,A,x,y,\"z, too\"" << (more.empty() ? "" : ",more") << '\n';
    for (std::size_t run = 0; run < 200; ++run)
      for (int const time : {0, 1})
        text << run << ',' << time << ',' << time * (drawn[0][run] + drawn[1][run]) << ',' << drawn[0][run]
             << ',' << drawn[1][run] << ',' << drawn[2][run] << (more.empty() ? "" : "," + more) << '\n';
    return text.str();
  }

  int run(std::vector<std::string> words, std::string const& gate = "A @ 1 in ..0.8")
  {
    words.insert(words.begin(), {"pairs", scan, "-g", gate});
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    int status = -1;
    try {
      status = runPairs(std::get<PairsArguments>(parseCommandLine(words)));
    } catch (...) {
      out = testing::internal::GetCapturedStdout();
      err = testing::internal::GetCapturedStderr();
      throw;
    }
    out = testing::internal::GetCapturedStdout();
    err = testing::internal::GetCapturedStderr();
    return status;
  }

  template <class Error>
  std::string complaint(std::vector<std::string> const& words, std::string const& gate = "A @ 1 in ..0.8")
  {
    try {
      run(words, gate);
      return "nothing";
    } catch (Error const& error) {
      return error.what();
    }
  }

  [[nodiscard]] std::vector<std::string> lines() const
  {
    std::istringstream text(out);
    std::vector<std::string> all;
    for (std::string line; std::getline(text, line);) all.push_back(line);
    return all;
  }
};

TEST_F(PairsCommand, ThePairThatTheGateMakesIsOnTopWithAStar)
{
  EXPECT_EQ(run({}), 0);
  EXPECT_THAT(out, StartsWith("gate   A @ 1 in -inf..0.8  "));
  EXPECT_THAT(out,
              HasSubstr(" of 200 runs pass\n\nparameter  with    r passing  r others  difference  p adj\n"
                        "x          y          -0."));
  EXPECT_THAT(out, HasSubstr("  0.001 *\n"));
  EXPECT_EQ(std::count(out.begin(), out.end(), '*'), 1);
  EXPECT_THAT(out, HasSubstr("largest |r| of 3 pairs in "));
  EXPECT_THAT(out, HasSubstr("(seed 1)\nfloor   chance alone exceeds |r| = 0."));
  EXPECT_THAT(out, HasSubstr("unseen  what is not monotone"));
  EXPECT_EQ(err, "");
}

TEST_F(PairsCommand, ShowsTheStrongestPairs)
{
  run({"--top", "1"});
  EXPECT_THAT(out, HasSubstr("the strongest 1 of 3 pairs; --top shows more, --format csv all\n"));
  EXPECT_THAT(out, Not(HasSubstr("z, too")));
}

TEST_F(PairsCommand, NoLineIsWiderThanATerminal)
{
  std::string text = content();
  for (std::string const name : {"x", "y"})
    text.replace(text.find("," + name + ","), 3, "," + name + std::string(80, '_') + name + ",");
  scan = folder.write(text);
  run({});
  for (std::string const& line : lines()) EXPECT_LE(line.size(), 104u) << line << "; an ellipsis has 3 bytes";
  EXPECT_THAT(out, HasSubstr("x_"));
  EXPECT_THAT(out, HasSubstr("_y  "));
}

TEST_F(PairsCommand, CsvHasAllPairsAndTheMethod)
{
  run({"--format", "csv", "--top", "1", "--seed", "7"});
  ASSERT_EQ(lines().size(), 4u);
  EXPECT_THAT(lines()[0],
              StartsWith("first,second,n_passing,n_others,r_passing,r_others,difference,r_all,by_design,"
                         "r_expected,statistic,p_adjusted,significant,family,permutations,seed,noise_floor,"
                         "settled,p_threshold,gates_tried,version"));
  EXPECT_THAT(lines()[1], AllOf(StartsWith("\"x\",\"y\","), HasSubstr(",true,3,1000,7,0.")));
  for (std::size_t const line : {2, 3}) EXPECT_THAT(lines()[line], HasSubstr("\"z, too\""));
}

TEST_F(PairsCommand, TheFamilyCountsTheGatesTried)
{
  run({"--format", "csv", "--gates-tried", "5"});
  EXPECT_THAT(lines()[1], AllOf(HasSubstr(",true,15,1000,1,"), HasSubstr(",true,0.05,5,")));
  run({"--format", "json", "--gates-tried", "5"});
  auto const method = nlohmann::json::parse(out)["method"];
  EXPECT_EQ(method["family"], 15);
  EXPECT_EQ(method["most_permutations"], 10000);
}

TEST_F(PairsCommand, AGateThatEveryRunPassesIsNamed)
{
  run({"-g", "A @ 1 in -5..5"});
  EXPECT_THAT(out, HasSubstr("warning  all runs pass \"A @ 1 in -5..5\"\n"));
}

TEST_F(PairsCommand, JsonHasEverything)
{
  scan = folder.write(content("wt"));
  run({"--format", "json", "--permutations", "500"});
  auto const report = nlohmann::json::parse(out);
  EXPECT_EQ(report["runs"], 200);
  EXPECT_EQ(report["not_complete"], 0);
  EXPECT_EQ(report["gates"][0]["left"], report["passing"]);
  EXPECT_EQ(report["method"]["permutations"], 500);
  EXPECT_EQ(report["method"]["seed"], 1);
  EXPECT_EQ(report["method"]["family"], 3);
  EXPECT_GT(report["method"]["noise_floor"], 0.1);
  ASSERT_EQ(report["pairs"].size(), 3u);
  auto const& first = report["pairs"][0];
  EXPECT_EQ(first["first"], "x");
  EXPECT_EQ(first["second"], "y");
  EXPECT_EQ(first["n_passing"].get<int>() + first["n_others"].get<int>(), 200);
  EXPECT_DOUBLE_EQ(first["difference"], first["r_passing"].get<double>() - first["r_others"].get<double>());
  EXPECT_EQ(first["by_design"], false);
  EXPECT_EQ(first["r_expected"], 0.0);
  EXPECT_EQ(first["p_adjusted"], 1.0 / 501.0);
  EXPECT_EQ(first["significant"], true);
  EXPECT_EQ(report["left_out"].size(), 1u);
}

TEST_F(PairsCommand, IsTheSameWithTheSameSeed)
{
  run({"--format", "csv"});
  std::string const first = out;
  run({"--format", "csv"});
  EXPECT_EQ(out, first);
}

TEST_F(PairsCommand, CorrelationByDesignHasAColumn)
{
  std::string text = "id,time,A,x,twice,y\n";
  const std::vector<Column> drawn = uniformColumns(2, 100, 2);
  for (std::size_t run = 0; run < 100; ++run)
    for (int const time : {0, 1})
      text += std::to_string(run) + ',' + std::to_string(time) + ',' + std::to_string(time * drawn[0][run]) +
              ',' + std::to_string(drawn[0][run]) + ',' + std::to_string(2.0 * drawn[0][run]) + ',' +
              std::to_string(drawn[1][run]) + '\n';
  scan = folder.write(text);
  run({}, "A @ 1 in ..0.5");
  EXPECT_THAT(out, HasSubstr("  by design  p adj\n"));
  EXPECT_THAT(out, HasSubstr("  +1.000  "));
  EXPECT_THAT(out, HasSubstr("warning  correlated by design: \"x\" and \"twice\" (1.00)\n"));
  EXPECT_THAT(out, Not(HasSubstr("*")));
}

TEST_F(PairsCommand, ASieveFileReplaysIt)
{
  std::string const sieve = folder.file("sieve.json");
  run({"--save-sieve", sieve, "--seed", "3", "--p-threshold", "0.0001"});
  std::string const first = out;
  testing::internal::CaptureStdout();
  runPairs(std::get<PairsArguments>(parseCommandLine({"pairs", scan, "--sieve", sieve})));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), first);
  EXPECT_THAT(first, Not(HasSubstr("*")));
}

TEST_F(PairsCommand, PicturesHaveBothColours)
{
  for (std::string const name : {"pairs.png", "pair.png"}) {
    std::vector<std::string> words = {"-p", folder.file(name), "--width", "600", "--height", "450"};
    if (name == "pair.png") words.insert(words.end(), {"--pair", "y,z, too"});
    EXPECT_EQ(run(words), 0);
    const QImage picture(QString::fromStdString(folder.file(name)));
    ASSERT_EQ(picture.size(), QSize(600, 450));
    int passing = 0;
    int others = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) {
        const QColor color = picture.pixelColor(x, y);
        passing += color.red() > color.blue() + 60 ? 1 : 0;
        others += color.blue() > color.red() + 8 && color.red() < 200 ? 1 : 0;
      }
    EXPECT_GT(passing, 200) << name;
    EXPECT_GT(others, 200) << name;
  }
  EXPECT_EQ(run({"-p", folder.file("pairs.pdf")}), 0);
  EXPECT_THAT(TempFolder::contentOf(folder.file("pairs.pdf")), StartsWith("%PDF"));
}

TEST_F(PairsCommand, SaysWhatIsWrongWithANamedPair)
{
  std::string const picture = folder.file("x.png");
  EXPECT_THAT(complaint<std::runtime_error>({"-p", picture, "--pair", "x,nothing"}),
              HasSubstr("no parameter \"nothing\""));
  EXPECT_THAT(complaint<std::runtime_error>({"-p", picture, "--pair", "nothing,x"}),
              HasSubstr("no parameter \"nothing\""));
  EXPECT_THAT(complaint<std::runtime_error>({"-p", picture, "--pair", "x,x"}), HasSubstr("one twice"));
  EXPECT_THAT(complaint<UsageError>({"-p", picture, "--pair", "x"}), HasSubstr("a comma"));
  EXPECT_THAT(complaint<UsageError>({"--pair", "x,y"}), HasSubstr("needs -p"));
  EXPECT_THAT(complaint<UsageError>({"-p", "x.gif"}), HasSubstr(".png, .svg or .pdf"));
  scan = folder.write(content("wt"));
  EXPECT_THAT(complaint<std::runtime_error>({"-p", picture, "--pair", "x,more"}), HasSubstr("\"more\" "));
  EXPECT_EQ(folder.fileCount(), 1u);
}

TEST_F(PairsCommand, FailsWithoutPairsOrPassingRuns)
{
  EXPECT_THAT(complaint<std::runtime_error>({}, "A @ 1 in 9.."), HasSubstr("no run passes"));
  scan = folder.write("id,time,A,x\na,0,1,1\na,1,2,1\nb,0,1,2\nb,1,5,2\n");
  EXPECT_THAT(complaint<std::runtime_error>({}, "A @ 1 in 3.."),
              HasSubstr("only one number parameter varies, and a pair takes two"));
}

TEST_F(PairsCommand, NeedsGatesAndPermutations)
{
  EXPECT_THROW((void)parseCommandLine({"pairs", scan}), UsageError);
  EXPECT_THROW((void)parseCommandLine({"pairs", scan, "-g", "A @ 1 in 3..", "--permutations", "0"}),
               UsageError);
  EXPECT_THROW((void)parseCommandLine({"pairs", scan, "-g", "A @ 1 in 3..", "--top", "0"}), UsageError);
  EXPECT_THROW((void)parseCommandLine({"pairs", scan, "-g", "A @ 1 in 3..", "--adjust", "holm"}), UsageError);
}

} // namespace
} // namespace runsieve::test
