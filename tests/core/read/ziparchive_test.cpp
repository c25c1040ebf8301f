#include <runsieve/core/read/ZipArchive.h>

#include "support/ZipBytes.h"
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

namespace runsieve::test {
namespace {

using testing::HasSubstr;
using testing::Pair;
using testing::UnorderedElementsAre;

std::map<std::string, std::string> contentsOf(std::string const& bytes)
{
  const ZipArchive archive("a.npz", bytes);
  std::map<std::string, std::string> contents;
  for (auto const& entry : archive.entries()) {
    std::string room;
    contents[entry.name] = archive.content(entry, room);
  }
  return contents;
}

std::string faultOf(std::string const& bytes)
{
  try {
    (void)contentsOf(bytes);
  } catch (ScanError const& error) {
    return error.what();
  }
  return "";
}

ZipForm form(bool deflate, bool wide, std::string const& comment = "")
{
  ZipForm form;
  form.deflate = deflate;
  form.wide = wide;
  form.comment = comment;
  return form;
}

const std::string text(10000, 'x');

TEST(ZipArchive, GivesStoredAndDeflatedFilesOfBothFormats)
{
  for (bool deflate : {false, true})
    for (bool wide : {false, true})
      for (const char* comment :
           {"", "with a comment", "PK\5\6 and no end of an archive, nor another PK\5\6"})
        EXPECT_THAT(contentsOf(zipOf({{"a.npy", text}, {"empty", ""}, {"\xCE\xB1", "k1"}},
                                     form(deflate, wide, comment))),
                    UnorderedElementsAre(Pair("a.npy", text), Pair("empty", ""), Pair("\xCE\xB1", "k1")))
            << deflate << wide << comment;
  EXPECT_TRUE(contentsOf(zipOf({})).empty());
}

TEST(ZipArchive, GivesTheFirstBytesOfAFile)
{
  for (bool deflate : {false, true}) {
    const std::string bytes = zipOf({{"a", "abcdefgh" + text}}, form(deflate, false));
    const ZipArchive archive("a.npz", bytes);
    std::string room;
    EXPECT_EQ(archive.head(archive.entries().front(), 8, room), "abcdefgh");
    EXPECT_EQ(archive.head(archive.entries().front(), 1 << 20, room), "abcdefgh" + text);
  }
}

TEST(ZipArchive, EveryCutIsAFaultAndEveryDamagedByteAFaultOrWithoutEffect)
{
  for (bool deflate : {false, true})
    for (bool wide : {false, true}) {
      const std::string whole = zipOf({{"a", "some content"}, {"b", "other content"}}, form(deflate, wide));
      for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_NE(faultOf(whole.substr(0, length)), "") << length;
      for (std::size_t i = 0; i < whole.size(); ++i)
        for (int bit : {1, 0x80, 0xFF}) {
          std::string damaged = whole;
          damaged[i] = static_cast<char>(damaged[i] ^ bit);
          if (!faultOf(damaged).empty()) continue;
          for (auto const& [name, content] : contentsOf(damaged))
            EXPECT_TRUE(content == "some content" || content == "other content") << i;
        }
    }
}

TEST(ZipArchive, WrongChecksumsAreFound)
{
  std::string bytes = zipOf({{"a", "some content"}});
  bytes[bytes.find("some")] = 'S';
  EXPECT_THAT(faultOf(bytes), HasSubstr("the file \"a\" in the archive is damaged: its checksum is wrong"));
}

TEST(ZipArchive, EncryptedFilesAndUnknownMethodsAreRefused)
{
  ZipForm encrypted;
  encrypted.flags = 1;
  EXPECT_THAT(faultOf(zipOf({{"a", "x"}}, encrypted)), HasSubstr("is encrypted; extract it first"));
  std::string bytes = zipOf({{"a", "x"}});
  bytes[bytes.find("PK\1\2") + 10] = 12;
  EXPECT_THAT(faultOf(bytes), HasSubstr("compressed by an unknown method"));
}

TEST(ZipArchive, ClaimsBeyondWhatBytesCanHoldAreRefused)
{
  std::string bytes = zipOf({{"a", text}}, form(true, false));
  bytes.replace(bytes.find("PK\1\2") + 24, 4, bytesOf(std::uint32_t(0xFFFFFFF0)));
  EXPECT_THAT(faultOf(bytes), HasSubstr("claims more content than its bytes can hold"));
}

TEST(ZipArchive, FilesThatShareTheirBytesAreRefused)
{
  const std::string one = zipOf({{"a", text}});
  const std::size_t at = one.find("PK\1\2");
  const std::string entry = one.substr(at, one.find("PK\5\6") - at);
  std::string end = one.substr(one.find("PK\5\6"));
  end.replace(8, 8,
              bytesOf(std::uint16_t(3)) + bytesOf(std::uint16_t(3)) +
                  bytesOf(static_cast<std::uint32_t>(3 * entry.size())));
  EXPECT_THAT(faultOf(one.substr(0, at) + entry + entry + entry + end), HasSubstr("overlap"));
}

} // namespace
} // namespace runsieve::test
