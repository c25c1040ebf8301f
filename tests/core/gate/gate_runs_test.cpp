#include <runsieve/core/gate/GateRuns.h>

#include <runsieve/core/gate/GateRows.h>
#include <runsieve/core/gate/GateText.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>

namespace runsieve::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

using Curves = std::vector<std::vector<double>>;
using Positions = std::vector<std::size_t>;

ColumnLabel labelOf(std::string const& name, std::string const& type = "")
{
  ColumnLabel label;
  label.name = name;
  label.type = type;
  return label;
}

/// A scan of one output "A", keys "1", "2", ...
Scan scanOf(std::vector<double> times, Curves const& curves)
{
  Scan scan;
  scan.times = std::move(times);
  for (std::size_t run = 0; run < curves.size(); ++run) {
    ScanRun what;
    what.key = std::to_string(run + 1);
    scan.runs.push_back(what);
  }
  double* to = scan.addOutput(labelOf("A", "Molecule"));
  for (auto const& curve : curves) to = std::copy(curve.begin(), curve.end(), to);
  return scan;
}

void addOutput(Scan& scan, ColumnLabel label)
{
  std::fill_n(scan.addOutput(std::move(label)), scan.rows(), 0.0);
}

void addParameter(Scan& scan, std::string const& name, std::vector<double> values,
                  std::vector<std::string> texts = {})
{
  scan.parameters.push_back({labelOf(name), std::move(values), std::move(texts)});
}

Positions passing(Scan const& scan, std::string const& gate, GateContext const& context = {})
{
  return runsThrough(resolveGate(parseGate(gate), scan), scan, context).members();
}

template <class Work> std::string messageOf(Work const& work)
{
  try {
    work();
    return "nothing";
  } catch (GateError const& error) {
    return error.what();
  }
}

std::string failure(Scan const& scan, std::string const& gate, GateContext const& context = {})
{
  return messageOf([&] { (void)passing(scan, gate, context); });
}

std::vector<Gate> gatesOf(std::vector<std::string> const& texts)
{
  std::vector<Gate> gates;
  for (auto const& text : texts) gates.push_back(parseGate(text));
  return gates;
}

Scan fourTimes()
{
  return scanOf({0, 1, 2, 3}, {{0, 1, 2, 3}, {3, 2, 1, 0}});
}

ResolvedGate resolve(std::string const& text, Scan const& scan)
{
  return resolveGate(parseGate(text), scan);
}

// Times.

TEST(ResolvedGate, ATimeMovesToTheGridAndIsTold)
{
  Scan const scan = fourTimes();
  EXPECT_EQ(resolve("A @ 2 in 0..1", scan).note, "");
  ResolvedGate const near = resolve("A @ 2.03 in 0..1", scan);
  EXPECT_EQ(near.first, 2u);
  EXPECT_EQ(near.last, 2u);
  EXPECT_EQ(near.note, "time 2.03 -> 2");
  EXPECT_EQ(near.text(), "Molecule: A @ 2 in 0..1");
  EXPECT_EQ(resolve("A @ 1.5 in 0..1", scan).first, 1u) << "the earlier of two";
  EXPECT_EQ(resolve("A @ 1.500001 in 0..1", scan).first, 2u);
}

TEST(ResolvedGate, ASpanTakesTheGridTimesInside)
{
  Scan const scan = fourTimes();
  ResolvedGate const exact = resolve("A @ 1..2 in 0..1", scan);
  EXPECT_EQ(exact.first, 1u);
  EXPECT_EQ(exact.last, 2u);
  EXPECT_EQ(exact.note, "");
  EXPECT_EQ(resolve("A @ 0.5..2.9 in 0..1", scan).note, "time 0.5..2.9 -> 1..2");
  ResolvedGate const empty = resolve("A @ 1.6..1.8 in 0..1", scan);
  EXPECT_EQ(empty.first, 2u);
  EXPECT_EQ(empty.last, 2u);
  EXPECT_EQ(empty.note, "time 1.6..1.8 -> 2");
}

TEST(ResolvedGate, OpenEndsAreThoseOfTheScan)
{
  Scan const scan = fourTimes();
  ResolvedGate const from = resolve("max(A) @ 1.5.. in 0..1", scan);
  EXPECT_EQ(from.first, 2u);
  EXPECT_EQ(from.last, 3u);
  EXPECT_EQ(from.note, "time 1.5.. -> 2..");
  EXPECT_EQ(from.text(), "max(Molecule: A) @ 2.. in 0..1");
  ResolvedGate const to = resolve("ever A @ ..1 in 0..1", scan);
  EXPECT_EQ(to.first, 0u);
  EXPECT_EQ(to.last, 1u);
  EXPECT_EQ(to.note, "");
  for (char const* text : {"A in 0..1", "A @ .. in 0..1"}) {
    EXPECT_EQ(resolve(text, scan).first, 0u);
    EXPECT_EQ(resolve(text, scan).last, 3u);
    EXPECT_EQ(resolve(text, scan).note, "");
  }
}

