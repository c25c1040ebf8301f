#include <runsieve/core/read/NpyArray.h>

#include "support/NpyBytes.h"
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Numbers = std::vector<double>;

std::vector<double> numbersOf(std::string const& bytes)
{
  const NpyHeader header = readNpyHeader("a.npy", bytes, bytes.size());
  std::vector<double> values(header.items);
  if (!values.empty()) copyNpyNumbers(header, bytes, 0, header.shape.front(), values.data());
  return values;
}

std::vector<std::string> textsOf(std::string const& bytes)
{
  return npyTexts(readNpyHeader("a.npy", bytes, bytes.size()), bytes);
}

std::string faultOf(std::string const& bytes)
{
  try {
    (void)readNpyHeader("a.npy", bytes, bytes.size());
  } catch (ScanError const& error) {
    return error.what();
  }
  return "";
}

template <class Number> void expectNumbers(std::string const& type, std::vector<Number> const& values)
{
  const std::string data = bytesOf(values);
  const Numbers expected(values.begin(), values.end());
  EXPECT_EQ(numbersOf(npy("<" + type, {values.size()}, data)), expected) << type;
  std::string big;
  for (Number value : values) {
    std::string bytes = bytesOf(value);
    std::reverse(bytes.begin(), bytes.end());
    big += bytes;
  }
  EXPECT_EQ(numbersOf(npy(">" + type, {values.size()}, big)), expected) << type;
}

TEST(NpyArray, HoldsNumbersOfAllPlainTypesInBothOrdersOfBytes)
{
  expectNumbers<float>("f4", {0.5f, -3.25f, 1e30f});
  expectNumbers<double>("f8", {0.1, -1e300, 5e-324});
  expectNumbers<std::int8_t>("i1", {-128, 0, 127});
  expectNumbers<std::int16_t>("i2", {-32768, 0, 32767});
  expectNumbers<std::int32_t>("i4", {-2147483647 - 1, 0, 2147483647});
  expectNumbers<std::int64_t>("i8", {-9007199254740992, 0, 9007199254740992});
  expectNumbers<std::uint8_t>("u1", {0, 255});
  expectNumbers<std::uint16_t>("u2", {0, 65535});
  expectNumbers<std::uint32_t>("u4", {0, 4294967295u});
  expectNumbers<std::uint64_t>("u8", {0, 9007199254740992u});
  EXPECT_THAT(numbersOf(npy("|b1", {3}, std::string("\1\0\1", 3))), ElementsAre(1, 0, 1));
}

TEST(NpyArray, IsGivenLastAxisFirstWhateverTheOrderInTheFile)
{
  const Numbers rows = {1, 2, 3, 4, 5, 6};
  EXPECT_EQ(numbersOf(npy("<f8", {2, 3}, bytesOf(rows))), rows);
  EXPECT_EQ(numbersOf(npy("<f8", {2, 3}, bytesOf(Numbers{1, 4, 2, 5, 3, 6}), true)), rows);
  // 2 x 2 x 3 with the value 100 i + 10 j + k
  Numbers fortran;
  Numbers expected;
  for (int k = 0; k < 3; ++k)
    for (int j = 0; j < 2; ++j)
      for (int i = 0; i < 2; ++i) fortran.push_back(100 * i + 10 * j + k);
  for (int i = 0; i < 2; ++i)
    for (int j = 0; j < 2; ++j)
      for (int k = 0; k < 3; ++k) expected.push_back(100 * i + 10 * j + k);
  const std::string bytes = npy("<f8", {2, 2, 3}, bytesOf(fortran), true);
  EXPECT_EQ(numbersOf(bytes), expected);
  Numbers second(6);
  copyNpyNumbers(readNpyHeader("a.npy", bytes, bytes.size()), bytes, 1, 1, second.data());
  EXPECT_EQ(second, Numbers(expected.begin() + 6, expected.end()));
}

TEST(NpyArray, IsReadInAllVersionsAndWithLongNumbersOfPython2)
{
  for (int version : {1, 2, 3})
    EXPECT_THAT(numbersOf(npy("<f8", {2}, bytesOf(Numbers{1, 2}), false, version)), ElementsAre(1, 2));
  EXPECT_THAT(numbersOf(npyWithHeader("{\"shape\":(1L,2L),'fortran_order':False,'descr':'<f8'}",
                                      bytesOf(Numbers{1, 2}))),
              ElementsAre(1, 2));
  EXPECT_THAT(faultOf(npy("<f8", {2}, bytesOf(Numbers{1, 2}), false, 4)), HasSubstr("unknown version 4"));
}

