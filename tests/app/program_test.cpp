#include "ProgramRun.h"
#include "support/ShapedScan.h"
#include "support/TableFile.h"
#include "support/TempFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace runsieve::test {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

/// The program as a process, with a scan of three shapes.
struct Program : testing::Test
{
  TempFolder folder;
  ShapedScan shaped;
  std::string scan = folder.file("scan.csv");

  Program() { writeTable(shaped.scan, scan); }

  static void expectSuccess(Ended const& ended)
  {
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.err, "");
  }

  /// One line on standard error, which tells what is wrong, and nothing on standard output.
  static void expectComplaint(Ended const& ended, int status, std::string const& about)
  {
    EXPECT_EQ(ended.status, status) << ended.err;
    EXPECT_EQ(ended.out, "");
    EXPECT_THAT(ended.err, AllOf(StartsWith("runsieve: "), HasSubstr(about), EndsWith("\n")));
    EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1) << ended.err;
  }
};

TEST_F(Program, HelpAndVersionGoToStandardOutput)
{
  for (std::vector<std::string> const& words :
       {std::vector<std::string>{"--help"}, {"-h"}, {"rank", "--help"}, {"cluster", "-h"}}) {
    const Ended ended = runProgram(words);
    expectSuccess(ended);
    EXPECT_THAT(ended.out, HasSubstr("Example:\n  runsieve ")) << words.front();
  }
  const Ended version = runProgram({"--version"});
  expectSuccess(version);
  EXPECT_THAT(version.out, MatchesRegex("runsieve [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(Program, EachCommandThatDoesItsWorkEndsWithStatusZero)
{
  const std::string stored = folder.file("plot.rsd");
  const std::string picture = folder.file("view.png");
  const Ended info = runProgram({"info", scan});
  expectSuccess(info);
  EXPECT_THAT(info.out, HasSubstr("runs       60\n"));
  const Ended rank = runProgram({"rank", scan, "--gate", "A @ 16 in 0..4"});
  expectSuccess(rank);
  EXPECT_THAT(rank.out, AllOf(HasSubstr(" of 60 runs pass\n"), HasSubstr("parameter ")));
  const Ended cluster = runProgram({"cluster", scan, "-k", "3"});
  expectSuccess(cluster);
  EXPECT_THAT(cluster.out, StartsWith("run,cluster\n0,"));
  const Ended convert = runProgram({"convert", scan, stored, "--gate", "A @ 16 in 0..4"});
  expectSuccess(convert);
  EXPECT_EQ(convert.out, "");
  EXPECT_EQ(runProgram({"rank", stored}).out, rank.out) << "the file keeps the gate";
  const Ended render = runProgram({"render", scan, "-o", picture, "--width", "200", "--height", "150"});
  expectSuccess(render);
  EXPECT_EQ(render.out, "");
  EXPECT_THAT(TempFolder::contentOf(picture), StartsWith("\x89PNG"));
}

TEST_F(Program, AScanOnStandardOutputStandsThereAlone)
{
  const Ended ended = runProgram({"simulate", "--runs", "3", "--times", "4", "--seed", "5", "-o", "-"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.err, HasSubstr("3 runs x 4 times, 14 parameters, seed 5\n")) << "the report";
  const auto read = readScanTable(folder.write(ended.out, "simulated.csv"));
  EXPECT_EQ(read->trajectoryCount, 3u);
  EXPECT_EQ(read->trajectoryLength, 4u);

  const std::string file = folder.file("file.csv");
  const Ended toFile = runProgram({"simulate", "--runs", "3", "--times", "4", "--seed", "5", "-o", file});
  expectSuccess(toFile);
  EXPECT_THAT(toFile.out, AllOf(HasSubstr("seed 5\n"), EndsWith("written to " + file + "\n")));
  EXPECT_EQ(TempFolder::contentOf(file), ended.out);
}

TEST_F(Program, NotesGoToStandardErrorUnlessATableIsForPeople)
{
  const std::vector<std::string> words = {"rank", scan, "--gate", "A @ 16.1 in 0..4", "--format"};
  auto as = [&words](std::string const& format) {
    std::vector<std::string> all = words;
    all.push_back(format);
    return runProgram(all);
  };
  const Ended table = as("table");
  expectSuccess(table);
  EXPECT_THAT(table.out, HasSubstr("16.1 -> 16"));
  for (std::string const format : {"csv", "json"}) {
    const Ended ended = as(format);
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.err, AllOf(StartsWith("runsieve: "), HasSubstr("16.1 -> 16")));
  }
  EXPECT_THAT(as("csv").out, StartsWith("parameter,n_passing,"));
}

TEST_F(Program, WorkThatFailsEndsWithStatusOne)
{
  const std::string missing = folder.file("missing.csv");
  for (std::string const command : {"info", "cluster"})
    expectComplaint(runProgram({command, missing}), 1, "missing.csv: no such file");
  expectComplaint(runProgram({"rank", missing, "--gate", "A @ 16 in 0..4"}), 1, "missing.csv: no such file");
  expectComplaint(runProgram({"render", missing, "-o", folder.file("view.png")}), 1, "no such file");
  expectComplaint(runProgram({"convert", missing, folder.file("plot.rsd")}), 1, "no such file");

  const std::string text = TempFolder::contentOf(scan);
  const std::string cut = folder.write(text.substr(0, text.size() / 2), "cut.csv");
  expectComplaint(runProgram({"info", cut}), 1, "cut.csv:");

  const std::string plot = folder.file("plot.rsd");
  ASSERT_EQ(runProgram({"convert", scan, plot}).status, 0);
  std::string damaged = TempFolder::contentOf(plot);
  damaged[damaged.size() / 2] ^= 1;
  expectComplaint(runProgram({"info", folder.write(damaged, "bad.rsd")}), 1, "bad.rsd: the file is damaged");

  expectComplaint(runProgram({"rank", scan, "--gate", "A @ 16 in 1000..2000"}), 1, "no run passes");
  expectComplaint(runProgram({"rank", scan, "--gate", "Z @ 16 in 0..4"}), 1, "Z");
  expectComplaint(runProgram({"simulate", "-o", folder.file("none/scan.csv")}), 1, "cannot be written");
}

TEST_F(Program, BadUsageEndsWithStatusTwo)
{
  expectComplaint(runProgram({"info", scan, "--nonsense"}), 2, "--nonsense");
  expectComplaint(runProgram({"--nonsense"}), 2, "--nonsense");
  expectComplaint(runProgram({"info"}), 2, "file");
  expectComplaint(runProgram({"nonsense", scan}), 2, scan);
  expectComplaint(runProgram({"rank", scan}), 2, "--gate");
  expectComplaint(runProgram({"rank", scan, "--gate", "A 16"}), 2, "there is no \"in\"");
  expectComplaint(runProgram({"rank", scan, "--gate", "A @ 16 in 0..4", "--format", "xml"}), 2, "xml");
  expectComplaint(runProgram({"simulate", "perpetuum", "-o", "-"}), 2, "perpetuum");
  expectComplaint(runProgram({"simulate"}), 2, "-o is required");
  expectComplaint(runProgram({"convert", scan, folder.file("plot.txt")}), 2, ".rsd");
  expectComplaint(runProgram({"cluster", scan, "-o", scan}), 2, "the file that is read");
  EXPECT_EQ(folder.fileCount(), 1u) << "none has written a file";
}

TEST_F(Program, AStoredPlotWithoutASelectionNeedsAGate)
{
  const std::string plot = folder.file("plot.rsd");
  ASSERT_EQ(runProgram({"convert", scan, plot}).status, 0);
  expectComplaint(runProgram({"rank", plot}), 2, "--gate is required");
}

TEST_F(Program, WithoutADisplayTheExplorerSaysSo)
{
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (char const* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) environment.remove(name);
  process.setProcessEnvironment(environment);
  expectComplaint(runProcess(process, programPath(), {QString::fromStdString(scan)}), 1, "no display");
}

TEST_F(Program, StandardOutputThatIsFullIsAFailure)
{
  QProcess process;
  process.setStandardOutputFile("/dev/full");
  expectComplaint(runProcess(process, programPath(), {"info", QString::fromStdString(scan)}), 1,
                  "standard output cannot be written");
}

TEST_F(Program, AReaderThatHasWhatItWantsIsNoFailure)
{
  const QString status = QString::fromStdString(folder.file("status"));
  QProcess shell;
  const Ended ended = runProcess(
      shell, "/bin/sh",
      {"-c", R"({ "$0" simulate --runs 500 --seed 1 -o - 2>/dev/null; echo $? >"$1"; } | head -n 1)",
       programPath(), status});
  EXPECT_THAT(ended.out, StartsWith("\"Molecule: LacI\""));
  EXPECT_EQ(std::count(ended.out.begin(), ended.out.end(), '\n'), 1);
  EXPECT_EQ(TempFolder::contentOf(status.toStdString()), "0\n");
  EXPECT_EQ(ended.err, "");
}

} // namespace
} // namespace runsieve::test
