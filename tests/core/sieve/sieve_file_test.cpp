#include <runsieve/core/sieve/SieveFile.h>

#include "support/TempFile.h"
#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/sieve/Fingerprint.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace runsieve::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

std::string const exampleFile = std::string(RUNSIEVE_SOURCE_DIR) + "/tests/core/sieve/v1/sieve.json";

void expectSame(SieveFile const& a, SieveFile const& b)
{
  EXPECT_EQ(a.program, b.program);
  EXPECT_EQ(a.gates, b.gates);
  EXPECT_EQ(a.join, b.join);
  EXPECT_EQ(a.thresholds, b.thresholds);
  EXPECT_EQ(a.read.time, b.read.time);
  EXPECT_EQ(a.read.run, b.read.run);
  EXPECT_EQ(a.read.parameters, b.read.parameters);
  EXPECT_EQ(a.read.outputs, b.read.outputs);
  EXPECT_EQ(a.read.ignore, b.read.ignore);
  EXPECT_EQ(a.read.missing, b.read.missing);
  EXPECT_EQ(a.read.names, b.read.names);
  EXPECT_EQ(a.read.decimal, b.read.decimal);
  EXPECT_EQ(a.read.delimiter, b.read.delimiter);
  EXPECT_EQ(a.read.dataset, b.read.dataset);
  EXPECT_EQ(a.read.parametersFile, b.read.parametersFile);
  EXPECT_EQ(a.read.exactTimes, b.read.exactTimes);
  EXPECT_EQ(a.fingerprint, b.fingerprint);
  EXPECT_EQ(a.counts.runs, b.counts.runs);
  EXPECT_EQ(a.counts.passing, b.counts.passing);
  EXPECT_EQ(a.counts.afterGate, b.counts.afterGate);
}

TEST(SieveFile, NamesGatesThatAreOffPathsAndTheWindowComeBack)
{
  SieveFile sieve;
  sieve.gates = {parseGate("A @ 1 in 2..3"), parseGate("B in ..5")};
  sieve.names = {"a \"name\"\n", ""};
  sieve.off = {{parseGate("never A in 9.."), "off", 1}, {parseGate("k is x, y"), "\xce\xb1", 3}};
  sieve.path = "../data/scan.csv";
  sieve.absolutePath = "/data/scan.csv";
  sieve.window = R"({"any":[1,2],"thing":"x"})";
  SieveFile const read = readSieve(toSieveText(sieve));
  EXPECT_EQ(read.gates, sieve.gates);
  EXPECT_EQ(read.names, sieve.names);
  ASSERT_EQ(read.off.size(), 2u);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(read.off[i].gate, sieve.off[i].gate);
    EXPECT_EQ(read.off[i].name, sieve.off[i].name);
    EXPECT_EQ(read.off[i].place, sieve.off[i].place);
  }
  EXPECT_EQ(read.path, sieve.path);
  EXPECT_EQ(read.absolutePath, sieve.absolutePath);
  EXPECT_EQ(read.window, sieve.window);
}

TEST(SieveFile, WithoutNamesHasNone)
{
  SieveFile sieve;
  sieve.gates = {parseGate("A @ 1 in 2..3")};
  std::string const text = toSieveText(sieve);
  for (char const* member : {"name", "gates_off", "path", "window"})
    EXPECT_EQ(text.find('"' + std::string(member) + '"'), std::string::npos) << member;
  EXPECT_THAT(readSieve(text).names, IsEmpty());
}

TEST(SieveFile, AWindowThatIsNoJsonIsNotWritten)
{
  SieveFile sieve;
  sieve.window = "{";
  EXPECT_THROW((void)toSieveText(sieve), std::invalid_argument);
}

