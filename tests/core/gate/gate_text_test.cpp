#include <runsieve/core/gate/GateText.h>

#include <runsieve/core/gate/GateJson.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace runsieve {

void PrintTo(Gate const& gate, std::ostream* stream)
{
  *stream << toJson(gate);
}

namespace test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

constexpr double infinity = std::numeric_limits<double>::infinity();

Gate rangeGate(GateKind kind, std::string column, std::optional<GateSpan> span, double low, double high)
{
  Gate gate;
  gate.kind = kind;
  gate.column = std::move(column);
  gate.span = span;
  gate.range = {low, high};
  return gate;
}

Gate inside(std::string column, double first, double last, double low, double high)
{
  return rangeGate(GateKind::Inside, std::move(column), GateSpan{first, last}, low, high);
}

Gate negation(Gate gate)
{
  gate.negated = !gate.negated;
  return gate;
}

Gate isGate(std::string column, std::vector<std::string> texts)
{
  Gate gate;
  gate.kind = GateKind::Is;
  gate.column = std::move(column);
  gate.texts = std::move(texts);
  return gate;
}

Gate runsGate(std::vector<RunKey> keys)
{
  Gate gate;
  gate.kind = GateKind::Runs;
  gate.runs = std::move(keys);
  return gate;
}

Gate clusterGate(int cluster, int clusters, std::string column, ClusterMode mode)
{
  Gate gate;
  gate.kind = GateKind::Cluster;
  gate.cluster = cluster;
  gate.clusters = clusters;
  gate.column = std::move(column);
  gate.mode = mode;
  return gate;
}

std::string parseMessage(std::string const& text)
{
  try {
    return "read as " + toJson(parseGate(text));
  } catch (GateError const& error) {
    return error.what();
  }
}

TEST(GateText, TimesAndSpansAreReadAsEver)
{
  EXPECT_EQ(parseGate("Molecule: A @ 10..12 in 2..5"), inside("Molecule: A", 10, 12, 2, 5));
  EXPECT_EQ(parseGate("A @ 10 in 2..5"), inside("A", 10, 10, 2, 5));
  EXPECT_EQ(parseGate("A@10in2..5"), inside("A", 10, 10, 2, 5));
  EXPECT_EQ(parseGate("  A b  @  10  ..  12  in  2  ..  5  "), inside("A b", 10, 12, 2, 5));
  EXPECT_EQ(parseGate("A @ -1.5e1..+2E-1 in -.5..5."), inside("A", -15, 0.2, -0.5, 5));
  EXPECT_EQ(parseGate("A @ 1 in -inf..Infinity"), inside("A", 1, 1, -infinity, infinity));
  EXPECT_EQ(parseGate("A @ 1in-infinity..-1e3"), inside("A", 1, 1, -infinity, -1000));
  EXPECT_EQ(parseGate("A @ 1 in -infinity..-infinity"), inside("A", 1, 1, -infinity, -infinity));
  EXPECT_EQ(parseGate("A @ 1 in inf..inf"), inside("A", 1, 1, infinity, infinity));
  EXPECT_EQ(parseGate("A @ 1 in 0.5...7"), inside("A", 1, 1, 0.5, 0.7));
}