TEST(ResolvedGate, TypedDecimalsMeetComputedTimes)
{
  Scan scan = fourTimes();
  for (int i = 0; i < 4; ++i) scan.times[i] = 0.1 * i; // 0.30000000000000004
  EXPECT_EQ(resolve("A @ 0.2..0.3 in 0..1", scan).last, 3u);
  EXPECT_EQ(resolve("A @ 0.3 in 0..1", scan).note, "");
  EXPECT_THAT(passing(scan, "timeofmax(A) in 0.2..0.3"), ElementsAre(0)) << "times of extremes too";
  EXPECT_THAT(passing(scan, "crosses A @ 0.3 in 3..3"), ElementsAre(0)) << "and ends of lines";
}

TEST(ResolvedGate, TimesOutsideOfTheScanAreRefused)
{
  Scan const scan = fourTimes();
  EXPECT_EQ(failure(scan, "A @ 99 in 0..1"),
            "gate \"Molecule: A @ 99 in 0..1\": the time 99 lies outside of the scan, whose times are 0..3");
  for (char const* text : {"A @ -1 in 0..1", "A @ 2..3.1 in 0..1", "A @ -0.1..2 in 0..1", "A @ 4.. in 0..1",
                           "A @ ..-1 in 0..1", "crosses A @ 2..4 in 0..1"})
    EXPECT_THAT(failure(scan, text), HasSubstr("lies outside of the scan, whose times are 0..3")) << text;
  EXPECT_EQ(failure(scan, "A @ 0..3.0000000001 in 0..1"), "nothing") << "but for rounding";
}

TEST(ResolvedGate, AScanOfOneTimeHasIt)
{
  Scan const scan = scanOf({5}, {{1}, {2}});
  for (char const* text : {"A @ 5 in 2..3", "A in 2..3", "crosses A @ 5 in 2..3", "crosses A in 2..3"})
    EXPECT_THAT(passing(scan, text), ElementsAre(1)) << text;
  EXPECT_THAT(failure(scan, "A @ 6 in 2..3"), HasSubstr("whose times are 5..5"));
}

TEST(ResolvedGate, ExtremeTimesAreTimesToo)
{
  Scan const scan = scanOf({-1.7e308, 0, 1.7e308}, {{1, 2, 3}, {3, 2, 1}});
  EXPECT_THAT(passing(scan, "A @ 1e308..1.7e308 in 3..3"), ElementsAre(0));
  EXPECT_THAT(passing(scan, "crosses A @ 0.85e308..1.7e308 in 2.5..2.6"), ElementsAre(0));
  EXPECT_EQ(resolve("A @ 1e307 in 3..3", scan).first, 1u);
  Scan const uneven = scanOf({0, 1e-12, 2e-12, 1}, {{1, 2, 3, 4}});
  for (char const* text : {"crosses A @ 1e-12 in 0..9", "A @ 1e-12 in 0..9", "crosses A @ 1 in 0..9"})
    EXPECT_THAT(passing(uneven, text), ElementsAre(0)) << text;
}

// Names.

TEST(ResolvedGate, FindsColumnsByFullAndBareName)
{
  Scan scan = fourTimes();
  addOutput(scan, labelOf("B", "Molecule"));
  addParameter(scan, "k1", {1, 2});
  EXPECT_EQ(resolve("B in 0..1", scan).column, 1u);
  EXPECT_EQ(resolve("Molecule: B in 0..1", scan).text(), "Molecule: B in 0..1");
  EXPECT_EQ(failure(scan, "C @ 1 in 0..1"),
            "the scan has no output \"C\"; there are \"Molecule: A\", \"Molecule: B\"");
  EXPECT_EQ(
      failure(scan, "k1 @ 1 in 0..1"),
      "the scan has no output \"k1\"; it is a parameter, which has no times: write \"k1\" in LOW..HIGH");
  EXPECT_THAT(failure(scan, "max(k1) in 0..1"), HasSubstr("it is a parameter"));
  EXPECT_EQ(failure(scan, "C in 0..1"), "the scan has neither an output nor a parameter \"C\"; outputs are "
                                        "\"Molecule: A\", \"Molecule: B\", parameters \"k1\"");
  EXPECT_EQ(failure(scan, "k2 is 1"), "the scan has no parameter \"k2\"; there are \"k1\"");
  EXPECT_THAT(failure(scan, "A is 1"), HasSubstr("\"A\" is an output: write \"A\" @ TIME in LOW..HIGH"));
  addOutput(scan, labelOf("A", "Complex"));
  EXPECT_EQ(failure(scan, "A @ 1 in 0..1"),
            "the output \"A\" could be \"Molecule: A\", \"Complex: A\"; give the full name");
  EXPECT_EQ(resolve("Complex: A @ 1 in 0..1", scan).column, 2u);
  EXPECT_EQ(failure(fourTimes(), "k is 1"), "the scan has no parameter \"k\"; it has no parameters");
}