TEST(SieveFile, OfTheFirstVersionIsReadForEver)
{
  SieveFile const sieve = loadSieve(exampleFile);
  EXPECT_EQ(sieve.program, "runsieve 0.9.0");
  std::vector<std::string> const gates = {"cI @ 1..2 in 2..inf",    "not ever cI @ 1.. in 0..0.5",
                                          "never cI in -inf..-1",   "crosses cI in 2.5..2.5",
                                          "max(cI) @ ..2 in 0..9",  "min(cI) in 0..9",
                                          "mean(cI) in 0..9",       "last(cI) in 0..9",
                                          "timeofmax(cI) in 1..2",  "timeofmin(cI) in 0..2",
                                          "strain is WT, \"a, b\"", "status complete, short",
                                          "runs WT_1, 1-3",         "cluster 0 of 2 (cI, phase)"};
  ASSERT_EQ(sieve.gates.size(), gates.size());
  for (std::size_t i = 0; i < gates.size(); ++i) EXPECT_EQ(sieve.gates[i], parseGate(gates[i])) << gates[i];
  EXPECT_EQ(sieve.join, GateJoin::Any);
  EXPECT_THAT(sieve.thresholds, ElementsAre(Pair("ks_threshold", 0.2), Pair("p_threshold", 0.01)));
  EXPECT_EQ(sieve.read.time, "t");
  EXPECT_EQ(sieve.read.run, "sim");
  ASSERT_TRUE(sieve.read.parameters);
  EXPECT_THAT(*sieve.read.parameters, ElementsAre("strain", "k1"));
  EXPECT_THAT(sieve.read.outputs, ElementsAre("cI"));
  EXPECT_THAT(sieve.read.ignore, ElementsAre("note"));
  EXPECT_THAT(sieve.read.missing, ElementsAre("NA"));
  EXPECT_THAT(sieve.read.names, ElementsAre("t", "sim", "cI"));
  EXPECT_EQ(sieve.read.decimal, ',');
  EXPECT_EQ(sieve.read.delimiter, ';');
  EXPECT_EQ(sieve.read.dataset, "/scan/values");
  EXPECT_EQ(sieve.read.parametersFile, "parameters.csv");
  EXPECT_TRUE(sieve.read.exactTimes);
  EXPECT_EQ(sieve.fingerprint, "0123456789abcdef");
  EXPECT_EQ(sieve.counts.runs, 4u);
  EXPECT_EQ(sieve.counts.passing, 3u);
  EXPECT_THAT(sieve.counts.afterGate, ElementsAre(1, 1, 2, 2, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3));
}

TEST(SieveFile, TheExampleOfTheGuideIsOne)
{
  std::string const guide = TempFolder::contentOf(std::string(RUNSIEVE_SOURCE_DIR) + "/docs/sieve_file.md");
  std::size_t const begin = guide.find("```json\n") + 8;
  SieveFile const sieve = readSieve(guide.substr(begin, guide.find("```", begin) - begin));
  ASSERT_EQ(sieve.gates.size(), 2u);
  EXPECT_EQ(sieve.gates[0], parseGate("Molecule: cI @ 30..60 in 3000..inf"));
  EXPECT_EQ(sieve.gates[1], parseGate("not strain is mut1"));
  EXPECT_EQ(sieve.read.time, "t");
  EXPECT_THAT(sieve.counts.afterGate, ElementsAre(346, 218));
}

TEST(SieveFile, ReadsBackWhatWasWritten)
{
  SieveFile const example = loadSieve(exampleFile);
  expectSame(readSieve(toSieveText(example)), example);
  expectSame(readSieve(toSieveText(SieveFile())), SieveFile());
  SieveFile sieve;
  sieve.read.parameters.emplace(); // none, other than not told
  sieve.thresholds["odd"] = std::numeric_limits<double>::infinity();
  sieve.thresholds["other"] = 0.1;
  sieve.program = "\"\\\n\xc3\xa4";
  expectSame(readSieve(toSieveText(sieve)), sieve);
}

TEST(SieveFile, KeepsTheMethodOfComparison)
{
  EXPECT_FALSE(loadSieve(exampleFile).method) << "files of this version may have none";
  SieveFile sieve;
  sieve.method.emplace();
  sieve.method->adjustment = Adjustment::BenjaminiHochberg;
  sieve.method->permutations = 5000;
  sieve.method->mostPermutations = 5000;
  sieve.method->seed = 18446744073709551615U;
  sieve.method->gatesTried = 12;
  const SieveFile copy = readSieve(toSieveText(sieve));
  ASSERT_TRUE(copy.method);
  EXPECT_EQ(copy.method->adjustment, Adjustment::BenjaminiHochberg);
  EXPECT_EQ(copy.method->permutations, 5000u);
  EXPECT_EQ(copy.method->mostPermutations, 5000u);
  EXPECT_EQ(copy.method->seed, 18446744073709551615U);
  EXPECT_EQ(copy.method->gatesTried, 12u);
}