TEST(GateText, NamesMayHoldTheSigns)
{
  EXPECT_EQ(parseGate("A@home in 1..2 @ 3 in 4..5"), inside("A@home in 1..2", 3, 3, 4, 5));
  EXPECT_EQ(parseGate("Pattern: A(b~p) @ c in d@ 3 in 4..5"), inside("Pattern: A(b~p) @ c in d", 3, 3, 4, 5));
  EXPECT_EQ(parseGate("Values[k1] in 1..2").column, "Values[k1]");
  EXPECT_EQ(parseGate("[S] @ 1 in 1..2").column, "[S]");
  EXPECT_EQ(parseGate("a in b in 1..2").column, "a in b");
  EXPECT_EQ(parseGate("Protein 2 in 1..2").column, "Protein 2");
  EXPECT_EQ(parseGate("cluster size @ 3 in 1..2"), inside("cluster size", 3, 3, 1, 2));
  EXPECT_EQ(parseGate("runs a day in 1..2").column, "runs a day");
  EXPECT_EQ(parseGate("max(A) ratio @ 3 in 1..2"), inside("max(A) ratio", 3, 3, 1, 2));
  EXPECT_EQ(parseGate("max(A)-max(B) @ 3 in 1..2"), inside("max(A)-max(B)", 3, 3, 1, 2));
  EXPECT_EQ(parseGate("maximum(A) @ 3 in 1..2"), inside("maximum(A)", 3, 3, 1, 2));
  for (std::string const word :
       {"not", "ever", "never", "crosses", "status", "runs", "cluster", "is", "max("})
    EXPECT_EQ(parseGate(word + " @ 3 in 1..2"), inside(word, 3, 3, 1, 2)) << word;
  for (std::string const word : {"not", "ever", "never", "crosses", "status", "runs", "cluster"}) {
    EXPECT_EQ(parseGate(word + " in 1..2").column, word);
    EXPECT_EQ(parseGate(word + " is a"), isGate(word, {"a"}));
  }
}

TEST(GateText, NamesMayStandInQuotes)
{
  EXPECT_EQ(parseGate("\"A\" @ 10 in 2..5"), inside("A", 10, 10, 2, 5));
  EXPECT_EQ(parseGate("\"a \"\"b\"\" @ 3\"@10in 2..5"), inside("a \"b\" @ 3", 10, 10, 2, 5));
  EXPECT_EQ(parseGate("\"A @ 3 in 4..5\" in 2..5"),
            rangeGate(GateKind::Inside, "A @ 3 in 4..5", std::nullopt, 2, 5));
  EXPECT_EQ(parseGate("never \"never A\" in ..5"),
            rangeGate(GateKind::Never, "never A", std::nullopt, -infinity, 5));
  EXPECT_EQ(parseGate("\"not A\" in 2..5").column, "not A");
  EXPECT_EQ(parseGate("max(\"A) @ (\") @ 1..2 in 2..5"),
            rangeGate(GateKind::Max, "A) @ (", GateSpan{1, 2}, 2, 5));
}

TEST(GateText, EndsMayStayOpen)
{
  EXPECT_EQ(parseGate("A @ 1 in 3.."), inside("A", 1, 1, 3, infinity));
  EXPECT_EQ(parseGate("A @ 1 in ..5"), inside("A", 1, 1, -infinity, 5));
  EXPECT_EQ(parseGate("A @ 1 in ...5"), inside("A", 1, 1, -infinity, 0.5));
  EXPECT_EQ(parseGate("A @ 1 in .."), inside("A", 1, 1, -infinity, infinity));
  EXPECT_EQ(parseGate("A @ 30.. in 3.."),
            rangeGate(GateKind::Inside, "A", GateSpan{30, std::nullopt}, 3, infinity));
  EXPECT_EQ(parseGate("A @ 30..in-inf.."),
            rangeGate(GateKind::Inside, "A", GateSpan{30, std::nullopt}, -infinity, infinity));
  EXPECT_EQ(parseGate("A @ ..60 in 3..4"),
            rangeGate(GateKind::Inside, "A", GateSpan{std::nullopt, 60}, 3, 4));
  EXPECT_EQ(parseGate("A @ .. in 3..4"), rangeGate(GateKind::Inside, "A", GateSpan{}, 3, 4));
  EXPECT_EQ(parseGate("A in 3..4"), rangeGate(GateKind::Inside, "A", std::nullopt, 3, 4));
}

