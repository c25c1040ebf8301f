#include "DocumentScene.h"

#include "app/explorer/document/Background.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace runsieve::test {
namespace {

using app::Background;

/// Waits until it is not wanted any more. \return whether that was before a long time
bool waitUntilUnwanted(Background::Cancelled const& cancelled)
{
  for (int i = 0; i < 5000; ++i) {
    if (cancelled()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return false;
}

TEST(Background, DoesItsWorkElsewhereAndTheRestHere)
{
  Background work;
  const auto here = std::this_thread::get_id();
  std::thread::id worked;
  std::thread::id ended;
  work.start([&](Background::Cancelled const&) -> std::function<void()> {
    worked = std::this_thread::get_id();
    return [&] { ended = std::this_thread::get_id(); };
  });
  EXPECT_TRUE(work.isBusy());
  ASSERT_TRUE(waitFor([&] { return !work.isBusy(); }));
  EXPECT_NE(worked, here);
  EXPECT_EQ(ended, here);
}

TEST(Background, OfPiecesThatWaitOnlyTheNewestIsDone)
{
  Background work;
  std::vector<int> done;
  auto const piece = [&](int number) {
    work.start([&, number](Background::Cancelled const&) -> std::function<void()> {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
      return [&, number] { done.push_back(number); };
    });
  };
  for (int i = 1; i <= 20; ++i) piece(i);
  ASSERT_TRUE(waitFor([&] { return !work.isBusy(); }));
  EXPECT_THAT(done, testing::ElementsAre(1, 20));
}

TEST(Background, ALongPieceIsAskedToEndWhenAnotherWaits)
{
  Background work;
  std::atomic<bool> ended = false;
  bool second = false;
  work.start([&](Background::Cancelled const& cancelled) -> std::function<void()> {
    ended = waitUntilUnwanted(cancelled);
    return {};
  });
  work.start([&](Background::Cancelled const&) -> std::function<void()> { return [&] { second = true; }; });
  ASSERT_TRUE(waitFor([&] { return second; }));
  EXPECT_TRUE(ended);
}

TEST(Background, WhatIsToldToStopMayThrow)
{
  Background work;
  std::vector<std::string> failures;
  bool second = false;
  QObject::connect(&work, &Background::failed,
                   [&](QString const& message) { failures.push_back(message.toStdString()); });
  auto const throws = [](Background::Cancelled const& cancelled) -> std::function<void()> {
    waitUntilUnwanted(cancelled);
    throw std::runtime_error("stopped");
  };
  work.start(throws);
  work.start([&](Background::Cancelled const&) -> std::function<void()> { return [&] { second = true; }; });
  ASSERT_TRUE(waitFor([&] { return second; }));
  work.start(throws);
  work.cancel();
  ASSERT_TRUE(waitFor([&] { return !work.isBusy(); }));
  EXPECT_TRUE(failures.empty());
}

TEST(Background, WhatIsCancelledHasNoResult)
{
  Background work;
  bool done = false;
  work.start([&](Background::Cancelled const& cancelled) -> std::function<void()> {
    waitUntilUnwanted(cancelled);
    return [&] { done = true; };
  });
  work.cancel();
  ASSERT_TRUE(waitFor([&] { return !work.isBusy(); }));
  EXPECT_FALSE(done);
}

TEST(Background, AFaultIsToldAndTheNextPieceIsDone)
{
  Background work;
  QStringList faults;
  QObject::connect(&work, &Background::failed, [&](QString const& message) { faults << message; });
  work.start(
      [](Background::Cancelled const&) -> std::function<void()> { throw std::runtime_error("no memory"); });
  ASSERT_TRUE(waitFor([&] { return !work.isBusy(); }));
  EXPECT_EQ(faults, QStringList{"no memory"});
  bool done = false;
  work.start([&](Background::Cancelled const&) -> std::function<void()> { return [&] { done = true; }; });
  EXPECT_TRUE(waitFor([&] { return done; }));
}

TEST(Background, ItsEndWaitsForThePieceUnderWay)
{
  std::atomic<bool> ended = false;
  bool done = false;
  {
    Background work;
    work.start([&](Background::Cancelled const& cancelled) -> std::function<void()> {
      ended = waitUntilUnwanted(cancelled);
      return [&] { done = true; };
    });
  }
  EXPECT_TRUE(ended);
  QApplication::processEvents();
  EXPECT_FALSE(done);
}

TEST(Background, AResultMayBeginTheNextPieceOrEndTheWork)
{
  auto work = std::make_unique<Background>();
  bool second = false;
  work->start([&](Background::Cancelled const&) -> std::function<void()> {
    return [&] {
      work->start([&](Background::Cancelled const&) -> std::function<void()> {
        return [&] {
          second = true;
          work.reset();
        };
      });
    };
  });
  EXPECT_TRUE(waitFor([&] { return second; }));
  QApplication::processEvents();
}

TEST(Background, TellsWhenItBeginsAndWhenAllIsDone)
{
  Background work;
  std::vector<bool> busy;
  QObject::connect(&work, &Background::busyChanged, [&] { busy.push_back(work.isBusy()); });
  auto const piece = [](Background::Cancelled const&) -> std::function<void()> {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return {};
  };
  work.start(piece);
  EXPECT_THAT(busy, testing::ElementsAre(true));
  work.start(piece);
  ASSERT_TRUE(waitFor([&] { return !work.isBusy(); }));
  EXPECT_FALSE(busy.back());
  EXPECT_EQ(std::count(busy.begin(), busy.end(), false), 1) << "not between two pieces";
}

TEST(Background, WhatWaitsIsForgottenByCancel)
{
  Background work;
  bool second = false;
  work.start([](Background::Cancelled const& cancelled) -> std::function<void()> {
    waitUntilUnwanted(cancelled);
    return {};
  });
  work.start([&](Background::Cancelled const&) -> std::function<void()> { return [&] { second = true; }; });
  work.cancel();
  ASSERT_TRUE(waitFor([&] { return !work.isBusy(); }));
  EXPECT_FALSE(second);
  work.cancel();
  EXPECT_FALSE(work.isBusy()) << "there is nothing to cancel";
}

TEST(Background, NoFaultIsToldOfWhatIsCancelled)
{
  Background work;
  QSignalSpy faults(&work, &Background::failed);
  work.start([](Background::Cancelled const& cancelled) -> std::function<void()> {
    waitUntilUnwanted(cancelled);
    throw std::runtime_error("given up");
  });
  work.cancel();
  ASSERT_TRUE(waitFor([&] { return !work.isBusy(); }));
  EXPECT_EQ(faults.count(), 0);
}

TEST(Background, AShortPieceEndsThoughAnotherWaits)
{
  Background work;
  bool first = false;
  std::atomic<bool> go = false;
  work.start([&](Background::Cancelled const&) -> std::function<void()> {
    while (!go) std::this_thread::yield();
    return [&] { first = true; };
  });
  work.start([](Background::Cancelled const&) -> std::function<void()> { return {}; });
  go = true;
  ASSERT_TRUE(waitFor([&] { return !work.isBusy(); }));
  EXPECT_TRUE(first) << "its result is shown";
}

} // namespace
} // namespace runsieve::test
