#include <runsieve/core/text/Utf8.h>

#include <gtest/gtest.h>

#include <string>

namespace runsieve::test {
namespace {

TEST(Utf8, TextThatIsUtf8StaysAsItIs)
{
  for (const char* text : {"", "k1", "\xC2\xB5M", "\xCE\xB1", "\xE2\x82\xAC", "\xED\x9F\xBF",
                           "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF"})
    EXPECT_EQ(asUtf8(text), text);
}

TEST(Utf8, OtherBytesAreCharactersOfLatin1)
{
  EXPECT_EQ(asUtf8("\xB5M"), "\xC2\xB5M");
  // A part of a character, one that is too long, half a pair of UTF-16, one beyond the last.
  for (const char* text : {"a\xC2", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                           "\xF0\x9F\x98", "\xFF", "\x80"}) {
    std::string expected;
    for (const char* byte = text; *byte != 0; ++byte) appendUtf8(expected, static_cast<unsigned char>(*byte));
    EXPECT_EQ(asUtf8(text), expected);
    EXPECT_EQ(asUtf8(expected), expected) << "and that is UTF-8";
  }
}

TEST(Utf8, CharactersAreAppendedByTheirNumber)
{
  std::string text;
  for (unsigned character :
       {0x41u, 0x7Fu, 0x80u, 0x7FFu, 0x800u, 0xFFFFu, 0x10000u, 0x10FFFFu, 0xD800u, 0x110000u})
    appendUtf8(text, character);
  EXPECT_EQ(text, "A\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"
                  "\xEF\xBF\xBD\xEF\xBF\xBD");
}

} // namespace
} // namespace runsieve::test
