#include <runsieve/records/ScientificFormat.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>

using Kestrane::getScientificFormat;

namespace {

std::string formatted(char const* number, int digits, int longest, bool superscript = false)
{
  return getScientificFormat(QString::fromUtf8(number), digits, longest, superscript).toStdString();
}

TEST(ScientificFormatTest, ShortPlainNumbersStayPlain)
{
  EXPECT_EQ(formatted("12.5", 2, 10), "12.5");
  EXPECT_EQ(formatted("0", 2, 10), "0");
  EXPECT_EQ(formatted("-12.5", 2, 10), "-12.5");
  EXPECT_EQ(formatted("1234567890", 2, 10), "1234567890") << "ten characters";
}

TEST(ScientificFormatTest, LongerNumbersGetAnExponent)
{
  EXPECT_EQ(formatted("12345678901", 2, 10), "1.23e10") << "eleven characters";
  EXPECT_EQ(formatted("0.00000015", 2, 8), "1.5e-7");
}

TEST(ScientificFormatTest, TheLimitCountsTheSign)
{
  EXPECT_EQ(formatted("-1234", 2, 5), "-1234");
  EXPECT_EQ(formatted("-1234", 2, 4), "-1.23e3");
}

TEST(ScientificFormatTest, TheMantissaIsRoundedToItsDigits)
{
  EXPECT_EQ(formatted("12366", 2, 4), "1.24e4");
  EXPECT_EQ(formatted("12366", 1, 4), "1.2e4");
  EXPECT_EQ(formatted("12366", 0, 4), "1e4");
  EXPECT_EQ(formatted("12366", 4, 4), "1.2366e4");
}

TEST(ScientificFormatTest, AMantissaThatRoundsUpToTenRaisesTheExponent)
{
  EXPECT_EQ(formatted("99999", 2, 4), "1e5");
}

TEST(ScientificFormatTest, ZerosAtTheEndOfTheMantissaAreLeftOut)
{
  EXPECT_EQ(formatted("1500000", 2, 4), "1.5e6");
  EXPECT_EQ(formatted("1000000", 2, 4), "1e6");
  EXPECT_EQ(formatted("20000", 0, 4), "2e4") << "a zero in front of the point is none of those";
}

TEST(ScientificFormatTest, ExponentsComeWithoutPlusAndLeadingZeros)
{
  EXPECT_EQ(formatted("1.5e-07", 2, 4), "1.5e-7");
  EXPECT_EQ(formatted("2e+05", 2, 2), "2e5");
  EXPECT_EQ(formatted("1e-300", 2, 4), "1e-300");
}

TEST(ScientificFormatTest, NegativeNumbersKeepTheirSign)
{
  EXPECT_EQ(formatted("-0.00000015", 2, 8), "-1.5e-7");
  EXPECT_EQ(formatted("-0.00000015", 2, 8, true), "-1.5×10⁻⁷");
}

TEST(ScientificFormatTest, APowerOfTenCanHaveRaisedDigits)
{
  EXPECT_EQ(formatted("0.00000015", 2, 8, true), "1.5×10⁻⁷");
  EXPECT_EQ(formatted("123456789012", 2, 8, true), "1.23×10¹¹");
  EXPECT_EQ(formatted("12.5", 2, 10, true), "12.5") << "a plain number has no power";
}

TEST(ScientificFormatTest, EveryDigitCanBeRaised)
{
  EXPECT_EQ(formatted("1.5e-204", 2, 4, true), "1.5×10⁻²⁰⁴");
  EXPECT_EQ(formatted("1.5e136", 2, 4, true), "1.5×10¹³⁶");
  EXPECT_EQ(formatted("1.5e58", 2, 4, true), "1.5×10⁵⁸");
  EXPECT_EQ(formatted("1.5e79", 2, 4, true), "1.5×10⁷⁹");
}

TEST(ScientificFormatTest, WhatIsNotANumberComesBackAsItIs)
{
  for (char const* text : {"", "concentration", "12 apples", "1.2.3", "µmol/l", "--5", "name 1500000"})
    EXPECT_EQ(formatted(text, 2, 4), text);
}

} // namespace
