#include <runsieve/core/files/Gzip.h>

#include "support/Deflate.h"
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace runsieve::test {
namespace {

using testing::HasSubstr;

std::string faultOf(std::string const& bytes)
{
  try {
    (void)inflated("scan.csv.gz", bytes);
  } catch (ScanError const& error) {
    return error.what();
  }
  return "";
}

TEST(Gzip, IsKnownByItsFirstBytes)
{
  EXPECT_TRUE(isGzip(gzipped("a")));
  EXPECT_FALSE(isGzip(""));
  EXPECT_FALSE(isGzip("time,run"));
  EXPECT_FALSE(isGzip(gzipped("a").substr(0, 2)));
}

TEST(Gzip, GivesBackWhatWasCompressed)
{
  for (std::string const& text :
       {std::string(), std::string("time,run\n0,1\n"), std::string(5000000, 'x'), std::string("\0\1\2", 3)})
    EXPECT_TRUE(inflated("f", gzipped(text)) == text) << text.size();
}

TEST(Gzip, JoinsMembersAndForgivesZerosBehindThem)
{
  EXPECT_EQ(inflated("f", gzipped("one ") + gzipped("") + gzipped("two")), "one two");
  EXPECT_EQ(inflated("f", gzipped("one") + std::string(100, '\0')), "one");
}

TEST(Gzip, SaysThatAFileEndsEarlyWhereverItIsCut)
{
  const std::string whole = gzipped("time,run,A\n0,1,17\n1,1,18\n");
  for (std::size_t length = 3; length < whole.size(); ++length)
    EXPECT_THAT(faultOf(whole.substr(0, length)),
                HasSubstr("scan.csv.gz: the compressed file ends too early"));
}

TEST(Gzip, ADamagedByteIsFoundOrIsOneOfTheHeaderThatDoesNotMatter)
{
  const std::string text = "time,run,A\n0,1,17\n1,1,18\n";
  const std::string whole = gzipped(text);
  for (std::size_t i = 0; i < whole.size(); ++i) {
    std::string damaged = whole;
    damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
    const bool harmless = i < 10 && faultOf(damaged).empty(); // the time stamp, the system
    EXPECT_TRUE(harmless || !faultOf(damaged).empty()) << i;
    if (harmless) {
      EXPECT_EQ(inflated("f", damaged), text) << i;
    }
  }
}

TEST(Gzip, OtherBytesBehindTheContentAreAFault)
{
  EXPECT_THAT(faultOf(gzipped("a") + "trailing"), HasSubstr("other bytes follow"));
  EXPECT_THAT(faultOf("plain text"), HasSubstr("is not a gzip file"));
}

} // namespace
} // namespace runsieve::test