TEST(ResolvedGate, OfManyOutputsTheFirstTwentyAreNamed)
{
  Scan scan = fourTimes();
  for (int i = 0; i < 20; ++i) addOutput(scan, labelOf("o" + std::to_string(i)));
  EXPECT_THAT(failure(scan, "none @ 1 in 0..1"),
              AllOf(HasSubstr("\"o18\" and 1 more"), Not(HasSubstr("o19"))));
}

TEST(ResolvedGate, OneNameOfAnOutputAndAParameterIsAsked)
{
  Scan scan = fourTimes();
  addOutput(scan, labelOf("k1"));
  addParameter(scan, "k1", {1, 2});
  EXPECT_EQ(failure(scan, "k1 in 0..1"),
            "\"k1\" is an output and a parameter; write \"k1 @ .. in LOW..HIGH\" for the output, "
            "\"Parameter: k1 in LOW..HIGH\" for the parameter");
  EXPECT_EQ(resolve("k1 @ .. in 0..1", scan).target, GateTarget::Output);
  EXPECT_EQ(resolve("max(k1) in 0..1", scan).target, GateTarget::Output);
  ResolvedGate const parameter = resolve("Parameter: k1 in 0..1", scan);
  EXPECT_EQ(parameter.target, GateTarget::Parameter);
  EXPECT_EQ(parameter.text(), "Parameter: k1 in 0..1");
  EXPECT_EQ(resolve("k1 is 2", scan).text(), "Parameter: k1 is 2");
}

TEST(ResolvedGate, NamesThatBeginLikeGatesAreToBeQuoted)
{
  Scan scan = scanOf({0, 1}, {{1, 2}});
  for (char const* name : {"never A", "not never A", "max(B)", "not C"}) addOutput(scan, labelOf(name));
  scan.outputs.front().label = labelOf("X");
  EXPECT_THAT(failure(scan, "never A in 0..1"),
              HasSubstr("; the name \"never A\" is written in double quotes"));
  EXPECT_THAT(failure(scan, "not never A in 0..1"), HasSubstr("\"not never A\" is written in double quotes"));
  EXPECT_THAT(failure(scan, "max(B) in 0..1"), HasSubstr("\"max(B)\" is written in double quotes"));
  EXPECT_THAT(failure(scan, "not C in 0..1"), HasSubstr("\"not C\" is written in double quotes"));
  EXPECT_THAT(failure(scan, "ever A in 0..1"), Not(HasSubstr("quotes")));
  EXPECT_EQ(resolve("\"max(B)\" in 0..1", scan).column, 3u);
}

TEST(ResolvedGate, UnknownWordsAroundANameAreAnsweredWithThoseThatThereAre)
{
  Scan const scan = fourTimes();
  EXPECT_THAT(failure(scan, "median(A) in 0..1"),
              HasSubstr("; functions are max, min, mean, last, timeofmax, timeofmin"));
  EXPECT_THAT(failure(scan, "sometimes A in 0..1"),
              HasSubstr("; words before a name are not, ever, never, crosses"));
  EXPECT_THAT(failure(scan, "sometimes A @ 1 in 0..1"),
              HasSubstr("; words before a name are not, ever, never, crosses"));
  EXPECT_THAT(failure(scan, "median(Z) in 0..1"), Not(HasSubstr("functions are")));
  EXPECT_THAT(failure(scan, "some Z in 0..1"), Not(HasSubstr("words before")));
}

TEST(ResolvedGate, RefusesReversedRanges)
{
  Scan const scan = fourTimes();
  EXPECT_EQ(failure(scan, "A @ 1 in 5..2"),
            "gate \"A @ 1 in 5..2\": the value range is empty, since 5 lies above 2");
  EXPECT_THAT(failure(scan, "A @ 2..1 in 2..5"), HasSubstr("the time span is empty, since 2 lies behind 1"));
  Gate gate = parseGate("A @ 1 in 1..2");
  gate.range.low = nan;
  EXPECT_THROW((void)resolveGate(gate, scan), GateError);
  gate = parseGate("A @ 1 in 1..2");
  gate.span->first = nan;
  EXPECT_THAT(messageOf([&] { (void)resolveGate(gate, scan); }), HasSubstr("a time must be finite"));
  gate.kind = GateKind::Is;
  EXPECT_THAT(messageOf([&] { (void)resolveGate(gate, scan); }), HasSubstr("lists no values"));
  gate.kind = GateKind::Status;
  EXPECT_THAT(messageOf([&] { (void)resolveGate(gate, scan); }), HasSubstr("lists none"));
  gate.kind = GateKind::Runs;
  EXPECT_THAT(messageOf([&] { (void)resolveGate(gate, scan); }), HasSubstr("lists none"));
}

// What passes.