TEST(GateText, WordsTellWhatIsAskedOfTheSamples)
{
  GateSpan const span{30, 60};
  EXPECT_EQ(parseGate("ever A @ 30..60 in 3..4"), rangeGate(GateKind::Ever, "A", span, 3, 4));
  EXPECT_EQ(parseGate("never  A @ 30..60 in 3..4"), rangeGate(GateKind::Never, "A", span, 3, 4));
  EXPECT_EQ(parseGate("crosses A @ 30..60 in 3..3"), rangeGate(GateKind::Crosses, "A", span, 3, 3));
  EXPECT_EQ(parseGate("crosses A in 3.."), rangeGate(GateKind::Crosses, "A", std::nullopt, 3, infinity));
  EXPECT_EQ(parseGate("never max(A) @ 30..60 in 3..4"), rangeGate(GateKind::Never, "max(A)", span, 3, 4));
}

TEST(GateText, FunctionsTakeOneNumberOfARun)
{
  GateSpan const span{0, 100};
  EXPECT_EQ(parseGate("max(A) @ 0..100 in 5.."), rangeGate(GateKind::Max, "A", span, 5, infinity));
  EXPECT_EQ(parseGate("min( A b )@0..100in 5..6"), rangeGate(GateKind::Min, "A b", span, 5, 6));
  EXPECT_EQ(parseGate("mean(Values[k1]) in 5..6"),
            rangeGate(GateKind::Mean, "Values[k1]", std::nullopt, 5, 6));
  EXPECT_EQ(parseGate("last(A(b)) in 5..6"), rangeGate(GateKind::Last, "A(b)", std::nullopt, 5, 6));
  EXPECT_EQ(parseGate("timeofmax(A @ b) in 5..6"),
            rangeGate(GateKind::TimeOfMax, "A @ b", std::nullopt, 5, 6));
  EXPECT_EQ(parseGate("timeofmin(A) @ ..100 in 5..6"),
            rangeGate(GateKind::TimeOfMin, "A", GateSpan{std::nullopt, 100}, 5, 6));
}

TEST(GateText, ValuesAreListed)
{
  EXPECT_EQ(parseGate("strain is WT"), isGate("strain", {"WT"}));
  EXPECT_EQ(parseGate("strain is WT ,mut1, double mutant"),
            isGate("strain", {"WT", "mut1", "double mutant"}));
  EXPECT_EQ(parseGate("dose is 0.5, 1"), isGate("dose", {"0.5", "1"}));
  EXPECT_EQ(parseGate("strain is \"a, b\", \"c \"\"is\"\" d\""), isGate("strain", {"a, b", "c \"is\" d"}));
  EXPECT_EQ(parseGate("this is a is b"), isGate("this is a", {"b"}));
  EXPECT_EQ(parseGate("a is \"x is y\""), isGate("a", {"x is y"}));
  EXPECT_EQ(parseGate("a is \"x in 2..5\""), isGate("a", {"x in 2..5"}));
  EXPECT_EQ(parseGate("\"a is b\" is c"), isGate("a is b", {"c"}));
  EXPECT_EQ(parseGate("not mail is a@b"), negation(isGate("mail", {"a@b"})));
  EXPECT_EQ(parseGate("a is \"\""), isGate("a", {""}));
}

TEST(GateText, RunsAreTakenByStatusKeyAndCluster)
{
  EXPECT_EQ(parseGate("status failed").statuses, std::vector{RunStatus::Failed});
  EXPECT_EQ(parseGate("status complete,short").statuses,
            (std::vector{RunStatus::Complete, RunStatus::Short}));
  EXPECT_EQ(parseGate("runs 3,5,10-15"), runsGate({std::string("3"), std::string("5"), RunNumbers{10, 15}}));
  EXPECT_EQ(
      parseGate("runs -3--1, WT_003, \"10-15\", 1-2-3"),
      runsGate({RunNumbers{-3, -1}, std::string("WT_003"), std::string("10-15"), std::string("1-2-3")}));
  EXPECT_EQ(parseGate("runs \"a in 2..5\""), runsGate({std::string("a in 2..5")}));
  EXPECT_EQ(parseGate("cluster 2 of 4 (cI, curves)"), clusterGate(2, 4, "cI", ClusterMode::Curves));
  EXPECT_EQ(parseGate("cluster 2of 4(cI)"), clusterGate(2, 4, "cI", ClusterMode::Curves));
  EXPECT_EQ(parseGate("cluster 0 of 1 (A(b), c,phase)"), clusterGate(0, 1, "A(b), c", ClusterMode::Phase));
  EXPECT_EQ(parseGate("not cluster 0 of 1 (\"A, phase\", magnitude)"),
            negation(clusterGate(0, 1, "A, phase", ClusterMode::Magnitude)));
  EXPECT_EQ(parseGate("cluster 0 of 1 (\"A, phase\")"), clusterGate(0, 1, "A, phase", ClusterMode::Curves));
}

