#include <runsieve/core/read/ReadScan.h>
#include <runsieve/core/scan/ScanError.h>

#include "support/TempFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

namespace runsieve::test {
namespace {

using testing::HasSubstr;
using testing::Not;

/// What reading says, without the folder's name.
struct Complaint
{
  std::string message = "nothing";
  std::size_t line = 0;
  std::size_t column = 0;
  std::string field;
};

Complaint complaintOf(std::string const& path, ReadOptions const& options = {})
{
  try {
    (void)readScan(path, options);
    return {};
  } catch (ScanError const& error) {
    std::string const folder = std::filesystem::path(path).parent_path().string() + '/';
    std::string message = error.what();
    EXPECT_EQ(message.rfind(folder, 0), 0u) << message;
    EXPECT_EQ(error.file(), path);
    EXPECT_THAT(message, Not(HasSubstr("\n")));
    return {message.substr(folder.size()), error.line(), error.column(), error.field()};
  }
}

std::string messageFor(std::string const& content, ReadOptions const& options = {})
{
  TempFolder folder;
  return complaintOf(folder.write(content), options).message;
}

constexpr char header[] = "Molecule: A,time,run,Parameter: k1\n";

std::string messageForRows(std::string const& rows)
{
  return messageFor(header + rows);
}

TEST(TextFaults, NamesFileLineColumnAndField)
{
  TempFolder folder;
  Complaint const complaint = complaintOf(folder.write(std::string(header) + "1,0,0,0.5\nabc,1,0,0.5\n"));
  EXPECT_EQ(complaint.message, "scan.csv:3: column 1 (\"Molecule: A\"): expected a number, found \"abc\"");
  EXPECT_EQ(complaint.line, 3u);
  EXPECT_EQ(complaint.column, 1u);
  EXPECT_EQ(complaint.field, "Molecule: A");
}

TEST(TextFaults, TextInANumberColumn)
{
  EXPECT_THAT(messageForRows("+,0,0,1\n"), HasSubstr("found \"+\""));
  EXPECT_THAT(messageForRows("1x,0,0,1\n"),
              HasSubstr("column 1 (\"Molecule: A\"): expected a number, found \"1x\""));
  EXPECT_THAT(messageForRows("1 2,0,0,1\n"), HasSubstr("found \"1 2\""));
  EXPECT_THAT(messageForRows("0x10,0,0,1\n"), HasSubstr("found \"0x10\""));
  EXPECT_THAT(messageForRows("+-1,0,0,1\n"), HasSubstr("found \"+-1\""));
  EXPECT_THAT(messageForRows("1e400,0,0,1\n"), HasSubstr("the number \"1e400\" is too large"));
  EXPECT_THAT(messageForRows(std::string(500, 'z') + ",0,0,1\n"),
              HasSubstr("found \"" + std::string(40, 'z') + "...\""));
  EXPECT_THAT(messageForRows("\x1b[31m,0,0,1\n"), HasSubstr("\\x1b[31m"));
}

TEST(TextFaults, NamesOfColumnsCannotReachTheTerminal)
{
  EXPECT_THAT(messageFor("time,A\x1b[31m\n0,x\n1,2\n"), HasSubstr("column 2 (\"A\\x1b[31m\")"));
}

TEST(TextFaults, TooManyCommentsAboveATableAreNotAFileOfComments)
{
  std::string comments;
  for (int line = 0; line < 10001; ++line) comments += "# note\n";
  EXPECT_THAT(messageFor(comments + "time,A\n0,1\n1,2\n"),
              HasSubstr("no table begins behind the first 10001 comments"));
  EXPECT_THAT(messageFor(comments.substr(0, 70)), HasSubstr("blank lines and comments only"));
}

TEST(TextFaults, RaggedRow)
{
  EXPECT_THAT(messageForRows("1,0,0,1\n2,1,0\n3,2,0,1\n"),
              HasSubstr("scan.csv:3: 3 fields, but the header has 4"));
  EXPECT_THAT(messageForRows("1,0,0,1\n2,1,0,1,9\n"),
              HasSubstr("scan.csv:3: 5 fields, but the header has 4"));
  EXPECT_THAT(messageForRows("1,0,0,1,\n2,1,0,1,7\n"), Not(HasSubstr("fields")))
      << "the first row tells that the last column has no name";
  EXPECT_THAT(messageForRows("1,0,0,1,\n2,1,0,1\n"), HasSubstr("scan.csv:3: 4 fields, but the header has 5"));
}

TEST(TextFaults, TruncatedLastRow)
{
  std::string const message = messageForRows("1,0,0,1\n2,1");
  EXPECT_THAT(message, HasSubstr("scan.csv:3: 2 fields"));
  EXPECT_THAT(message, HasSubstr("cut off"));
}

TEST(TextFaults, EmptyFileAndHeaderOnly)
{
  EXPECT_EQ(messageFor(""), "scan.csv: the file is empty");
  EXPECT_EQ(messageFor("\xEF\xBB\xBF"), "scan.csv: the file is empty");
  EXPECT_EQ(messageFor("\n \t\r\n"), "scan.csv: the file is empty");
  EXPECT_EQ(messageFor("# one\n\n# two\n"),
            "scan.csv:1: there is no table: the file holds blank lines and comments only");
  EXPECT_EQ(messageFor(header), "scan.csv: the file has a header and no rows");
  EXPECT_EQ(messageFor("Molecule: A,time"), "scan.csv: the file has a header and no rows");
}

TEST(TextFaults, MissingColumns)
{
  EXPECT_THAT(messageFor("A,B\n1,2\n"), HasSubstr("scan.csv:1: no time column"));
  EXPECT_THAT(messageFor("A\n1\n"), HasSubstr("no table was found"));
  EXPECT_THAT(messageFor("0,1,2\n1,2,3\n"), HasSubstr("scan.csv:1: there is no line of column names"));
  EXPECT_THAT(messageFor("time,run,k\n0,0,1\n1,0,1\n"), HasSubstr("scan.csv:1: no output column"));
  ReadOptions options;
  options.time = "hours";
  EXPECT_THAT(messageFor("A,time\n1,0\n", options), HasSubstr("scan.csv:1: no column is named \"hours\""));
  options = {};
  options.parameters = std::vector<std::string>{"time"};
  EXPECT_THAT(messageFor("A,time\n1,0\n", options), HasSubstr("cannot be a parameter"));
  options = {};
  options.run = "time";
  EXPECT_THAT(messageFor("A,time\n1,0\n", options), HasSubstr("both time and run"));
}

TEST(TextFaults, AmbiguousColumns)
{
  EXPECT_THAT(messageFor("A,time,t\n1,0,0\n"), HasSubstr("both \"time\" and \"t\" could be the time"));
  EXPECT_THAT(messageFor("A,time,run,sim\n1,0,0,0\n"),
              HasSubstr("both \"run\" and \"sim\" could be the run"));
  EXPECT_THAT(messageFor("A,time,A\n1,0,0\n"),
              HasSubstr("scan.csv:1: column 3 (\"A\"): the name is that of column 1"));
  EXPECT_THAT(messageFor("A,time,Molecule: A\n1,0,2\n2,1,3\n"),
              HasSubstr("a second column named \"Molecule: A\""));
}

TEST(TextFaults, BrokenHeader)
{
  EXPECT_THAT(messageFor("A,,time\n1,2,0\n"), HasSubstr("scan.csv:1: column 2: the column has no name"));
  EXPECT_THAT(messageFor("\"A,time\n1,0\n"), HasSubstr("scan.csv:1: the quotes of a name are not closed"));
  EXPECT_THAT(messageFor("\"A\"b,time\n1,0\n"), HasSubstr("text after the closing quote"));
  EXPECT_THAT(messageFor("A,time\r1,0\r2,1\r"), HasSubstr("carriage return"));
}

TEST(TextFaults, AColumnWithoutAName)
{
  EXPECT_THAT(messageFor("run,time,A,B\n1,0,1,2,7\n1,1,2,2,8\n2,0,2,4,7\n2,1,5,4,9\n"),
              HasSubstr("scan.csv:2: 5 fields, but the header has 4; write the name of every column"));
}

TEST(TextFaults, ACommentThatNamesTheColumnsInAnotherWay)
{
  std::string const rows = "# time A B\n0 1 10\n1 2 20\n\n";
  EXPECT_THAT(messageFor(rows + "# time B A\n0 30 3\n1 40 4\n"),
              HasSubstr("scan.csv:5: the columns are named in another way than in line 1"));
  EXPECT_THAT(messageFor(rows + "# time A C\n0 30 3\n1 40 4\n"), HasSubstr("in another way"));
  EXPECT_EQ(messageFor(rows + "#  time   A B \n0 30 3\n1 40 4\n"), "nothing");
  EXPECT_EQ(messageFor(rows + "# run 2 at a later time\n0 30 3\n1 40 4\n"), "nothing");
}

TEST(TextFaults, ATimeThatARunHasTwice)
{
  EXPECT_THAT(messageForRows("1,0,0,1\n2,1,0,1\n3,0,1,2\n4,1,1,2\n1,0,0,1\n2,1,0,1\n"),
              HasSubstr("scan.csv:6: column 2 (\"time\"): time 0 stands twice in run 0"));
  EXPECT_THAT(messageForRows("1,1,0,1\n2,1,0,1\n"), HasSubstr("time 1 stands twice in run 0"));
}

TEST(TextFaults, TimesAndRunsThatAreNoPlainNumbers)
{
  EXPECT_THAT(messageForRows("1,0,0,1\n2,nan,0,1\n"),
              HasSubstr("scan.csv:3: column 2 (\"time\"): the time must be"));
  EXPECT_THAT(messageForRows("1,inf,0,1\n"), HasSubstr("scan.csv:2: column 2"));
  EXPECT_THAT(messageForRows("1,0,nan,1\n"),
              HasSubstr("scan.csv:2: column 3 (\"run\"): a row that belongs to no run"));
  EXPECT_THAT(messageForRows("1,abc,0,1\n"),
              HasSubstr("column 2 (\"time\"): expected a number, found \"abc\""));
}

TEST(TextFaults, AParameterThatChangesWithinARun)
{
  EXPECT_THAT(
      messageForRows("1,0,0,1\n2,1,0,1\n1,0,1,1\n2,1,1,2\n"),
      HasSubstr("scan.csv:5: column 4 (\"Parameter: k1\"): a parameter must keep its value within a run"));
}

TEST(TextFaults, DecimalComma)
{
  EXPECT_THAT(
      messageFor("A;time\n1,5;0\n2.5;1\n"),
      HasSubstr(
          "scan.csv:2: column 1 (\"A\"): expected a number, found \"1,5\" (write decimals with a point)"));
  EXPECT_THAT(messageFor("A;time\n1.234,5;0\n2.345,5;1\n"), HasSubstr("found \"1.234,5\""))
      << "separators of thousands are never guessed";
  EXPECT_THAT(messageFor("A,time\n1,5,0,0\n"),
              HasSubstr("4 fields, but the header has 2 (write decimals with a point)"));
}

TEST(TextFaults, BinaryData)
{
  EXPECT_THAT(messageFor(std::string("\x7f"
                                     "ELF\0\0\0\x01,\n",
                                     10)),
              HasSubstr("scan.csv:1: binary data"));
  EXPECT_THAT(messageFor(std::string(header) + std::string("1,0,0,1\n2,1,\0\0,1\n", 17)),
              HasSubstr("scan.csv:3: binary data"));
}

TEST(TextFaults, ThereIsNoSuchFile)
{
  TempFolder folder;
  EXPECT_EQ(complaintOf(folder.file("scan.csv")).message, "scan.csv: no such file");
  std::filesystem::create_directory(folder.file("folder"));
  EXPECT_THAT(complaintOf(folder.file("folder")).message,
              HasSubstr("folder: no scan was found in this folder"));
  EXPECT_THROW((void)readScan("/dev/null"), ScanError);
}

TEST(TextFaults, OneEndlessLine)
{
  TempFolder folder;
  std::string const path = folder.write("start");
  std::filesystem::resize_file(path, std::uintmax_t(3) << 30); // 3 GB of zeros that take no room on the disk
  EXPECT_THAT(complaintOf(path).message, HasSubstr("scan.csv:1: binary data"));

  std::string const sparseRows = folder.write(std::string(header) + "1,0,0,1");
  std::filesystem::resize_file(sparseRows, std::uintmax_t(3) << 30);
  EXPECT_THAT(complaintOf(sparseRows).message, HasSubstr("scan.csv:2: binary data"));

  std::string const digits(std::size_t(17) << 20, '7');
  EXPECT_THAT(messageFor(digits), HasSubstr("scan.csv:1: the line is longer than 16 MiB"));
  EXPECT_THAT(messageForRows(digits), HasSubstr("scan.csv:2: the line is longer than 16 MiB"));
  EXPECT_THAT(messageForRows("1,0,0,1\n" + digits), HasSubstr("scan.csv:3: the line is longer than 16 MiB"));
}

// A file of many short lines under a wide header pretends to have more cells than bytes.
TEST(TextFaults, TakesNoMemoryForRowsThatCannotBe)
{
  std::string content = "time";
  for (int i = 0; i < 5000; ++i) content += ",x" + std::to_string(i);
  content += "\n0";
  for (int i = 0; i < 5000; ++i) content += ",1";
  content += '\n';
  for (int i = 0; i < 2000000; ++i) content += "1\n"; // 80 GB of columns
  EXPECT_THAT(messageFor(content), HasSubstr("scan.csv:3: 1 field, but the header has 5001"));
}

// Threads find faults in any order; the first in the file is told.
TEST(TextFaults, TellsTheFirstOfSeveralFaults)
{
  std::string content = header;
  for (int i = 0; i < 600000; ++i)
    content += (i == 450000 || i == 550000 ? "x," : "1.2345,") + std::to_string(i) + ",0,1\n";
  ReadOptions options;
  options.threads = 4;
  EXPECT_THAT(messageFor(content, options),
              HasSubstr("scan.csv:450002: column 1 (\"Molecule: A\"): expected a number"));
}

// Whatever becomes of a file, it is either a scan or told to be none.
TEST(TextFaults, AnyDamageIsToldOrHarmless)
{
  std::string const whole = "\"Molecule: A\",\": Time [s]\",\": Run Index\",\"Parameter: k1\"\n"
                            "1.5,0,0,0.5\n-2e-3,1,0,0.5\n\"3\",0,1,0.7\nnan,1,1,0.7\n";
  constexpr char alphabet[] = "0123456789.,;\t\n\r\"-+einfa \0\x80\xff";
  std::mt19937 random(11);
  TempFolder folder;
  int told = 0;
  for (int round = 0; round < 4000; ++round) {
    std::string damaged = whole;
    for (int i = 1 + static_cast<int>(random() % 3); i > 0; --i) {
      std::size_t const at = random() % damaged.size();
      char const replacement = alphabet[random() % (sizeof alphabet - 1)];
      switch (random() % 4) {
      case 0:
        damaged[at] = replacement;
        break;
      case 1:
        damaged.insert(at, 1, replacement);
        break;
      case 2:
        damaged.erase(at, 1 + random() % 5);
        break;
      default:
        damaged.resize(at + 1);
      }
    }
    try {
      Scan const scan = readScan(folder.write(damaged, std::to_string(round))).scan;
      ASSERT_NO_THROW(scan.check()) << damaged;
    } catch (ScanError const&) {
      ++told;
    }
  }
  EXPECT_GT(told, 1000);
  EXPECT_LT(told, 4000);
}

} // namespace
} // namespace runsieve::test
