#include <runsieve/core/text/ShownText.h>

#include <runsieve/core/text/FieldText.h>

#include <gtest/gtest.h>

namespace runsieve::test {

TEST(ShownText, ControlCharactersAreWrittenOut)
{
  using namespace std::string_literals;
  EXPECT_EQ(printable("a\x1b[31mb\tc\n\0\x7f"s), "a\\x1b[31mb\\x09c\\x0a\\x00\\x7f");
  EXPECT_EQ(printable("k\xc3\xb6\xe2\x80\xa6 ~"), "k\xc3\xb6\xe2\x80\xa6 ~");
}

TEST(ShownText, FieldsInMessagesAreCutBetweenCharacters)
{
  std::string const a(39, 'a');
  EXPECT_EQ(runsieve::quoted(a + "\xc3\xa4" + "b"), '"' + a + "...\"");
  EXPECT_EQ(runsieve::quoted(a.substr(1) + "\xc3\xa4" + "b"), '"' + a.substr(1) + "\xc3\xa4...\"");
  EXPECT_EQ(runsieve::quoted(a.substr(2) + "\xf0\x9f\x98\x80"), '"' + a.substr(2) + "...\"");
  EXPECT_EQ(runsieve::quoted(a + 'b'), '"' + a + "b\"");
}

TEST(ShownText, WidthCountsCharacters)
{
  EXPECT_EQ(shownWidth(""), 0u);
  EXPECT_EQ(shownWidth("abc"), 3u);
  EXPECT_EQ(shownWidth("\xc3\xb5g\xe2\x80\xa6"), 3u);
}

TEST(ShownText, LongTextLosesItsMiddle)
{
  EXPECT_EQ(shortened("abcdefgh", 8), "abcdefgh");
  EXPECT_EQ(shortened("abcdefgh", 7), "abc\u2026fgh");
  EXPECT_EQ(shortened("abcdefgh", 6), "abc\u2026gh");
  EXPECT_EQ(shortened("abcdefgh", 2), "a\u2026");
  EXPECT_EQ(shortened("abcdefgh", 1), "\u2026");
  EXPECT_EQ(shortened("\xc3\xa4\xc3\xb6\xc3\xbc\xc3\xa4\xc3\xb6", 3), "\xc3\xa4\u2026\xc3\xb6");
}

} // namespace runsieve::test