TEST(GateText, NotTakesTheOtherRuns)
{
  EXPECT_EQ(parseGate("not A @ 10 in 2..5"), negation(inside("A", 10, 10, 2, 5)));
  EXPECT_EQ(parseGate("not never A in 2..5"), negation(rangeGate(GateKind::Never, "A", std::nullopt, 2, 5)));
  EXPECT_TRUE(parseGate("not status failed").negated);
  EXPECT_TRUE(parseGate("not runs 3").negated);
  EXPECT_EQ(parseGate("not in vitro @ 3 in 2..5"), inside("not in vitro", 3, 3, 2, 5));
  EXPECT_THAT(parseMessage("not not A in 2..5"), HasSubstr("\"not\" stands twice"));
}

TEST(GateText, SaysWhatIsWrongAndShowsAnExample)
{
  constexpr char example[] = "for example \"Molecule: A @ 10..12 in 2..5\"";
  EXPECT_THAT(parseMessage("A 10"),
              AllOf(HasSubstr("gate \"A 10\": there is no \"in\" with a range of values, and no \"is\""),
                    HasSubstr(example)));
  EXPECT_THAT(parseMessage(""), HasSubstr("gate \"\": it is empty"));
  EXPECT_THAT(parseMessage("@ 10 in 2..5"), AllOf(HasSubstr("no output before \"@\""), HasSubstr(example)));
  EXPECT_THAT(parseMessage("in 2..5"), HasSubstr("there is no name before \"in\""));
  EXPECT_THAT(parseMessage("A @ x in 2..5"), HasSubstr("expected a time, found \"x in 2..5\""));
  EXPECT_THAT(parseMessage("A @ 1..x in 2..5"),
              HasSubstr("expected a time after \"..\", found \"x in 2..5\""));
  EXPECT_THAT(parseMessage("A @ 1 2..5"), HasSubstr("expected \"in\" after the time, found \"2..5\""));
  EXPECT_THAT(parseMessage("A @ 1 in 2"),
              HasSubstr("expected \"..\" between the two values, found the end of the text"));
  EXPECT_THAT(parseMessage("A in 2"), HasSubstr("expected \"..\" between the two values, found the end"));
  EXPECT_THAT(parseMessage("A @ 1 in"), HasSubstr("expected the lower value, found the end"));
  EXPECT_THAT(parseMessage("A @ 1 in 2..5 s"), HasSubstr("after the value range stands \"s\""));
  EXPECT_THAT(parseMessage("A in 2..5 s"), HasSubstr("after the value range stands \"s\""));
  EXPECT_THAT(parseMessage("A @ 1 in nan..5"), HasSubstr("expected the lower value, found \"nan..5\""));
  EXPECT_THAT(parseMessage("A @ inf in 2..5"), HasSubstr("a time must be finite"));
  EXPECT_THAT(parseMessage("A @ 1..inf in 2..5"), HasSubstr("a time must be finite"));
  EXPECT_THAT(parseMessage("A @ 1..infin2..5"), HasSubstr("a time must be finite"));
  EXPECT_THAT(parseMessage("A @ 1 in 2..1e999"), HasSubstr("expected the upper value"));
  EXPECT_THAT(parseMessage("A @ 1 in 2..5.5.5"), HasSubstr("stands \".5\""));
  EXPECT_THAT(parseMessage("strain in \"WT\""),
              AllOf(HasSubstr("texts stand behind \"is\""), HasSubstr("\"strain is WT, mut1\"")));
  EXPECT_THAT(parseMessage("\"A in 2..5"), HasSubstr("the quote before \"A\" is not closed"));
  EXPECT_THAT(parseMessage("\"A\" b in 2..5"),
              HasSubstr("expected \"@\" or \"in\" after the name, found \"b\""));
  EXPECT_THAT(parseMessage("max() in 2..5"), HasSubstr("there is no output in the brackets"));
  EXPECT_THAT(parseMessage("max(\"A\" in 2..5"), HasSubstr("expected \")\" after the name"));
  EXPECT_THAT(parseMessage("max(\"A\")b in 2..5"), HasSubstr("expected \"@\" or \"in\" after the bracket"));
}