TEST(GateRuns, SamplesOfTheSpanDecide)
{
  Scan const scan = scanOf({0, 1, 2}, {{1, 2, 3}, {2, 2, 2}, {9, 9, 9}, {3, 1, 9}});
  EXPECT_THAT(passing(scan, "A in 1..3"), ElementsAre(0, 1)) << "both ends belong to the range";
  EXPECT_THAT(passing(scan, "A @ 1 in 1..2"), ElementsAre(0, 1, 3));
  EXPECT_THAT(passing(scan, "ever A in 1..2"), ElementsAre(0, 1, 3));
  EXPECT_THAT(passing(scan, "ever A @ 2 in 9.."), ElementsAre(2, 3));
  EXPECT_THAT(passing(scan, "never A in 1..2"), ElementsAre(2));
  EXPECT_THAT(passing(scan, "not A in 1..3"), ElementsAre(2, 3));
  EXPECT_THAT(passing(scan, "not never A in 1..2"), ElementsAre(0, 1, 3));
}

TEST(GateRuns, FunctionsTakeTheSamplesOfTheSpan)
{
  Scan const scan = scanOf({10, 11, 12}, {{1, 2, 6}, {2, 2, 2}, {9, 4, 9}});
  EXPECT_THAT(passing(scan, "max(A) in 6.."), ElementsAre(0, 2));
  EXPECT_THAT(passing(scan, "max(A) @ ..11 in 9.."), ElementsAre(2));
  EXPECT_THAT(passing(scan, "min(A) in 2..4"), ElementsAre(1, 2));
  EXPECT_THAT(passing(scan, "mean(A) in 2..3"), ElementsAre(0, 1));
  EXPECT_THAT(passing(scan, "mean(A) @ ..11 in 1.5..1.5"), ElementsAre(0));
  EXPECT_THAT(passing(scan, "last(A) in 9..9"), ElementsAre(2));
  EXPECT_THAT(passing(scan, "last(A) @ ..11 in 2..2"), ElementsAre(0, 1));
  EXPECT_THAT(passing(scan, "timeofmax(A) in 10..10"), ElementsAre(1, 2)) << "the first of several";
  EXPECT_THAT(passing(scan, "timeofmax(A) @ 11.. in 12..12"), ElementsAre(0, 2));
  EXPECT_THAT(passing(scan, "timeofmin(A) in 11..12"), ElementsAre(2));
}

TEST(GateRuns, LinesCrossBetweenSamples)
{
  Scan const scan = scanOf({0, 10, 20}, {{0, 10, 0}, {4, 4, 4}, {5, 0, 0}});
  EXPECT_THAT(passing(scan, "crosses A in 5..5"), ElementsAre(0, 2));
  EXPECT_THAT(passing(scan, "ever A in 4.5..4.5"), IsEmpty()) << "samples alone are elsewhere";
  EXPECT_THAT(passing(scan, "crosses A @ 1..4 in 3..4"), ElementsAre(0, 1, 2));
  EXPECT_THAT(passing(scan, "crosses A @ 1..2 in 3..4.1"), ElementsAre(1, 2)) << "between two grid times";
  EXPECT_THAT(passing(scan, "crosses A @ 4 in 4..4"), ElementsAre(0, 1)) << "at one moment";
  EXPECT_THAT(passing(scan, "crosses A @ 5..15 in ..4.9"), ElementsAre(1, 2));
  EXPECT_THAT(passing(scan, "crosses A @ 5..15.5 in ..4.9"), ElementsAre(0, 1, 2));
  EXPECT_THAT(passing(scan, "crosses A @ 10.. in 9..20"), ElementsAre(0));
  EXPECT_THAT(passing(scan, "crosses A in 11.."), IsEmpty());
  EXPECT_EQ(resolve("crosses A @ 4..12 in 4..4", scan).note, "") << "nothing is moved";
  EXPECT_THAT(passing(scan, "not crosses A in 5..5"), ElementsAre(1));
}

TEST(GateRuns, WhatIsMissingLiesInNoRange)
{
  Scan const scan = scanOf({0, 1, 2}, {{1, nan, 1}, {1, 5, nan}, {nan, nan, nan}, {1, 1, 1}});
  EXPECT_THAT(passing(scan, "A in .."), ElementsAre(3));
  EXPECT_THAT(passing(scan, "A @ 0 in .."), ElementsAre(0, 1, 3));
  EXPECT_THAT(passing(scan, "ever A in 1..1"), ElementsAre(0, 1, 3));
  EXPECT_THAT(passing(scan, "never A in 5..5"), ElementsAre(0, 2, 3));
  EXPECT_THAT(passing(scan, "max(A) in ..1"), ElementsAre(0, 3));
  EXPECT_THAT(passing(scan, "min(A) in .."), ElementsAre(0, 1, 3)) << "a run without samples has no smallest";
  EXPECT_THAT(passing(scan, "mean(A) in 3..3"), ElementsAre(1));
  EXPECT_THAT(passing(scan, "mean(A) in .."), ElementsAre(0, 1, 3));
  EXPECT_THAT(passing(scan, "last(A) in 5..5"), ElementsAre(1)) << "its last value is earlier";
  EXPECT_THAT(passing(scan, "last(A) @ 2 in .."), ElementsAre(0, 3));
  EXPECT_THAT(passing(scan, "timeofmax(A) in 0..2"), ElementsAre(0, 1, 3));
  EXPECT_THAT(passing(scan, "not max(A) in .."), ElementsAre(2)) << "all that don't pass";
  EXPECT_THAT(passing(scan, "not A in .."), ElementsAre(0, 1, 2));
  EXPECT_THAT(passing(scan, "crosses A in 3..3"), ElementsAre(1));
  EXPECT_THAT(passing(scan, "crosses A @ 1.. in .."), ElementsAre(0, 1, 3));
  EXPECT_THAT(passing(scan, "crosses A @ 0.5..0.6 in .."), ElementsAre(1, 3)) << "no line, no sample";
}

