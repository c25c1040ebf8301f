#include "SessionScene.h"

#include "app/explorer/document/Opening.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace runsieve::test {
namespace {

using app::Opening;

struct OpeningScene : SessionScene
{
  Opening opening;
  QSignalSpy begun{&opening, &Opening::begun};
  QSignalSpy ended{&opening, &Opening::ended};
  QSignalSpy failed{&opening, &Opening::failed};
  std::vector<double> shares;
  std::shared_ptr<Scan const> found;
  app::ScanSource from;
  app::State shown;

  OpeningScene()
  {
    QObject::connect(&opening, &Opening::progressed, [this](double share) { shares.push_back(share); });
    QObject::connect(&opening, &Opening::finished,
                     [this](std::shared_ptr<Scan const> const& scan, app::ScanSource const& source,
                            app::State const& state) {
                       found = scan;
                       from = source;
                       shown = state;
                     });
  }
  [[nodiscard]] bool settle()
  {
    return waitFor([this] { return !opening.isBusy() && ended.count() > 0; });
  }
};

TEST_F(OpeningScene, AFileIsReadWithItsOptionsAndTellsHowFarItIs)
{
  ReadOptions options;
  options.outputs = {"A"};
  opening.start(data, options);
  EXPECT_TRUE(opening.isBusy());
  ASSERT_EQ(begun.count(), 1);
  EXPECT_EQ(begun[0][0].toString(), data);
  EXPECT_EQ(opening.path(), data);
  ASSERT_TRUE(settle());
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->runs.size(), 40u);
  EXPECT_EQ(from.path, data.toStdString());
  EXPECT_EQ(from.read.outputs, options.outputs);
  EXPECT_EQ(shown.view.outputs, std::vector<std::size_t>{0});
  EXPECT_TRUE(shown.gates.empty());
  ASSERT_FALSE(shares.empty());
  for (std::size_t i = 0; i < shares.size(); ++i) {
    EXPECT_GE(shares[i], i > 0 ? shares[i - 1] : 0.0);
    EXPECT_LE(shares[i], 1.0);
  }
  EXPECT_EQ(ended.count(), 1);
  EXPECT_EQ(failed.count(), 0);
}

TEST_F(OpeningScene, AFaultIsToldWithTheFile)
{
  opening.start(folder.filePath("none.csv"), {});
  ASSERT_TRUE(settle());
  ASSERT_EQ(failed.count(), 1);
  EXPECT_EQ(failed[0][0].toString(), folder.filePath("none.csv"));
  EXPECT_FALSE(failed[0][1].toString().isEmpty());
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(ended.count(), 1);
}

TEST_F(OpeningScene, WhatIsGivenUpTellsOfNothingButItsEnd)
{
  write(data, lineScanText(5000));
  opening.start(data, {});
  opening.cancel();
  ASSERT_TRUE(settle());
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(failed.count(), 0);
}

TEST_F(OpeningScene, OfTwoFilesTheLastIsOpened)
{
  write(folder.filePath("second.csv"), lineScanText(7));
  write(data, lineScanText(5000));
  opening.start(data, {});
  ReadOptions options;
  options.outputs = {"A"};
  opening.start(folder.filePath("second.csv"), options);
  ASSERT_TRUE(settle());
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->runs.size(), 7u);
  EXPECT_EQ(opening.path(), folder.filePath("second.csv"));
}

TEST_F(OpeningScene, TheExampleIsFromNoFile)
{
  opening.startExample();
  EXPECT_EQ(begun[0][0].toString(), "Example");
  ASSERT_TRUE(waitFor([this] { return found != nullptr; }, 60'000));
  EXPECT_TRUE(from.path.empty());
  EXPECT_GT(found->outputs.size(), 0u);
}

} // namespace
} // namespace runsieve::test