TEST(GateText, EachFormHasItsOwnExample)
{
  EXPECT_THAT(parseMessage("status broken"),
              AllOf(HasSubstr("expected complete, short or failed, found \"broken\""),
                    HasSubstr("for example \"status short, failed\"")));
  EXPECT_THAT(parseMessage("status failed,"), HasSubstr("expected a status, found the end of the text"));
  EXPECT_THAT(parseMessage("runs 3,,4"),
              AllOf(HasSubstr("expected the key of a run, found \",4\""), HasSubstr("\"runs 3, 5, 10-15\"")));
  EXPECT_THAT(parseMessage("runs \"3\" 4"), HasSubstr("expected a comma, found \"4\""));
  EXPECT_THAT(parseMessage("runs \"3"), HasSubstr("is not closed"));
  EXPECT_THAT(parseMessage("a is b,"),
              AllOf(HasSubstr("expected a value, found the end"), HasSubstr("\"strain is WT, mut1\"")));
  EXPECT_THAT(parseMessage("\"a\" b is c"), HasSubstr("expected \"is\" after the name, found \"b\""));
  constexpr char example[] = "\"cluster 2 of 4 (cI, curves)\"";
  EXPECT_THAT(parseMessage("cluster x of 4 (A)"),
              AllOf(HasSubstr("expected the number of a cluster, found \"x of 4 (A)\""), HasSubstr(example)));
  EXPECT_THAT(parseMessage("cluster 99999999999 of 4 (A)"), HasSubstr("expected the number of a cluster"));
  EXPECT_THAT(parseMessage("cluster 2 (A)"), HasSubstr("expected \"of\""));
  EXPECT_THAT(parseMessage("cluster 2 of -4 (A)"), HasSubstr("expected the number of clusters, found \"-4"));
  EXPECT_THAT(parseMessage("cluster 2 of 4"), HasSubstr("expected \"(\" before the output, found the end"));
  EXPECT_THAT(parseMessage("cluster 2 of 4 (A"), HasSubstr("there is no \")\" at the end"));
  EXPECT_THAT(parseMessage("cluster 2 of 4 ()"), HasSubstr("there is no output in the brackets"));
  EXPECT_THAT(parseMessage("cluster 2 of 4 (\"A\", shape)"),
              HasSubstr("expected curves, phase or magnitude after the output, found \", shape\""));
}

TEST(GateText, MessagesAreOneShortLine)
{
  std::string const message = parseMessage(std::string(100000, 'x') + "\n@ y in 2..5");
  EXPECT_LT(message.size(), 400u);
  EXPECT_EQ(message.find('\n'), std::string::npos);
}