TEST(GateRuns, InfiniteSamplesAreSamples)
{
  Scan const scan = scanOf({0, 1}, {{infinity, 0}, {-infinity, infinity}, {0, -infinity}});
  EXPECT_THAT(passing(scan, "ever A in 1.."), ElementsAre(0, 1));
  EXPECT_THAT(passing(scan, "max(A) in inf..inf"), ElementsAre(0, 1));
  EXPECT_THAT(passing(scan, "min(A) in -inf..-inf"), ElementsAre(1, 2));
  EXPECT_THAT(passing(scan, "mean(A) in .."), ElementsAre(0, 2)) << "of both infinities there is none";
  EXPECT_THAT(passing(scan, "crosses A in 1..2"), IsEmpty()) << "no line leads to infinity";
  EXPECT_THAT(passing(scan, "crosses A in 0..inf"), ElementsAre(0, 1, 2));
}

TEST(GateRuns, HugeSamplesHaveAMean)
{
  Scan const scan = scanOf({0, 1, 2}, {{1.5e308, 1.5e308, nan}, {-1.5e308, -1.5e308, 1.5e308}});
  EXPECT_THAT(passing(scan, "mean(A) in 1.49e308..1.51e308"), ElementsAre(0));
  EXPECT_THAT(passing(scan, "mean(A) in -0.51e308..-0.49e308"), ElementsAre(1));
  Scan const steep = scanOf({0, 1}, {{-1.7e308, 1.7e308}});
  EXPECT_THAT(passing(steep, "crosses A @ 0.5..0.75 in -1e307..1e307"), ElementsAre(0));
}

TEST(GateRuns, ParametersHaveRangesAndValues)
{
  Scan scan = scanOf({0}, Curves(4, {0}));
  addParameter(scan, "hill", {1.8, 2, nan, 2.2});
  addParameter(scan, "strain", {0, 1, nan, 0}, {"WT", "mut, 1"});
  EXPECT_THAT(passing(scan, "hill in 1.8..2"), ElementsAre(0, 1));
  EXPECT_THAT(passing(scan, "hill in .."), ElementsAre(0, 1, 3));
  EXPECT_THAT(passing(scan, "not hill in 1.8..2"), ElementsAre(2, 3));
  EXPECT_THAT(passing(scan, "hill is 2.0, 22e-1"), ElementsAre(1, 3)) << "numbers as text";
  EXPECT_THAT(passing(scan, "hill is 3"), IsEmpty());
  EXPECT_THAT(passing(scan, "strain is WT"), ElementsAre(0, 3));
  EXPECT_THAT(passing(scan, "strain is \"mut, 1\",WT"), ElementsAre(0, 1, 3));
  EXPECT_THAT(passing(scan, "not strain is WT"), ElementsAre(1, 2));
  EXPECT_EQ(failure(scan, "strain is wt"),
            "the parameter \"strain\" has no value \"wt\"; there are \"WT\", \"mut, 1\"");
  EXPECT_EQ(failure(scan, "hill is two"), "the parameter \"hill\" holds numbers; \"two\" is none");
  EXPECT_THAT(failure(scan, "hill is nan"), HasSubstr("\"nan\" is none"));
  EXPECT_EQ(failure(scan, "strain in 0..1"),
            "the parameter \"strain\" holds texts, which lie in no range; write \"strain is WT\"");
}

