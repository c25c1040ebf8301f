#include "SessionScene.h"

#include "app/cli/CommandLine.h"
#include "app/cli/FigureGrammar.h"
#include "app/explorer/figure/FigureSettings.h"
#include "app/explorer/session/ShellCommand.h"

#include <runsieve/core/gate/GateText.h>

#include <gmock/gmock.h>

#include <QProcess>

namespace runsieve::test {
namespace {

using testing::ElementsAre;

/// The words that a shell makes of a line, without the first.
std::vector<std::string> wordsOf(std::string const& line)
{
  QProcess shell;
  shell.start("sh", {"-c", QString::fromStdString(
                               "runsieve() { for word; do printf '%s\\0' \"$word\"; done; }; " + line)});
  EXPECT_TRUE(shell.waitForFinished());
  EXPECT_EQ(shell.readAllStandardError().toStdString(), "");
  std::vector<std::string> words;
  for (QByteArray const& word : shell.readAllStandardOutput().split('\0'))
    words.push_back(word.toStdString());
  if (!words.empty()) words.pop_back();
  return words;
}

app::Session oddSession()
{
  app::Session session;
  session.path = "/data/it's a \"scan\" $HOME `x`\nof two lines.csv";
  session.read.time = "t";
  session.read.parameters = std::vector<std::string>{"k 1", "-k2"};
  session.read.outputs = {"A"};
  session.read.ignore = {"note;"};
  session.read.missing = {"-999"};
  session.read.decimal = ',';
  session.read.delimiter = '\t';
  session.read.exactTimes = true;
  Gate gate = gateOnA(0.5, 1.0);
  gate.column = "it's \"A\"";
  session.gates = {
      {"one", gate, true}, {"two", gateOnA(0.0, 0.1), false}, {"three", gateOnA(-1.0, 0.25), true}};
  session.join = GateJoin::Any;
  session.method.thresholds = {0.01, 0.25};
  session.method.adjustment = Adjustment::BenjaminiHochberg;
  session.method.permutations = session.method.mostPermutations = 500;
  session.method.seed = 18446744073709551615u;
  session.method.gatesTried = 4;
  return session;
}

void expectReading(app::SieveArguments const& arguments, app::Session const& session)
{
  EXPECT_EQ(arguments.file, session.path);
  EXPECT_EQ(arguments.read.time, "t");
  EXPECT_EQ(arguments.read.parameters, session.read.parameters);
  EXPECT_EQ(arguments.read.outputs, session.read.outputs);
  EXPECT_EQ(arguments.read.ignore, session.read.ignore);
  EXPECT_EQ(arguments.read.missing, session.read.missing);
  EXPECT_EQ(arguments.read.decimal, ',');
  EXPECT_EQ(arguments.read.delimiter, '\t');
  EXPECT_TRUE(arguments.read.exactTimes);
  EXPECT_TRUE(arguments.any);
  ASSERT_EQ(arguments.gates.size(), 2u) << "a gate that is off is left out";
  EXPECT_EQ(parseGate(arguments.gates[0]), session.gates[0].gate);
  EXPECT_EQ(parseGate(arguments.gates[1]), session.gates[2].gate);
  EXPECT_EQ(arguments.pThreshold, 0.01);
  EXPECT_EQ(arguments.ksThreshold, 0.25);
  EXPECT_EQ(arguments.adjust, Adjustment::BenjaminiHochberg);
  EXPECT_EQ(arguments.permutations, 500u);
  EXPECT_EQ(arguments.seed, 18446744073709551615u);
  EXPECT_EQ(arguments.gatesTried, 4u);
}

TEST(ShellCommand, PlainWordsStayPlainAndOthersComeThroughAShell)
{
  EXPECT_EQ(app::shellWord("scan-1.csv"), "scan-1.csv");
  EXPECT_EQ(app::shellWord("A @ 1"), "'A @ 1'");
  EXPECT_EQ(app::shellWord(""), "''");
  const std::vector<std::string> words = {"it's", "a\nb", "$x `y` \\ !", "", "\"", "*", "~", "\xce\xb1"};
  std::vector<std::string> line = words;
  line.insert(line.begin(), "runsieve");
  EXPECT_EQ(wordsOf(app::shellLine(line)), words);
}

TEST(ShellCommand, TheTableIsThatOfTheSession)
{
  const app::Session session = oddSession();
  const app::Command command = app::parseCommandLine(wordsOf(app::shellLine(app::rankCommand(session))));
  expectReading(std::get<app::RankArguments>(command), session);
}

TEST(ShellCommand, ThePictureIsThatOfTheSession)
{
  app::Session session = oddSession();
  session.view.outputs = {"B", "A"};
  session.view.logOutputs = {{"B", true}, {"A", false}};
  session.view.outputRanges = {{"A", {-1.0, 2.0}}};
  session.view.zoomedValues = {{"A", {0.25, 0.5}}, {"B @ 1", {0.0, 1.0}}};
  session.view.zoomedTime = app::TypedRange{-3.0, 4.5};
  session.view.focus = app::Focus::Hidden;
  session.pinned = {RunNumbers{3, 5}, std::string("wild type, early")};
  app::FigureOptions options;
  options.width = 85.0;
  options.dpi = 600;
  options.title = "-it's";
  options.gates = options.scaleBar = false;
  options.runsLook = app::RunsLook::Bands;
  options.parameterLook = app::ParameterLook::Scatter;
  options.palette = app::FigurePalette::ColourBlind;
  options.parameters = {2};
  const auto scan = lineScan();
  const app::Command command =
      app::parseCommandLine(wordsOf(app::shellLine(app::figureCommand(session, options, *scan, "f.pdf"))));
  auto const& render = std::get<app::RenderArguments>(command);
  expectReading(render, session);
  app::FigureArguments const& figure = render.figure;
  EXPECT_TRUE(figure.wanted);
  EXPECT_EQ(render.output, "f.pdf");
  EXPECT_EQ(figure.width, 85.0);
  EXPECT_EQ(figure.dpi, 600);
  EXPECT_EQ(figure.title, "-it's");
  EXPECT_TRUE(figure.noGates);
  EXPECT_TRUE(figure.noScaleBar);
  EXPECT_FALSE(figure.noLegend);
  EXPECT_TRUE(render.quantiles);
  EXPECT_FALSE(figure.wholeBands);
  EXPECT_TRUE(figure.scatter);
  EXPECT_EQ(figure.palette, "colour-blind");
  EXPECT_EQ(figure.focus, "hidden");
  EXPECT_THAT(figure.outputs, ElementsAre("B", "A"));
  EXPECT_THAT(figure.logOutputs, ElementsAre("B"));
  EXPECT_THAT(figure.parameters, ElementsAre("k2"));
  EXPECT_EQ(figure.timeRange, "-3..4.5");
  ASSERT_EQ(figure.valueRanges.size(), 2u);
  EXPECT_EQ(parseGate(figure.valueRanges[0]).range.high, 0.5) << "what is shown, not what was typed";
  EXPECT_EQ(parseGate(figure.valueRanges[1]).column, "B @ 1");
  EXPECT_THAT(figure.gateNames, ElementsAre("one", "three")) << "of the gates that are on";
  EXPECT_EQ(figure.pins, "3-5, \"wild type, early\"");
  EXPECT_EQ(app::keysOfRuns(figure.pins).size(), 2u);
}

/// The options of a figure that those of the usual one do not have.
std::vector<std::string> optionsBeside(std::function<void(app::FigureOptions&)> const& edit)
{
  app::FigureOptions options;
  const std::vector<std::string> usual = app::figureCommand({}, options, *lineScan(), "f.pdf");
  edit(options);
  std::vector<std::string> more;
  for (std::string const& word : app::figureCommand({}, options, *lineScan(), "f.pdf"))
    if (std::find(usual.begin(), usual.end(), word) == usual.end()) more.push_back(word);
  return more;
}

TEST(ShellCommand, WhatIsUsualInAFigureIsLeftOut)
{
  const std::vector<std::string> words = app::figureCommand({}, {}, *lineScan(), "f.pdf");
  for (char const* word :
       {"--dpi",         "--font",        "--font-size",     "--line-width",   "--title",       "--no-gates",
        "--no-legend",   "--no-counts",   "--no-thresholds", "--no-scale-bar", "--transparent", "--quantiles",
        "--whole-bands", "--plain-lines", "--density",       "--scatter",      "--palette",     "--pin",
        "--focus",       "--time-range",  "--value-range"})
    EXPECT_EQ(std::count(words.begin(), words.end(), word), 0) << word;
}

TEST(ShellCommand, EachLookAndPartOfAFigureHasItsOption)
{
  using Options = app::FigureOptions;
  using app::ParameterLook;
  using app::RunsLook;
  const std::pair<std::function<void(Options&)>, std::vector<std::string>> all[] = {
      {[](Options& o) { o.runsLook = RunsLook::Bands; }, {"--quantiles"}},
      {[](Options& o) { o.runsLook = RunsLook::WholeBands; }, {"--whole-bands"}},
      {[](Options& o) { o.runsLook = RunsLook::Lines; }, {"--plain-lines"}},
      {[](Options& o) { o.parameterLook = ParameterLook::Densities; }, {"--density"}},
      {[](Options& o) { o.parameterLook = ParameterLook::Scatter; }, {"--scatter"}},
      {[](Options& o) { o.gates = false; }, {"--no-gates"}},
      {[](Options& o) { o.legend = false; }, {"--no-legend"}},
      {[](Options& o) { o.counts = false; }, {"--no-counts"}},
      {[](Options& o) { o.thresholds = false; }, {"--no-thresholds"}},
      {[](Options& o) { o.scaleBar = false; }, {"--no-scale-bar"}},
      {[](Options& o) { o.ground = false; }, {"--transparent"}},
      {[](Options& o) { o.palette = app::FigurePalette::ColourBlind; }, {"--palette", "colour-blind"}},
      {[](Options& o) { o.dpi = 72; }, {"--dpi", "72"}},
      {[](Options& o) { o.family = "Serif"; }, {"--font", "Serif"}},
      {[](Options& o) { o.fontSize = 9.5; }, {"--font-size", "9.5"}},
      {[](Options& o) { o.lineWidth = 1.5; }, {"--line-width", "1.5"}},
      {[](Options& o) { o.title = "T"; }, {"--title", "T"}}};
  for (auto const& [edit, wanted] : all) EXPECT_EQ(optionsBeside(edit), wanted) << wanted[0];
}

TEST(ShellCommand, NamesThatAFigureGivesByItselfAreLeftOut)
{
  app::Session session;
  session.gates = {{"Gate 1", gateOnA(0.0, 0.5), true}, {"Gate 2", gateOnA(0.0, 0.9), true}};
  auto const hasNames = [&] {
    const std::vector<std::string> words = app::figureCommand(session, {}, *lineScan(), "f.pdf");
    return std::find(words.begin(), words.end(), "--gate-name") != words.end();
  };
  EXPECT_FALSE(hasNames());
  session.gates[1].name = "late";
  EXPECT_TRUE(hasNames());
}

TEST(ShellCommand, WithoutGatesThereIsOnlyAPicture)
{
  app::Session session;
  session.path = "scan.csv";
  EXPECT_TRUE(app::rankCommand(session).empty());
  const std::string text = app::commandOf(session, {}, *lineScan());
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
  EXPECT_EQ(text.rfind("runsieve render scan.csv --figure", 0), 0u);
}

TEST_F(SessionScene, TheLinesOfADocumentMakeItsTableAndPicture)
{
  openData();
  makeWork();
  const std::string lines = app::commandOf(document);
  EXPECT_EQ(lines.rfind("runsieve rank ", 0), 0u);
  EXPECT_THAT(lines, testing::HasSubstr("\nrunsieve render "));
  EXPECT_THAT(lines, testing::HasSubstr(" --figure "));
  app::FigureOptions last;
  last.width = 85.0;
  last.runsLook = app::RunsLook::Bands;
  app::keepFigureOptions(last);
  const std::string next = app::commandOf(document);
  EXPECT_THAT(next, testing::HasSubstr(" --width-mm 85 ")) << "as the last figure";
  EXPECT_THAT(next, testing::Not(testing::HasSubstr("--quantiles"))) << "but what the window shows";
}

} // namespace
} // namespace runsieve::test
