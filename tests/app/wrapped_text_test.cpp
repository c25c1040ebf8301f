#include "app/cli/WrappedText.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string wrapped(std::vector<std::string> const& sentences, std::size_t width)
{
  std::ostringstream out;
  runsieve::app::printWrapped(out, "note  ", sentences, width);
  return out.str();
}

TEST(WrappedText, EachSentenceBeginsALineUnderTheFirst)
{
  EXPECT_EQ(wrapped({"one two", "three"}, 40), "note  one two\n      three\n");
}

TEST(WrappedText, ALineAsWideAsAllowedStaysWhole)
{
  EXPECT_EQ(wrapped({"abc defg"}, 14), "note  abc defg\n");
  EXPECT_EQ(wrapped({"abc defg"}, 13), "note  abc\n      defg\n");
}

TEST(WrappedText, AWordThatIsTooWideStandsAlone)
{
  EXPECT_EQ(wrapped({"a abcdefghijkl b"}, 10), "note  a\n      abcdefghijkl\n      b\n");
}

TEST(WrappedText, CountsColumnsNotBytes)
{
  EXPECT_EQ(wrapped({"\u00e4\u00e4\u00e4 \u00f6\u00f6\u00f6\u00f6"}, 14),
            "note  \u00e4\u00e4\u00e4 \u00f6\u00f6\u00f6\u00f6\n");
}

TEST(WrappedText, NoSentenceNoLine)
{
  EXPECT_EQ(wrapped({}, 10), "");
}

} // namespace
