#include "app/gate/Gate.h"

#include "app/gate/ResolvedGate.h"
#include "ScanColumns.h"
#include "support/ScanBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

namespace runsieve::test {
namespace {

using app::Gate;
using app::GateError;
using app::parseGate;
using app::ResolvedGate;
using app::resolveGate;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr double infinity = std::numeric_limits<double>::infinity();

void expectGate(std::string const& text, Gate const& expected)
{
  SCOPED_TRACE(text);
  Gate const gate = parseGate(text);
  EXPECT_EQ(gate.output, expected.output);
  EXPECT_EQ(gate.timeFirst, expected.timeFirst);
  EXPECT_EQ(gate.timeLast, expected.timeLast);
  EXPECT_EQ(gate.low, expected.low);
  EXPECT_EQ(gate.high, expected.high);
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

std::string parseMessage(std::string const& text)
{
  return messageOf([&] { (void)parseGate(text); });
}

TEST(Gate, ReadsTimesAndSpans)
{
  expectGate("Molecule: A @ 10..12 in 2..5", {"Molecule: A", 10, 12, 2, 5});
  expectGate("A @ 10 in 2..5", {"A", 10, 10, 2, 5});
}

TEST(Gate, BlanksAreFree)
{
  expectGate("A@10in2..5", {"A", 10, 10, 2, 5});
  expectGate("  A b  @  10  ..  12  in  2  ..  5  ", {"A b", 10, 12, 2, 5});
}

TEST(Gate, ReadsNumbersOfAllKinds)
{
  expectGate("A @ -1.5e1..+2E-1 in -.5..5.", {"A", -15, 0.2, -0.5, 5});
  expectGate("A @ 1 in -inf..Infinity", {"A", 1, 1, -infinity, infinity});
  expectGate("A @ 1in-inf..-1e3", {"A", 1, 1, -infinity, -1000});
  expectGate("A @ 1 in 0.5...7", {"A", 1, 1, 0.5, 0.7});
}

TEST(Gate, TheOutputMayHoldTheSigns)
{
  expectGate("A@home in 1..2 @ 3 in 4..5", {"A@home in 1..2", 3, 3, 4, 5});
  expectGate("Pattern: A(b~p) @ c in d@ 3 in 4..5", {"Pattern: A(b~p) @ c in d", 3, 3, 4, 5});
}

TEST(Gate, SaysWhatIsWrongAndShowsAnExample)
{
  constexpr char example[] = "for example \"Molecule: A @ 10..12 in 2..5\"";
  EXPECT_THAT(parseMessage("A 10 in 2..5"),
              AllOf(HasSubstr("gate \"A 10 in 2..5\": there is no \"@\""), HasSubstr(example)));
  EXPECT_THAT(parseMessage("@ 10 in 2..5"), AllOf(HasSubstr("no output"), HasSubstr(example)));
  EXPECT_THAT(parseMessage("A @ x in 2..5"), HasSubstr("expected a time, found \"x in 2..5\""));
  EXPECT_THAT(parseMessage("A @ 1.. in 2..5"), HasSubstr("expected a time after \"..\", found \"in 2..5\""));
  EXPECT_THAT(parseMessage("A @ 1 2..5"), HasSubstr("expected \"in\" after the time, found \"2..5\""));
  EXPECT_THAT(parseMessage("A @ 1 in 2"), HasSubstr("expected \"..\" between the two values, found the end"));
  EXPECT_THAT(parseMessage("A @ 1 in 2.."), HasSubstr("expected the upper value, found the end"));
  EXPECT_THAT(parseMessage("A @ 1 in 2..5 s"), HasSubstr("after the value range stands \"s\""));
  EXPECT_THAT(parseMessage("A @ 1 in nan..5"), HasSubstr("expected the lower value, found \"nan..5\""));
  EXPECT_THAT(parseMessage("A @ inf in 2..5"), HasSubstr("a time must be finite"));
  EXPECT_THAT(parseMessage("A @ 1 in 2..1e999"), HasSubstr("expected the upper value"));
  EXPECT_THAT(parseMessage(""), HasSubstr("there is no \"@\""));
  EXPECT_THAT(parseMessage("A @ 1 in 2..5.5.5"), HasSubstr("stands \".5\""));
}

TEST(Gate, FormatsToTextThatReadsBack)
{
  for (Gate const& gate : {Gate{"Molecule: A", 10, 12, 2, 5}, Gate{"A @ b", 0.1, 0.1, -infinity, 1e-300}})
    expectGate(app::formatGate(gate), gate);
}

// Times 0, 1, 2, 3; outputs "A", "B".
boost::shared_ptr<LinePlotTable> fourTimes()
{
  return makeScan(shapeOf(2, 4, 2, 1));
}

ResolvedGate resolve(std::string const& text, LinePlotTable const& scan)
{
  return resolveGate(parseGate(text), scan);
}

TEST(ResolvedGate, FindsOutputsByFullAndBareName)
{
  auto scan = fourTimes();
  EXPECT_EQ(resolve("Molecule: B @ 1 in 0..1", *scan).column, 1u);
  EXPECT_EQ(resolve("B @ 1 in 0..1", *scan).column, 1u);
  EXPECT_EQ(resolve("B @ 1 in 0..1", *scan).output, "Molecule: B");
  EXPECT_EQ(resolve("B @ 1..2 in 0..1", *scan).text(), "Molecule: B @ 1..2 in 0..1");
}

TEST(ResolvedGate, NamesTheOutputsThereAre)
{
  auto scan = fourTimes();
  EXPECT_EQ(messageOf([&] { resolve("C @ 1 in 0..1", *scan); }),
            "the scan has no output \"C\"; there are \"Molecule: A\", \"Molecule: B\"");
  EXPECT_THAT(messageOf([&] { resolve("k1 @ 1 in 0..1", *scan); }), HasSubstr("no output \"k1\""));
  scan->columnNames[1] = {Kestrane::Complex, "A"};
  EXPECT_EQ(messageOf([&] { resolve("A @ 1 in 0..1", *scan); }),
            "the output \"A\" could be \"Molecule: A\", \"Complex: A\"; give the full name");
  EXPECT_EQ(resolve("Complex: A @ 1 in 0..1", *scan).column, 1u);
}

TEST(ResolvedGate, OfManyOutputsTheFirstTwentyAreNamed)
{
  for (int outputs : {19, 20, 21, 26}) {
    auto scan = makeScan(shapeOf(2, 4, outputs, 1));
    std::string expected = "the scan has no output \"none\"; there are ";
    for (int i = 0; i < std::min(outputs, 20); ++i)
      expected += std::string(i > 0 ? ", " : "") + "\"Molecule: " + static_cast<char>('A' + i) + '"';
    if (outputs > 20) expected += " and " + std::to_string(outputs - 20) + " more";
    EXPECT_EQ(messageOf([&] { resolve("none @ 1 in 0..1", *scan); }), expected);
  }
}

TEST(ResolvedGate, SnapsATimeToTheGridAndSaysSo)
{
  auto scan = fourTimes();
  ResolvedGate const exact = resolve("A @ 2 in 0..1", *scan);
  EXPECT_THAT(exact.times, ElementsAre(2));
  EXPECT_EQ(exact.note, "");
  ResolvedGate const near = resolve("A @ 2.03 in 0..1", *scan);
  EXPECT_THAT(near.times, ElementsAre(2));
  EXPECT_EQ(near.note, "time 2.03 -> 2");
  EXPECT_EQ(near.text(), "Molecule: A @ 2 in 0..1");
  EXPECT_THAT(resolve("A @ 1.5 in 0..1", *scan).times, ElementsAre(1)) << "the earlier of two";
  EXPECT_THAT(resolve("A @ 99 in 0..1", *scan).times, ElementsAre(3));
  EXPECT_EQ(resolve("A @ 99 in 0..1", *scan).note, "time 99 -> 3");
}

TEST(ResolvedGate, ASpanTakesTheGridTimesInside)
{
  auto scan = fourTimes();
  EXPECT_THAT(resolve("A @ 1..2 in 0..1", *scan).times, ElementsAre(1, 2));
  EXPECT_EQ(resolve("A @ 1..2 in 0..1", *scan).note, "");
  ResolvedGate const wide = resolve("A @ 0.5..99 in 0..1", *scan);
  EXPECT_THAT(wide.times, ElementsAre(1, 2, 3));
  EXPECT_EQ(wide.note, "time 0.5..99 -> 1..3");
  ResolvedGate const empty = resolve("A @ 1.6..1.8 in 0..1", *scan);
  EXPECT_THAT(empty.times, ElementsAre(2));
  EXPECT_EQ(empty.note, "time 1.6..1.8 -> 2");
}

TEST(ResolvedGate, TypedDecimalsMeetComputedTimes)
{
  auto scan = fourTimes();
  double* time = scan->columnData[2];
  for (int i = 0; i < 8; ++i) time[i] = 0.1 * (i % 4); // 0.30000000000000004
  EXPECT_THAT(resolve("A @ 0.2..0.3 in 0..1", *scan).times, ElementsAre(2, 3));
  EXPECT_EQ(resolve("A @ 0.3 in 0..1", *scan).note, "");
}

TEST(ResolvedGate, RefusesReversedRanges)
{
  auto scan = fourTimes();
  EXPECT_THAT(messageOf([&] { resolve("A @ 1 in 5..2", *scan); }),
              HasSubstr("gate \"A @ 1 in 5..2\": the value range is empty, since 5 lies above 2"));
  EXPECT_THAT(messageOf([&] { resolve("A @ 2..1 in 2..5", *scan); }), HasSubstr("2 lies behind 1"));
  Gate const noNumber{"A", 1, 1, std::numeric_limits<double>::quiet_NaN(), 1};
  EXPECT_THROW((void)resolveGate(noNumber, *scan), GateError);
}

} // namespace
} // namespace runsieve::test
