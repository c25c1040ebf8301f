#include "app/cli/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace runsieve::test {
namespace {

using namespace app;
using testing::HasSubstr;

template <class Arguments> Arguments parse(std::vector<std::string> const& words)
{
  return std::get<Arguments>(parseCommandLine(words));
}

std::string usageError(std::vector<std::string> const& words)
{
  try {
    (void)parseCommandLine(words);
    return "nothing";
  } catch (UsageError const& error) {
    return error.what();
  }
}

TEST(ClusterCommandLine, HasDefaults)
{
  const auto cluster = parse<ClusterArguments>({"cluster", "scan.csv"});
  EXPECT_EQ(cluster.file, "scan.csv");
  EXPECT_EQ(cluster.clusters, 4);
  EXPECT_EQ(cluster.mode, "curves");
  EXPECT_EQ(cluster.species, "");
  EXPECT_EQ(cluster.output, "");
  EXPECT_EQ(cluster.picture, "");
  EXPECT_EQ(cluster.width, 1200);
  EXPECT_EQ(cluster.height, 900);
  EXPECT_FALSE(cluster.rank);
}

TEST(ClusterCommandLine, ReadsAllOptions)
{
  const auto cluster = parse<ClusterArguments>(
      {"cluster", "scan.csv", "-k", "7", "--mode", "phase", "--species", "A", "-o", "labels.csv", "-p",
       "view.png", "--width", "640", "--height", "480", "--rank", "--run-column", "r"});
  EXPECT_EQ(cluster.clusters, 7);
  EXPECT_EQ(cluster.mode, "phase");
  EXPECT_EQ(cluster.species, "A");
  EXPECT_EQ(cluster.output, "labels.csv");
  EXPECT_EQ(cluster.picture, "view.png");
  EXPECT_EQ(cluster.width, 640);
  EXPECT_EQ(cluster.height, 480);
  EXPECT_TRUE(cluster.rank);
  EXPECT_EQ(cluster.read.run, "r");
  EXPECT_EQ(parse<ClusterArguments>({"cluster", "x", "--clusters", "2", "--mode", "magnitude"}).mode,
            "magnitude");
}

TEST(ClusterCommandLine, RefusesWhatMakesNoSense)
{
  for (std::string const k : {"0", "-1", "1.5", "many", "1001", "99999999999999999999"})
    EXPECT_THAT(usageError({"cluster", "scan.csv", "-k", k}), HasSubstr("--clusters")) << k;
  for (std::string const mode : {"shape", "2", "", "Curves "})
    EXPECT_THAT(usageError({"cluster", "scan.csv", "--mode", mode}), HasSubstr("--mode")) << mode;
  EXPECT_THAT(usageError({"cluster"}), HasSubstr("file"));
  EXPECT_THAT(usageError({"cluster", "scan.csv", "-p", "x.png", "--width", "63"}), HasSubstr("--width"));
}

TEST(ClusterCommandLine, HasHelp)
{
  EXPECT_THAT(parse<Information>({"cluster", "--help"}).text, HasSubstr("Example:\n  runsieve cluster "));
}

} // namespace
} // namespace runsieve::test