TEST(SieveFile, IsWrittenInPlaceOfAFormerOne)
{
  const TempFolder folder;
  std::string const path = folder.write("former", "gates.sieve");
  SieveFile sieve = loadSieve(exampleFile);
  writeSieve(path, sieve);
  EXPECT_EQ(TempFolder::contentOf(path), toSieveText(sieve));
  expectSame(loadSieve(path), sieve);
  sieve.program = "\xff";
  EXPECT_THROW(writeSieve(path, sieve), std::invalid_argument);
  EXPECT_EQ(folder.fileCount(), 1u);
  EXPECT_THAT(loadSieve(path).program, "runsieve 0.9.0");
  EXPECT_THROW((void)loadSieve(folder.file("none")), ScanError);
  EXPECT_THROW((void)loadSieve(folder.write("", "empty")), ScanError);
}

std::string failure(std::string const& text)
{
  try {
    (void)readSieve(text, "a.sieve");
    return "read";
  } catch (ScanError const& error) {
    return error.what();
  }
}

/// Fails to read a sieve with these members, told without the name of the file.
std::string memberFailure(std::string const& members)
{
  return failure(R"({"format":"runsieve sieve","version":1,)" + members + "}");
}

TEST(SieveFile, HandWrittenGatesMayBeTextAlone)
{
  SieveFile const sieve = readSieve(
      R"({"format":"runsieve sieve","version":1,"gates":[{"text":"A @ 3 in 1.."}],"later":{"x":[1]}})");
  ASSERT_EQ(sieve.gates.size(), 1u);
  EXPECT_EQ(sieve.gates[0], parseGate("A @ 3 in 1.."));
  EXPECT_EQ(sieve.join, GateJoin::All);
}

TEST(SieveFile, SaysWhatIsWrongAndWhere)
{
  EXPECT_THAT(failure("{\n\"format\": \n}"), StartsWith("a.sieve:3: this is no JSON"));
  EXPECT_THAT(failure(""), StartsWith("a.sieve:1: this is no JSON"));
  EXPECT_THAT(failure("{\"a\":\"\xff\"}"), StartsWith("a.sieve:1: this is no JSON"));
  EXPECT_THAT(failure("[]"), HasSubstr("this is no sieve file: there is no \"format\": \"runsieve sieve\""));
  EXPECT_THAT(failure(R"({"format":"runsieve plot"})"), HasSubstr("this is no sieve file"));
  EXPECT_THAT(failure(R"({"format":"runsieve sieve"})"),
              HasSubstr("version: expected a whole number from 1 on"));
  EXPECT_THAT(failure(R"({"format":"runsieve sieve","version":0})"), HasSubstr("found \"0\""));
  EXPECT_THAT(failure(R"({"format":"runsieve sieve","version":1.5})"), HasSubstr("found \"1.5\""));
  EXPECT_EQ(failure(R"({"format":"runsieve sieve","version":2})"),
            "a.sieve: the sieve is of version 2, written by a newer program; this one reads 1");
  EXPECT_THAT(failure(R"({"format":"runsieve sieve","version":1})"), HasSubstr("there are no \"gates\""));
  EXPECT_EQ(memberFailure(R"("gates":3)"), "a.sieve: gates: expected a list, found \"3\"");
  EXPECT_THAT(memberFailure(R"("gates":[{"text":"A in 1..2"},{"kind":"ever"}])"),
              HasSubstr("gates[1]: gate as JSON: there is no \"column\""));
  EXPECT_THAT(memberFailure(R"("gates":[{"text":"A"}])"),
              HasSubstr("gates[0]: gate \"A\": there is no \"in\""));
  EXPECT_THAT(memberFailure(R"("gates":[],"join":"xor")"),
              HasSubstr("join: expected \"and\" or \"or\", found \"\"xor\"\""));
  EXPECT_THAT(memberFailure(R"("gates":[],"program":1)"), HasSubstr("program: expected a text, found \"1\""));
  EXPECT_THAT(memberFailure(R"("gates":[],"thresholds":[])"), HasSubstr("thresholds: expected an object"));
  EXPECT_THAT(memberFailure(R"("gates":[],"thresholds":{"p":"x"})"),
              HasSubstr("thresholds[\"p\"]: expected a number"));
  EXPECT_THAT(memberFailure(R"("gates":[],"read":1)"), HasSubstr("read: expected an object"));
  EXPECT_THAT(memberFailure(R"("gates":[],"method":[])"), HasSubstr("method: expected an object"));
  EXPECT_THAT(memberFailure(R"("gates":[],"method":{"adjust":"bonferroni"})"),
              HasSubstr("method.adjust: expected \"permutation\", \"holm\", \"bh\" or \"none\""));
  EXPECT_THAT(memberFailure(R"("gates":[],"method":{"permutations":-1})"),
              HasSubstr("method.permutations: expected a whole number"));
  EXPECT_THAT(memberFailure(R"("gates":[],"read":{"outputs":["A",2]})"),
              HasSubstr("read.outputs[1]: expected a text, found \"2\""));
  EXPECT_THAT(memberFailure(R"("gates":[],"read":{"decimal":",,"})"),
              HasSubstr("read.decimal: expected one character"));
  EXPECT_THAT(memberFailure(R"("gates":[],"read":{"exact_times":1})"),
              HasSubstr("read.exact_times: expected true or false"));
  EXPECT_THAT(memberFailure(R"("gates":[],"data":1)"), HasSubstr("data: expected an object"));
  EXPECT_THAT(memberFailure(R"("gates":[],"data":{"fingerprint":1})"),
              HasSubstr("data.fingerprint: expected"));
  EXPECT_THAT(memberFailure(R"("gates":[],"counts":{"runs":-1})"),
              HasSubstr("counts.runs: expected a whole number, found \"-1\""));
  EXPECT_THAT(memberFailure(R"("gates":[],"counts":{"after_gate":[1,2.5]})"),
              HasSubstr("counts.after_gate[1]: expected a whole number"));
  EXPECT_THAT(memberFailure(R"("gates":[],"x":1e999)"), HasSubstr("too large"));
}

