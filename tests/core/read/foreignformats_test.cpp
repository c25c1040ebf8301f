#include <runsieve/core/read/ForeignFormats.h>

#include "support/ScanOfFile.h"
#include "support/TempFile.h"

#include <runsieve/core/read/ReadScan.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace runsieve::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using namespace std::string_literals;

TEST(ForeignFormats, AreToldWithAWayOut)
{
  EXPECT_THAT(foreignFormat("PK\3\4\x14\0\0\0[Content_Types].xml"s),
              StartsWith("an Excel workbook; save the sheet"));
  EXPECT_THAT(foreignFormat("PK\3\4\x14\0\0\0_rels/.rels xl/workbook.xml"s),
              StartsWith("an Excel workbook;"));
  EXPECT_THAT(foreignFormat("PK\3\4mimetypeapplication/vnd.oasis.opendocument.spreadsheet"),
              StartsWith("an OpenDocument spreadsheet; save the sheet"));
  EXPECT_THAT(foreignFormat("PK\3\4manifest.xml"), HasSubstr("reports.h5"));
  EXPECT_THAT(foreignFormat("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"), StartsWith("an Excel workbook"));
  EXPECT_THAT(foreignFormat("MATLAB 5.0 MAT-file, Platform: GLNXA64"), HasSubstr("-v7.3"));
  EXPECT_THAT(foreignFormat("PAR1\x15\4"), HasSubstr("read_parquet"));
  EXPECT_THAT(foreignFormat("ARROW1\0\0"s), HasSubstr("read_feather"));
  EXPECT_THAT(foreignFormat("RDX3\nX\n"), HasSubstr("write.csv"));
  EXPECT_THAT(foreignFormat("X\n\0\0\0\3"s), HasSubstr("write.csv"));
  EXPECT_THAT(foreignFormat("<?xml version=\"1.0\"?>\n<sbml level=\"3\">"), StartsWith("an SBML model"));
  EXPECT_THAT(foreignFormat("<?xml version=\"1.0\"?>\n<sedML>"), StartsWith("a SED-ML description"));
  EXPECT_THAT(foreignFormat("<?xml version=\"1.0\"?>\n<!-- generated with COPASI 4.42 -->"),
              StartsWith("a COPASI model"));
  EXPECT_THAT(foreignFormat("<?xml version=\"1.0\"?><a/>"), StartsWith("an XML file"));
  EXPECT_THAT(foreignFormat("%PDF-1.7\n"), StartsWith("a PDF document"));
  EXPECT_THAT(foreignFormat("\x89PNG\r\n"), StartsWith("a picture"));
}

TEST(ForeignFormats, AreNotSeenInTablesAndArrays)
{
  EXPECT_EQ(foreignFormat(""), "");
  EXPECT_EQ(foreignFormat("time,A\n0,1\n"), "");
  EXPECT_EQ(foreignFormat("X\n1\n"), "");
  EXPECT_EQ(foreignFormat("PK\3\4values.npy"), "");
  EXPECT_EQ(foreignFormat("PK\3\4values.npy ... xl/ ..."), "") << "data may hold any bytes";
  EXPECT_EQ(foreignFormat("PAR1,time,A\n1,0,1\n"), "");
  EXPECT_EQ(foreignFormat("RDX,time,A\n1,0,1\n"), "");
}

TEST(ForeignFormats, AreRefusedWithTheNameOfTheFile)
{
  TempFolder folder;
  std::string const path = folder.write("PK\3\4[Content_Types].xml", "scan.xlsx");
  EXPECT_THAT(scanFault([&] { (void)readScan(path); }),
              HasSubstr("scan.xlsx: an Excel workbook; save the sheet"));
}

} // namespace
} // namespace runsieve::test
