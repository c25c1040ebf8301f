#include <runsieve/core/read/SeparateReading.h>

#include "support/ScanOfFile.h"
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <unistd.h>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsNan;

using Reading = std::function<ScanFile(ReadOptions const&)>;

std::string faultOf(Reading const& reading)
{
  return scanFault([&] { (void)readSeparately("a.h5", 100, {}, reading); });
}

TEST(SeparateReading, GivesTheWholeScanAndReport)
{
  const ScanFile file = readSeparately("a.h5", 0, {}, [](ReadOptions const&) {
    ScanFile file;
    file.report = {"format", {{"A", "output", "why"}}, {{"what", "because", true}, {"", "", false}}};
    Scan& scan = file.scan;
    scan.time = {"t", "s", "the time", ""};
    scan.times = {0, 1};
    scan.runs = {{"a", RunStatus::Complete, 2}, {"b", RunStatus::Short, 1}, {"c", RunStatus::Failed, 2}};
    for (const char* name : {"A", "B"}) {
      double* const values = scan.addOutput({name, "mM", "", "Molecule"});
      for (std::size_t i = 0; i < scan.rows(); ++i) values[i] = static_cast<double>(i) + (*name - 'A') * 10;
    }
    const double nan = std::numeric_limits<double>::quiet_NaN();
    scan.parameters = {{{"k", "", "", ""}, {1, nan, 3}, {}},
                       {{"strain", "", "", ""}, {0, 1, 0}, {"x", std::string(1000, 'y')}}};
    return file;
  });
  const Scan& scan = file.scan;
  EXPECT_NO_THROW(scan.check());
  EXPECT_EQ(scan.time.unit + scan.time.label, "sthe time");
  EXPECT_THAT(scan.times, ElementsAre(0, 1));
  EXPECT_THAT(keysOf(scan), ElementsAre("a", "b", "c"));
  EXPECT_EQ(scan.runs[1].status, RunStatus::Short);
  EXPECT_EQ(scan.runs[1].end, 1u);
  EXPECT_THAT(outputsOf(scan), ElementsAre("Molecule: A", "Molecule: B"));
  EXPECT_THAT(valuesOf(scan, "B", 2), ElementsAre(14, 15));
  EXPECT_THAT(scan.parameters[0].values, ElementsAre(1, IsNan(), 3));
  EXPECT_THAT(scan.parameters[1].texts, ElementsAre("x", std::string(1000, 'y')));
  EXPECT_THAT(rolesOf(file.report), ElementsAre("A: output"));
  EXPECT_EQ(file.report.columns[0].why + file.report.findings[0].why, "whybecause");
  EXPECT_THAT(guessesOf(file.report), ElementsAre("what"));
}

TEST(SeparateReading, FaultsComeAsTheyAre)
{
  EXPECT_EQ(faultOf([](ReadOptions const&) -> ScanFile { throw ScanError("a.h5", "is bad"); }),
            "a.h5: is bad");
  EXPECT_THROW(
      (void)readSeparately("a.h5", 0, {}, [](ReadOptions const&) -> ScanFile { throw std::bad_alloc(); }),
      std::bad_alloc);
}

TEST(SeparateReading, AProcessThatEndsBadlyIsAFaultOfTheFile)
{
  for (int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE})
    EXPECT_THAT(faultOf([signal](ReadOptions const&) -> ScanFile {
                  ::raise(signal);
                  return {};
                }),
                HasSubstr("a.h5: is damaged so that it cannot be read"));
  EXPECT_THAT(faultOf([](ReadOptions const&) -> ScanFile { ::_exit(0); }), HasSubstr("is damaged so that"));
  EXPECT_THAT(faultOf([](ReadOptions const&) -> ScanFile {
                ::raise(SIGKILL);
                return {};
              }),
              HasSubstr("not enough memory"));
}

TEST(SeparateReading, AProcessDoesNotTakeTheMemoryOfTheMachine)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || defined(__clang__)
  GTEST_SKIP() << "sanitizers need more addresses than any limit leaves";
#endif
  EXPECT_THROW((void)readSeparately("a.h5", 100, {},
                                    [](ReadOptions const&) {
                                      std::vector<std::unique_ptr<char[]>> held;
                                      for (int gigabyte = 0; gigabyte < 8; ++gigabyte)
                                        held.emplace_back(new char[std::size_t(1) << 30]);
                                      return ScanFile();
                                    }),
               std::bad_alloc);
}

TEST(SeparateReading, AProcessThatDoesNotEndIsEnded)
{
  EXPECT_THAT(faultOf([](ReadOptions const&) -> ScanFile {
                for (volatile int i = 0;; i = 1 - i) {
                }
              }),
              HasSubstr("takes too long to be read"));
}

TEST(SeparateReading, TheCallerHearsOfProgressAlsoWhileThereIsNoneAndMayStop)
{
  std::vector<double> shares;
  ReadOptions options;
  options.progress = [&](double share) {
    shares.push_back(share);
    return shares.size() < 5;
  };
  EXPECT_THROW((void)readSeparately("a", 0, options,
                                    [](ReadOptions const& told) -> ScanFile {
                                      told.progress(0.25);
                                      for (;;) ::pause();
                                    }),
               ReadCancelled);
  EXPECT_THAT(shares.back(), 0.25);
  EXPECT_EQ(shares.size(), 5u);
}

TEST(SeparateReading, NothingIsPrinted)
{
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  (void)faultOf([](ReadOptions const&) -> ScanFile {
    std::fputs("noise\n", stderr);
    std::puts("noise");
    std::fflush(stdout);
    throw ScanError("a.h5", "is bad");
  });
  EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
}

} // namespace
} // namespace runsieve::test