TEST(GateRuns, RunsHaveStatusAndKeys)
{
  Scan scan = scanOf({0}, Curves(6, {0}));
  scan.runs[1].status = RunStatus::Short;
  scan.runs[2].status = RunStatus::Failed;
  scan.runs[4].key = "WT 3";
  scan.runs[5].key = "5-6";
  EXPECT_THAT(passing(scan, "status failed"), ElementsAre(2));
  EXPECT_THAT(passing(scan, "status short, failed"), ElementsAre(1, 2));
  EXPECT_THAT(passing(scan, "not status complete"), ElementsAre(1, 2));
  EXPECT_THAT(passing(scan, "runs 3, 1"), ElementsAre(0, 2));
  EXPECT_THAT(passing(scan, "runs 2-3, 3-900, -5-1"), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(passing(scan, "runs 2-2, 4-4"), ElementsAre(1, 3));
  EXPECT_THAT(passing(scan, "runs WT 3, \"5-6\""), ElementsAre(4, 5));
  EXPECT_THAT(passing(scan, "not runs 1-4"), ElementsAre(4, 5));
  EXPECT_EQ(failure(scan, "runs 3, 77"), "the scan has no run \"77\"");
  EXPECT_EQ(failure(scan, "runs 03"), "the scan has no run \"03\"") << "keys are texts";
  EXPECT_THAT(failure(scan, "runs 5-6"),
              AllOf(HasSubstr("no run with a number in 5-6"), HasSubstr("quotes")));
  EXPECT_THAT(failure(scan, "runs 3-1"), HasSubstr("the runs 3-1 are none"));
}

TEST(GateRuns, ClustersAreAskedOfTheContext)
{
  Scan scan = scanOf({0, 1}, Curves(4, {0, 0}));
  addOutput(scan, labelOf("B"));
  GateContext context;
  context.clusters = [](Scan const& given, std::size_t output, ClusterMode mode, int clusters) {
    EXPECT_EQ(output, 1u);
    EXPECT_EQ(mode, ClusterMode::Phase);
    EXPECT_EQ(clusters, 3);
    std::vector<int> labels{0, 2, 1, 2};
    labels.resize(given.runs.size());
    return labels;
  };
  EXPECT_THAT(passing(scan, "cluster 2 of 3 (B, phase)", context), ElementsAre(1, 3));
  EXPECT_THAT(passing(scan, "not cluster 2 of 3 (B, phase)", context), ElementsAre(0, 2));
  EXPECT_EQ(failure(scan, "cluster 2 of 3 (A)"),
            "gate \"cluster 2 of 3 (Molecule: A, curves)\": clusters are not available here");
  EXPECT_EQ(failure(scan, "cluster 3 of 3 (B)", context),
            "of 3 clusters, which are counted from 0, there is no 3");
  EXPECT_THAT(failure(scan, "cluster 0 of 0 (B)", context), HasSubstr("1 to 1000 clusters, not 0"));
  EXPECT_THAT(failure(scan, "cluster 0 of 1001 (B)", context), HasSubstr("not 1001"));
  EXPECT_THAT(failure(scan, "cluster 0 of 2 (C)", context), HasSubstr("no output \"C\""));
  context.clusters = [](auto&&...) { return std::vector<int>(); };
  EXPECT_THAT(failure(scan, "cluster 0 of 1 (B)", context), HasSubstr("the runs cannot be grouped"));
}

TEST(GateRuns, GatesAreJoinedAndCounted)
{
  Scan const scan = scanOf({0, 1}, {{1, 1}, {1, 2}, {2, 2}, {3, 3}});
  auto const gates = gatesOf({"A @ 0 in 1..2", "A @ 0.9 in 2..3", "A @ 0 in 1..1"});
  GateResult const all = applyGates(gates, scan);
  EXPECT_THAT(all.runs.members(), ElementsAre(1));
  ASSERT_EQ(all.gates.size(), 3u);
  EXPECT_EQ(all.gates[0].alone, 3u);
  EXPECT_EQ(all.gates[0].left, 3u);
  EXPECT_EQ(all.gates[1].alone, 3u);
  EXPECT_EQ(all.gates[1].left, 2u);
  EXPECT_EQ(all.gates[1].gate.note, "time 0.9 -> 1");
  EXPECT_EQ(all.gates[2].alone, 2u);
  EXPECT_EQ(all.gates[2].left, 1u);
  GateResult const any = applyGates(gates, scan, GateJoin::Any);
  EXPECT_THAT(any.runs.members(), ElementsAre(0, 1, 2, 3));
  EXPECT_EQ(any.gates[0].left, 3u);
  EXPECT_EQ(any.gates[1].left, 4u);
  EXPECT_EQ(applyGates({}, scan).runs.count(), 4u);
  EXPECT_EQ(applyGates({}, scan, GateJoin::Any).runs.count(), 4u);
  EXPECT_THROW((void)applyGates(gatesOf({"B in 1..2"}), scan), GateError);
}

// The rules once more, word by word, sample by sample.

struct Literal
{
  Scan const& scan;
  Gate const& gate; // with times of the grid, or between them for Crosses

  bool in(double value) const { return value >= gate.range.low && value <= gate.range.high; }

  std::vector<std::pair<double, double>> samples(std::size_t run) const
  {
    std::vector<std::pair<double, double>> found;
    for (std::size_t t = 0; t < scan.times.size(); ++t) {
      bool const before = gate.span && gate.span->first && scan.times[t] < *gate.span->first;
      bool const after = gate.span && gate.span->last && scan.times[t] > *gate.span->last;
      if (!before && !after) found.emplace_back(scan.times[t], scan.valuesOf(0, run)[t]);
    }
    return found;
  }

  bool crosses(std::size_t run) const
  {
    for (auto const& sample : samples(run))
      if (in(sample.second)) return true;
    double const first = gate.span && gate.span->first ? *gate.span->first : scan.times.front();
    double const last = gate.span && gate.span->last ? *gate.span->last : scan.times.back();
    // Quarters of steps and small whole values: all points below are exact.
    for (std::size_t t = 0; t + 1 < scan.times.size(); ++t) {
      double const a = scan.valuesOf(0, run)[t];
      double const b = scan.valuesOf(0, run)[t + 1];
      if (!std::isfinite(a) || !std::isfinite(b)) continue;
      double const from = std::max(scan.times[t], first);
      double const to = std::min(scan.times[t + 1], last);
      if (from > to) continue;
      auto const at = [&](double time) { return a + (b - a) * (time - scan.times[t]); };
      if (in(at(from)) || in(at(to)) || (at(from) < gate.range.low) != (at(to) < gate.range.low)) return true;
    }
    return false;
  }

  bool passes(std::size_t run) const
  {
    auto all = samples(run);
    if (gate.kind == GateKind::Crosses) return crosses(run) != gate.negated;
    auto const isIn = [&](auto const& sample) { return in(sample.second); };
    bool const every = std::all_of(all.begin(), all.end(), isIn);
    bool const some = std::any_of(all.begin(), all.end(), isIn);
    if (gate.kind == GateKind::Inside) return every != gate.negated;
    if (gate.kind == GateKind::Ever) return some != gate.negated;
    if (gate.kind == GateKind::Never) return some == gate.negated;
    all.erase(std::remove_if(all.begin(), all.end(), [](auto const& s) { return std::isnan(s.second); }),
              all.end());
    return (!all.empty() && in(number(all))) != gate.negated;
  }

  double number(std::vector<std::pair<double, double>> const& all) const
  {
    auto sorted = all;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](auto const& a, auto const& b) { return a.second < b.second; });
    auto const top =
        std::find_if(all.begin(), all.end(), [&](auto const& s) { return s.second == sorted.back().second; });
    double sum = 0;
    for (auto const& sample : all) sum += sample.second;
    switch (gate.kind) {
    case GateKind::Max:
      return sorted.back().second;
    case GateKind::Min:
      return sorted.front().second;
    case GateKind::Mean:
      return sum / static_cast<double>(all.size());
    case GateKind::Last:
      return all.back().second;
    case GateKind::TimeOfMax:
      return top->first;
    default:
      return sorted.front().first;
    }
  }
};