TEST(GateText, IsWrittenPlainlyWherePossible)
{
  EXPECT_EQ(formatGate(parseGate("Molecule: A@10..12in 2..")), "Molecule: A @ 10..12 in 2..inf");
  EXPECT_EQ(formatGate(parseGate("not ever \"A\" @ 10.. in ..0.1")), "not ever A @ 10.. in -inf..0.1");
  EXPECT_EQ(formatGate(parseGate("timeofmax( A )@..in 2..5")), "timeofmax(A) @ .. in 2..5");
  EXPECT_EQ(formatGate(parseGate("\"A @ b\" in 2..5")), "\"A @ b\" in 2..5");
  EXPECT_EQ(formatGate(parseGate("\"A @ b\" @ 3 in 2..5")), "A @ b @ 3 in 2..5");
  EXPECT_EQ(formatGate(parseGate("a is \"x\" , \"y z\"")), "a is x, y z");
  EXPECT_EQ(formatGate(parseGate("runs 3,\"4\",5-6")), "runs 3, 4, 5-6");
  EXPECT_EQ(formatGate(parseGate("runs \"5-6\"")), "runs \"5-6\"");
  EXPECT_EQ(formatGate(parseGate("status  failed,short")), "status failed, short");
  EXPECT_EQ(formatGate(parseGate("cluster 2 of 4 (A)")), "cluster 2 of 4 (A, curves)");
}

/// Gates of all forms with names, numbers and lists that look like parts of gates.
class RandomGates
{
public:
  explicit RandomGates(unsigned seed) : random(seed) {}

  Gate next()
  {
    Gate gate;
    gate.kind = static_cast<GateKind>(below(14));
    gate.negated = below(3) == 0;
    if (gate.kind != GateKind::Status && gate.kind != GateKind::Runs) gate.column = text();
    if (gate.kind <= GateKind::TimeOfMin) {
      gate.range = {end(), end()};
      if (below(3) > 0) gate.span = span();
    }
    for (int i = 1 + below(3); i > 0; --i) addToList(gate);
    if (gate.kind != GateKind::Cluster) return gate;
    gate.cluster = below(1000);
    gate.clusters = below(1000);
    gate.mode = static_cast<ClusterMode>(below(3));
    return gate;
  }

private:
  int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

  std::string text()
  {
    static char const* const parts[] = {
        "A",        "\"",       "\"\"", " ",      " in ",  " is ",     "@",      "..",
        "3",        "(",        ")",    ",",      "not ",  "ever ",    "never ", "max(",
        "runs ",    "-",        "inf",  "status", "phase", "\xc3\xa4", "\t",     "crosses ",
        "cluster ", "1 of 2 (", "\n",   "[k1]",   "in",    "is",       "2..5",   ", phase"};
    std::string all;
    for (int i = below(6); i >= 0; --i) all += parts[below(32)];
    return all;
  }

  double number()
  {
    double value = 0;
    do {
      std::uint64_t const bits = (static_cast<std::uint64_t>(random()) << 32U) | random();
      std::memcpy(&value, &bits, sizeof value);
    } while (!std::isfinite(value));
    return below(2) == 0 ? value : below(2000) * 0.1 - 100;
  }

  double end() { return below(5) == 0 ? (below(2) == 0 ? infinity : -infinity) : number(); }

  GateSpan span()
  {
    GateSpan span;
    if (below(3) > 0) span.first = number();
    if (below(3) > 0) span.last = below(3) == 0 && span.first ? *span.first : number();
    return span;
  }

  void addToList(Gate& gate)
  {
    if (gate.kind == GateKind::Is) gate.texts.push_back(text());
    if (gate.kind == GateKind::Status) gate.statuses.push_back(static_cast<RunStatus>(below(3)));
    if (gate.kind != GateKind::Runs) return;
    if (below(2) == 0)
      gate.runs.emplace_back(text());
    else
      gate.runs.emplace_back(RunNumbers{below(100) - 50, std::numeric_limits<long long>::min() + below(9)});
  }

  std::mt19937 random;
};

