#include "app/cli/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace runsieve::test {
namespace {

using app::parseCommandLine;
using testing::HasSubstr;

using Words = std::vector<std::string>;

/// A command that takes a number within bounds.
struct Ranged
{
  Words command;
  std::string option;
  Words inside;
  Words outside;
};

std::vector<Ranged> rangedOptions()
{
  Words const render = {"render", "scan.csv", "-o", "view.png"};
  Words const cluster = {"cluster", "scan.csv"};
  Words const rank = {"rank", "scan.csv", "-g", "A @ 1 in 2..3"};
  Words const simulate = {"simulate", "-o", "scan.csv"};
  Words const pixels = {"64", "16384"};
  Words const noPixels = {"63", "16385", "-64", "100.5", "wide"};
  Words const shares = {"0", "1", "0.5", "1e-300"};
  Words const noShares = {"-0.001", "1.001", "-1", "inf", "nan", "small"};
  return {{render, "--width", pixels, noPixels},
          {render, "--height", pixels, noPixels},
          {render, "--p-threshold", shares, noShares},
          {render, "--ks-threshold", shares, noShares},
          {cluster, "--width", pixels, noPixels},
          {cluster, "--height", pixels, noPixels},
          {cluster, "--clusters", {"1", "1000"}, {"0", "1001", "-1"}},
          {rank, "--p-threshold", shares, noShares},
          {rank, "--ks-threshold", shares, noShares},
          {simulate, "--runs", {"1", "10000000"}, {"0", "10000001", "-1"}},
          {simulate, "--times", {"2", "1000000"}, {"1", "1000001", "0", "-2"}}};
}

TEST(OptionRanges, BoundsThemselvesAreTakenAndWhatLiesBeyondIsRefused)
{
  for (Ranged const& ranged : rangedOptions()) {
    auto with = [&ranged](std::string const& value) {
      Words words = ranged.command;
      words.insert(words.end(), {ranged.option, value});
      return words;
    };
    for (std::string const& value : ranged.inside)
      EXPECT_NO_THROW((void)parseCommandLine(with(value)))
          << ranged.command.front() << ranged.option << value;
    for (std::string const& value : ranged.outside) try {
        (void)parseCommandLine(with(value));
        ADD_FAILURE() << ranged.command.front() << ' ' << ranged.option << ' ' << value << " is taken";
      } catch (app::UsageError const& error) {
        EXPECT_THAT(error.what(), HasSubstr(ranged.option));
      }
  }
}

} // namespace
} // namespace runsieve::test