/// Scans of small whole values with missing and infinite ones, and gates on them.
struct RandomSieve
{
  explicit RandomSieve(unsigned seed) : random(seed)
  {
    int const size = 1 + below(6);
    std::vector<double> times;
    for (int t = 0; t < size; ++t) times.push_back(t);
    Curves curves(static_cast<std::size_t>(20 + below(20)));
    for (auto& curve : curves)
      for (int t = 0; t < size; ++t) curve.push_back(value());
    scan = scanOf(times, curves);
    addParameter(scan, "k", std::vector<double>(curves.size(), 0));
    for (double& parameter : scan.parameters[0].values) parameter = value();
  }

  int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

  double value()
  {
    int const kind = below(30);
    return kind == 0 ? nan : kind == 1 ? infinity : kind == 2 ? -infinity : below(8);
  }

  Gate gate()
  {
    Gate gate;
    gate.kind = static_cast<GateKind>(below(10));
    gate.column = "A";
    gate.negated = below(3) == 0;
    gate.range.low = below(6) == 0 ? -infinity : below(8) - 0.5 * below(2);
    gate.range.high = below(6) == 0 ? infinity : std::max(gate.range.low, 0.0) + below(4);
    int const steps = 4 * (static_cast<int>(scan.times.size()) - 1); // quarters
    int const scale = gate.kind == GateKind::Crosses ? 1 : 4;
    int const first = below(steps / scale + 1);
    int const last = first + below(steps / scale - first + 1);
    if (below(5) == 0) return gate;
    gate.span.emplace();
    if (below(4) > 0) gate.span->first = 0.25 * scale * first;
    if (below(4) > 0) gate.span->last = 0.25 * scale * last;
    return gate;
  }

  std::mt19937 random;
  Scan scan;
};

TEST(GateRuns, AreThoseOfTheRulesWordByWord)
{
  std::array<int, 10> some{};
  for (unsigned seed = 0; seed < 3000; ++seed) {
    RandomSieve sieve(seed);
    for (int i = 0; i < 5; ++i) {
      Gate const gate = sieve.gate();
      SCOPED_TRACE("seed " + std::to_string(seed) + ": " + formatGate(gate));
      RunSet const runs = runsThrough(resolveGate(gate, sieve.scan), sieve.scan);
      for (std::size_t run = 0; run < runs.runs(); ++run)
        ASSERT_EQ(runs.contains(run), (Literal{sieve.scan, gate}.passes(run))) << "run " << run;
      some[static_cast<std::size_t>(gate.kind)] += runs.count() > 0 && runs.count() < runs.runs() ? 1 : 0;
    }
  }
  for (int count : some) EXPECT_GT(count, 300);
}

