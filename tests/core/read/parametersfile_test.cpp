#include <runsieve/core/read/ParametersFile.h>

#include "ScanTexts.h"
#include "support/WorkingFolder.h"

#include <gtest/gtest.h>

namespace runsieve::test {
namespace {

ReadOptions naming(std::string const& table)
{
  ReadOptions options;
  options.parametersFile = table;
  return options;
}

/// "data/scan.csv" and "data/runs" with tables beside, in and far from them.
struct ParametersFiles : testing::Test
{
  TempFolder root;
  std::string scan = writeTo(root, "data/scan.csv", "");
  std::string inRuns = writeTo(root, "data/runs/inside.csv", "");
  std::string runs = root.file("data/runs");
  std::string beside = writeTo(root, "data/beside.csv", "");
  std::string far = writeTo(root, "far.csv", "");

  [[nodiscard]] std::string kept(std::string const& of, std::string const& table) const
  {
    return keptOptions(of, naming(table)).parametersFile;
  }
  [[nodiscard]] std::string found(std::string const& of, std::string const& table) const
  {
    return foundOptions(of, naming(table)).parametersFile;
  }
  [[nodiscard]] std::string given(std::string const& of, std::string const& table) const
  {
    return givenParametersFile(of, naming(table));
  }
};

TEST_F(ParametersFiles, AreKeptAsSeenFromTheScan)
{
  EXPECT_EQ(kept(scan, beside), "beside.csv");
  EXPECT_EQ(kept(runs, beside), "beside.csv");
  EXPECT_EQ(kept(runs + "/", inRuns), "inside.csv");
  EXPECT_EQ(kept(scan, inRuns), "runs/inside.csv");
  EXPECT_EQ(kept(scan, far), far) << "elsewhere: from the root";
  EXPECT_EQ(kept(scan, ""), "");
  EXPECT_EQ(kept(scan, "none.csv"), "none.csv") << "not found";
}

TEST_F(ParametersFiles, AreKeptByWhatTheyAreFromTheFolderOfTheProgram)
{
  const WorkingFolder here(root.file("data"));
  EXPECT_EQ(kept("scan.csv", "beside.csv"), "beside.csv");
  EXPECT_EQ(kept("runs", "./beside.csv"), "beside.csv");
  EXPECT_EQ(kept("runs", "../far.csv"), far);
}

TEST_F(ParametersFiles, AreFoundFromAnyFolder)
{
  const WorkingFolder elsewhere("/");
  EXPECT_EQ(found(scan, "beside.csv"), beside);
  EXPECT_EQ(found(runs, "beside.csv"), beside);
  EXPECT_EQ(found(runs + "/", "beside.csv"), beside);
  EXPECT_EQ(found(runs, "inside.csv"), inRuns);
  EXPECT_EQ(found(scan, far), far);
  EXPECT_EQ(found(scan, ""), "");
  EXPECT_EQ(found(scan, "none.csv"), "none.csv");
}

TEST_F(ParametersFiles, ThatWereKeptAreLookedForBesideTheScanFirst)
{
  const std::string other = writeTo(root, "other/beside.csv", "");
  const WorkingFolder here(root.file("other"));
  EXPECT_EQ(found(scan, "beside.csv"), beside);
  EXPECT_EQ(given(scan, "beside.csv"), "beside.csv") << "what a user names is seen from where he is";
}

TEST_F(ParametersFiles, ThatWereKeptFromElsewhereAreFoundThereOrWhereTheyWereMovedTo)
{
  {
    const WorkingFolder here(root.file("data/runs"));
    EXPECT_EQ(found(scan, "inside.csv"), inRuns) << "beside nothing, but here";
  }
  EXPECT_EQ(found(scan, "/gone/beside.csv"), beside);
  EXPECT_EQ(given(scan, "/gone/beside.csv"), beside);
  EXPECT_EQ(found(scan, "/gone/none.csv"), "/gone/none.csv");
}

TEST_F(ParametersFiles, OfOneNameInTheFolderAndBesideItAreToldApart)
{
  const std::string inside = writeTo(root, "data/runs/beside.csv", "");
  EXPECT_EQ(kept(runs, inside), "beside.csv");
  EXPECT_EQ(kept(runs, beside), beside) << "its name alone would find the other";
  EXPECT_EQ(found(runs, kept(runs, inside)), inside);
  EXPECT_EQ(found(runs, kept(runs, beside)), beside);
}

} // namespace
} // namespace runsieve::test
