#include "app/cli/BoxReport.h"
#include "app/cli/CommandLine.h"
#include "app/cli/Commands.h"

#include "support/TempFile.h"
#include "SvgTexts.h"

#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/sieve/SieveFile.h>
#include <runsieve/core/text/ShownText.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <QImage>

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include <wordexp.h>

namespace runsieve::test {
namespace {

using namespace app;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

std::vector<std::string> linesOf(std::string const& text)
{
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// The words of a command as a shell reads them.
std::vector<std::string> shellWords(std::string const& line)
{
  wordexp_t found{};
  if (wordexp(line.c_str(), &found, WRDE_NOCMD | WRDE_UNDEF) != 0)
    throw std::runtime_error("no words: " + line);
  std::vector<std::string> words(found.we_wordv, found.we_wordv + found.we_wordc);
  wordfree(&found);
  return words;
}

/// A scan of 400 runs in which A ends high where k is in 0.2..0.6 and the strain is not WT. A few runs end
/// early.
struct BoxCommand : testing::Test
{
  TempFolder folder;
  std::string scan = folder.write(scanText(400));
  std::string out;
  std::string err;

  static std::string scanText(int runs)
  {
    std::ostringstream text;
    text << "run,time,A,k,m [nM],strain\n";
    char const* const strains[] = {"WT", "\"mut \"\"$1\"\"\"", "\"a, b\""};
    for (int run = 0; run < runs; ++run) {
      double const k = (run * 37 % 400) / 400.0;
      int const strain = run * 7 % 3;
      bool const isHigh = (k >= 0.2 && k <= 0.6 && strain != 0) || run % 29 == 0;
      for (int time = 0; time < (run % 50 == 3 ? 1 : 2); ++time)
        text << run << ',' << time << ',' << (isHigh ? 5 + time : time) << ',' << k << ','
             << (run * 91 % 401) / 7.0 << ',' << strains[strain] << '\n';
    }
    return text.str();
  }

  int run(std::vector<std::string> words)
  {
    words.insert(words.begin(), {"box", scan, "--gate", "A @ 0 in 5.."});
    return captured([&] { return runBox(std::get<BoxArguments>(parseCommandLine(words))); });
  }

  /// Keys of the runs that the gates of some words let through.
  std::vector<std::string> selected(std::vector<std::string> words)
  {
    words.insert(words.begin(), {"select", scan, "--format", "json"});
    captured([&] { return runSelect(std::get<SelectArguments>(parseCommandLine(words))); });
    std::vector<std::string> keys;
    auto const report = nlohmann::json::parse(out);
    for (auto const& entry : report["selected"]) keys.push_back(entry["run"]);
    return keys;
  }

  template <class Work> int captured(Work const& work)
  {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    int status = -1;
    std::exception_ptr failure;
    try {
      status = work();
    } catch (...) {
      failure = std::current_exception();
    }
    out = testing::internal::GetCapturedStdout();
    err = testing::internal::GetCapturedStderr();
    if (failure) std::rethrow_exception(failure);
    return status;
  }

  /// The line with the gates to copy.
  [[nodiscard]] std::string gateLine() const
  {
    for (std::string const& line : linesOf(out))
      if (line.compare(0, 7, "--gate ") == 0) return line;
    return "";
  }

  static bool isTable(std::string const& line)
  {
    return line.compare(0, 7, "--gate ") != 0 && line.compare(0, 7, "warning") != 0;
  }
};

TEST_F(BoxCommand, ShowsLimitsQualityAndPath)
{
  EXPECT_EQ(run({}), 0);
  EXPECT_THAT(out, HasSubstr("116 of 400 runs pass\n8 runs are not complete and not compared"));
  EXPECT_THAT(out, HasSubstr("\nparameter  low   high    p low   p high  halves      low 5..95%     high "
                             "5..95%\nk          0.2  0.603  "));
  EXPECT_THAT(out, HasSubstr("\nstrain is mut \"$1\", a, b\n  without WT; p "));
  EXPECT_THAT(out, HasSubstr("\ncoverage  "));
  EXPECT_THAT(out, HasSubstr("\nrestricted  2 of 3 parameters\n"));
  EXPECT_THAT(out, HasSubstr("* chosen\n"));
  for (std::string const& line : linesOf(out)) EXPECT_TRUE(!isTable(line) || shownWidth(line) <= 100) << line;
  EXPECT_THAT(err, IsEmpty());
}

TEST_F(BoxCommand, PrintsGatesThatSelectTheRunsInside)
{
  for (std::vector<std::string> const& options : {std::vector<std::string>{},
                                                  {"--coverage", "0.5"},
                                                  {"--coverage", "0.95"},
                                                  {"--knee", "--peel", "0.1"}}) {
    run(options);
    std::string const words = gateLine();
    ASSERT_THAT(words, HasSubstr("--gate"));
    run([&] {
      std::vector<std::string> json = options;
      json.insert(json.end(), {"--format", "json"});
      return json;
    }());
    auto const report = nlohmann::json::parse(out);
    std::vector<std::string> const all = selected(shellWords(words));
    EXPECT_EQ(all.size(),
              report["box"]["runs"].get<std::size_t>() + report["not_complete_inside"].get<std::size_t>());
    std::vector<std::string> both = shellWords(words);
    both.insert(both.end(), {"--gate", "status complete"});
    EXPECT_THAT(selected(both), SizeIs(report["box"]["runs"]));
    both.insert(both.end(), {"--gate", "A @ 0 in 5.."});
    EXPECT_THAT(selected(both), SizeIs(report["box"]["passing"]));
    std::vector<std::string> listed;
    for (auto const& gate : report["box"]["gates"]) {
      listed.emplace_back("--gate");
      listed.push_back(gate);
    }
    EXPECT_EQ(shellWords(words), listed);
  }
}

TEST_F(BoxCommand, SavesTheGatesOfTheBoxAlone)
{
  std::string const sieve = folder.file("box.json");
  run({"--save-sieve", sieve});
  std::vector<std::string> const byWords = selected(shellWords(gateLine()));
  EXPECT_EQ(selected({"--sieve", sieve}), byWords);
  EXPECT_THAT(err, Not(HasSubstr("note"))) << "the data are those it was written for";
  SieveFile const saved = loadSieve(sieve);
  EXPECT_THAT(saved.gates, SizeIs(2));
  for (Gate const& gate : saved.gates) EXPECT_THAT(formatGate(gate), Not(HasSubstr("A @")));
  EXPECT_EQ(saved.counts.passing, byWords.size());
}

TEST_F(BoxCommand, NamesAGateThatEveryRunPasses)
{
  run({"--gate", "A @ 0 in 0.."});
  EXPECT_THAT(out, HasSubstr("warning  all runs pass \"A @ 0 in 0..inf\"\n"));
}

TEST_F(BoxCommand, TellsOfRunsInsideThatTookNoPart)
{
  run({});
  EXPECT_THAT(out, HasSubstr("more runs through that did not take part\n"));
  run({"--gate", "status complete, short"});
  EXPECT_THAT(out, Not(HasSubstr("did not take part")));
}

TEST_F(BoxCommand, WritesThePathAsCsv)
{
  run({"--format", "csv", "--seed", "9"});
  std::vector<std::string> const lines = linesOf(out);
  ASSERT_GT(lines.size(), 5u);
  EXPECT_EQ(lines[0], "step,parameter,side,limit,restricted,runs,passing,coverage,density,mass,chosen,"
                      "base_density,peel,least_mass,least_coverage,seed,version");
  EXPECT_THAT(lines[1], StartsWith("0,,,,0,392,"));
  EXPECT_THAT(lines[1], HasSubstr(",1,false,0."));
  std::size_t chosen = 0;
  for (std::size_t i = 1; i < lines.size(); ++i) {
    EXPECT_THAT(lines[i], StartsWith(std::to_string(i - 1) + ','));
    EXPECT_THAT(lines[i], HasSubstr(",0.05,0.05,0.8,9,"));
    chosen += lines[i].find(",true,") != std::string::npos ? 1 : 0;
  }
  EXPECT_EQ(chosen, 1u);
  EXPECT_THAT(out, HasSubstr(",\"strain\",text,\"WT\","));
}

TEST_F(BoxCommand, WritesEverythingAsJson)
{
  run({"--format", "json", "--coverage", "0.7", "--resamples", "30", "--quasi-p", "0.01"});
  auto const report = nlohmann::json::parse(out);
  EXPECT_EQ(report["runs"], 400);
  EXPECT_EQ(report["not_complete"], 8);
  EXPECT_EQ(report["method"]["least_coverage"], 0.7);
  EXPECT_EQ(report["method"]["resamples"], 30);
  EXPECT_EQ(report["method"]["seed"], 1);
  EXPECT_EQ(report["method"]["largest_quasi_p"], 0.01);
  auto const& path = report["path"];
  auto const& chosen = path[report["chosen_step"].get<std::size_t>()];
  EXPECT_GE(chosen["coverage"], 0.7);
  EXPECT_EQ(path[0]["density"], report["base_density"]);
  ASSERT_THAT(report["parameters"], SizeIs(3));
  auto const& k = report["parameters"][0];
  EXPECT_EQ(k["name"], "k");
  EXPECT_TRUE(k["restricted"]);
  EXPECT_NEAR(k["low"].get<double>(), 0.2, 0.06);
  EXPECT_EQ(k["restricted_in_halves"], 30);
  EXPECT_EQ(k["low_in_halves"]["halves"], 30);
  EXPECT_EQ(report["parameters"][1]["low"], "-inf");
  EXPECT_EQ(report["parameters"][2]["texts"][0]["text"], "WT");
  EXPECT_FALSE(report["parameters"][2]["texts"][0]["inside"]);
  EXPECT_GT(report["halves"]["density"]["p50"], report["base_density"]);
  EXPECT_TRUE(report["left_out"].is_array() && report["warnings"].is_array());
}

TEST_F(BoxCommand, IsTheSameForASeed)
{
  run({"--format", "json", "--seed", "5"});
  std::string const first = out;
  run({"--format", "json", "--seed", "5"});
  EXPECT_EQ(out, first);
  run({"--format", "json", "--seed", "6"});
  EXPECT_NE(out, first);
}

TEST_F(BoxCommand, OfAllRunsIsToldButNotSaved)
{
  scan = folder.write("run,time,A,k\n0,0,5,1\n0,1,2,1\n1,0,5,2\n1,1,4,2\n", "two.csv");
  EXPECT_EQ(run({}), 0);
  EXPECT_THAT(out, HasSubstr("the box is all runs\n"));
  EXPECT_THAT(gateLine(), IsEmpty());
  EXPECT_THROW(run({"--save-sieve", folder.file("none.json")}), std::runtime_error);
  EXPECT_THAT(out, HasSubstr("the box is all runs\n")) << "the report comes all the same";
  EXPECT_THAT(TempFolder::contentOf(folder.file("none.json")), IsEmpty());
}

TEST_F(BoxCommand, RefusesWhatThereIsNothingToLookForIn)
{
  EXPECT_THROW(run({"--gate", "A @ 0 in 100.."}), std::runtime_error);
  EXPECT_THROW(run({"--gate", "k in 5.."}), std::runtime_error);
  scan = folder.write("run,time,A,k\n0,0,5,1\n0,1,2,1\n1,0,1,1\n1,1,4,1\n", "same.csv");
  EXPECT_THROW(run({"--parameter", "k"}), std::runtime_error);
}

TEST_F(BoxCommand, RefusesNumbersOutOfRange)
{
  auto const refuses = [&](std::vector<std::string> const& words) {
    EXPECT_THROW(run(words), UsageError) << testing::PrintToString(words);
  };
  refuses({"--coverage", "1.5"});
  refuses({"--coverage", "nan"});
  refuses({"--coverage", "0.5", "--knee"});
  refuses({"--peel", "0"});
  refuses({"--peel", "1"});
  refuses({"--peel", "nan"});
  refuses({"--mass", "-1"});
  refuses({"--quasi-p", "2"});
  refuses({"--resamples", "-1"});
  refuses({"--seed", "-1"});
  refuses({"--picture", "box.txt"});
  refuses({"--save-sieve", scan});
  refuses({"--save-sieve", "box.png", "-p", "box.png"});
  EXPECT_THROW((void)parseCommandLine({"box", "scan.csv"}), UsageError) << "without a gate";
}

TEST_F(BoxCommand, DrawsThePathWithTheBox)
{
  std::string const picture = folder.file("box.png");
  run({"--picture", picture, "--width", "600", "--height", "450"});
  QImage const image(QString::fromStdString(picture));
  ASSERT_EQ(image.width(), 600);
  ASSERT_EQ(image.height(), 450);
  auto const pixelsLike = [&](QColor const& color) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) {
        QColor const pixel = image.pixelColor(x, y);
        count += std::abs(pixel.red() - color.red()) + std::abs(pixel.green() - color.green()) +
                             std::abs(pixel.blue() - color.blue()) <
                         40
                     ? 1
                     : 0;
      }
    return count;
  };
  EXPECT_GT(pixelsLike(QColor(213, 75, 0)), 60) << "the box, in the chart and in the legend";
  EXPECT_GT(pixelsLike(QColor(0, 92, 175)), 30) << "the halves";
  EXPECT_GT(pixelsLike(QColor(60, 70, 90)), 500);
  EXPECT_GT(pixelsLike(QColor(255, 255, 255)), 200000) << "no block of one colour";
}

TEST_F(BoxCommand, ThePictureTellsWhatItsSignsMean)
{
  std::string const picture = folder.file("box.svg");
  run({"--picture", picture});
  auto const texts = svgTexts(picture);
  EXPECT_THAT(texts, Contains(HasSubstr("runs pass"))) << "the gates";
  EXPECT_THAT(texts, Contains("steps of the path; number of restricted parameters"));
  EXPECT_THAT(texts, Contains(AllOf(StartsWith("box: coverage 0."), HasSubstr(", density "),
                                    HasSubstr("; ring: step "), HasSubstr(", of which it was made"))));
  EXPECT_THAT(texts,
              Contains(AllOf(StartsWith("base density 0."), HasSubstr("passing runs among all runs"))));
  EXPECT_THAT(texts, Contains("median and 5..95 % of 100 boxes of random halves, on the other half"));
  EXPECT_THAT(texts, Contains("coverage: share of the passing runs inside"));
  run({"--picture", picture, "--resamples", "0"});
  EXPECT_THAT(svgTexts(picture), Not(Contains(HasSubstr("halves"))));
}

TEST_F(BoxCommand, DrawsAPathOfOneStep)
{
  scan = folder.write("run,time,A,k\n0,0,5,1\n0,1,2,1\n1,0,5,2\n1,1,4,2\n", "two.csv");
  EXPECT_EQ(run({"--picture", folder.file("one.pdf"), "--width", "64", "--height", "64", "--resamples", "0"}),
            0);
  EXPECT_THAT(TempFolder::contentOf(folder.file("one.pdf")), StartsWith("%PDF"));
}

BoxOfRuns pathOf(std::vector<std::pair<double, std::size_t>> const& steps, std::size_t chosen)
{
  BoxOfRuns box;
  box.chosen = chosen;
  for (auto const& [coverage, restricted] : steps) {
    BoxPathStep step;
    step.quality.coverage = coverage;
    step.quality.density = 0.5;
    step.restricted = restricted;
    box.path.push_back(step);
  }
  return box;
}

TEST(ShownSteps, AreAllIfTheyAreFew)
{
  EXPECT_THAT(shownSteps(pathOf({{1.0, 0}, {0.9, 1}, {0.8, 1}}, 1), 3), testing::ElementsAre(0, 1, 2));
}

TEST(ShownSteps, HoldFirstChosenAndLastAndWhereOneMoreIsRestricted)
{
  std::vector<std::pair<double, std::size_t>> steps;
  for (std::size_t step = 0; step < 50; ++step)
    steps.emplace_back(1.0 - 0.02 * static_cast<double>(step), step < 10 ? 1 : step < 31 ? 2 : 3);
  EXPECT_THAT(shownSteps(pathOf(steps, 7), 5), testing::ElementsAre(0, 7, 9, 30, 49));
  EXPECT_THAT(shownSteps(pathOf(steps, 7), 12), SizeIs(12));
}

TEST(ShownSteps, OfEqualBoxesAreNotFilledUp)
{
  EXPECT_THAT(shownSteps(pathOf(std::vector<std::pair<double, std::size_t>>(40, {1.0, 0}), 0), 12),
              testing::ElementsAre(0, 39));
}

TEST(GateWords, AreOneWordEachForAShell)
{
  std::vector<Gate> gates;
  for (char const* text : {"k1 in 0.3..0.8", "\"a$b\" is 'it''s', \"x `y`\", \\, !"})
    gates.push_back(parseGate(text));
  std::vector<std::string> const words = shellWords(gateWords(gates));
  ASSERT_THAT(words, SizeIs(4));
  EXPECT_EQ(parseGate(words[1]), gates[0]);
  EXPECT_EQ(parseGate(words[3]), gates[1]);
  EXPECT_THAT(gateWords(gates), StartsWith("--gate \"k1 in 0.3..0.8\" --gate '"));
}

} // namespace
} // namespace runsieve::test