TEST(NpyArray, HoldsTextsOfBytesAndOfCharacters)
{
  EXPECT_THAT(textsOf(npyTexts({"k1", "", "Vmax"})), ElementsAre("k1", "", "Vmax"));
  EXPECT_THAT(textsOf(npy("|S3", {2}, std::string("ab\0xyz", 6))), ElementsAre("ab", "xyz"));
  EXPECT_THAT(textsOf(npy("|S2", {1}, "\xB5M")), ElementsAre("\xC2\xB5M")) << "Latin-1";
  const std::vector<std::uint32_t> characters = {0x3B1, 0x1F600, 0xD800, 0x110000, 0};
  EXPECT_THAT(textsOf(npy("<U5", {1}, bytesOf(characters))),
              ElementsAre("\xCE\xB1\xF0\x9F\x98\x80\xEF\xBF\xBD\xEF\xBF\xBD"));
  EXPECT_THAT(textsOf(npy(">U1", {1}, std::string("\0\0\3\xB1", 4))), ElementsAre("\xCE\xB1"));
}

TEST(NpyArray, OtherTypesAreRefusedWithWhatToDo)
{
  EXPECT_THAT(faultOf(npy("|O", {1}, "pickled!")),
              HasSubstr("a.npy: the NumPy array holds objects of Python; save it as plain numbers"));
  EXPECT_THAT(faultOf(npyWithHeader("{'descr': [('a', '<f8')], 'fortran_order': False, 'shape': (1,), }",
                                    bytesOf(1.0))),
              HasSubstr("records of several fields; save it as plain numbers"));
  for (const char* type :
       {"<c16", "<f2", "<M8[s]", "<f16", "|V8", "", "<", "<f", "<f8x", "|S0", "<U0", "<i3"})
    EXPECT_THAT(faultOf(npy(type, {1}, std::string(16, '\0'))), HasSubstr("save it as plain numbers"))
        << type;
}

TEST(NpyArray, ClaimsThatTheBytesDoNotKeepAreRefusedBeforeAnythingIsTaken)
{
  for (std::vector<std::size_t> const& shape :
       std::vector<std::vector<std::size_t>>{{1000000000000},
                                             {3},
                                             {1, 3},
                                             {SIZE_MAX, 2},
                                             {SIZE_MAX},
                                             {std::size_t(1) << 61},
                                             {std::size_t(1) << 32, std::size_t(1) << 32},
                                             {SIZE_MAX, SIZE_MAX, 0}})
    EXPECT_THAT(faultOf(npy("<f8", shape, bytesOf(Numbers{1, 2}))), HasSubstr("ends too early"));
  EXPECT_THAT(faultOf(npy("<U4000000000", {2}, "12345678")), HasSubstr("ends too early"));
  EXPECT_THAT(faultOf(npy("<f8", {1}, bytesOf(Numbers{1, 2}))), HasSubstr("more bytes than the header"));
}

TEST(NpyArray, DamagedHeadersAreRefused)
{
  for (const char* header :
       {"", "{", "{}", "[]", "{'descr': '<f8'}", "{'descr': '<f8', 'fortran_order': False}",
        "{'descr': '<f8', 'fortran_order': Maybe, 'shape': (1,)}",
        "{'descr': '<f8', 'fortran_order': False, 'shape': (-1,)}",
        "{'descr': '<f8', 'fortran_order': False, 'shape': (1}",
        "{'descr': '<f8', 'fortran_order': False, 'shape': (99999999999999999999999,)}",
        "{'descr': '<f8', 'fortran_order': False, 'shape': (1,)} more",
        "{'descr': '<f8', 'fortran_order': False, 'shape': (1,), 'other': 1}", "{'descr: 1"})
    EXPECT_THAT(faultOf(npyWithHeader(header, bytesOf(1.0))),
                HasSubstr("header of the NumPy array is damaged"))
        << header;
  EXPECT_THAT(faultOf("PK"), HasSubstr("is not a NumPy array"));
  EXPECT_THAT(faultOf(npyWithHeader(std::string(100000, ' '), "", 2)),
              HasSubstr("takes a header of 100001 bytes"));
}

} // namespace
} // namespace runsieve::test
