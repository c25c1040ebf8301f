#include <runsieve/core/sieve/Fingerprint.h>

#include <runsieve/core/kernels/Xxh64.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>

namespace runsieve::test {
namespace {

std::uint64_t hashOf(std::string const& text)
{
  return Xxh64::of(text.data(), text.size());
}

TEST(Xxh64, GivesThePublishedNumbers)
{
  EXPECT_EQ(hashOf(""), 0xEF46DB3751D8E999U);
  EXPECT_EQ(hashOf("a"), 0xD24EC4F1A98C6E5BU);
  EXPECT_EQ(hashOf("abc"), 0x44BC2CF5AD770999U);
  EXPECT_EQ(hashOf("Nobody inspects the spammish repetition"), 0xFBCEA83C8A378BF1U);
}

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

ColumnLabel labelOf(std::string const& name)
{
  ColumnLabel label;
  label.name = name;
  return label;
}

/// 3000 runs of 3 times, so that columns take several blocks.
Scan someScan()
{
  Scan scan;
  scan.times = {0, 1, 2.5};
  for (int run = 0; run < 3000; ++run) {
    ScanRun what;
    what.key = std::to_string(run);
    scan.runs.push_back(what);
  }
  for (char const* name : {"A", "B"}) {
    double* const values = scan.addOutput(labelOf(name));
    for (std::size_t i = 0; i < scan.rows(); ++i) values[i] = static_cast<double>(i % 100);
  }
  scan.parameters.push_back({labelOf("k"), std::vector<double>(3000, 2), {}});
  scan.parameters.push_back({labelOf("s"), std::vector<double>(3000, 0), {"x", "y"}});
  scan.parameters[1].values[7] = 1;
  return scan;
}

template <class Change> std::string after(Change const& change)
{
  Scan scan = someScan();
  change(scan);
  return fingerprintOf(scan);
}

TEST(Fingerprint, HasSixteenDigits)
{
  std::string const text = fingerprintOf(someScan());
  EXPECT_EQ(text.size(), 16u);
  EXPECT_EQ(text.find_first_not_of("0123456789abcdef"), std::string::npos);
  EXPECT_EQ(fingerprintOf(someScan()), text);
}

TEST(Fingerprint, StaysTheSameForEver)
{
  Scan scan;
  scan.times = {0, 1};
  scan.runs.resize(1);
  scan.runs[0].key = "1";
  double* const values = scan.addOutput(labelOf("A"));
  values[0] = 1;
  values[1] = nan;
  scan.parameters.push_back({labelOf("k"), {0.5}, {}});
  scan.parameters.push_back({labelOf("s"), {0}, {"WT"}});
  EXPECT_EQ(fingerprintOf(scan), "7fa5366c3fc0f1fa");
}

TEST(Fingerprint, DependsOnNothingButTheData)
{
  std::string const same = fingerprintOf(someScan());
  EXPECT_EQ(after([](Scan& scan) { scan.outputs[0].values[0] = -0.0; }), same) << "it was 0";
  EXPECT_EQ(after([](Scan& scan) { std::swap(scan.outputs[0], scan.outputs[1]); }), same);
  EXPECT_EQ(after([](Scan& scan) { std::swap(scan.parameters[0], scan.parameters[1]); }), same);
  EXPECT_EQ(after([](Scan& scan) {
              scan.outputs[0].label.type = "Molecule";
              scan.outputs[0].label.unit = "nM";
              scan.outputs[0].label.label = "activator";
              scan.time.unit = "min";
              scan.runs[0].status = RunStatus::Short;
            }),
            same);
  EXPECT_EQ(after([](Scan& scan) { // the numbers of texts have no meaning
              std::swap(scan.parameters[1].texts[0], scan.parameters[1].texts[1]);
              for (double& value : scan.parameters[1].values) value = 1 - value;
            }),
            same);
  std::string const missing = after([](Scan& scan) { scan.outputs[0].values[5] = nan; });
  EXPECT_NE(missing, same);
  EXPECT_EQ(after([](Scan& scan) { scan.outputs[0].values[5] = -std::nan("7"); }), missing);
}

TEST(Fingerprint, EveryChangeOfTheDataShows)
{
  std::set<std::string> all{fingerprintOf(someScan())};
  int changes = 0;
  auto const add = [&](auto const& change) {
    all.insert(after(change));
    ++changes;
  };
  for (std::size_t i : {0, 1, 2, 4095, 4096, 8191, 8192, 8999})
    for (double value : {1000.0, 2000.0, 4000.0, std::nextafter(static_cast<double>(i % 100), 1e9),
                         std::numeric_limits<double>::infinity()}) {
      add([=](Scan& scan) { scan.outputs[0].values[i] = value; });
      add([=](Scan& scan) { scan.outputs[1].values[i] = value; });
    }
  for (std::size_t run : {0, 1, 2999}) {
    add([=](Scan& scan) { scan.parameters[0].values[run] = 3; });
    add([=](Scan& scan) { scan.parameters[0].values[run] = nan; });
    add([=](Scan& scan) { scan.parameters[1].values[run] = 1; });
    add([=](Scan& scan) { scan.parameters[1].values[run] = nan; });
    add([=](Scan& scan) { scan.runs[run].key = "x"; });
  }
  add([](Scan& scan) { scan.times[1] = 1.5; });
  add([](Scan& scan) { std::swap(scan.runs[0], scan.runs[1]); });
  add([](Scan& scan) { scan.outputs[0].label.name = "C"; });
  add([](Scan& scan) { scan.outputs[0].label.name = ""; });
  add([](Scan& scan) { scan.parameters[0].label.name = "l"; });
  add([](Scan& scan) { scan.parameters[1].texts[1] = "z"; });
  add([](Scan& scan) { scan.outputs.pop_back(); });
  add([](Scan& scan) { scan.parameters.pop_back(); });
  add([](Scan& scan) { scan.parameters[1].texts.clear(); });
  add([](Scan& scan) { std::swap(scan.outputs[0].values[3], scan.outputs[0].values[4]); });
  EXPECT_EQ(all.size(), static_cast<std::size_t>(changes) + 1);
}

} // namespace
} // namespace runsieve::test