TEST(SieveFile, HostileTextsAreRefusedSoon)
{
  EXPECT_THAT(failure(std::string(10000000, '[')), HasSubstr("nested too deeply"));
  EXPECT_THAT(failure(std::string(17000000, ' ')), HasSubstr("16 MiB at most"));
  std::string members;
  for (int i = 0; i < 500000; ++i) members += "\"" + std::to_string(i) + "\":0,";
  EXPECT_EQ(memberFailure(members + "\"gates\":[]"), "read") << "many members take no long time";
}

TEST(SieveFile, DamagedTextsAreReadOrRefused)
{
  std::string const whole = TempFolder::contentOf(exampleFile);
  int read = 0;
  for (unsigned seed = 0; seed < 3000; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::string text = whole;
    for (unsigned i = 1 + random() % 3; i > 0; --i) {
      std::size_t const position = random() % text.size();
      if (random() % 2 == 0)
        text.erase(position, 1 + random() % 20);
      else
        text[position] = static_cast<char>(random() % 2 == 0 ? random() % 256 : "[]{}\",:0"[random() % 8]);
    }
    std::string const message = failure(text);
    EXPECT_EQ(message.find('\n'), std::string::npos);
    read += message == "read" ? 1 : 0;
  }
  EXPECT_GT(read, 100);
  EXPECT_LT(read, 2900);
}

/// Output "A" of four runs.
Scan fourRuns()
{
  Scan scan;
  scan.times = {0, 1};
  for (char const* key : {"1", "2", "3", "4"}) {
    ScanRun run;
    run.key = key;
    scan.runs.push_back(run);
  }
  ColumnLabel label;
  label.name = "A";
  double const values[] = {1, 1, 1, 2, 2, 2, 3, 3};
  std::copy(std::begin(values), std::end(values), scan.addOutput(label));
  return scan;
}

SieveFile sieveOf(Scan const& scan, std::vector<std::string> const& gates)
{
  SieveFile sieve;
  for (std::string const& gate : gates) sieve.gates.push_back(parseGate(gate));
  sieve.counts = countsOf(applyGates(sieve.gates, scan));
  sieve.fingerprint = fingerprintOf(scan);
  return sieve;
}