TEST(GateText, EveryGateReadsBackTheSame)
{
  for (unsigned seed = 0; seed < 20000; ++seed) {
    Gate const gate = RandomGates(seed).next();
    SCOPED_TRACE("seed " + std::to_string(seed) + ": " + formatGate(gate));
    ASSERT_EQ(parseMessage(formatGate(gate)), "read as " + toJson(gate));
    ASSERT_EQ(parseGate(formatGate(gate)), gate);
  }
}

TEST(GateJson, EveryGateReadsBackTheSame)
{
  for (unsigned seed = 0; seed < 20000; ++seed) {
    Gate const gate = RandomGates(seed).next();
    SCOPED_TRACE("seed " + std::to_string(seed) + ": " + toJson(gate));
    ASSERT_EQ(fromJson(toJson(gate)), gate);
  }
}

TEST(GateText, DamagedTextIsReadOrRefused)
{
  int read = 0;
  for (unsigned seed = 0; seed < 20000; ++seed) {
    std::mt19937 random(seed);
    std::string text = formatGate(RandomGates(seed).next());
    for (int i = 0; i < 3 && !text.empty(); ++i) {
      std::size_t const position = random() % text.size();
      if (random() % 2 == 0)
        text.erase(position, 1 + random() % 3);
      else
        text[position] = static_cast<char>(random() % 256);
    }
    SCOPED_TRACE("seed " + std::to_string(seed) + ": " + text);
    try {
      Gate const gate = parseGate(text);
      ASSERT_EQ(parseGate(formatGate(gate)), gate);
      ++read;
    } catch (GateError const&) {
    }
  }
  EXPECT_GT(read, 1000);
}

TEST(GateText, LongHostileTextTakesNoLongTime)
{
  for (std::string const part :
       {"in", " is ", "\"", "@", "(", "..", "9", " in 2..", ",", "-", " is \"", "not "}) {
    std::string text = "a";
    while (text.size() < 2000000) text += part;
    (void)parseMessage(text + " is b");
    (void)parseMessage("runs " + text);
    (void)parseMessage("max(" + text + " in 2..5");
    (void)parseMessage(text);
  }
}

std::string jsonMessage(std::string const& text)
{
  try {
    return "read as " + formatGate(fromJson(text));
  } catch (GateError const& error) {
    return error.what();
  }
}

TEST(GateJson, HasTheTextForPeopleAndTheMembersForPrograms)
{
  EXPECT_EQ(toJson(parseGate("not max(A) @ 30.. in 3..")),
            R"({"text":"not max(A) @ 30.. in 3..inf","kind":"max","negated":true,"column":"A",)"
            R"("times":[30.0,null],"values":[3.0,"inf"]})");
  EXPECT_EQ(toJson(parseGate("runs 3, 5-6")), R"({"text":"runs 3, 5-6","kind":"runs","runs":["3",[5,6]]})");
  EXPECT_EQ(toJson(parseGate("status failed")),
            R"({"text":"status failed","kind":"status","status":["failed"]})");
  EXPECT_EQ(toJson(parseGate("a is 1, b")),
            R"({"text":"a is 1, b","kind":"is","column":"a","is":["1","b"]})");
  EXPECT_EQ(toJson(parseGate("cluster 2 of 4 (A, phase)")),
            "{\"text\":\"cluster 2 of 4 (A, phase)\",\"kind\":\"cluster\",\"column\":\"A\","
            "\"cluster\":2,\"clusters\":4,\"mode\":\"phase\"}");
}

TEST(GateJson, MembersCountMoreThanTheText)
{
  EXPECT_EQ(jsonMessage(R"({"text":"A in 1..2","kind":"inside","column":"B","values":[3,4],"new":[[]]})"),
            "read as B in 3..4");
  EXPECT_EQ(jsonMessage(R"({"text":"A @ 3 in 1..2"})"), "read as A @ 3 in 1..2");
}