TEST(GateRuns, BothJoinsCountWhatIsLeft)
{
  for (unsigned seed = 0; seed < 500; ++seed) {
    SCOPED_TRACE(seed);
    RandomSieve sieve(seed);
    std::vector<Gate> gates;
    for (int i = 1 + sieve.below(4); i > 0; --i) gates.push_back(sieve.gate());
    for (GateJoin join : {GateJoin::All, GateJoin::Any}) {
      GateResult const result = applyGates(gates, sieve.scan, join);
      std::set<std::size_t> left;
      for (std::size_t i = 0; i < gates.size(); ++i) {
        std::size_t alone = 0;
        std::set<std::size_t> next;
        for (std::size_t run = 0; run < sieve.scan.runs.size(); ++run) {
          bool const passes = Literal{sieve.scan, gates[i]}.passes(run);
          bool const former = i == 0 ? join == GateJoin::All : left.count(run) > 0;
          alone += passes ? 1 : 0;
          if (join == GateJoin::All ? passes && former : passes || former) next.insert(run);
        }
        left = next;
        ASSERT_EQ(result.gates[i].alone, alone);
        ASSERT_EQ(result.gates[i].left, left.size());
      }
      ASSERT_EQ(result.runs.members(), Positions(left.begin(), left.end()));
    }
  }
}

// Rows.

/// The runs that plots keep: at every time at which any row is selected, a row of theirs is.
Positions survivors(Scan const& scan, std::vector<long long> const& rows)
{
  auto const size = static_cast<long long>(scan.times.size());
  std::set<long long> const selected(rows.begin(), rows.end());
  std::set<long long> times;
  for (long long row : rows) times.insert(row % size);
  Positions kept;
  for (std::size_t run = 0; run < scan.runs.size(); ++run)
    if (!times.empty() && std::all_of(times.begin(), times.end(), [&](long long t) {
          return selected.count(static_cast<long long>(run) * size + t) > 0;
        }))
      kept.push_back(run);
  return kept;
}

TEST(GateRows, StandWhereTheGatesAreConditions)
{
  Scan scan = scanOf({0, 1, 2, 3}, {{1, 1, 1, 1}, {2, 2, 2, 2}, {1, 2, 1, 2}});
  addParameter(scan, "k", {1, 1, 2});
  auto const rowsOf = [&](std::vector<std::string> const& texts, GateJoin join = GateJoin::All) {
    GateResult const result = applyGates(gatesOf(texts), scan, join);
    return rowsToSelect(result.runs, result.resolved(), scan);
  };
  EXPECT_THAT(rowsOf({"A @ 1..2 in 2..2"}), ElementsAre(5, 6));
  EXPECT_THAT(rowsOf({"A @ 0 in 1..1", "max(A) @ 2..3 in 2.."}), ElementsAre(8, 10, 11));
  EXPECT_THAT(rowsOf({"ever A @ 1 in 2..2"}), ElementsAre(5, 9));
  EXPECT_THAT(rowsOf({"crosses A @ 1.5..2.5 in 1..1"}), ElementsAre(1, 2, 3, 9, 10, 11));
  EXPECT_THAT(rowsOf({"k in 1..1"}), ElementsAre(0, 4)) << "without times the first of the scan";
  EXPECT_THAT(rowsOf({"runs 2", "status complete"}), ElementsAre(4));
  EXPECT_THAT(rowsOf({"k in 2..2", "A @ 3 in 1..2"}), ElementsAre(11));
  EXPECT_THAT(rowsOf({"A @ 0 in 2..2", "A @ 3 in 1..1"}, GateJoin::Any), ElementsAre(0, 3, 4, 7));
  EXPECT_THAT(rowsOf({}), ElementsAre(0, 4, 8));
  EXPECT_THAT(rowsOf({"A in 7..8"}), IsEmpty());
}

TEST(GateRows, LetExactlyThePassingRunsSurvive)
{
  int some = 0;
  for (unsigned seed = 0; seed < 1000; ++seed) {
    SCOPED_TRACE(seed);
    RandomSieve sieve(seed);
    std::vector<Gate> gates;
    for (int i = sieve.below(4); i > 0; --i) gates.push_back(sieve.gate());
    if (sieve.below(2) == 0) gates.push_back(parseGate("k in 2..5"));
    GateJoin const join = sieve.below(2) == 0 ? GateJoin::All : GateJoin::Any;
    GateResult const result = applyGates(gates, sieve.scan, join);
    auto const rows = rowsToSelect(result.runs, result.resolved(), sieve.scan);
    EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end()));
    ASSERT_EQ(survivors(sieve.scan, rows), result.runs.members());
    some += rows.empty() ? 0 : 1;
  }
  EXPECT_GT(some, 500);
}

} // namespace
} // namespace runsieve::test