TEST(SieveFile, CountsWhatItsGatesLeave)
{
  SieveFile const sieve = sieveOf(fourRuns(), {"A @ 0 in 1..2", "A @ 1 in 2.."});
  EXPECT_EQ(sieve.counts.runs, 4u);
  EXPECT_EQ(sieve.counts.passing, 2u);
  EXPECT_THAT(sieve.counts.afterGate, ElementsAre(3, 2));
}

TEST(SieveFile, TellsHowAScanDiffersFromItsOwn)
{
  Scan scan = fourRuns();
  SieveFile sieve = sieveOf(scan, {"A @ 0 in 1..2", "A @ 1 in 2.."});
  EXPECT_THAT(compareWith(sieve, scan), IsEmpty());
  scan.outputs[0].values[0] = 5;
  std::string const fingerprints = "the data differ: their fingerprint is " + fingerprintOf(scan) +
                                   ", that of the sieve " + sieve.fingerprint;
  EXPECT_THAT(compareWith(sieve, scan),
              ElementsAre(fingerprints, "after gate 1, A @ 0 in 1..2, 2 runs are left; there were 3"));
  scan.outputs[0].values[2] = 5;
  EXPECT_THAT(
      compareWith(sieve, scan),
      ElementsAre(HasSubstr("fingerprint"), "after gate 1, A @ 0 in 1..2, 1 runs are left; there were 3",
                  "after gate 2, A @ 1 in 2..inf, 1 runs are left; there were 2", "1 runs pass; 2 did"));
  EXPECT_EQ(compareWith(sieve, scan, applyGates(sieve.gates, scan, sieve.join)), compareWith(sieve, scan));
  sieve.counts = SieveCounts();
  EXPECT_THAT(compareWith(sieve, scan), ElementsAre(HasSubstr("fingerprint"))) << "nothing was counted";
  sieve.fingerprint.clear();
  EXPECT_THAT(compareWith(sieve, scan), IsEmpty());
}

TEST(MergedOptions, TakeFromTheSieveWhatIsNotSet)
{
  ReadOptions sieve;
  sieve.time = "t";
  sieve.run = "id";
  sieve.parameters = std::vector<std::string>{"k"};
  sieve.decimal = ',';
  sieve.parametersFile = "doses.csv";
  sieve.exactTimes = true;
  ReadOptions own;
  own.run = "run";
  own.parameters = std::vector<std::string>{};
  own.missing = {"-"};
  ReadOptions const merged = mergedOptions(own, sieve);
  EXPECT_EQ(merged.time, "t");
  EXPECT_EQ(merged.run, "run");
  EXPECT_EQ(merged.parameters, std::vector<std::string>{}) << "none is a choice too";
  EXPECT_EQ(merged.missing, std::vector<std::string>{"-"});
  EXPECT_EQ(merged.decimal, ',');
  EXPECT_EQ(merged.parametersFile, "doses.csv");
  EXPECT_TRUE(merged.exactTimes);
}

TEST(SieveFile, WithoutTheNumberOfPassingRunsItIsNotCompared)
{
  Scan const scan = fourRuns();
  SieveFile const sieve = readSieve(R"({"format": "runsieve sieve", "version": 1,
      "gates": [{"text": "A @ 0 in 1..2"}], "counts": {"runs": 4}})");
  EXPECT_FALSE(sieve.counts.passing.has_value());
  EXPECT_THAT(compareWith(sieve, scan), IsEmpty());
  EXPECT_FALSE(readSieve(toSieveText(sieve)).counts.passing.has_value());
}

TEST(SieveFile, TellsOfGatesThatDoNotFit)
{
  Scan const scan = fourRuns();
  SieveFile sieve = sieveOf(scan, {});
  sieve.counts.runs = 5;
  sieve.gates = {parseGate("B in 1..2")};
  EXPECT_THAT(compareWith(sieve, scan), ElementsAre("the scan has 4 runs; it had 5", HasSubstr("\"B\"")));
  sieve = sieveOf(scan, {"A in .."});
  sieve.gates = {parseGate("cluster 0 of 2 (A)")};
  EXPECT_THAT(compareWith(sieve, scan), ElementsAre(HasSubstr("clusters are not available here")));
  GateContext context;
  context.clusters = [](auto&&...) { return std::vector<int>(4, 0); };
  EXPECT_THAT(compareWith(sieve, scan, context), IsEmpty());
}

} // namespace
} // namespace runsieve::test