TEST(GateJson, NamesTheMemberThatIsWrong)
{
  EXPECT_THAT(jsonMessage("[1]"), HasSubstr("gate as JSON: expected an object, found \"[1]\""));
  EXPECT_THAT(jsonMessage("{"), HasSubstr("expected an object"));
  EXPECT_THAT(jsonMessage(std::string(1000000, '[')), HasSubstr("expected an object"));
  EXPECT_THAT(jsonMessage("{}"), HasSubstr("there is neither \"kind\" nor \"text\""));
  EXPECT_THAT(jsonMessage(R"({"text":3})"), HasSubstr("\"text\": expected a text, found \"3\""));
  EXPECT_THAT(jsonMessage(R"({"text":"A"})"), HasSubstr("gate \"A\": there is no \"in\""));
  EXPECT_THAT(jsonMessage(R"({"kind":"some"})"), HasSubstr("\"kind\": expected one of inside, ever, never"));
  EXPECT_THAT(jsonMessage(R"({"kind":3})"), HasSubstr("\"kind\": expected one of"));
  EXPECT_THAT(jsonMessage(R"({"kind":"ever"})"), HasSubstr("there is no \"column\""));
  EXPECT_THAT(jsonMessage(R"({"kind":"ever","column":1})"), HasSubstr("\"column\": expected a text"));
  EXPECT_THAT(jsonMessage(R"({"kind":"ever","column":"A"})"), HasSubstr("there is no \"values\""));
  EXPECT_THAT(jsonMessage(R"({"kind":"ever","column":"A","values":[1]})"),
              HasSubstr("\"values\": expected a list of two ends, found \"[1]\""));
  EXPECT_THAT(jsonMessage(R"({"kind":"ever","column":"A","values":[1,"x"]})"),
              HasSubstr("\"values\": expected a number, \"inf\" or \"-inf\""));
  EXPECT_THAT(jsonMessage(R"({"kind":"ever","column":"A","values":[1,2],"times":[1,"inf"]})"),
              HasSubstr("\"times\": expected a number or null"));
  EXPECT_THAT(jsonMessage(R"({"kind":"ever","column":"A","values":[1,2],"negated":1})"),
              HasSubstr("\"negated\": expected true or false"));
  EXPECT_THAT(jsonMessage(R"({"kind":"is","column":"A","is":"b"})"), HasSubstr("\"is\": expected a list"));
  EXPECT_THAT(jsonMessage(R"({"kind":"is","column":"A","is":[1]})"), HasSubstr("\"is\": expected a text"));
  EXPECT_THAT(jsonMessage(R"({"kind":"status","status":["ok"]})"),
              HasSubstr("\"status\": expected one of complete, short, failed, found \"\"ok\"\""));
  EXPECT_THAT(jsonMessage(R"({"kind":"runs","runs":[3]})"),
              HasSubstr("\"runs\": expected the key of a run or two whole numbers, found \"3\""));
  EXPECT_THAT(jsonMessage(R"({"kind":"runs","runs":[[1,2.5]]})"), HasSubstr("expected a whole number"));
  EXPECT_THAT(jsonMessage(R"({"kind":"runs","runs":[[1,18446744073709551615]]})"),
              HasSubstr("expected a whole number"));
  EXPECT_THAT(
      jsonMessage(R"({"kind":"cluster","column":"A","cluster":-3000000000,"clusters":1,"mode":"phase"})"),
      HasSubstr("\"cluster\": expected a whole number"));
  EXPECT_THAT(jsonMessage(R"({"kind":"cluster","column":"A","cluster":1,"clusters":1})"),
              HasSubstr("there is no \"mode\""));
}

TEST(GateJson, NamesThatAreNoTextCannotBeWritten)
{
  Gate const gate = isGate("\xff\xfe", {"a"});
  EXPECT_EQ(parseGate(formatGate(gate)), gate);
  EXPECT_THROW((void)toJson(gate), GateError);
}

} // namespace
} // namespace test
} // namespace runsieve
